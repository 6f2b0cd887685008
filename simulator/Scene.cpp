// SPDX-License-Identifier: MIT
#include "simulator/Scene.h"

#include "common/Numbers.h"
#include "simulator/SceneBands.h"
#include "simulator/SceneRandom.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace veldron {

namespace {

/// Raw level of the noise in 4 kHz at the amplifier's highest gain.
constexpr double kFloorAt4kHz = 41.0;
constexpr double kFloorRisePerDb = 0.8;
constexpr double kHeadroomDb = 6.0;
constexpr double kAttenuatorDb = 20.0;
/// A bell is drawn out to this many of its half-widths, where it is at -80 dB.
constexpr double kBellReach = 4.3;
/// A carrier varies less than noise: as if so many looks were averaged.
constexpr int kSignalLooks = 16;

double toPower(double level) {
    return std::pow(10.0, level / 10.0);
}
double toLevel(double power) {
    return 10.0 * std::log10(power);
}

/// The unit's filter is a bell whose -3 dB width is the resolution bandwidth; its half-width to
/// 1/e.
double filterBellHz(double bandwidthHz) {
    return bandwidthHz / (2.0 * std::sqrt(std::numbers::ln2));
}

/// Part of an emission's power that one filter lets through at the emission's middle.
double share(const Emission &emission, double filterHz, double bellHz) {
    if (emission.halfFlatHz <= 0.0) {
        return filterHz / bellHz;
    }
    const double noiseWidth = filterHz * std::sqrt(std::numbers::pi);
    return std::min(1.0, noiseWidth / (2.0 * emission.halfFlatHz));
}

/// Adds one emission to every sample that it reaches.
void addEmission(const Emission &emission, const ScanPlan &plan, double filterHz,
                 std::vector<double> &powers) {
    const double bell = std::hypot(filterHz, emission.bellHz);
    // A sweep picks up what lies between its samples; a receiver tuned to single points doesn't.
    const double between = plan.pointByPoint ? 0.0 : plan.stepHz / 2.0;
    const double flat = emission.halfFlatHz + between;
    const double reach = flat + kBellReach * bell;
    const double from = std::ceil((emission.frequencyHz - reach - plan.startHz) / plan.stepHz);
    const double to = std::floor((emission.frequencyHz + reach - plan.startHz) / plan.stepHz);
    const int first = static_cast<int>(std::clamp(from, 0.0, double(plan.count)));
    const int last = static_cast<int>(std::clamp(to, -1.0, double(plan.count - 1)));
    const double power = toPower(emission.level) * share(emission, filterHz, bell);
    for (int i = first; i <= last; ++i) {
        const double off =
            std::max(0.0, std::abs(plan.startHz + i * plan.stepHz - emission.frequencyHz) - flat);
        powers[static_cast<std::size_t>(i)] += power * std::exp(-off * off / (bell * bell));
    }
}

} // namespace

Scene::Scene(quint64 seed) : m_seed(seed), m_signals(sceneSignals(seed)) {
    for (const SceneSignal &signal : m_signals) {
        m_farthestReachHz = std::max(m_farthestReachHz, signal.reachHz());
    }
}

double Scene::floorLevel(const ScanWay &way) {
    return kFloorAt4kHz + 10.0 * std::log10(way.bandwidthHz / 4e3) +
           kFloorRisePerDb * (way.amplitude + 30);
}

double Scene::ceilingLevel(const ScanWay &way) {
    return 132.0 + way.amplitude + kHeadroomDb;
}

LevelScan Scene::scan(const ScanPlan &plan, const ScanWay &way, double seconds,
                      quint64 turn) const {
    std::vector<double> powers(static_cast<std::size_t>(plan.count), 0.0);
    addSignals(plan, way, seconds, powers);
    quint64 moment = 0;
    static_assert(sizeof moment == sizeof seconds);
    std::memcpy(&moment, &seconds, sizeof moment);
    return detect(powers, way, mixKeys(mixKeys(m_seed, moment), turn));
}

void Scene::addSignals(const ScanPlan &plan, const ScanWay &way, double seconds,
                       std::vector<double> &powers) const {
    const double filterHz = filterBellHz(way.bandwidthHz);
    // Wide enough for every bell: broadcast stations have the broadest.
    const double margin = m_farthestReachHz + plan.stepHz + kBellReach * (filterHz + 130e3);
    const double end = plan.startHz + plan.count * plan.stepHz + margin;
    auto signal =
        std::lower_bound(m_signals.begin(), m_signals.end(), plan.startHz - margin,
                         [](const SceneSignal &a, double hertz) { return a.frequencyHz < hertz; });
    for (; signal != m_signals.end() && signal->frequencyHz <= end; ++signal) {
        const Emissions emissions = signal->at(seconds);
        for (int i = 0; i < emissions.count; ++i) {
            Emission emission = emissions.items.at(static_cast<std::size_t>(i));
            emission.level -= way.attenuator ? kAttenuatorDb : 0.0;
            addEmission(emission, plan, filterHz, powers);
        }
    }
}

LevelScan Scene::detect(const std::vector<double> &powers, const ScanWay &way, quint64 key) const {
    // One run of numbers for the whole scan. A sample with a signal takes more of them, which gives
    // other noise to the samples behind it.
    KeyedRandom chance(key);
    const double floor = toPower(floorLevel(way));
    const double lowest = m_anyByte ? 0.0 : double(kLowestLevel);
    const double highest = std::min(255.0, ceilingLevel(way));
    LevelScan levels(powers.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        double power = floor * chance.noisePower(kLooks);
        if (powers[i] > floor * 1e-3) {
            power += powers[i] * chance.noisePower(kSignalLooks);
        }
        levels[i] = Numbers::roundTo<std::uint8_t>(std::clamp(toLevel(power), lowest, highest));
        if (m_anyByte && chance.uniform() < 1.0 / 16.0) {
            levels[i] = static_cast<std::uint8_t>(chance.bits() >> 56U);
        }
    }
    return levels;
}

} // namespace veldron
