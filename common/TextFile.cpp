// SPDX-License-Identifier: MIT
#include "common/TextFile.h"

#include "common/UntrappedError.h"

#include <QFileInfo>

#include <utility>

namespace veldron {

namespace {

constexpr qint64 kChunk = 32768;

const QString kCantRead = QStringLiteral("Can't read the file");
const QString kCantMake = QStringLiteral("Can't make the file");
const QString kCantWriteTo = QStringLiteral("Can't write to the file");

[[noreturn]] void fail(const QString &what, const QString &path, const QString &why) {
    throw UntrappedError(UntrappedError::Kind::File,
                         QStringLiteral("%1 \"%2\": %3").arg(what, path, why));
}

QByteArray lineBytes(const QString &line) {
    QByteArray bytes = line.toLatin1();
    bytes += "\r\n";
    return bytes;
}

/// Place of the first line end in \a bytes from \a from on, their size if there is none.
qsizetype lineEndFrom(QByteArrayView bytes, qsizetype from) {
    // Piece by piece: a file that has one kind of end only isn't searched to its end for the other.
    constexpr qsizetype kPiece = 256;
    for (qsizetype start = from; start < bytes.size(); start += kPiece) {
        const QByteArrayView piece = bytes.sliced(start, qMin(kPiece, bytes.size() - start));
        const qsizetype feed = piece.indexOf('\n');
        const qsizetype carriage = piece.first(feed < 0 ? piece.size() : feed).indexOf('\r');
        if (carriage >= 0 || feed >= 0) {
            return start + (carriage >= 0 ? carriage : feed);
        }
    }
    return bytes.size();
}

/// Hands \a bytes to \a file, which is unbuffered; false when they could not all be written. What a
/// full disk left over is tried again, because only a write that takes nothing tells why.
bool writeWhole(QFileDevice &file, const QByteArray &bytes) {
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 count = file.write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0) {
            return false;
        }
        done += count;
    }
    return true;
}

/// Whether opening \a path may create it. In a folder with the sticky bit Linux can refuse a call
/// that may create, for a file of a third user that is there already and may be written to.
QIODevice::OpenMode creation(const QString &path) {
    return QFile::exists(path) ? QIODevice::ExistingOnly : QIODevice::NotOpen;
}

} // namespace

TextFileReader::TextFileReader(const QString &path) : m_path(path) {
    const QFileInfo facts(path);
    if (facts.isDir()) {
        fail(kCantRead, path, QStringLiteral("it is a folder"));
    }
    if (facts.exists() && !facts.isFile()) {
        fail(kCantRead, path, QStringLiteral("it is a pipe or a device and not a file"));
    }
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fail(kCantRead, path, file->errorString());
    }
    m_source = std::move(file);
}

TextFileReader::TextFileReader(std::unique_ptr<QIODevice> source) : m_source(std::move(source)) {}

bool TextFileReader::fill() {
    if (m_position < m_buffer.size()) {
        return true;
    }
    if (!m_source) {
        return false;
    }
    m_buffer.resize(kChunk);
    m_position = 0;
    const qint64 count = m_source->read(m_buffer.data(), kChunk);
    m_buffer.resize(qMax<qint64>(count, 0));
    if (count < 0) {
        fail(kCantRead, m_path, m_source->errorString());
    }
    return count > 0;
}

bool TextFileReader::atEnd() {
    return !fill();
}

void TextFileReader::takeLineEnd(char end) {
    ++m_position;
    // CR and LF may lie in two chunks, so the buffer is filled again between them.
    if (end == '\r' && fill() && m_buffer[m_position] == '\n') {
        ++m_position;
    }
}

QString TextFileReader::readLine() {
    if (atEnd()) {
        fail(kCantRead, m_path,
             m_lineNumber == 0
                 ? QStringLiteral("the file is empty")
                 : QStringLiteral("there is no line after line %1").arg(m_lineNumber));
    }
    QByteArray line;
    m_lastLineLength = 0;
    ++m_lineNumber;
    bool ended = false;
    while (!ended && fill()) {
        const qsizetype end = lineEndFrom(m_buffer, m_position);
        const qsizetype count = end - m_position;
        line.append(m_buffer.constData() + m_position, qMin(count, kLongestLine - line.size()));
        m_lastLineLength += count;
        m_position = end;
        ended = end < m_buffer.size();
        if (ended) {
            takeLineEnd(m_buffer.at(end));
        }
    }
    m_lastLineEnded = ended;
    return QString::fromLatin1(line);
}

