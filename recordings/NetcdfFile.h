// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/OutputFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <string>
#include <vector>

namespace veldron {

/// A netCDF-4 file in the making: groups of scans that have the same number of levels and the same
/// settings. The only place that knows the library.
///
/// Each group has the dimensions time (unlimited) and frequency, the variable levels of unsigned
/// bytes over both, and the coordinates time and, where it is known, frequency. Chunks are
/// compressed, and each is written once and whole, so no chunk is kept by the library.
///
/// A failure of any call is an UntrappedError(File) that tells how many scans arrived.
class NetcdfFile {
public:
    using GroupNumber = std::size_t;
    /// What a group holds beside its scans.
    struct Group {
        std::string name;
        qsizetype levels;                               ///< of each scan
        std::optional<std::vector<double>> frequencies; ///< hertz, one a level
        std::size_t chunkRows;                          ///< scans that are compressed together
    };

    /// Begins the file at the library's path of \a out, which outlives it.
    explicit NetcdfFile(const OutputFile &out);
    NetcdfFile(const NetcdfFile &) = delete;
    NetcdfFile &operator=(const NetcdfFile &) = delete;
    /// Gives the file up unless it was closed.
    ~NetcdfFile();

    /// Attributes of the whole file.
    void setAttribute(const char *name, const QString &value);
    GroupNumber addGroup(const Group &group);
    void setAttribute(GroupNumber group, const char *name, const QString &value);
    void setAttribute(GroupNumber group, const char *name, double value);
    void setAttribute(GroupNumber group, const char *name, qint32 value);

    /// Takes a scan of as many levels as the group was made for. \a time is seconds since 1970.
    void append(GroupNumber group, qint64 time, QByteArrayView levels);
    /// Writes what is in memory of \a group, which gets no further scan.
    void finishGroup(GroupNumber group);
    /// Ends the file. All groups have been finished.
    void close();

private:
    struct OpenGroup {
        int id;
        int timeVariable;
        int levelsVariable;
        std::size_t levelCount;
        std::size_t chunkRows;
        std::size_t written = 0;
        std::vector<long long> times;
        std::vector<unsigned char> levels;
    };

    void check(int status);
    int addVariable(int group, const char *name, int type, const std::vector<int> &dimensions);
    void compress(int group, int variable, const std::vector<std::size_t> &chunk);
    void addTime(OpenGroup &group, int dimension);
    void addFrequencies(int group, int dimension, const std::vector<double> &frequencies);
    void addLevels(OpenGroup &group, int timeDimension, int frequencyDimension);
    void putText(int group, int variable, const char *name, const QByteArray &text);
    void flush(OpenGroup &group);

    const OutputFile &m_out;
    int m_file = 0;
    bool m_isOpen = false;
    std::vector<OpenGroup> m_groups;
    qint64 m_scansWritten = 0;
};

} // namespace veldron
