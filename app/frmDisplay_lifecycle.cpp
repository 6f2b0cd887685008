// SPDX-License-Identifier: MIT
// The form's way in and its way out.
#include "app/frmDisplay.h"

#include "app/FormLayout.h"
#include "app/StatusPanels.h"
#include "app/frmSplash.h"
#include "chart/ctlChartSpectrum.h"
#include "history/ctlPlayback.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

namespace veldron {

void frmDisplay::load() {
    m_guard.run([this] { start(); });
}

void frmDisplay::start() {
    showSplash();
    if (m_unloaded) {
        return; // the system asked for the end while the splash came up
    }
    makeParts();
    InitialiseSettings();
    Picture2->setVisible(false);
    m_pointer.setShape(CursorShape::Default);
    connectFoundUnit();
    if (m_unloaded) {
        return; // the system asked for the end while the user was told of a port in use
    }
    if (m_vdr->Connected()) {
        m_settingsFiles->LoadDefaultSettings();
        ReadBackSettings();
        showLinkStatus();
    }
    m_settingsStand = true;
    StatusBar1->addPanels();
    m_splash->hide();
    m_splash.reset();
    showForm();
}

/// The one turn of the event loop before the start is done, so that the splash is painted.
void frmDisplay::showSplash() {
    m_splash = std::make_unique<frmSplash>(m_world.version, this);
    m_splash->show();
    m_pointer.setShape(CursorShape::Hourglass);
    m_splash->awaitPaint();
}

void frmDisplay::makeParts() {
    m_vdr =
        std::make_unique<frmVDR>(m_world.control, m_world.clock, static_cast<LinkHost &>(*this));
    m_commSettings = std::make_unique<frmCommSettings>(*m_vdr, m_guard, this);
    m_displaySettings = std::make_unique<frmDisplaySettings>(this);
    const SettingHolders all = instruments();
    m_mediation =
        std::make_unique<PanelMediation>(all, static_cast<MediationHost &>(*this), m_world.clock);
    m_roundRobin = std::make_unique<RoundRobin>(all, static_cast<SettingsHost &>(*this));
    m_pollLoop = std::make_unique<PollLoop>(static_cast<PollHost &>(*this), *m_vdr, m_world.clock);
    m_settingsStream = std::make_unique<SettingsLines>(
        all, m_session, static_cast<SettingsHost &>(*this), m_world.clock, m_world.texts);
    m_settingsFiles =
        std::make_unique<SettingsFiles>(*m_settingsStream, m_world.dialogs, m_world.programFolder);
    m_recorder = std::make_unique<Recorder>(
        Recorder::Dependencies{m_session, *m_settingsStream, *this, m_world.dialogs, m_world.clock,
                               m_world.texts, m_world.programFolder});
    m_playback = std::make_unique<PlaybackEngine>(
        PlaybackEngine::Dependencies{all, m_session, *m_settingsStream, *this, m_world.dialogs,
                                     m_world.texts, m_world.programFolder});
    wireControls();
    wirePanels();
}

void frmDisplay::wireControls() {
    const auto guarded = [this](auto member) {
        return [this, member] {
            m_guard.run([this, member] { (this->*member)(); });
        };
    };
    connect(Timer1, &QTimer::timeout, this,
            [this] { m_guard.run([this] { m_pollLoop->tick(); }); });
    connect(Command1, &QPushButton::clicked, this, guarded(&frmDisplay::onCommand1));
    connect(mnuFileLoadSettings, &QAction::triggered, this,
            [this] { m_guard.run([this] { m_settingsFiles->mnuFileLoadSettings(); }); });
    connect(mnuFileSaveSettings, &QAction::triggered, this,
            [this] { m_guard.run([this] { m_settingsFiles->mnuFileSaveSettings(); }); });
    connect(mnuFileRecord, &QAction::triggered, this,
            [this] { m_guard.run([this] { m_recorder->mnuFileRecord(); }); });
    connect(mnuFilePlayback, &QAction::triggered, this,
            [this] { m_guard.run([this] { m_playback->mnuFilePlayback(); }); });
    connect(mnuFileExit, &QAction::triggered, this, &QWidget::close);
    connect(mnuSettingsDisplay, &QAction::triggered, this,
            guarded(&frmDisplay::onMnuSettingsDisplay));
    connect(mnuSettingsComms, &QAction::triggered, this, guarded(&frmDisplay::onMnuSettingsComms));
    connect(mnuAbout, &QAction::triggered, this, guarded(&frmDisplay::onMnuAbout));
    connect(ctlPlayback1, &ctlPlayback::Step, this, [this](qint16 Direction) {
        m_guard.run([this, Direction] { m_playback->Step(Direction); });
    });
    connect(ctlPlayback1, &ctlPlayback::Quit, this,
            [this] { m_guard.run([this] { m_playback->Quit(); }); });
}

void frmDisplay::wirePanels() {
    connect(ctlFrequency1, &ctlFrequency::Changed, this, [this](ReceiverChangeCode What) {
        m_guard.run([this, What] { m_mediation->ctlFrequency1_Changed(What); });
    });
    connect(ctlMonitorMode1, &ctlMonitorMode::Changed, this, [this](MonitorChangeCode What) {
        m_guard.run([this, What] { m_mediation->ctlMonitorMode1_Changed(What); });
    });
    connect(ctlDataMode1, &ctlDataMode::Changed, this, [this](DataChangeCode What) {
        m_guard.run([this, What] { m_mediation->ctlDataMode1_Changed(What); });
    });
    connect(ctlChartSpectrum1, &ctlChartSpectrum::Changed, this,
            [this] { m_guard.run([this] { m_mediation->ctlChartSpectrum1_Changed(); }); });
}

void frmDisplay::InitialiseSettings() {
    showStatus(QStringLiteral("Finding serial ports"));
    m_commSettings->fillComPorts(m_vdr->GetCommPorts());
    // Ends whatever state the search has left: no port, no link.
    m_commSettings->selectComPort(0);
    showStatus(QStringLiteral("No serial port selected"));
    m_commSettings->setPoll(1000);
    m_pollLoop->setPollPeriod(static_cast<qint16>(m_commSettings->Poll()));
    setPollInterval(PollLoop::tickInterval(m_pollLoop->PollPeriod()));
    m_displaySettings->setUpdate(1);
    m_displaySettings->setPersistence(5);
    m_displaySettings->setPaletteIndex(3);
    m_displaySettings->setMarkerEnable(true);
    ctlChartSpectrum1->setPalette(m_displaySettings->PaletteIndex());
    ctlChartSpectrum1->setTimespan(m_displaySettings->Persistence());
    ctlChartSpectrum1->setUpdate(m_displaySettings->Update());
    ctlChartSpectrum1->setMarkerEn(m_displaySettings->MarkerEnable());
}

/// A port that was free at the search and can't be opened now stops nothing: the start goes on as
/// if no unit had been found.
void frmDisplay::connectFoundUnit() {
    if (m_vdr->ComDefault() <= 0) {
        return;
    }
    try {
        m_commSettings->selectComPort(m_vdr->ComDefault());
    } catch (const UntrappedError &) {
        m_commSettings->selectComPort(0);
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

bool frmDisplay::queryUnload() {
    if (!m_session.Recording) {
        return true;
    }
    if (m_asksOnClose &&
        !m_world.dialogs.askOkOrCancel(
            QStringLiteral("Exit VELDRON?"),
            QStringLiteral(
                "You are still recording.\r\n Do you want to stop recording and exit?"))) {
        return false;
    }
    m_recorder->closeStream();
    return true;
}

void frmDisplay::unload() {
    if (m_unloaded) {
        return;
    }
    m_unloaded = true;
    stopTimers();
    if (m_settingsFiles) {
        if (m_settingsStand) {
            m_settingsFiles->SaveDefaultSettings();
        }
        m_playback->closeStream();
        m_vdr->unload();
        m_commSettings->close();
        m_displaySettings->close();
    }
    m_pointer.setShape(CursorShape::Default);
}

void frmDisplay::closeEvent(QCloseEvent *event) {
    if (!m_unloaded && !queryUnload()) {
        event->ignore();
        return;
    }
    unload();
    event->accept();
}

void frmDisplay::expectSessionEnd() {
    m_asksOnClose = false;
    // The system doesn't tell when the user has called the end of the session off.
    m_sessionEnd->start();
}

void frmDisplay::endWithoutQuestion() {
    m_asksOnClose = false;
    if (!m_unloaded && queryUnload()) {
        unload();
    }
    QCoreApplication::exit(m_failed ? 1 : 0);
}

} // namespace veldron
