// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/OutputFile.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldron {

/// A netCDF-4 file in the making: groups of scans that have the same number of levels and the same
/// settings. The only place that knows the library.
///
/// Each group has the dimensions time (unlimited) and frequency, the variable levels of unsigned
/// bytes over both, and the coordinates time and, where it is known, frequency. Chunks are
/// compressed, each is written once and whole, and nothing is kept of a group that is finished.
///
/// netCDF-4 files are HDF5 files that keep some rules, and this is written with the HDF5 library.
/// The netCDF library keeps 144 kB of every group until the file is closed, whatever its caches are
/// set to, and compresses on one thread only.
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
        std::size_t chunkRows;                          ///< most scans that are compressed together
    };

    /// Begins the file at the library's path of \a out, which outlives it.
    explicit NetcdfFile(OutputFile &out);
    NetcdfFile(const NetcdfFile &) = delete;
    NetcdfFile &operator=(const NetcdfFile &) = delete;
    /// Gives the file up unless it was closed.
    ~NetcdfFile();

    /// Attributes of the whole file.
    void setAttribute(const char *name, const QString &value);
    [[nodiscard]] GroupNumber addGroup(const Group &group);
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
    struct OpenGroup;
    struct Packed;

    /// An identifier of the library, if it is one.
    qint64 check(qint64 result) const;
    void putText(qint64 object, const char *name, const QByteArray &text) const;
    void putNumber(qint64 object, const char *name, qint64 type, const void *value) const;
    [[nodiscard]] qint64 addVariable(const OpenGroup &group, const char *name, qint64 type,
                                     const std::vector<std::size_t> &shape, bool isUnlimited) const;
    void addTime(OpenGroup &group) const;
    void addLevels(OpenGroup &group) const;
    void addFrequencies(OpenGroup &group) const;
    void addVariables(OpenGroup &group) const;
    void flush(OpenGroup &group, bool isLast);
    void writeTimes(OpenGroup &group) const;
    void writeOldest(OpenGroup &group);

    const OutputFile &m_out;
    qint64 m_file = -1;
    std::map<GroupNumber, std::unique_ptr<OpenGroup>> m_groups;
    GroupNumber m_groupsMade = 0;
    qint64 m_scansWritten = 0;
};

} // namespace veldron
