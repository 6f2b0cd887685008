// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

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
/// of them arrived. At most one file lives at a time,
/// beside the standard output.
class OutputFile {
public:
    /// "-" is the standard output. A file that is there is replaced only with \a force.
    OutputFile(const std::string &path, bool force);
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;
    ~OutputFile();

    void write(QByteArrayView bytes);
    /// Notes that a scan ends with what has been written so far.
    void countScan();
    [[nodiscard]] qint64 scanCount() const { return m_scanCount; }
    /// Writes what is still in memory and gives the file its name.
    void commit();

    /// Where a library that writes by itself shall write; commit() then names what it has left
    /// there. A pipe or device has none: an UntrappedError.
    [[nodiscard]] std::string libraryPath() const;
    [[nodiscard]] const std::string &path() const { return m_path; }
    [[nodiscard]] bool isStandardOutput() const { return m_path == "-"; }

private:
    void openTemporary(bool force);
    void openDirectly();
    void flush();
    [[noreturn]] void fail(int code, qint64 scans) const;

    std::string m_path;
    std::string m_target;    ///< what the path leads to through links
    std::string m_temporary; ///< empty where the output has its name already
    int m_descriptor = -1;
    QByteArray m_buffer;
    /// Where in the buffer scans end.
    std::vector<qsizetype> m_scanEnds;
    qint64 m_scanCount = 0;
};

} // namespace veldron
