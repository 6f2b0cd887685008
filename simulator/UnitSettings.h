// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// Where the samples of a scan lie: \a count of them, the first at \a startHz.
struct ScanPlan {
    double startHz = 0.0;
    double stepHz = 0.0;
    int count = 0;
    /// The receiver is tuned to each point, so that signals between two points are missed.
    bool pointByPoint = false;
};

/// Everything that can be set at the unit and at the receiver behind it, in whole hertz.
///
/// Each setter takes the value, or refuses it: then it gives false and changes nothing. Opening or
/// closing the line changes no value.
class UnitSettings {
public:
    enum MonitorMode : int { Spectrum = 1, Step = 2, Channel = 3 };
    enum DataMode : int { Normal = 1, Average = 2, Maximum = 3, Median = 4 };

    static constexpr int kSteps = 320;
    static constexpr int kFullScan = kSteps + 1;
    static constexpr qint64 kLowestHz = 10'000;
    static constexpr qint64 kHighestHz = 3'500'000'000;
    static constexpr qint64 kNarrowestSpanHz = 10'000;
    /// In Spectrum mode the span is limited by the intermediate frequency; in Step mode the
    /// receiver is tuned to each point.
    static constexpr qint64 kWidestSpectrumHz = 10'000'000;
    static constexpr qint64 kWidestStepSpanHz = 32'000'000;
    static constexpr qint64 kFinestChannelHz = 10;
    static constexpr qint64 kCoarsestChannelHz = 10'000'000;
    static constexpr qint64 kFinestReceiverStepHz = 1;
    static constexpr qint64 kCoarsestReceiverStepHz = 10'000'000;

    [[nodiscard]] int monitorMode() const { return m_monitorMode; }
    [[nodiscard]] qint64 centreHz() const { return m_centreHz; }
    [[nodiscard]] qint64 spanHz() const { return m_spanHz; }
    [[nodiscard]] qint64 channelStartHz() const { return m_channelStartHz; }
    [[nodiscard]] qint64 channelStepHz() const { return m_channelStepHz; }
    [[nodiscard]] qint64 channelEndHz() const { return m_channelEndHz; }
    [[nodiscard]] qint64 markerHz() const { return m_markerHz; }
    /// 1 to 4 for 4, 32, 64 and 128 kHz.
    [[nodiscard]] int bandwidth() const { return m_bandwidth; }
    [[nodiscard]] double bandwidthHz() const;
    /// Reference level of the amplifier in dB: 0, -10, -20 or -30.
    [[nodiscard]] int amplitude() const { return m_amplitude; }
    [[nodiscard]] int dataMode() const { return m_dataMode; }
    [[nodiscard]] int averageCount() const { return m_averageCount; }
    [[nodiscard]] int medianCount() const { return m_medianCount; }
    [[nodiscard]] int receiver() const { return m_receiver; }
    /// 0 with a receiver that can't be commanded.
    [[nodiscard]] int receiverMode() const { return m_receiverMode; }
    [[nodiscard]] qint64 receiverStepHz() const { return m_receiverStepHz; }
    [[nodiscard]] bool attenuator() const { return m_attenuator; }

    /// Going into Channel mode puts the marker onto the nearest channel, leaving it onto the
    /// centre; a span too wide for the new mode becomes the widest that it has.
    bool setMonitorMode(int mode);
    /// Outside Channel mode the marker moves to the new centre.
    bool setCentreHz(qint64 hertz);
    bool setSpanHz(qint64 hertz);
    /// The end may equal the start, which makes one channel.
    bool setChannels(qint64 startHz, qint64 stepHz, qint64 endHz);
    bool setBandwidth(int code);
    bool setAmplitude(int decibels);
    bool setDataMode(int mode);
    /// From 2 to 31 scans.
    bool setAverageCount(int count);
    /// From 2 to 4 scans.
    bool setMedianCount(int count);
    /// A mode that the new receiver lacks becomes its default mode; an attenuator that it lacks is
    /// off.
    bool setReceiver(int code);
    /// These three are refused where the receiver lacks what they set.
    bool setReceiverMode(int mode);
    bool setReceiverStepHz(qint64 hertz);
    bool setAttenuator(bool on);
    /// One step of the marker; refused where it would leave what is scanned.
    bool moveMarker(bool up);

    /// Step of the marker: the channel step, or the span over 320, rounded to whole hertz.
    [[nodiscard]] qint64 markerStepHz() const;
    /// The samples of the next scan: 321 from edge to edge of the span, or one a channel, 321 at
    /// most.
    [[nodiscard]] ScanPlan plan() const;

private:
    [[nodiscard]] qint64 widestSpanHz() const;
    /// The highest channel, which may lie below the end.
    [[nodiscard]] qint64 lastChannelHz() const;
    void putMarkerOnChannel();

    // What the unit is switched on with.
    int m_monitorMode = Spectrum;
    qint64 m_centreHz = 100'000'000;
    qint64 m_spanHz = 10'000'000;
    qint64 m_channelStartHz = 144'000'000;
    qint64 m_channelStepHz = 25'000;
    qint64 m_channelEndHz = 146'000'000;
    qint64 m_markerHz = 100'000'000;
    int m_bandwidth = 2;
    int m_amplitude = -30;
    int m_dataMode = Normal;
    int m_averageCount = 8;
    int m_medianCount = 3;
    int m_receiver = 7;
    int m_receiverMode = 1;
    qint64 m_receiverStepHz = 100'000;
    bool m_attenuator = false;
};

} // namespace veldron
