// SPDX-License-Identifier: MIT
#include "simulator/UnitSettings.h"

#include "common/Numbers.h"
#include "simulator/UnitReceivers.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace veldron {

namespace {

constexpr std::array<double, 4> kBandwidthsHz = {4e3, 32e3, 64e3, 128e3};

template <typename T>
bool isWithin(T value, T low, T high) {
    return value >= low && value <= high;
}

/// Takes \a value into \a setting if it lies within the range.
template <typename T>
bool take(T &setting, T value, T low, T high) {
    if (!isWithin(value, low, high)) {
        return false;
    }
    setting = value;
    return true;
}

} // namespace

double UnitSettings::bandwidthHz() const {
    return kBandwidthsHz.at(static_cast<std::size_t>(m_bandwidth - 1));
}

bool UnitSettings::setMonitorMode(int mode) {
    const int before = m_monitorMode;
    if (!take(m_monitorMode, mode, int{Spectrum}, int{Channel})) {
        return false;
    }
    // Behind the mode, which decides how wide a span may be.
    m_spanHz = std::min(m_spanHz, widestSpanHz());
    if (mode == Channel) {
        putMarkerOnChannel();
    } else if (before == Channel) {
        m_markerHz = m_centreHz;
    }
    return true;
}

bool UnitSettings::setCentreHz(qint64 hertz) {
    if (!take(m_centreHz, hertz, kLowestHz, kHighestHz)) {
        return false;
    }
    if (m_monitorMode != Channel) {
        m_markerHz = hertz;
    }
    return true;
}

bool UnitSettings::setSpanHz(qint64 hertz) {
    if (!take(m_spanHz, hertz, kNarrowestSpanHz, widestSpanHz())) {
        return false;
    }
    if (m_monitorMode != Channel && qAbs(m_markerHz - m_centreHz) > m_spanHz / 2) {
        m_markerHz = m_centreHz;
    }
    return true;
}

bool UnitSettings::setChannels(qint64 startHz, qint64 stepHz, qint64 endHz) {
    if (!isWithin(startHz, kLowestHz, kHighestHz) || !isWithin(endHz, startHz, kHighestHz) ||
        !isWithin(stepHz, kFinestChannelHz, kCoarsestChannelHz)) {
        return false;
    }
    m_channelStartHz = startHz;
    m_channelStepHz = stepHz;
    m_channelEndHz = endHz;
    if (m_monitorMode == Channel) {
        putMarkerOnChannel();
    }
    return true;
}

bool UnitSettings::setBandwidth(int code) {
    return take(m_bandwidth, code, 1, 4);
}

bool UnitSettings::setAmplitude(int decibels) {
    return decibels % 10 == 0 && take(m_amplitude, decibels, -30, 0);
}

bool UnitSettings::setDataMode(int mode) {
    return take(m_dataMode, mode, int{Normal}, int{Median});
}

bool UnitSettings::setAverageCount(int count) {
    return take(m_averageCount, count, 2, 31);
}

bool UnitSettings::setMedianCount(int count) {
    return take(m_medianCount, count, 2, 4);
}

bool UnitSettings::setReceiver(int code) {
    if (!take(m_receiver, code, UnitReceivers::kFirst, UnitReceivers::last())) {
        return false;
    }
    const UnitReceivers::Receiver &receiver = UnitReceivers::at(code);
    if (!UnitReceivers::hasMode(code, m_receiverMode)) {
        m_receiverMode = receiver.modes.empty() ? 0 : receiver.modes.front();
    }
    m_attenuator = m_attenuator && receiver.attenuator;
    return true;
}

bool UnitSettings::setReceiverMode(int mode) {
    if (!UnitReceivers::hasMode(m_receiver, mode)) {
        return false;
    }
    m_receiverMode = mode;
    return true;
}

bool UnitSettings::setReceiverStepHz(qint64 hertz) {
    return UnitReceivers::takesCommands(m_receiver) &&
           take(m_receiverStepHz, hertz, kFinestReceiverStepHz, kCoarsestReceiverStepHz);
}

bool UnitSettings::setAttenuator(bool on) {
    if (!UnitReceivers::at(m_receiver).attenuator) {
        return false;
    }
    m_attenuator = on;
    return true;
}

bool UnitSettings::moveMarker(bool up) {
    const bool channels = m_monitorMode == Channel;
    const qint64 low = channels ? m_channelStartHz : m_centreHz - m_spanHz / 2;
    const qint64 high = channels ? lastChannelHz() : m_centreHz + m_spanHz / 2;
    const qint64 moved = m_markerHz + (up ? markerStepHz() : -markerStepHz());
    return take(m_markerHz, moved, low, high);
}

qint64 UnitSettings::markerStepHz() const {
    return m_monitorMode == Channel ? m_channelStepHz : Numbers::divideHalfEven(m_spanHz, kSteps);
}

ScanPlan UnitSettings::plan() const {
    if (m_monitorMode == Channel) {
        const qint64 channels = (m_channelEndHz - m_channelStartHz) / m_channelStepHz + 1;
        return {static_cast<double>(m_channelStartHz), static_cast<double>(m_channelStepHz),
                static_cast<int>(std::min<qint64>(channels, kFullScan)), true};
    }
    const auto span = static_cast<double>(m_spanHz);
    return {static_cast<double>(m_centreHz) - span / 2.0, span / kSteps, kFullScan, false};
}

qint64 UnitSettings::widestSpanHz() const {
    return m_monitorMode == Spectrum ? kWidestSpectrumHz : kWidestStepSpanHz;
}

qint64 UnitSettings::lastChannelHz() const {
    return m_channelStartHz +
           (m_channelEndHz - m_channelStartHz) / m_channelStepHz * m_channelStepHz;
}

void UnitSettings::putMarkerOnChannel() {
    const qint64 within = std::clamp(m_markerHz, m_channelStartHz, lastChannelHz());
    m_markerHz =
        m_channelStartHz +
        Numbers::divideHalfEven(within - m_channelStartHz, m_channelStepHz) * m_channelStepHz;
}

} // namespace veldron
