// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/NetcdfFile.h"
#include "recordings/OutputFile.h"
#include "recordings/RecordingExport.h"

#include <QByteArray>

#include <map>
#include <string>

namespace veldron {

/// Writes scans as netCDF-4 by the CF conventions, a group a stretch of equal settings.
///
/// A block that changes nothing but the date begins no stretch. Scans that have fewer or more
/// levels than the stretch's own, such as failed transfers, have a group beside it. Scans without a
/// date are left out, because they have no place in time.
class NetcdfExport : public RecordingExport {
public:
    /// \a out outlives the export.
    NetcdfExport(const std::string &file, TimeWindow window, Console &console, OutputFile &out);

protected:
    void settingsChanged() override { m_settingsAreNew = true; }
    void take(const RecordedScan &scan) override;
    void writeRest() override;

private:
    using Lines = std::map<SettingsKey, QByteArray>;

    void beginStretch(Lines lines);
    void endStretch();
    [[nodiscard]] NetcdfFile::GroupNumber groupFor(const RecordedScan &scan);
    [[nodiscard]] NetcdfFile::GroupNumber addGroup(qsizetype levels, bool isOwn);
    void describe(NetcdfFile::GroupNumber group);

    NetcdfFile m_target;
    bool m_settingsAreNew = true;
    int m_stretch = 0;
    Lines m_stretchLines;
    /// Levels of the scans that the stretch is about; 0 until one of them has come.
    qsizetype m_ownLevels = 0;
    /// The groups of the stretch by their number of levels.
    std::map<qsizetype, NetcdfFile::GroupNumber> m_groups;
};

} // namespace veldron
