// SPDX-License-Identifier: MIT
#include "common/TextFile.h"

#include "common/UntrappedError.h"

#include <utility>

namespace veldron {

namespace {

constexpr qint64 kChunk = 32768;

[[noreturn]] void fail(const QString &what, const QString &path, const QString &why) {
    throw UntrappedError(UntrappedError::Kind::File,
                         QStringLiteral("%1 \"%2\": %3").arg(what, path, why));
}

QByteArray lineBytes(const QString &line) {
    QByteArray bytes = line.toLatin1();
    bytes += "\r\n";
    return bytes;
}

} // namespace

TextFileReader::TextFileReader(const QString &path) : m_path(path) {
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        fail(QStringLiteral("Can't read the file"), path, file->errorString());
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
        fail(QStringLiteral("Can't read the file"), m_path, m_source->errorString());
    }
    return count > 0;
}

bool TextFileReader::atEnd() {
    return !fill();
}

void TextFileReader::takeLineEnd(char end) {
    ++m_position;
    if (end == '\r' && fill() && m_buffer[m_position] == '\n') {
        ++m_position;
    }
}

QString TextFileReader::readLine() {
    if (atEnd()) {
        fail(QStringLiteral("Can't read the file"), m_path,
             QStringLiteral("there is no line after line %1").arg(m_lineNumber));
    }
    QByteArray line;
    m_lastLineLength = 0;
    ++m_lineNumber;
    while (fill()) {
        const char byte = m_buffer[m_position];
        if (byte == '\r' || byte == '\n') {
            takeLineEnd(byte);
            break;
        }
        if (line.size() < kLongestLine) {
            line += byte;
        }
        ++m_lastLineLength;
        ++m_position;
    }
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
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        fail(QStringLiteral("Can't make the file"), path, m_file.errorString());
    }
}

void TextFileWriter::writeLine(const QString &line) {
    if (!m_file.isOpen()) {
        fail(QStringLiteral("Can't write to the file"), m_file.fileName(),
             QStringLiteral("it is closed"));
    }
    const QByteArray bytes = lineBytes(line);
    const qint64 start = m_file.pos();
    if (m_file.write(bytes) != bytes.size()) {
        const QString why = m_file.errorString();
        m_file.resize(start);
        fail(QStringLiteral("Can't write to the file"), m_file.fileName(), why);
    }
}

void TextFileWriter::sync() {
    if (!m_file.isOpen()) {
        fail(QStringLiteral("Can't write to the file"), m_file.fileName(),
             QStringLiteral("it is closed"));
    }
    QString why = m_disk.force(m_file);
    // A file without a name on the disk is lost with all its lines; once is enough.
    if (why.isEmpty() && !m_nameOnDisk) {
        why = m_disk.forceName(m_file);
        m_nameOnDisk = true;
    }
    if (!why.isEmpty()) {
        fail(QStringLiteral("Can't write to the file"), m_file.fileName(), why);
    }
}

void TextFileWriter::close() {
    if (!m_file.isOpen()) {
        return;
    }
    m_file.close();
    if (m_file.error() != QFileDevice::NoError) {
        fail(QStringLiteral("Can't close the file"), m_file.fileName(), m_file.errorString());
    }
}

ReplacingTextFileWriter::ReplacingTextFileWriter(const QString &path) : m_file(path) {
    if (!m_file.open(QIODevice::WriteOnly)) {
        fail(QStringLiteral("Can't make the file"), path, m_file.errorString());
    }
}

void ReplacingTextFileWriter::writeLine(const QString &line) {
    const QByteArray bytes = lineBytes(line);
    if (m_file.write(bytes) != bytes.size()) {
        fail(QStringLiteral("Can't write to the file"), m_file.fileName(), m_file.errorString());
    }
}

void ReplacingTextFileWriter::commit() {
    if (!m_file.commit()) {
        fail(QStringLiteral("Can't write the file"), m_file.fileName(), m_file.errorString());
    }
}

} // namespace veldron
