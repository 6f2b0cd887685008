// SPDX-License-Identifier: MIT
#include "simulator/SceneSignal.h"

#include "simulator/SceneRandom.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace veldron {

namespace {

/// How far the transmission of the present slot has come, from 0 to 1; nothing outside it.
std::optional<double> placeInSlot(const SceneSignal &signal, double seconds, double likelihood,
                                  double shortest, double longest) {
    // Slots of different signals begin at different times.
    const double shifted = seconds / signal.seconds + keyedUniform(mixKeys(signal.key, 1));
    const double slot = std::floor(shifted);
    KeyedRandom chance(mixKeys(signal.key, static_cast<quint64>(static_cast<qint64>(slot)) + 7));
    if (chance.uniform() > likelihood) {
        return std::nullopt;
    }
    const double length = chance.between(shortest, longest);
    const double start = chance.between(0.0, 1.0 - length);
    const double place = (shifted - slot - start) / length;
    if (place < 0.0 || place >= 1.0) {
        return std::nullopt;
    }
    return place;
}

std::optional<double> placeInTransmission(const SceneSignal &signal, double seconds) {
    return placeInSlot(signal, seconds, 0.6, 0.3, 0.9);
}

/// Loudness of speech from 0 to 1: syllables within words.
double speech(quint64 key, double seconds) {
    const double words = wander(mixKeys(key, 2), seconds, 1.1);
    return words < 0.25 ? 0.0 : wander(mixKeys(key, 3), seconds, 5.0);
}

void addFmBroadcast(const SceneSignal &s, double seconds, Emissions &out) {
    const double loud = wander(mixKeys(s.key, 4), seconds, 4.0);
    const double fade = 2.0 * wander(mixKeys(s.key, 5), seconds, 0.1) - 1.0;
    out.add({s.frequencyHz, s.level + fade, 0.0, 14e3 + 42e3 * loud});
    out.add({s.frequencyHz, s.level + fade - 15.0, 0.0, 72e3});
}

void addAmBroadcast(const SceneSignal &s, double seconds, Emissions &out) {
    const double fade = 6.0 * wander(mixKeys(s.key, 5), seconds, 0.15) - 3.0;
    const double loud = wander(mixKeys(s.key, 4), seconds, 4.0);
    out.add({s.frequencyHz, s.level + fade, 0.0, 0.0});
    out.add({s.frequencyHz, s.level + fade - 26.0 + 14.0 * loud, 0.0, 2.2e3});
}

void addAmVoice(const SceneSignal &s, double seconds, Emissions &out) {
    if (placeInTransmission(s, seconds)) {
        out.add({s.frequencyHz, s.level, 0.0, 0.0});
        out.add({s.frequencyHz, s.level - 28.0 + 18.0 * speech(s.key, seconds), 0.0, 1.4e3});
    }
}

void addNfmVoice(const SceneSignal &s, double seconds, Emissions &out) {
    if (placeInTransmission(s, seconds)) {
        out.add({s.frequencyHz, s.level, 0.0, 300.0 + 3.2e3 * speech(s.key, seconds)});
    }
}

void addSsbVoice(const SceneSignal &s, double seconds, Emissions &out) {
    const double loud = placeInTransmission(s, seconds) ? speech(s.key, seconds) : 0.0;
    if (loud > 0.0) {
        out.add({s.frequencyHz + 1.3e3, s.level - 18.0 + 18.0 * loud, 0.9e3, 200.0});
    }
}

void addBurst(const SceneSignal &s, double seconds, Emissions &out) {
    if (placeInSlot(s, seconds, 0.35, 0.25, 0.8)) {
        out.add({s.frequencyHz, s.level, 0.0, 5e3});
    }
}

void addDrift(const SceneSignal &s, double seconds, Emissions &out) {
    const double turn = seconds / s.seconds + keyedUniform(s.key);
    out.add(
        {s.frequencyHz + s.extentHz * std::sin(2.0 * std::numbers::pi * turn), s.level, 0.0, 0.0});
}

void addSweep(const SceneSignal &s, double seconds, Emissions &out) {
    const double round = seconds / s.seconds;
    out.add({s.frequencyHz + s.extentHz * (round - std::floor(round)), s.level, 0.0, 1e3});
}

void addBlock(const SceneSignal &s, double seconds, Emissions &out) {
    const double fade = wander(mixKeys(s.key, 5), seconds, 0.1) - 0.5;
    out.add({s.frequencyHz, s.level + fade, s.extentHz / 2.0, s.extentHz * 0.015});
}

} // namespace

Emissions SceneSignal::at(double time) const {
    Emissions out;
    switch (kind) {
    case Kind::FmBroadcast:
        addFmBroadcast(*this, time, out);
        break;
    case Kind::AmBroadcast:
        addAmBroadcast(*this, time, out);
        break;
    case Kind::AmVoice:
        addAmVoice(*this, time, out);
        break;
    case Kind::NfmVoice:
        addNfmVoice(*this, time, out);
        break;
    case Kind::SsbVoice:
        addSsbVoice(*this, time, out);
        break;
    case Kind::Burst:
        addBurst(*this, time, out);
        break;
    case Kind::Carrier:
        out.add({frequencyHz, level, 0.0, 0.0});
        break;
    case Kind::Drift:
        addDrift(*this, time, out);
        break;
    case Kind::Sweep:
        addSweep(*this, time, out);
        break;
    case Kind::Block:
        addBlock(*this, time, out);
        break;
    }
    return out;
}

} // namespace veldron
