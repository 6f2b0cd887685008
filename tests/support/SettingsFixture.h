// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ScreenCursor.h"
#include "chart/ctlChartSpectrum.h"
#include "common/DateTimeText.h"
#include "common/TextFile.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/FileDialogs.h"
#include "settings/SessionState.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsLines.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingLinkHost.h"
#include "tests/support/ScriptedSerialControl.h"

#include <QLocale>
#include <QStringList>

#include <optional>
#include <vector>

namespace veldron {

/// Keeps the lines that are written to it.
class LineList : public LineSink {
public:
    void writeLine(const QString &line) override { m_lines.append(line); }
    [[nodiscard]] const QStringList &lines() const { return m_lines; }

private:
    QStringList m_lines;
};

/// Answers every dialog with one path, or with a cancel, and keeps what was asked.
class ScriptedFileDialogs : public FileDialogs {
public:
    std::optional<QString> answer;
    std::vector<FileRequest> openRequests;
    std::vector<FileRequest> saveRequests;

    std::optional<QString> openFile(const FileRequest &request) override {
        openRequests.push_back(request);
        return answer;
    }
    std::optional<QString> saveFile(const FileRequest &request) override {
        saveRequests.push_back(request);
        return answer;
    }
};

/// The real panels, chart, dialogs and link on a scripted serial line, with the settings lines
/// above them and without a window. The log has what is asked of the host, in one list with the
/// commands on the line and the waits between them.
class SettingsFixture : public SettingsHost {
public:
    explicit SettingsFixture(const QLocale &locale = QLocale(QLocale::English,
                                                             QLocale::UnitedKingdom));

    /// Gives all holders their start values, and empties the log.
    void setUp();
    /// Opens COM 1 and connects; the unit accepts every write. Nothing of it stands in the log.
    void connectUnit();
    /// Loads one line; true for a scan line.
    bool load(const QString &line);
    void loadAll(const QStringList &lines);
    /// The block as it would be written now.
    [[nodiscard]] QStringList saved() const;
    /// Every setting that a holder keeps, as "holder Name value".
    [[nodiscard]] QStringList state() const;
    /// What \a line changes in the state.
    [[nodiscard]] QStringList changesOf(const QString &line);

    void ReadBackSettings() override { note(QStringLiteral("ReadBackSettings")); }
    void UpdateChartSettings() override;
    void setPollInterval(qint32 milliseconds) override {
        note(QStringLiteral("Interval %1").arg(milliseconds));
    }
    /// Adds \a entry to the log, and in front of it the time that has passed.
    void note(const QString &entry);

    ManualClock clock{36000.0, QDate(2005, 3, 21)};
    DateTimeText texts;
    ScriptedSerialControl line{clock};
    RecordingLinkHost linkHost;
    frmVDR vdr{line, clock, linkHost};
    ErrorGuard guard{[](const UntrappedError & /*error*/) {
    }};
    ctlFrequency ctlFrequency1{guard};
    ctlMonitorMode ctlMonitorMode1{guard};
    ctlDataMode ctlDataMode1{guard};
    ScreenCursor pointer;
    ctlChartSpectrum ctlChartSpectrum1{guard, clock, texts, pointer};
    frmDisplaySettings displaySettings{guard};
    frmCommSettings commSettings{guard, vdr};
    SessionState session;
    SettingHolders holders{vdr,          ctlFrequency1,     ctlMonitorMode1,
                           ctlDataMode1, ctlChartSpectrum1, displaySettings,
                           commSettings};
    SettingsLines lines{holders, session, *this, clock, texts};
    /// Date text of the last StartSettings line, and the scan of the last scan line.
    QString scanDate;
    std::optional<ScanLine> scan;
    /// Commands, "wait 1.0" between them, and what was asked of the form.
    QStringList log;

private:
    void noteWait();
    [[nodiscard]] QStringList chartState() const;
    [[nodiscard]] QStringList panelState() const;

    double m_lastEvent = 36000.0;
};

} // namespace veldron
