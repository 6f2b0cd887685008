// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"
#include "recordings/RecordingExport.h"

#include <optional>

namespace veldron {

/// Finds out which time and which frequencies the measured scans of a window cover: the first pass
/// of an export that draws to scale.
class RecordingExtent : public RecordingExport {
public:
    using RecordingExport::RecordingExport;

    /// Whether a scan that can be drawn was there: one with a date and frequencies that is no
    /// failed transfer. False: the rest has no meaning.
    [[nodiscard]] bool hasScans() const { return m_hasScans; }
    /// Seconds as of momentOf(): the earliest scan, and the end of the second of the latest.
    [[nodiscard]] qint64 begin() const { return m_begin; }
    [[nodiscard]] qint64 end() const { return m_end; }
    /// Of the lowest and the highest level.
    [[nodiscard]] Hertz low() const { return m_low; }
    [[nodiscard]] Hertz high() const { return m_high; }
    /// The colour scheme that the recording names.
    [[nodiscard]] std::optional<qint64> palette() const {
        return settings().number(SettingsKey::Palette);
    }

protected:
    void take(const RecordedScan &scan) override;

private:
    bool m_hasScans = false;
    qint64 m_begin = 0;
    qint64 m_end = 0;
    Hertz m_low;
    Hertz m_high;
};

} // namespace veldron
