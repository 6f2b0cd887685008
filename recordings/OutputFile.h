// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/BackgroundWriter.h"

#include <QByteArrayView>
#include <QtGlobal>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldron {

/// The one file that a command makes, or the standard output.
///
/// A file is written under a temporary name beside its own and gets that by commit(): whatever goes
/// wrong before, there is no half file, and what stood there stays. A signal that ends the program
/// (Ctrl-C) removes the temporary file too. Pipes and devices are written as they are.
///
/// A failure is an UntrappedError(File) that names the file and, where scans were counted, how many
/// of them arrived. At most one file lives at a time, beside the standard output. What doesn't fit
/// into one block is written in the background, so a failure may be told by a later call.
class OutputFile {
public:
    /// "-" is the standard output. A file that is there is replaced only with \a force.
    OutputFile(const std::string &path, bool force);
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;
    ~OutputFile();

    void write(QByteArrayView bytes);
    /// Room for \a most bytes, at most kMostRoom, to be filled in place from the front; then
    /// writeUpTo() takes what lies in front of \a end.
    [[nodiscard]] char *room(std::size_t most);
    void writeUpTo(const char *end) { m_filled = static_cast<std::size_t>(end - m_block.data()); }
    static constexpr std::size_t kMostRoom = 16384;
    /// Notes that a scan ends with what has been written so far.
    void countScan();
    [[nodiscard]] qint64 scanCount() const { return m_scanCount; }
    /// Writes what is still in memory and gives the file its name.
    void commit();

    /// Where a library that writes by itself shall write; commit() then names what it has left
    /// there, or copies it to the pipe or device that this is.
    [[nodiscard]] std::string libraryPath();
    [[nodiscard]] const std::string &path() const { return m_path; }
    [[nodiscard]] bool isStandardOutput() const { return m_path == "-"; }

private:
    void openTemporary(bool force);
    void openDirectly();
    /// A file for a library, in place of the pipe or device.
    void openStandIn();
    void copyStandIn();
    void removeTemporary();
    void giveBlock();
    void flush();
    void check(const std::optional<BackgroundWriter::Failure> &failure) const;
    [[noreturn]] void fail(int code, qint64 scans) const;

    std::string m_path;
    std::string m_target;    ///< what the path leads to through links
    std::string m_temporary; ///< empty where the output has its name already
    int m_descriptor = -1;
    int m_standIn = -1; ///< the temporary file where the output is a pipe or device
    // The block in hand, and how many bytes stand in front of it.
    std::vector<char> m_block;
    std::size_t m_filled = 0;
    qint64 m_given = 0;
    /// Where scans end, in bytes of the file: those in the block in hand, and those in the block
    /// that may still be on its way.
    std::vector<qint64> m_scanEnds;
    std::vector<qint64> m_givenScanEnds;
    qint64 m_scanCount = 0;
    std::unique_ptr<BackgroundWriter> m_writer; ///< none as long as one block is enough
};

} // namespace veldron
