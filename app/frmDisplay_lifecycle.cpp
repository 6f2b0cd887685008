// SPDX-License-Identifier: MIT
// The program's life: the way in, and the one way out.
#include "app/FormLayout.h"
#include "app/StatusPanels.h"
#include "app/UserDialogs.h"
#include "app/frmDisplay_parts.h"
#include "app/frmSplash.h"
#include "chart/ctlChartSpectrum.h"
#include "common/ReportText.h"
#include "panels/ctlFrequency.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QScreen>

namespace veldron {

void frmDisplay::load() {
    m_guard.run([this] { start(); });
}

void frmDisplay::start() {
    showSplash();
    if (hasEnded()) {
        return; // the system asked for the end while the splash came up
    }
    m_parts = std::make_unique<Parts>(*this);
    wireMenus();
    wirePanels();
    InitialiseSettings();
    Picture2->setVisible(false);
    m_cursor.setShape(CursorShape::Default);
    connectFoundUnit();
    if (hasEnded()) {
        return; // the system asked for the end while the user was told of a port in use
    }
    if (m_parts->vdr.Connected()) {
        m_parts->settingsFiles.LoadDefaultSettings();
        // Behind the file, so that the panels show what the unit has taken of it.
        m_parts->mediation.ReadBackSettings();
        showLinkStatus();
    }
    // From here on an end saves the settings; before, it would have saved start values over those
    // of the last run.
    m_life = LifeState::Running;
    StatusBar1->addPanels();
    m_splash->hide();
    m_splash.reset();
    showForm();
}

/// Runs the event loop once, the only time before the start is done, so that the splash is painted.
void frmDisplay::showSplash() {
    m_splash = std::make_unique<frmSplash>(m_dependencies.version, this);
    m_splash->show();
    m_cursor.setShape(CursorShape::Hourglass);
    m_splash->awaitPaint();
}

void frmDisplay::InitialiseSettings() {
    frmCommSettings &comms = m_parts->commSettings;
    frmDisplaySettings &display = m_parts->displaySettings;
    showStatus(QStringLiteral("Finding serial ports"));
    comms.fillComPorts(m_parts->vdr.GetCommPorts());
    // Ends whatever state the search has left: no port, no link.
    comms.selectComPort(0);
    showStatus(QStringLiteral("No serial port selected"));
    comms.setPoll(PollLoop::kPeriodAtStart);
    m_pollTimer.setInterval(PollLoop::tickInterval(PollLoop::kPeriodAtStart));
    display.setValues(DisplaySettings::atStart());
    display.values().applyTo(*ctlChartSpectrum1);
}

/// A port that was free at the search and can't be opened now stops nothing: the start goes on as
/// if no unit had been found.
void frmDisplay::connectFoundUnit() {
    if (m_parts->vdr.ComDefault() <= 0) {
        return;
    }
    try {
        m_parts->commSettings.selectComPort(m_parts->vdr.ComDefault());
    } catch (const UntrappedError &) {
        m_parts->commSettings.selectComPort(0);
    }
}

/// At a size that suits the screen, never cut off by it.
void frmDisplay::showForm() {
    resize(openingSize(screen()->availableSize(), minimumSizeHint()));
    layOut();
    show();
    ctlFrequency1->SetFocus();
}

// ---- the way out

/// False if the program was ended while \a dialog was up, by a signal or by an error: the handler
/// that showed it then leaves everything alone.
bool frmDisplay::showModally(QDialog &dialog) {
    dialog.exec();
    return !hasEnded();
}

/// The question that a running recording puts before the end.
bool frmDisplay::mayEnd() {
    if (hasEnded() || !m_session.Recording || m_sessionEnd.isActive()) {
        return true;
    }
    return m_dependencies.dialogs.askOkOrCancel(
        QStringLiteral("Exit VELDRON?"),
        QStringLiteral("You are still recording.\r\n Do you want to stop recording and exit?"));
}

/// The one way out, once: a second call, from under a box of the first or later, does nothing.
///
/// First the timers, so that no tick comes in between. Then the files of recording and playback,
/// because what was recorded is worth most and nothing below can hurt it any more. Then the
/// settings, which an error and an unfinished start leave as they are: the panels can't be trusted
/// then. Then the port, whose closing may take its time. The windows come last.
void frmDisplay::shutDown(EndReason reason) {
    if (hasEnded()) {
        return;
    }
    const bool savesSettings = m_life == LifeState::Running && reason != EndReason::Error;
    m_life = LifeState::Ending;
    stopTimers();
    if (m_parts) {
        m_parts->recorder.closeStream();
        m_parts->playback.closeStream();
        if (savesSettings) {
            m_parts->settingsFiles.SaveDefaultSettings();
            m_parts->lastSession.noteEnd();
        }
        m_parts->vdr.unload();
    }
    if (reason != EndReason::DisplayLost) {
        closeWindows();
    }
    m_life = reason == EndReason::Error ? LifeState::Failed : LifeState::Ended;
    if (reason == EndReason::Wanted) {
        // Not left to the toolkit, which ends the loop when the last window closes: a list or a
        // menu that the user opens right after the close counts as a window.
        QCoreApplication::exit(0);
    }
}

void frmDisplay::closeWindows() {
    m_splash.reset();
    if (m_parts) {
        m_parts->commSettings.close();
        m_parts->displaySettings.close();
    }
    m_cursor.setShape(CursorShape::Default);
}

void frmDisplay::stopTimers() {
    m_pollTimer.setEnabled(false);
    for (QTimer *timer : findChildren<QTimer *>()) {
        timer->stop();
    }
}

void frmDisplay::closeEvent(QCloseEvent *event) {
    m_guard.run([this, event] {
        if (!mayEnd()) {
            event->ignore();
            return;
        }
        shutDown(EndReason::Wanted);
        event->accept();
    });
}

void frmDisplay::expectSessionEnd() {
    // The system doesn't tell when the user has called the end of the session off.
    m_sessionEnd.start();
}

void frmDisplay::endWithoutQuestion() {
    shutDown(EndReason::Wanted);
    QCoreApplication::exit(hasFailed() ? 1 : 0);
}

void frmDisplay::endWithoutDisplay() {
    shutDown(EndReason::DisplayLost);
}

void frmDisplay::endWithError(const UntrappedError &error) {
    if (hasEnded()) {
        return;
    }
    shutDown(EndReason::Error);
    writeReportLine(error.message().simplified());
    m_dependencies.dialogs.showError(
        error.message() +
        QStringLiteral("\n\nVELDRON can't go on after this error and has to end. The serial port "
                       "and any recording have been closed; what was recorded so far is kept."));
    QCoreApplication::exit(1);
}

} // namespace veldron
