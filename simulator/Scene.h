// SPDX-License-Identifier: MIT
#pragma once

#include "common/LevelScan.h"
#include "simulator/SceneSignal.h"
#include "simulator/UnitSettings.h"

#include <vector>

namespace veldron {

/// The receiver settings that a scan is taken with.
struct ScanWay {
    double bandwidthHz = 32e3;
    /// Reference level of the amplifier, 0 to -30 dB.
    int amplitude = -30;
    bool attenuator = false;
};

/// The signals that the unit receives, over absolute frequency and time: noise and transmitters.
///
/// Levels are raw bytes, dB less 132. The floor follows the resolution bandwidth (10 log of it)
/// and rises as the amplifier's gain falls; no level is more than 6 dB above the amplifier's
/// reference level. The noise is the mean of kLooks exponentially distributed powers, in decibels.
///
/// The same seed, plan, way, time and turn give the same scan.
class Scene {
public:
    /// Independent looks at the noise that each sample averages.
    static constexpr int kLooks = 12;
    static constexpr int kLowestLevel = 36;

    explicit Scene(quint64 seed);

    /// Lets levels be any byte: there is no lowest level, and one sample in sixteen is random.
    /// Otherwise no level is below kLowestLevel, so that none is a blank, CR or LF.
    void setAnyByte(bool on) { m_anyByte = on; }

    /// One scan at \a seconds. Another \a turn gives other noise at the same moment.
    [[nodiscard]] LevelScan scan(const ScanPlan &plan, const ScanWay &way, double seconds,
                                 quint64 turn) const;
    /// Mean raw level of the noise alone, before it is turned into decibels.
    [[nodiscard]] static double floorLevel(const ScanWay &way);
    /// The highest raw level that the amplifier passes.
    [[nodiscard]] static double ceilingLevel(const ScanWay &way);
    /// All transmitters, in ascending frequency.
    [[nodiscard]] const std::vector<SceneSignal> &signals() const { return m_signals; }

private:
    void addSignals(const ScanPlan &plan, const ScanWay &way, double seconds,
                    std::vector<double> &powers) const;
    /// From powers to raw levels, with noise on both floor and signals.
    [[nodiscard]] LevelScan detect(const std::vector<double> &powers, const ScanWay &way,
                                   quint64 key) const;

    quint64 m_seed;
    std::vector<SceneSignal> m_signals;
    /// Of all signals: how far outside of a plan one may lie and still reach into it.
    double m_farthestReachHz = 0.0;
    bool m_anyByte = false;
};

} // namespace veldron
