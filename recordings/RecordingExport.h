// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/RecordingRun.h"
#include "recordings/SettingsInForce.h"

#include <string>

namespace veldron {

/// What all exports share: the window of time and the settings that are in force at a scan.
///
/// An export class takes the scans of the window in the order of the file, and writes the rest in
/// finish(). Whoever made the output file commits it after that. Scans without frequencies are
/// passed on too, and so are those without a date where the window has no bounds: each export
/// decides what it does with them.
class RecordingExport : public TellingVisitor {
public:
    /// \a window has been parsed. \a console outlives the export.
    RecordingExport(const std::string &file, TimeWindow window, Console &console)
        : TellingVisitor(file, console), m_file(file), m_console(console),
          m_window(std::move(window)) {}

    void block(const RecordedBlock &block) final;
    void scan(const RecordedScan &scan) final;
    /// Ends the output, behind the end of the recording, and says which scans lacked something.
    void finish();

protected:
    /// The settings in force are others now.
    virtual void settingsChanged() {}
    /// A scan within the window.
    virtual void take(const RecordedScan &scan) = 0;
    /// What is only known behind the last scan. The first thing that finish() does.
    virtual void writeRest() {}

    [[nodiscard]] const SettingsInForce &settings() const { return m_settings; }
    /// Which frequencies the scans have that come now; nothing where the settings don't tell it.
    [[nodiscard]] const std::optional<FrequencyAxis> &axis() const { return m_axis; }

private:
    void sayOf(qint64 count, const QString &what) const;

    std::string m_file;
    Console &m_console;
    TimeWindow m_window;
    SettingsInForce m_settings;
    std::optional<FrequencyAxis> m_axis;
    qint64 m_taken = 0;
    qint64 m_withoutDate = 0;
    qint64 m_withoutAxis = 0;
};

} // namespace veldron
