// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"
#include "common/Hertz.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"

#include <QtGlobal>

namespace veldron {

class LastSession;
class PollTimer;
class Recorder;
class StatusPanels;
struct SessionState;
enum class DataChangeCode : qint32;
enum class MonitorChangeCode : qint32;
enum class ReceiverChangeCode : qint32;

/// Stands between the panels, the chart and the unit: what the user did is written to the unit,
/// read back, and shown as the unit reports it. Writes into panels raise no event, so nothing
/// loops.
///
/// A handler's code is compared for equality; other values do nothing.
///
/// The order in a handler is always the same: write, read back, panel, chart. Nothing waits for the
/// user in between, and the event loop doesn't run.
class PanelMediation : public SettingsHost {
public:
    /// What it works on besides the holders of the settings; all of it outlives the mediation.
    struct Dependencies {
        PollTimer &pollTimer;
        StatusPanels &statusBar;
        Recorder &recorder;
        LastSession &lastSession;
        const SessionState &session;
        Clock &clock;
    };
    PanelMediation(const SettingHolders &holders, const Dependencies &dependencies)
        : m_holders(holders), m_dependencies(dependencies) {}

    /// What the user did at the receiver panel: the value goes to the unit and is read back into
    /// the panel. Up to a second for each exchange; an unanswered one leaves the setting's failure
    /// value in the panel.
    void ctlFrequency1_Changed(ReceiverChangeCode What);
    /// The same for the data panel, with the scale of the levels for the chart.
    void ctlDataMode1_Changed(DataChangeCode What);
    /// The same for the monitor panel, with the frequency scale for the chart: written once all of
    /// it has been read, or not at all.
    void ctlMonitorMode1_Changed(MonitorChangeCode What);
    /// The user chose the chart's marker frequency: the unit's marker in Channel mode, otherwise
    /// its centre. Reads everything back.
    void ctlChartSpectrum1_Changed();
    /// Makes every panel and the chart show the unit's present state, starts the poll timer at the
    /// full poll period, and notes the settings in a running recording.
    void ReadBackSettings() override;
    /// Copies the panels and the display settings into the chart; the frequencies only while they
    /// are known, so that a silent unit empties no history.
    void UpdateChartSettings() override;
    /// Of the poll timer; 0 or less holds its ticks off.
    void setPollInterval(qint32 milliseconds) override;

private:
    // What the codes do that need more than a write and a read. Those named change, confirm and
    // reset write to the unit first; those named read and show only take over what it has.
    void changeFrequency();
    void changeCentreFromReceiver();
    void changeReceiver();
    void confirmAmp();
    void confirmDataMode();
    void readDataModeBack();
    /// Makes the unit begin its held maximum anew.
    void resetLevels();
    void changeMonitorMode();
    void changeCentre();
    void changeSpan();
    void changeChannels();
    /// Channel data and marker, into panels and chart.
    void readChannelsIn();
    void showCentre(Hertz centre);
    /// Channel data alone, into the monitor panel.
    void showChannels();
    /// Those of the monitor mode that the panel shows, into the panels; the chart follows later.
    void readBackFrequencies();
    /// A property of the unit, read to be written into a panel: one exchange at most, whose failure
    /// LastSession is told of.
    template <typename Value>
    [[nodiscard]] Value read(Value (frmVDR::*property)());
    void showLinkStatus();
    [[nodiscard]] bool isChannelMode() const;
    /// True while every value that the chart's frequency scale is made of comes from a read that
    /// succeeded, or from a file in playback.
    [[nodiscard]] bool isScaleKnown() const;
    /// Marks the receive frequency \a frequency on the chart where the scale is known; otherwise
    /// this is caught up with the next scale.
    void markOnChart(Hertz frequency);
    /// The scale of a chart whose frequencies are known, from the monitor panel.
    void showScaleOfMonitor();

    SettingHolders m_holders;
    Dependencies m_dependencies;
    /// The chart's receive frequency was left alone because the scale wasn't known.
    bool m_markIsDue = false;
};

} // namespace veldron
