// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

#include "app/PollTimer.h"
#include "chart/ScreenCursor.h"
#include "common/ErrorGuard.h"
#include "history/HistoryHost.h"
#include "settings/SessionState.h"

#include <QTimer>

#include <memory>

class QAction;
class QDialog;
class QMenu;
class QPushButton;
class QScrollArea;

namespace veldron {

class Clock;
class DateTimeText;
class SerialControl;
class StatusPanels;
class UserDialogs;
class ctlChartSpectrum;
class ctlDataMode;
class ctlFrequency;
class ctlMonitorMode;
class ctlPlayback;
class frmSplash;

/// The main window: menus, strips and layout, and the program's life from start to end.
///
/// It owns every other object. What these do with each other they do without the window; it only
/// makes them, in order, and connects them. All of it runs on one thread.
class frmDisplay : public QMainWindow, private HistoryHost {
    Q_OBJECT

public:
    /// What the form needs from outside; all of it outlives the form.
    struct Dependencies {
        SerialControl &control;
        Clock &clock;
        UserDialogs &dialogs;
        const DateTimeText &texts;
        QString programFolder;
        /// Of the program, as "1.0.0".
        QString version;
        /// Path of the manual, empty if there is none.
        QString manual{};
    };
    /// Makes menus, strips and chart. They are shown, and connected with the unit, by load().
    explicit frmDisplay(const Dependencies &dependencies);
    ~frmDisplay() override;

    /// The whole start: splash, port search, defaults, first connection, settings of the last run,
    /// and the form on the screen. Takes up to a second for each free port without the unit. To be
    /// called once, and followed by the event loop unless hasEnded().
    void load();
    /// Ends in good order without a question, as when the system closes down. Returns when the
    /// settings are saved and the port is closed.
    void endWithoutQuestion();
    /// The session manager closes the program: no question is asked at the close that follows
    /// within a minute. A session that stays is asked again.
    void expectSessionEnd();
    /// The same when the display is gone and the toolkit is leaving the process: nothing on the
    /// screen is touched.
    void endWithoutDisplay();
    /// Shuts down, tells the user and ends the event loop with 1. Does nothing once the program has
    /// ended: a routine that was still running then may meet closed files and a closed port, and
    /// its errors are of no interest any more.
    void endWithError(const UntrappedError &error);
    /// True after endWithError; the process then exits with 1.
    [[nodiscard]] bool hasFailed() const { return m_life == LifeState::Failed; }
    /// True once the program is being shut down or has been, for whichever reason.
    [[nodiscard]] bool hasEnded() const {
        return m_life != LifeState::Starting && m_life != LifeState::Running;
    }
    /// Takes what slots throw to endWithError.
    [[nodiscard]] const ErrorGuard &guard() const { return m_guard; }

    /// The two states of the history; never both at once.
    [[nodiscard]] bool Recording() const { return m_session.Recording; }
    [[nodiscard]] bool InPlayback() const { return m_session.InPlayback; }

protected:
    /// Asks first while a recording runs; a close that is not refused shuts down at once, before
    /// the event returns.
    void closeEvent(QCloseEvent *event) override;
    /// Sets the ordinary cursor when the pointer moves over anything but the chart, and lays the
    /// inside out when it changes its size.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// Where the program is between its start and its end. It only ever moves down this list.
    enum class LifeState {
        Starting, ///< the settings of the last run aren't restored yet: the end leaves them alone
        Running,
        Ending, ///< inside shutDown
        Ended,  ///< in good order; the event loop is on its way out
        Failed, ///< by an error, of which the user is told now or has been
    };
    /// Why the program ends: somebody wants it to, the display is gone, or an error that nobody may
    /// swallow.
    enum class EndReason { Wanted, DisplayLost, Error };
    /// Everything that isn't a widget of this window.
    struct Parts;

    // Building.
    void makeMenus();
    void makeStrips();
    void makePanels();
    void makeTransport();
    void wireMenus();
    void wirePanels();
    QAction *addEntry(QMenu *menu, const char *name, const QString &text);
    /// Places strips, chart and status bar within m_inside, after each change of its size.
    void layOut();

    // Start and end.
    /// What load() does, under the guard.
    void start();
    /// Returns when the splash is painted or closed, or when half a second has passed.
    void showSplash();
    /// Start values of the display settings and of the poll rate, before any settings file is read.
    void InitialiseSettings();
    /// Opens the port that the search found the unit on. A failure leaves the link down and stops
    /// nothing.
    void connectFoundUnit();
    /// Shows the form at a size that suits the screen, with the focus where keys do nothing.
    void showForm();
    /// Asks the user while a recording runs, otherwise true. False: the program goes on.
    [[nodiscard]] bool mayEnd();
    /// The one way out of the program, taken once: later calls do nothing. What is closed in which
    /// order, and why, stands in the source.
    void shutDown(EndReason reason);
    /// All timers of the form and of everything in it.
    void stopTimers();
    void closeWindows();
    /// Shows \a dialog and returns when it has been closed. False when the program was ended
    /// meanwhile: the caller then leaves everything alone.
    [[nodiscard]] bool showModally(QDialog &dialog);

    // Menus.
    void onMnuSettingsDisplay();
    void onMnuSettingsComms();
    void onMnuAbout();
    void onHelp();
    /// The dialog's poll rate becomes the period of the poll grid, the interval of the poll timer
    /// and the chart's patience with a silent link.
    void applyPollRate();
    /// One poll at once, by a button that is never shown.
    void onCommand1();
    void showLinkStatus();

    // HistoryHost.
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

    Dependencies m_dependencies;
    ErrorGuard m_guard;
    LifeState m_life = LifeState::Starting;
    ScreenCursor m_cursor;
    SessionState m_session;
    PollTimer m_pollTimer{m_guard, this};
    /// Runs while a close is taken for the end of the desktop's session.
    QTimer m_sessionEnd{this};

    /// Everything below the menus, status bar included; layOut() places it.
    QWidget *m_inside = nullptr;
    /// Scrolls Picture1 sideways where the window is too narrow for it.
    QScrollArea *m_strip = nullptr;
    QWidget *Picture1 = nullptr;
    QWidget *Picture2 = nullptr;
    StatusPanels *StatusBar1 = nullptr;
    QPushButton *Command1 = nullptr;
    ctlFrequency *ctlFrequency1 = nullptr;
    ctlMonitorMode *ctlMonitorMode1 = nullptr;
    ctlDataMode *ctlDataMode1 = nullptr;
    ctlPlayback *ctlPlayback1 = nullptr;
    ctlChartSpectrum *ctlChartSpectrum1 = nullptr;
    /// Menu entries that are wired, or switched by the history.
    QAction *mnuFileLoadSettings = nullptr;
    QAction *mnuFileSaveSettings = nullptr;
    QAction *mnuFileRecord = nullptr;
    QAction *mnuFilePlayback = nullptr;
    QAction *mnuFileExit = nullptr;
    QAction *mnuSettingsDisplay = nullptr;
    QAction *mnuSettingsComms = nullptr;
    QAction *mnuAbout = nullptr;

    std::unique_ptr<frmSplash> m_splash;
    /// Made by load() behind the splash, because making them sets up the serial line.
    std::unique_ptr<Parts> m_parts;
};

} // namespace veldron
