// SPDX-License-Identifier: MIT
// How the parts are made and connected.
#include "app/frmDisplay_parts.h"

#include "app/StatusPanels.h"
#include "app/UserDialogs.h"
#include "chart/ctlChartSpectrum.h"
#include "history/ctlPlayback.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"

#include <QAction>
#include <QPushButton>
#include <QShortcut>

namespace veldron {

frmDisplay::Parts::Parts(frmDisplay &form)
    : linkScreen(form.m_cursor, form.m_dependencies.dialogs),
      vdr(form.m_dependencies.control, form.m_dependencies.clock, linkScreen),
      commSettings(form.m_guard, vdr, &form),
      displaySettings(form.m_guard, &form), holders{vdr,
                                                    *form.ctlFrequency1,
                                                    *form.ctlMonitorMode1,
                                                    *form.ctlDataMode1,
                                                    *form.ctlChartSpectrum1,
                                                    displaySettings,
                                                    commSettings},
      mediation(holders, {form.m_pollTimer, *form.StatusBar1, recorder, lastSession, form.m_session,
                          form.m_dependencies.clock}),
      settingsLines(holders, form.m_session, mediation, form.m_dependencies.clock,
                    form.m_dependencies.texts),
      settingsFiles(settingsLines, form.m_dependencies.dialogs, form.m_dependencies.programFolder),
      lastSession(vdr, settingsLines, settingsFiles),
      recorder({form.m_session, settingsLines, form, form.m_dependencies.dialogs,
                form.m_dependencies.clock, form.m_dependencies.texts,
                form.m_dependencies.programFolder}),
      playback({holders, form.m_session, settingsLines, form, mediation, *form.ctlPlayback1,
                form.m_dependencies.dialogs, form.m_dependencies.texts,
                form.m_dependencies.programFolder}),
      roundRobin(holders, mediation),
      scans({vdr, *form.ctlChartSpectrum1, form.m_session, recorder, *form.StatusBar1}),
      pollLoop({vdr, scans, roundRobin, mediation, lastSession, *form.StatusBar1,
                form.m_dependencies.clock}) {}

void frmDisplay::wireMenus() {
    Parts &parts = *m_parts;
    connectGuarded(m_guard, &m_pollTimer, &PollTimer::ticked, this,
                   [&parts] { parts.pollLoop.tick(); });
    connectGuarded(m_guard, Command1, &QPushButton::clicked, this, &frmDisplay::onCommand1);
    connectGuarded(m_guard, mnuFileLoadSettings, &QAction::triggered, this,
                   [&parts] { parts.settingsFiles.mnuFileLoadSettings(); });
    connectGuarded(m_guard, mnuFileSaveSettings, &QAction::triggered, this,
                   [&parts] { parts.settingsFiles.mnuFileSaveSettings(); });
    connectGuarded(m_guard, mnuFileRecord, &QAction::triggered, this,
                   [&parts] { parts.recorder.mnuFileRecord(); });
    connectGuarded(m_guard, mnuFilePlayback, &QAction::triggered, this,
                   [&parts] { parts.playback.mnuFilePlayback(); });
    connectGuarded(m_guard, mnuFileExit, &QAction::triggered, this, &QWidget::close);
    connectGuarded(m_guard, mnuSettingsDisplay, &QAction::triggered, this,
                   &frmDisplay::onMnuSettingsDisplay);
    connectGuarded(m_guard, mnuSettingsComms, &QAction::triggered, this,
                   &frmDisplay::onMnuSettingsComms);
    connectGuarded(m_guard, mnuAbout, &QAction::triggered, this, &frmDisplay::onMnuAbout);
    connectGuarded(m_guard, new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
                   &frmDisplay::onHelp);
}

void frmDisplay::wirePanels() {
    Parts &parts = *m_parts;
    connectGuarded(
        m_guard, ctlFrequency1, &ctlFrequency::Changed, this,
        [&parts](ReceiverChangeCode What) { parts.mediation.ctlFrequency1_Changed(What); });
    connectGuarded(
        m_guard, ctlMonitorMode1, &ctlMonitorMode::Changed, this,
        [&parts](MonitorChangeCode What) { parts.mediation.ctlMonitorMode1_Changed(What); });
    connectGuarded(m_guard, ctlDataMode1, &ctlDataMode::Changed, this,
                   [&parts](DataChangeCode What) { parts.mediation.ctlDataMode1_Changed(What); });
    connectGuarded(m_guard, ctlChartSpectrum1, &ctlChartSpectrum::Changed, this,
                   [&parts] { parts.mediation.ctlChartSpectrum1_Changed(); });
    connectGuarded(m_guard, ctlPlayback1, &ctlPlayback::Step, this,
                   [&parts](qint16 Direction) { parts.playback.Step(Direction); });
    connectGuarded(m_guard, ctlPlayback1, &ctlPlayback::Quit, this,
                   [&parts] { parts.playback.Quit(); });
}

} // namespace veldron
