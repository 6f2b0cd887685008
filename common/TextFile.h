// SPDX-License-Identifier: MIT
// Text files as bytes: Latin-1, so that every byte value survives, and line ends written and read
// by hand. Every failure is an UntrappedError of the kind File.
#pragma once

#include "common/Disk.h"
#include "common/FileReplacement.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <memory>

namespace veldron {

/// Takes whole lines of text, one after the other.
class LineSink {
public:
    LineSink() = default;
    LineSink(const LineSink &) = delete;
    LineSink &operator=(const LineSink &) = delete;
    virtual ~LineSink() = default;

    /// Writes \a line, as Latin-1, and CR LF. Characters beyond Latin-1 have no byte and are lost.
    virtual void writeLine(const QString &line) = 0;
};

/// Reads a text file strictly forward, with memory that does not grow with the file.
///
/// CR LF, a lone CR and a lone LF each end a line; a last line without an end counts.
class TextFileReader {
public:
    /// Of a longer line only this many bytes are kept; its true length is still told.
    static constexpr qsizetype kLongestLine = 65536;

    /// Opens \a path for reading. A folder, a pipe and a device are refused: they may have no end,
    /// and opening a pipe may wait for ever.
    explicit TextFileReader(const QString &path);
    /// Reads from \a source, which is open; for tests.
    explicit TextFileReader(std::unique_ptr<QIODevice> source);

    /// True when no byte is left. Reads on where the buffer is used up, so it can be a file error.
    [[nodiscard]] bool atEnd();
    /// The next line without its end. Reading at the end of the file is an error.
    [[nodiscard]] QString readLine();
    /// Length in characters of the last line read, without its end.
    [[nodiscard]] qint64 lastLineLength() const { return m_lastLineLength; }
    /// Number of the last line read, counted from 1.
    [[nodiscard]] qint64 lineNumber() const { return m_lineNumber; }
    /// Whether the last line read had a line end. Without one the file may have been cut inside it.
    [[nodiscard]] bool lastLineEnded() const { return m_lastLineEnded; }
    /// Size of the file in bytes at this moment; 0 once it is closed.
    [[nodiscard]] qint64 size() const;
    [[nodiscard]] QString path() const { return m_path; }
    /// Further reads are errors; a second close does nothing.
    void close();

private:
    bool fill();
    void takeLineEnd(char end);

    QString m_path;
    std::unique_ptr<QIODevice> m_source;
    QByteArray m_buffer;
    qsizetype m_position = 0;
    qint64 m_lastLineLength = 0;
    qint64 m_lineNumber = 0;
    bool m_lastLineEnded = false;
};

/// Appends lines to a new file, each with one unbuffered write, so that a program that is killed
/// loses the line in hand at most. A line that can't be written whole is taken back. What must
/// outlast a power cut is flushed by sync().
class TextFileWriter : public LineSink {
public:
    /// Makes \a path anew, truncating what stood there. \a disk does the flushing.
    explicit TextFileWriter(const QString &path, Disk &disk = systemDisk());

    void writeLine(const QString &line) override;
    /// Returns when all lines written so far are on the disk. An error of the disk is a file error;
    /// the lines stay.
    void sync();
    [[nodiscard]] QString path() const { return m_file.fileName(); }
    /// An error here is a file error too, but the file is closed all the same; a second close does
    /// nothing.
    void close();

private:
    QFile m_file;
    Disk &m_disk;
    bool m_nameOnDisk = false;
};

/// Writes a file that replaces the old one only when it is whole: by a rename, or in place where
/// the folder forbids one (see FileReplacement). Behind a link it is the link's target that is
/// replaced; the link stays.
class ReplacingTextFileWriter : public LineSink {
public:
    /// Begins the new file. \a disk does the flushing.
    explicit ReplacingTextFileWriter(const QString &path, Disk &disk = systemDisk());

    /// After a line that can't be written whole the old file stays, whatever follows.
    void writeLine(const QString &line) override;
    /// Puts the new file in the old one's place and flushes it. Without it, or when it fails before
    /// the rename, the old file stays as it was. In place, the old bytes are written back when the
    /// new ones don't fit.
    void commit();

private:
    [[noreturn]] void giveUp(const QString &why);
    [[noreturn]] void failToWrite(const QString &why) const;
    void commitRename();
    void commitInPlace();

    FileReplacement m_replacement;
    QSaveFile m_file;   ///< the new file of a rename
    QByteArray m_bytes; ///< the new content of a write in place
    Disk &m_disk;
};

} // namespace veldron