qint64 TextFileReader::size() const {
    return m_source ? m_source->size() : 0;
}

void TextFileReader::close() {
    m_source.reset();
    m_buffer.clear();
    m_position = 0;
}

TextFileWriter::TextFileWriter(const QString &path, Disk &disk) : m_file(path), m_disk(disk) {
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered |
                     creation(path))) {
        fail(kCantMake, path, m_file.errorString());
    }
}

void TextFileWriter::writeLine(const QString &line) {
    if (!m_file.isOpen()) {
        fail(kCantWriteTo, m_file.fileName(), QStringLiteral("it is closed"));
    }
    const QByteArray bytes = lineBytes(line);
    const qint64 start = m_file.pos();
    if (!writeWhole(m_file, bytes)) {
        const QString why = m_file.errorString();
        m_file.resize(start);
        fail(kCantWriteTo, m_file.fileName(), why);
    }
}

void TextFileWriter::sync() {
    if (!m_file.isOpen()) {
        fail(kCantWriteTo, m_file.fileName(), QStringLiteral("it is closed"));
    }
    QString why = m_disk.force(m_file);
    // A file without a name on the disk is lost with all its lines; once is enough.
    if (why.isEmpty() && !m_nameOnDisk) {
        why = m_disk.forceName(endOfLinks(m_file.fileName()));
        m_nameOnDisk = why.isEmpty();
    }
    if (!why.isEmpty()) {
        fail(kCantWriteTo, m_file.fileName(), why);
    }
}

void TextFileWriter::close() {
    if (!m_file.isOpen()) {
        return;
    }
    // A close that fails shows in the error behind it, and has given the handle back all the same.
    m_file.close();
    if (m_file.error() != QFileDevice::NoError) {
        fail(QStringLiteral("Can't close the file"), m_file.fileName(), m_file.errorString());
    }
}

ReplacingTextFileWriter::ReplacingTextFileWriter(const QString &path, Disk &disk)
    : m_replacement(FileReplacement::of(path)), m_file(m_replacement.target), m_disk(disk) {
    if (m_replacement.way == FileReplacement::Way::Refused) {
        fail(kCantMake, path, m_replacement.refusal);
    }
    // Unbuffered: whether the system takes a line is known at once.
    if (m_replacement.way == FileReplacement::Way::Rename &&
        !m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        fail(kCantMake, path, m_file.errorString());
    }
}

void ReplacingTextFileWriter::failToWrite(const QString &why) const {
    fail(QStringLiteral("Can't write the file"), m_replacement.target, why);
}

void ReplacingTextFileWriter::giveUp(const QString &why) {
    // A half file must not be put in place by a commit that follows.
    m_file.cancelWriting();
    failToWrite(why);
}

void ReplacingTextFileWriter::writeLine(const QString &line) {
    if (m_replacement.way == FileReplacement::Way::InPlace) {
        m_bytes += lineBytes(line);
    } else if (!writeWhole(m_file, lineBytes(line))) {
        giveUp(m_file.errorString());
    }
}

void ReplacingTextFileWriter::commit() {
    if (m_replacement.way == FileReplacement::Way::InPlace) {
        commitInPlace();
    } else {
        commitRename();
    }
}

void ReplacingTextFileWriter::commitRename() {
    // The content before the name: a power cut in between leaves the old file, not an empty one.
    if (const QString why = m_disk.force(m_file); !why.isEmpty()) {
        giveUp(why);
    }
    if (!m_file.commit()) {
        failToWrite(m_file.errorString());
    }
    // The rename itself is on the disk only once the folder is.
    if (const QString why = m_disk.forceName(m_replacement.target); !why.isEmpty()) {
        failToWrite(why);
    }
}

void ReplacingTextFileWriter::commitInPlace() {
    QFile file(m_replacement.target);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered | creation(m_replacement.target))) {
        failToWrite(file.errorString());
    }
    const QByteArray old = file.readAll();
    file.seek(0);
    if (!writeWhole(file, m_bytes)) {
        const QString why = file.errorString();
        file.seek(0);
        // What the old bytes fill is the file's already, so they fit.
        (void)writeWhole(file, old);
        file.resize(old.size());
        failToWrite(why);
    }
    // Behind the write: until it has succeeded the old length is needed to go back.
    file.resize(m_bytes.size());
    if (const QString why = m_disk.force(file); !why.isEmpty()) {
        failToWrite(why);
    }
}

} // namespace veldron
