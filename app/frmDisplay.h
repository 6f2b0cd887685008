// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include "app/PanelMediation.h"
#include "app/PollLoop.h"
#include "app/RoundRobin.h"
#include "app/UserDialogs.h"
#include "chart/ScreenCursor.h"
#include "common/Clock.h"
#include "common/DateTimeText.h"
#include "common/ErrorGuard.h"
#include "history/HistoryHost.h"
#include "history/PlaybackEngine.h"
#include "history/Recorder.h"
#include "link/LinkHost.h"
#include "link/SerialControl.h"
#include "settings/SettingsFiles.h"
#include "settings/SettingsHost.h"

#include <memory>

class QAction;
class QMenu;
class QPushButton;
class QTimer;

namespace veldron {

class StatusPanels;
class ctlChartSpectrum;
class ctlDataMode;
class ctlFrequency;
class ctlMonitorMode;
class ctlPlayback;
class frmAbout;
class frmCommSettings;
class frmDisplaySettings;
class frmSplash;

/// The main form: it owns every other object, brings the program up and takes it down, and hands
/// what happens on to the poll loop, the mediation, the settings and the history.
///
/// All of it runs on one thread. Errors that nobody may swallow end in endWithError.
class frmDisplay : public QMainWindow,
                   private LinkHost,
                   private SettingsHost,
                   private HistoryHost,
                   private PollHost,
                   private MediationHost {
    Q_OBJECT

public:
    /// What the form takes from the world; all of it outlives the form.
    struct World {
        SerialControl &control;
        Clock &clock;
        UserDialogs &dialogs;
        const DateTimeText &texts;
        QString programFolder;
        /// Of the program, as "1.0.0".
        QString version;
    };
    explicit frmDisplay(const World &world);
    ~frmDisplay() override;

    /// The whole start: splash, port search, defaults, first connection, settings of the last run,
    /// and the form on the screen. Takes up to a second for each free port without the unit.
    void load();
    /// Ends in good order without a question, as when the system closes down. Returns when the
    /// settings are saved and the port is closed.
    void endWithoutQuestion();
    /// The session manager closes the program: no question is asked at the close that
    /// follows within a minute. A session that stays is asked again.
    void expectSessionEnd();
    /// Stops all timers, closes file and port, tells the user and ends the event loop with 1. Does
    /// nothing once the form has ended.
    void endWithError(const UntrappedError &error);
    /// True after endWithError.
    [[nodiscard]] bool hasFailed() const { return m_failed; }
    /// True once the form is done with, whichever way it ended.
    [[nodiscard]] bool hasEnded() const { return m_unloaded; }

    [[nodiscard]] bool Recording() const { return m_session.Recording; }
    [[nodiscard]] bool InPlayback() const { return m_session.InPlayback; }

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Building.
    void makeMenus();
    void makeStrips();
    void makeParts();
    void wireControls();
    void wirePanels();
    QAction *addEntry(QMenu *menu, const char *name, const QString &text);
    [[nodiscard]] SettingHolders instruments() const;

    // Start.
    void start();
    void showSplash();
    void InitialiseSettings();
    void connectFoundUnit();
    void showForm();

    // End.
    [[nodiscard]] bool queryUnload();
    void unload();
    void stopTimers();

    // Menus.
    void onMnuSettingsDisplay();
    void onMnuSettingsComms();
    void onMnuAbout();
    void applyPollRate();

    void layOut();
    void onCommand1();
    void runPollTimer();

    // What the helpers ask of the form.
    void setHourglass(bool on) override;
    void showMessage(const QString &title, const QString &text) override;
    void ReadBackSettings() override;
    void UpdateChartSettings() override;
    void setPollInterval(qint32 milliseconds) override;
    void SetControlsEnabled(bool enable) override;
    void setRecordCaption(const QString &caption) override;
    void setRecordEnabled(bool enable) override;
    void showTransport(bool visible) override;
    void setPollTimerEnabled(bool enable) override;
    [[nodiscard]] qint16 PollPeriod() const override;
    void showStatus(const QString &text) override;
    void hideClockAndActivity() override;
    void showPlaybackPlace(const QString &time, const QString &percent) override;
    void showClockAndActivity() override;
    void stopTransport() override;
    void showActivity(ActivityImage image) override;
    void showLinkStatus() override;
    void TakeScan() override;
    void checkNextSetting() override;
    void readBackAtMidnight() override;
    void startPollTimer(int milliseconds) override;
    void recordSettings() override;

    World m_world;
    ErrorGuard m_guard;
    ScreenCursor m_pointer;
    SessionState m_session;
    bool m_asksOnClose = true;
    /// The start has come past the settings of the last run, so that the end may replace them.
    bool m_settingsStand = false;
    bool m_unloaded = false;
    bool m_failed = false;

    /// Whether Timer1 is switched on; it ticks only if its interval is above 0 as well.
    bool m_Timer1Enabled = false;
    QTimer *Timer1 = nullptr;
    /// Runs while a close is taken for the end of the desktop's session.
    QTimer *m_sessionEnd = nullptr;
    QWidget *m_inside = nullptr;
    QWidget *Picture1 = nullptr;
    QWidget *Picture2 = nullptr;
    StatusPanels *StatusBar1 = nullptr;
    QPushButton *Command1 = nullptr;
    ctlFrequency *ctlFrequency1 = nullptr;
    ctlMonitorMode *ctlMonitorMode1 = nullptr;
    ctlDataMode *ctlDataMode1 = nullptr;
    ctlPlayback *ctlPlayback1 = nullptr;
    ctlChartSpectrum *ctlChartSpectrum1 = nullptr;
    QAction *mnuFileLoadSettings = nullptr;
    QAction *mnuFileSaveSettings = nullptr;
    QAction *mnuFileRecord = nullptr;
    QAction *mnuFilePlayback = nullptr;
    QAction *mnuFileExit = nullptr;
    QAction *mnuSettingsDisplay = nullptr;
    QAction *mnuSettingsComms = nullptr;
    QAction *mnuAbout = nullptr;

    // In the order in which they stand on each other.
    std::unique_ptr<frmVDR> m_vdr;
    std::unique_ptr<frmCommSettings> m_commSettings;
    std::unique_ptr<frmDisplaySettings> m_displaySettings;
    std::unique_ptr<frmSplash> m_splash;
    std::unique_ptr<PanelMediation> m_mediation;
    std::unique_ptr<RoundRobin> m_roundRobin;
    std::unique_ptr<PollLoop> m_pollLoop;
    std::unique_ptr<SettingsLines> m_settingsStream;
    std::unique_ptr<SettingsFiles> m_settingsFiles;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<PlaybackEngine> m_playback;
};

} // namespace veldron
