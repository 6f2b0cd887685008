// SPDX-License-Identifier: MIT
// The settings menu, About, and the hidden trigger of a single scan.
#include "app/frmDisplay.h"

#include "app/frmAbout.h"
#include "chart/ctlChartSpectrum.h"
#include "common/Numbers.h"
#include "link/frmVDR.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"

#include <QCoreApplication>

namespace veldron {

namespace {

// What the dialogs' masks name.
constexpr qint32 kPortChanged = 1;
constexpr qint32 kWaterfallChanged = 4;
constexpr qint32 kPersistenceChanged = 8;
constexpr qint32 kPaletteChanged = 16;
constexpr qint32 kPollChanged = 32;
constexpr qint32 kMarkerChanged = 64;

} // namespace

void frmDisplay::onMnuSettingsDisplay() {
    const bool polled = m_Timer1Enabled;
    setPollTimerEnabled(false);
    m_displaySettings->exec();
    if (m_unloaded) {
        return;
    }
    const qint32 changed = m_displaySettings->Change();
    if ((changed & kPaletteChanged) != 0) {
        ctlChartSpectrum1->setPalette(m_displaySettings->PaletteIndex());
    }
    if ((changed & kPersistenceChanged) != 0) {
        ctlChartSpectrum1->setPeak(m_displaySettings->PersistenceEnable());
        ctlChartSpectrum1->setTimespan(m_displaySettings->Persistence());
    }
    if ((changed & kWaterfallChanged) != 0) {
        ctlChartSpectrum1->setDisplayType(displayTypeWith(m_displaySettings->WaterfallEnable()));
        ctlChartSpectrum1->setUpdate(m_displaySettings->Update());
    }
    if ((changed & kMarkerChanged) != 0) {
        ctlChartSpectrum1->setMarkerEn(m_displaySettings->MarkerEnable());
    }
    setPollTimerEnabled(polled);
}

void frmDisplay::onMnuSettingsComms() {
    bool polled = m_Timer1Enabled;
    setPollTimerEnabled(false);
    m_commSettings->exec();
    if (m_unloaded) {
        return;
    }
    showLinkStatus();
    const qint32 changed = m_commSettings->Change();
    const bool connected = m_vdr->Connected();
    if ((changed & kPortChanged) != 0 && connected) {
        ReadBackSettings();
        polled = m_Timer1Enabled; // reading back has started it
    }
    if ((changed & kPollChanged) != 0) {
        applyPollRate();
    }
    setPollTimerEnabled(polled);
}

void frmDisplay::applyPollRate() {
    const auto period = Numbers::roundTo<qint16>(m_commSettings->Poll());
    m_pollLoop->setPollPeriod(period);
    ctlChartSpectrum1->setPoll(period);
    setPollInterval(PollLoop::tickInterval(period));
}

void frmDisplay::onMnuAbout() {
    AboutFacts facts;
    facts.title = windowTitle();
    facts.version = m_world.version;
    facts.programFile = QCoreApplication::applicationFilePath();
    facts.Connected = m_vdr->Connected();
    facts.Status = m_vdr->Status();
    facts.Version = m_vdr->Version();
    frmAbout about(facts, this);
    about.exec();
}

void frmDisplay::onCommand1() {
    if (m_vdr->Connected()) {
        TakeScan();
    }
}

} // namespace veldron
