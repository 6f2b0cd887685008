// SPDX-License-Identifier: MIT
#include "simulator/SceneBands.h"

#include "simulator/SceneRandom.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace veldron {

namespace {

using Kind = SceneSignal::Kind;

/// A part of the spectrum with stations of one kind on a raster.
struct Band {
    Kind kind;
    double startMHz;
    double endMHz;
    double rasterHz;
    /// Distance from one station to the next.
    double nearestHz;
    double farthestHz;
    double weakest; ///< raw level
    double strongest;
    double extentHz;
    double seconds;
};

constexpr std::array kBands = {
    // Broadcast on long, medium and short wave.
    Band{Kind::AmBroadcast, 0.153, 0.279, 9e3, 18e3, 45e3, 70, 90, 0, 1},
    Band{Kind::AmBroadcast, 0.531, 1.602, 9e3, 18e3, 90e3, 62, 100, 0, 1},
    Band{Kind::AmBroadcast, 5.900, 6.200, 5e3, 10e3, 35e3, 60, 88, 0, 1},
    Band{Kind::AmBroadcast, 7.200, 7.450, 5e3, 10e3, 35e3, 60, 88, 0, 1},
    Band{Kind::AmBroadcast, 9.400, 9.900, 5e3, 10e3, 40e3, 60, 88, 0, 1},
    Band{Kind::AmBroadcast, 11.600, 12.100, 5e3, 10e3, 40e3, 60, 86, 0, 1},
    Band{Kind::AmBroadcast, 15.100, 15.800, 5e3, 15e3, 60e3, 58, 84, 0, 1},
    Band{Kind::AmBroadcast, 17.480, 17.900, 5e3, 15e3, 60e3, 58, 82, 0, 1},
    // Amateurs and aircraft on short wave, citizens' band.
    Band{Kind::SsbVoice, 3.600, 3.800, 1e3, 4e3, 20e3, 66, 84, 0, 14},
    Band{Kind::SsbVoice, 7.060, 7.200, 1e3, 4e3, 15e3, 66, 86, 0, 12},
    Band{Kind::SsbVoice, 14.120, 14.350, 1e3, 4e3, 20e3, 62, 84, 0, 13},
    Band{Kind::SsbVoice, 21.200, 21.450, 1e3, 8e3, 40e3, 60, 80, 0, 15},
    Band{Kind::NfmVoice, 26.965, 27.405, 10e3, 20e3, 80e3, 58, 80, 0, 9},
    Band{Kind::NfmVoice, 29.520, 29.700, 10e3, 20e3, 60e3, 58, 78, 0, 14},
    Band{Kind::SsbVoice, 50.100, 50.300, 1e3, 10e3, 50e3, 60, 78, 0, 14},
    Band{Kind::NfmVoice, 68.000, 87.500, 20e3, 200e3, 900e3, 58, 80, 0, 12},
    // Broadcast on VHF.
    Band{Kind::FmBroadcast, 87.600, 107.900, 100e3, 400e3, 1100e3, 78, 100, 0, 1},
    // Aircraft: short calls, and the weather read out without end.
    Band{Kind::AmVoice, 118.000, 136.900, 25e3, 100e3, 500e3, 60, 84, 0, 7},
    Band{Kind::AmBroadcast, 118.150, 136.500, 25e3, 2500e3, 6000e3, 64, 78, 0, 1},
    // Amateurs, land mobile, paging, ships.
    Band{Kind::NfmVoice, 144.500, 146.000, 25e3, 25e3, 150e3, 60, 86, 0, 16},
    Band{Kind::SsbVoice, 144.150, 144.400, 1e3, 20e3, 80e3, 60, 76, 0, 14},
    Band{Kind::NfmVoice, 146.000, 156.000, 12.5e3, 100e3, 500e3, 58, 82, 0, 9},
    Band{Kind::NfmVoice, 156.000, 162.050, 25e3, 75e3, 400e3, 60, 84, 0, 10},
    Band{Kind::NfmVoice, 162.100, 174.000, 12.5e3, 100e3, 600e3, 58, 82, 0, 9},
    Band{Kind::Burst, 153.000, 170.000, 12.5e3, 700e3, 2500e3, 70, 94, 0, 1.5},
    // Digital broadcast, trunked radio.
    Band{Kind::Block, 174.928, 239.000, 16e3, 1712e3, 5136e3, 74, 96, 1.536e6, 1},
    Band{Kind::Burst, 380.000, 395.000, 25e3, 100e3, 500e3, 64, 86, 0, 0.6},
    Band{Kind::Block, 474.000, 690.000, 8e6, 8e6, 24e6, 78, 100, 7.6e6, 1},
    // Small devices, amateurs, walkie-talkies.
    Band{Kind::NfmVoice, 430.000, 440.000, 12.5e3, 100e3, 600e3, 58, 82, 0, 14},
    Band{Kind::Burst, 433.100, 434.750, 25e3, 100e3, 400e3, 62, 92, 0, 2},
    Band{Kind::NfmVoice, 446.000, 446.200, 12.5e3, 25e3, 50e3, 60, 84, 0, 8},
    Band{Kind::NfmVoice, 450.000, 470.000, 12.5e3, 150e3, 800e3, 58, 80, 0, 9},
    // Telephones and everything above.
    Band{Kind::Block, 791.000, 821.000, 5e6, 10e6, 10e6, 80, 96, 9e6, 1},
    Band{Kind::Burst, 863.000, 870.000, 25e3, 150e3, 900e3, 62, 86, 0, 1},
    Band{Kind::Block, 925.000, 960.000, 200e3, 400e3, 2400e3, 68, 88, 180e3, 1},
    Band{Kind::Burst, 1030.000, 1090.000, 1e6, 20e6, 60e6, 70, 90, 0, 0.2},
    Band{Kind::Block, 1805.000, 1880.000, 200e3, 5e6, 10e6, 74, 90, 4.5e6, 1},
    Band{Kind::Block, 2110.000, 2170.000, 200e3, 5e6, 10e6, 74, 90, 3.84e6, 1},
    Band{Kind::Burst, 2402.000, 2480.000, 1e6, 1e6, 8e6, 64, 86, 0, 0.3},
};

/// Signals that are the same for every seed.
constexpr std::array kLandmarks = {
    SceneSignal{Kind::Sweep, 13.90e6, 72, 0.5e6, 30, 0},
    SceneSignal{Kind::Carrier, 10.00e6, 80, 0, 1, 0},
    SceneSignal{Kind::Drift, 28.20e6, 68, 20e3, 180, 0},
    // Within the span that the unit starts with.
    SceneSignal{Kind::Sweep, 96.00e6, 72, 8.0e6, 25, 0},
    SceneSignal{Kind::Drift, 100.35e6, 76, 150e3, 240, 0},
    SceneSignal{Kind::AmBroadcast, 95.25e6, 70, 0, 1, 0},
    SceneSignal{Kind::AmBroadcast, 104.55e6, 66, 0, 1, 0},
    SceneSignal{Kind::NfmVoice, 97.05e6, 74, 0, 9, 0},
    SceneSignal{Kind::AmVoice, 101.85e6, 70, 0, 7, 0},
    SceneSignal{Kind::NfmVoice, 103.15e6, 68, 0, 12, 0},
    SceneSignal{Kind::Burst, 98.25e6, 84, 0, 2.2, 0},
    SceneSignal{Kind::Burst, 102.65e6, 78, 0, 1.3, 0},
    // Satellite, beacons.
    SceneSignal{Kind::Drift, 137.10e6, 70, 4e3, 600, 0},
    SceneSignal{Kind::Carrier, 144.43e6, 68, 0, 1, 0},
    SceneSignal{Kind::Sweep, 144.80e6, 68, 0.4e6, 20, 0},
    SceneSignal{Kind::Carrier, 432.43e6, 66, 0, 1, 0},
    SceneSignal{Kind::Drift, 435.20e6, 68, 10e3, 300, 0},
    SceneSignal{Kind::Carrier, 1296.80e6, 66, 0, 1, 0},
};

void addBand(const Band &band, quint64 seed, std::vector<SceneSignal> &signals) {
    KeyedRandom chance(seed);
    const double startHz = band.startMHz * 1e6;
    const double endHz = band.endMHz * 1e6;
    double next = startHz + chance.between(0.0, band.nearestHz);
    while (next <= endHz) {
        const double place = startHz + std::floor((next - startHz) / band.rasterHz) * band.rasterHz;
        signals.push_back({band.kind, place, chance.between(band.weakest, band.strongest),
                           band.extentHz, band.seconds * chance.between(0.7, 1.4), chance.bits()});
        next += chance.between(band.nearestHz, band.farthestHz);
    }
}

/// One or two lesser signals in each megahertz, so that no tuning shows bare noise.
void addFillers(quint64 seed, std::vector<SceneSignal> &signals) {
    constexpr std::array kKinds = {Kind::Carrier, Kind::AmBroadcast, Kind::NfmVoice,
                                   Kind::Burst,   Kind::NfmVoice,    Kind::Drift};
    KeyedRandom chance(seed);
    for (int megahertz = 0; megahertz < 3500; ++megahertz) {
        const int signalsHere = chance.uniform() < 0.5 ? 1 : 2;
        for (int i = 0; i < signalsHere; ++i) {
            const double place = megahertz * 1e6 + std::floor(chance.uniform() * 200.0) * 5e3;
            const Kind kind =
                kKinds.at(static_cast<std::size_t>(chance.uniform() * double(kKinds.size())));
            const double extent = kind == Kind::Drift ? 8e3 : 0.0;
            const double seconds = kind == Kind::Drift ? 200.0 : chance.between(1.0, 12.0);
            signals.push_back(
                {kind, place, chance.between(56.0, 70.0), extent, seconds, chance.bits()});
        }
    }
}

} // namespace

std::vector<SceneSignal> sceneSignals(quint64 seed) {
    std::vector<SceneSignal> signals;
    for (std::size_t i = 0; i < kBands.size(); ++i) {
        addBand(kBands.at(i), mixKeys(seed, 100 + i), signals);
    }
    for (std::size_t i = 0; i < kLandmarks.size(); ++i) {
        signals.push_back(kLandmarks.at(i));
        signals.back().key = mixKeys(seed, 1000 + i);
    }
    addFillers(mixKeys(seed, 2), signals);
    std::sort(signals.begin(), signals.end(), [](const SceneSignal &a, const SceneSignal &b) {
        return a.frequencyHz < b.frequencyHz;
    });
    return signals;
}

} // namespace veldron
