// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"
#include "common/Hertz.h"
#include "settings/SettingHolders.h"

#include <QtGlobal>

namespace veldron {

enum class DataChangeCode : qint32;
enum class MonitorChangeCode : qint32;
enum class ReceiverChangeCode : qint32;

/// What the mediation asks of the form.
class MediationHost {
public:
    MediationHost() = default;
    MediationHost(const MediationHost &) = delete;
    MediationHost &operator=(const MediationHost &) = delete;
    virtual ~MediationHost() = default;

    /// Copies the link's Status to panel 1.
    virtual void showLinkStatus() = 0;
    /// Starts the poll timer, whatever state it was in, at \a milliseconds.
    virtual void startPollTimer(int milliseconds) = 0;
    /// A settings block into the history file, where a recording runs.
    virtual void recordSettings() = 0;
};

/// Stands between the panels, the chart and the unit: what the user did is written to the unit,
/// read back, and shown as the unit reports it. Writes into panels raise no event, so nothing
/// loops.
///
/// A handler's code is compared for equality; other values do nothing.
class PanelMediation {
public:
    PanelMediation(const SettingHolders &instruments, MediationHost &host, Clock &clock);

    void ctlFrequency1_Changed(ReceiverChangeCode What);
    void ctlDataMode1_Changed(DataChangeCode What);
    void ctlMonitorMode1_Changed(MonitorChangeCode What);
    void ctlChartSpectrum1_Changed();
    /// Makes every panel and the chart show the unit's present state, starts the poll timer at the
    /// full poll period, and notes the settings in a running recording.
    void ReadBackSettings();
    /// Copies the panels and the display settings into the chart.
    void UpdateChartSettings();

private:
    void changeFrequency();
    void changeCentreFromReceiver();
    void changeReceiver();
    void confirmAmp();
    void confirmDataMode();
    void readDataModeBack();
    void resetLevels();
    void changeMonitorMode();
    void changeCentre();
    void changeSpan();
    void changeChannels();
    void readChannelsIn();
    void showCentre(Hertz centre);
    void showChannels();
    void readBackFrequencies();
    [[nodiscard]] bool isChannelMode() const;

    SettingHolders m_instruments;
    MediationHost &m_host;
    Clock &m_clock;
};

} // namespace veldron
