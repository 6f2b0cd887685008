// SPDX-License-Identifier: MIT
#include "app/RoundRobin.h"

#include "app/PanelMediation.h"
#include "chart/ctlChartSpectrum.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"

#include <array>

namespace veldron {

namespace {

/// True if the unit's value isn't what the panel shows. Compares exactly. A read that fails differs
/// from any panel that doesn't show its failure value; the attenuator's looks like "off". Receiver,
/// mode, bandwidth and monitor mode refuse that value, and the data mode shows Normal for it, so
/// these go on differing at each cycle in which they can't be read.
using Differs = bool (*)(const SettingHolders &);

/// The settings in the order in which they are checked, one at each poll.
constexpr std::array<Differs, 9> kChecks{
    [](const SettingHolders &at) { return at.vdr.RXType() != at.ctlFrequency1.RX(); },
    [](const SettingHolders &at) { return at.vdr.RXStep() != at.ctlFrequency1.Step(); },
    [](const SettingHolders &at) { return at.vdr.RXAtten() != at.ctlFrequency1.Atten(); },
    [](const SettingHolders &at) { return at.vdr.RXMode() != at.ctlFrequency1.Mode(); },
    [](const SettingHolders &at) { return at.vdr.VDRAmp() != at.ctlDataMode1.Amp(); },
    [](const SettingHolders &at) { return at.vdr.VDRDataMode() != at.ctlDataMode1.DataMode(); },
    [](const SettingHolders &at) { return at.vdr.VDRRBW() != at.ctlDataMode1.RBW(); },
    [](const SettingHolders &at) { return at.vdr.VDRSamples() != at.ctlDataMode1.Samples(); },
    [](const SettingHolders &at) {
        return at.vdr.VDRMonitorMode() != at.ctlMonitorMode1.MonitorMode();
    },
};

} // namespace

/// Behind the checks of the table comes that of the frequencies, and one poll without a check.
void RoundRobin::step() {
    if (m_ReadBackStep < kChecks.size()) {
        const Differs differs = kChecks.at(m_ReadBackStep);
        ++m_ReadBackStep;
        followUnitIf(differs(m_holders));
    } else if (m_ReadBackStep == kChecks.size()) {
        ++m_ReadBackStep;
        checkFrequencies();
    } else {
        m_ReadBackStep = 0;
    }
}

void RoundRobin::checkFrequencies() {
    if (m_holders.ctlMonitorMode1.MonitorMode() == MonitorModeCode::Channel) {
        checkChannels();
    } else {
        checkSpanAndCentre();
    }
}

void RoundRobin::checkSpanAndCentre() {
    const ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    followUnitIf(Hertz::fromWhole(m_holders.vdr.VDRSpan()) != panel.fSpan());
    followUnitIf(m_holders.vdr.VDRCentre() != panel.fCentre());
}

/// Each difference reads everything back at once, so one poll can do so several times; the values
/// read at the start go on being compared.
void RoundRobin::checkChannels() {
    const ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    const ChannelData channels = m_holders.vdr.VDRChData();
    followUnitIf(channels[0] != panel.fStart());
    followUnitIf(channels[1] != panel.fCentre());
    followUnitIf(channels[2] != panel.fEnd());
    followUnitIf(m_holders.vdr.VDRMarkerFreq() != shownMarker());
}

/// The chart's marker keeps its place while its reads fail, and the receiver panel shows the
/// failure. So a marker that can't be read is reported once, not at each cycle, and the first good
/// read is shown in the panel also when the marker is where it was.
Hertz RoundRobin::shownMarker() const {
    const Hertz inPanel = m_holders.ctlFrequency1.Frequency();
    return inPanel == kFailedFrequency ? inPanel : m_holders.ctlChartSpectrum1.RXFreq();
}

void RoundRobin::followUnitIf(bool different) {
    if (different) {
        m_mediation.ReadBackSettings();
    }
}

} // namespace veldron
