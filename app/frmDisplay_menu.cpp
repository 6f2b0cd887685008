// SPDX-License-Identifier: MIT
// The settings menu, About, the manual, and the hidden trigger of a single scan.
#include "app/Manual.h"
#include "app/StatusPanels.h"
#include "app/UserDialogs.h"
#include "app/frmAbout.h"
#include "app/frmDisplay_parts.h"
#include "chart/ctlChartSpectrum.h"
#include "common/Numbers.h"

#include <QCoreApplication>

namespace veldron {

void frmDisplay::onMnuSettingsDisplay() {
    frmDisplaySettings &display = m_parts->displaySettings;
    const bool polled = m_pollTimer.isEnabled();
    m_pollTimer.setEnabled(false);
    if (!showModally(display)) {
        return;
    }
    display.values().applyChangesTo(*ctlChartSpectrum1, display.Change());
    m_pollTimer.setEnabled(polled);
}

void frmDisplay::onMnuSettingsComms() {
    bool polled = m_pollTimer.isEnabled();
    m_pollTimer.setEnabled(false);
    if (!showModally(m_parts->commSettings)) {
        return;
    }
    showLinkStatus();
    const CommChanges changed = m_parts->commSettings.Change();
    if (changed.testFlag(CommChange::SerialPort) && m_parts->vdr.Connected()) {
        m_parts->mediation.ReadBackSettings();
        polled = m_pollTimer.isEnabled(); // reading back has started it
    }
    // Behind the read-back, which has set the timer to the full period.
    if (changed.testFlag(CommChange::Poll)) {
        applyPollRate();
    }
    m_pollTimer.setEnabled(polled);
}

void frmDisplay::applyPollRate() {
    const auto period = Numbers::roundTo<qint16>(m_parts->commSettings.Poll());
    m_parts->pollLoop.setPollPeriod(period);
    ctlChartSpectrum1->setPoll(period);
    m_pollTimer.setInterval(PollLoop::tickInterval(period));
}

void frmDisplay::onMnuAbout() {
    AboutFacts facts;
    facts.title = windowTitle();
    facts.version = m_dependencies.version;
    facts.programFile = QCoreApplication::applicationFilePath();
    facts.Connected = m_parts->vdr.Connected();
    facts.Status = m_parts->vdr.Status();
    facts.Version = m_parts->vdr.Version();
    frmAbout about(m_guard, facts, this);
    about.exec();
}

void frmDisplay::onHelp() {
    const QString refusal = Manual::show(m_dependencies.manual);
    if (!refusal.isEmpty()) {
        m_dependencies.dialogs.showMessage(QStringLiteral("VELDRON Manual"), refusal);
    }
}

void frmDisplay::onCommand1() {
    if (m_parts->vdr.Connected()) {
        m_parts->scans.TakeScan();
    }
}

void frmDisplay::showLinkStatus() {
    StatusBar1->setStatusText(m_parts->vdr.Status());
}

} // namespace veldron
