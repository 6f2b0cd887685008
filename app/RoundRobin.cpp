// SPDX-License-Identifier: MIT
#include "app/RoundRobin.h"

#include "app/PanelMediation.h"
#include "chart/ctlChartSpectrum.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"

namespace veldron {

namespace {

constexpr qint16 kFrequencyStep = 10;

} // namespace

void RoundRobin::step() {
    ++m_ReadBackStep;
    if (m_ReadBackStep < kFrequencyStep) {
        followUnitIf(differs(m_ReadBackStep));
    } else if (m_ReadBackStep == kFrequencyStep) {
        checkFrequencies();
    } else {
        m_ReadBackStep = 0;
    }
}

/// Compares exactly. A read that failed gives a value that no panel shows, except for the
/// attenuator, where it looks like "off".
bool RoundRobin::differs(qint16 step) {
    frmVDR &unit = m_instruments.vdr;
    const ctlFrequency &receiver = m_instruments.ctlFrequency1;
    const ctlDataMode &data = m_instruments.ctlDataMode1;
    switch (step) {
    case 1:
        return unit.RXType() != receiver.RX();
    case 2:
        return unit.RXStep() != receiver.Step();
    case 3:
        return unit.RXAtten() != receiver.Atten();
    case 4:
        return unit.RXMode() != receiver.Mode();
    case 5:
        return unit.VDRAmp() != data.Amp();
    case 6:
        return unit.VDRDataMode() != data.DataMode();
    case 7:
        return unit.VDRRBW() != data.RBW();
    case 8:
        return unit.VDRSamples() != data.Samples();
    case 9:
        return unit.VDRMonitorMode() != m_instruments.ctlMonitorMode1.MonitorMode();
    default:
        return false;
    }
}

void RoundRobin::checkFrequencies() {
    if (m_instruments.ctlMonitorMode1.MonitorMode() == MonitorModeCode::Channel) {
        checkChannels();
    } else {
        checkSpanAndCentre();
    }
}

void RoundRobin::checkSpanAndCentre() {
    const ctlMonitorMode &panel = m_instruments.ctlMonitorMode1;
    followUnitIf(Hertz::fromWhole(m_instruments.vdr.VDRSpan()) != panel.fSpan());
    followUnitIf(m_instruments.vdr.VDRCentre() != panel.fCentre());
}

/// Each difference reads everything back at once, so one poll can do so several times; the values
/// read at the start go on being compared.
void RoundRobin::checkChannels() {
    const ctlMonitorMode &panel = m_instruments.ctlMonitorMode1;
    const ChannelData channels = m_instruments.vdr.VDRChData();
    followUnitIf(channels[0] != panel.fStart());
    followUnitIf(channels[1] != panel.fCentre());
    followUnitIf(channels[2] != panel.fEnd());
    followUnitIf(m_instruments.vdr.VDRMarkerFreq() != m_instruments.ctlChartSpectrum1.RXFreq());
}

void RoundRobin::followUnitIf(bool different) {
    if (different) {
        m_mediation.ReadBackSettings();
    }
}

} // namespace veldron
