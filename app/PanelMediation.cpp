// SPDX-License-Identifier: MIT
#include "app/PanelMediation.h"

#include "app/LastSession.h"
#include "app/PollTimer.h"
#include "app/StatusPanels.h"
#include "chart/ctlChartSpectrum.h"
#include "history/Recorder.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/ChartUpdate.h"
#include "settings/SessionState.h"
#include "settings/SettingsLine.h"
#include "settings/frmCommSettings.h"
#include "utilities/TimesOfDay.h"

#include <type_traits>

namespace veldron {

bool PanelMediation::isChannelMode() const {
    return m_holders.ctlMonitorMode1.MonitorMode() == MonitorModeCode::Channel;
}

/// Each value passes here on its way from the unit to a panel, so that a lost link is noticed
/// before a failure value is written.
template <typename Value>
Value PanelMediation::read(Value (frmVDR::*property)()) {
    const Value value = (m_holders.vdr.*property)();
    // The attenuator has no failure value: that of a receiver which has none may never be readable.
    constexpr bool showsFailure = !std::is_same_v<Value, bool>;
    m_dependencies.lastSession.noteRead(showsFailure && m_holders.vdr.readFailed());
    return value;
}

void PanelMediation::showLinkStatus() {
    m_dependencies.statusBar.setStatusText(m_holders.vdr.Status());
}

void PanelMediation::setPollInterval(qint32 milliseconds) {
    m_dependencies.pollTimer.setInterval(milliseconds);
}

/// A silent unit leaves failure values in the panels. As a scale they would wipe the history, so
/// the chart keeps the scale that it has until all values of a new one have been read. What
/// playback puts into the panels is no reading, and goes to the chart as it is.
bool PanelMediation::isScaleKnown() const {
    if (m_dependencies.session.InPlayback) {
        return true;
    }
    const ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    if (!isChannelMode()) {
        return panel.fSpan() != kFailedFrequency && panel.fCentre() != kFailedFrequency;
    }
    return panel.fStart() != kFailedFrequency && panel.fCentre() != kFailedFrequency &&
           panel.fEnd() != kFailedFrequency &&
           m_holders.ctlFrequency1.Frequency() != kFailedFrequency;
}

/// Marks \a frequency on the chart, if that and the scale are known.
void PanelMediation::markOnChart(Hertz frequency) {
    if (!isScaleKnown()) {
        m_markIsDue = true;
    } else if (frequency != kFailedFrequency) {
        m_holders.ctlChartSpectrum1.setRXFreq(frequency);
        m_markIsDue = false;
    }
}

// ---- receiver panel

void PanelMediation::ctlFrequency1_Changed(ReceiverChangeCode What) {
    frmVDR &unit = m_holders.vdr;
    ctlFrequency &panel = m_holders.ctlFrequency1;
    m_dependencies.lastSession.beginReads();
    switch (What) {
    case ReceiverChangeCode::Frequency:
        changeFrequency();
        break;
    case ReceiverChangeCode::RX:
        changeReceiver();
        break;
    case ReceiverChangeCode::Step:
        unit.setRXStep(panel.Step());
        panel.setStep(read(&frmVDR::RXStep));
        break;
    case ReceiverChangeCode::Mode:
        unit.setRXMode(panel.Mode());
        panel.setMode(read(&frmVDR::RXMode));
        break;
    case ReceiverChangeCode::Atten:
        unit.setRXAtten(panel.Atten());
        panel.setAtten(read(&frmVDR::RXAtten));
        break;
    default:
        break;
    }
    m_dependencies.lastSession.endReads();
    showLinkStatus();
}

void PanelMediation::changeFrequency() {
    if (!isChannelMode()) {
        changeCentreFromReceiver();
        return;
    }
    ctlFrequency &panel = m_holders.ctlFrequency1;
    m_holders.vdr.setVDRMarkerFreq(panel.Frequency());
    panel.setFrequency(read(&frmVDR::VDRMarkerFreq));
    markOnChart(panel.Frequency());
}

/// The panel's centre moves its start and end along, so it is written before they are read.
void PanelMediation::changeCentreFromReceiver() {
    ctlMonitorMode &monitor = m_holders.ctlMonitorMode1;
    ctlChartSpectrum &chart = m_holders.ctlChartSpectrum1;
    m_holders.vdr.setVDRCentre(m_holders.ctlFrequency1.Frequency());
    monitor.setfCentre(read(&frmVDR::VDRCentre));
    showCentre(monitor.fCentre());
    if (isScaleKnown()) {
        chart.setScanStart(monitor.fStart());
        chart.setScanStop(monitor.fEnd());
    }
    chart.DrawAxes();
}

void PanelMediation::showCentre(Hertz centre) {
    m_holders.ctlFrequency1.setFrequency(centre);
    markOnChart(centre);
}

/// Another receiver has settings of its own, all of which the unit needs a moment to take over.
void PanelMediation::changeReceiver() {
    m_holders.vdr.setRXType(m_holders.ctlFrequency1.RX());
    GeneralUtilities::WaitSeconds(m_dependencies.clock, kReceiverPause);
    ReadBackSettings();
}

// ---- data panel

void PanelMediation::ctlDataMode1_Changed(DataChangeCode What) {
    frmVDR &unit = m_holders.vdr;
    ctlDataMode &panel = m_holders.ctlDataMode1;
    m_dependencies.lastSession.beginReads();
    switch (What) {
    case DataChangeCode::RBW:
        unit.setVDRRBW(panel.RBW());
        panel.setRBW(read(&frmVDR::VDRRBW));
        break;
    case DataChangeCode::Amp:
        confirmAmp();
        break;
    case DataChangeCode::DataMode:
        confirmDataMode();
        break;
    case DataChangeCode::Samples:
        unit.setVDRSamples(panel.Samples());
        panel.setSamples(read(&frmVDR::VDRSamples));
        break;
    case DataChangeCode::Reset:
        resetLevels();
        break;
    default:
        break;
    }
    m_dependencies.lastSession.endReads();
    showLinkStatus();
}

/// The top of the scale is the amplitude that the unit has taken, not the one asked for.
void PanelMediation::confirmAmp() {
    ctlDataMode &panel = m_holders.ctlDataMode1;
    ctlChartSpectrum &chart = m_holders.ctlChartSpectrum1;
    m_holders.vdr.setVDRAmp(panel.Amp());
    panel.setAmp(read(&frmVDR::VDRAmp));
    chart.setdBStart(static_cast<qint16>(panel.Amp() - chart.dBSpan()));
    chart.DrawAxes();
}

void PanelMediation::confirmDataMode() {
    m_holders.vdr.setVDRDataMode(m_holders.ctlDataMode1.DataMode());
    readDataModeBack();
}

/// The unit restarts its maximum when Max is switched on, so Normal goes out first, also when
/// another mode was set.
void PanelMediation::resetLevels() {
    m_holders.vdr.setVDRDataMode(DataModeCode::Normal);
    m_holders.vdr.setVDRDataMode(DataModeCode::Max);
    readDataModeBack();
}

void PanelMediation::readDataModeBack() {
    ctlDataMode &panel = m_holders.ctlDataMode1;
    const DataModeCode reported = read(&frmVDR::VDRDataMode);
    DataModeCode mode = reported; // the panel turns a mode that it doesn't know into Normal
    // Mode before count: the mode decides which count the unit is asked for, and whether the panel
    // shows one.
    panel.setDataMode(mode);
    if (hasSamples(reported)) {
        panel.setSamples(read(&frmVDR::VDRSamples));
    }
}

// ---- monitor panel

void PanelMediation::ctlMonitorMode1_Changed(MonitorChangeCode What) {
    m_dependencies.lastSession.beginReads();
    switch (What) {
    case MonitorChangeCode::MonitorMode:
        changeMonitorMode();
        break;
    case MonitorChangeCode::Centre:
        changeCentre();
        break;
    case MonitorChangeCode::Step:
    case MonitorChangeCode::Span:
        changeSpan();
        break;
    case MonitorChangeCode::Channel:
        changeChannels();
        break;
    default:
        return;
    }
    // After the routines above, which have read the panel's values back from the unit: step, start
    // and end belong to one scale only now. The axes come last, because they show all three.
    if (isScaleKnown()) {
        showScaleOfMonitor();
    }
    m_holders.ctlChartSpectrum1.DrawAxes();
    m_dependencies.lastSession.endReads();
}

/// The handlers mark the receive frequency by themselves; only one that was left out is caught up.
void PanelMediation::showScaleOfMonitor() {
    if (m_markIsDue) {
        updateChartFrequencies(m_holders);
        m_markIsDue = false;
        return;
    }
    const ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    ctlChartSpectrum &chart = m_holders.ctlChartSpectrum1;
    chart.setDataResolution(panel.fStep());
    chart.setScanStart(panel.fStart());
    chart.setScanStop(panel.fEnd());
}

/// Which frequencies there are to read depends on the mode that the unit has really taken.
void PanelMediation::changeMonitorMode() {
    frmVDR &unit = m_holders.vdr;
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    unit.setVDRMonitorMode(panel.MonitorMode());
    panel.setMonitorMode(read(&frmVDR::VDRMonitorMode));
    if (isChannelMode()) {
        readChannelsIn();
        return;
    }
    // Span before centre, as the unit sets them: the centre puts start and end half a span aside.
    panel.setfSpan(Hertz::fromWhole(read(&frmVDR::VDRSpan)));
    panel.setfCentre(read(&frmVDR::VDRCentre));
    showCentre(panel.fCentre());
}

void PanelMediation::changeCentre() {
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    m_holders.vdr.setVDRCentre(panel.fCentre());
    panel.setfCentre(read(&frmVDR::VDRCentre));
    showCentre(panel.fCentre());
}

/// A new step goes out as the span that the panel has made of it.
void PanelMediation::changeSpan() {
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    m_holders.vdr.setVDRSpan(panel.fSpan().roundedTo32());
    panel.setfSpan(Hertz::fromWhole(read(&frmVDR::VDRSpan)));
}

/// In channel mode the panel's centre holds the channel step.
void PanelMediation::changeChannels() {
    const ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    m_holders.vdr.setVDRChData({panel.fStart(), panel.fCentre(), panel.fEnd()});
    readChannelsIn();
}

/// The marker is read twice, once for the panel and once for the chart: a user may be turning it at
/// the unit, and each of the two is to show the latest value.
void PanelMediation::readChannelsIn() {
    showChannels();
    m_holders.ctlFrequency1.setFrequency(read(&frmVDR::VDRMarkerFreq));
    markOnChart(read(&frmVDR::VDRMarkerFreq));
}

/// Span and step come last: the panel shows them only, and derives no other value from them in
/// channel mode.
void PanelMediation::showChannels() {
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    const ChannelData channels = read(&frmVDR::VDRChData);
    panel.setfStart(channels[0]);
    panel.setfCentre(channels[1]);
    panel.setfEnd(channels[2]);
    panel.setfSpan(channels[2] - channels[0]);
    panel.setfStep(channels[1]);
}

// ---- chart

void PanelMediation::ctlChartSpectrum1_Changed() {
    frmVDR &unit = m_holders.vdr;
    const Hertz marker = m_holders.ctlChartSpectrum1.MarkerFreq();
    if (isChannelMode()) {
        unit.setVDRMarkerFreq(marker);
        m_holders.ctlFrequency1.setFrequency(read(&frmVDR::VDRMarkerFreq));
    } else {
        unit.setVDRCentre(marker);
    }
    ReadBackSettings();
}

// ---- reading everything back

void PanelMediation::ReadBackSettings() {
    ctlFrequency &receiver = m_holders.ctlFrequency1;
    ctlDataMode &data = m_holders.ctlDataMode1;
    m_dependencies.lastSession.beginReads();
    // The receiver comes before its mode, because it decides which modes the panel lists; the data
    // mode before its count, because the unit keeps one count a mode; the monitor mode before the
    // frequencies, because it decides which of them there are.
    receiver.setRX(read(&frmVDR::RXType));
    receiver.setStep(read(&frmVDR::RXStep));
    receiver.setAtten(read(&frmVDR::RXAtten));
    receiver.setMode(read(&frmVDR::RXMode));
    data.setAmp(read(&frmVDR::VDRAmp));
    DataModeCode dataMode = read(&frmVDR::VDRDataMode);
    data.setDataMode(dataMode);
    data.setRBW(read(&frmVDR::VDRRBW));
    data.setSamples(read(&frmVDR::VDRSamples));
    m_holders.ctlMonitorMode1.setMonitorMode(read(&frmVDR::VDRMonitorMode));
    readBackFrequencies();
    // Behind all panels, so that the chart changes its scale once at most.
    UpdateChartSettings();
    // Behind the chart, which holds the marker frequency that is saved.
    m_dependencies.lastSession.endReads();
    // The full period, whatever interval the timer had: the first tick comes when all is shown.
    m_dependencies.pollTimer.start(m_holders.commSettings.Poll());
    // Last, because the block is written from the panels.
    m_dependencies.recorder.writeSettings();
}

void PanelMediation::readBackFrequencies() {
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    if (isChannelMode()) {
        showChannels();
        m_holders.ctlFrequency1.setFrequency(read(&frmVDR::VDRMarkerFreq));
        return;
    }
    panel.setfSpan(Hertz::fromWhole(read(&frmVDR::VDRSpan)));
    panel.setfCentre(read(&frmVDR::VDRCentre));
    m_holders.ctlFrequency1.setFrequency(panel.fCentre());
}

void PanelMediation::UpdateChartSettings() {
    m_markIsDue = !isScaleKnown();
    if (!m_markIsDue) {
        updateChartFrequencies(m_holders);
    }
    updateChartDisplay(m_holders);
}

} // namespace veldron
