// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace veldron {

/// What one transmitter puts on the air at one moment.
struct Emission {
    double frequencyHz = 0.0;
    /// All of its power, in raw level units (dB above raw 0).
    double level = 0.0;
    /// Half of the flat part of its spectrum; 0 for none.
    double halfFlatHz = 0.0;
    /// Half-width of the bell that its spectrum falls off with, down to 1/e; 0 for a bare carrier.
    double bellHz = 0.0;
};

/// The emissions of one signal at one moment; \a count of them count.
struct Emissions {
    std::array<Emission, 3> items;
    int count = 0;

    void add(const Emission &emission) {
        items.at(static_cast<std::size_t>(count)) = emission;
        ++count;
    }
};

/// A transmitter of the scene, tied to an absolute frequency. What it does at a moment follows
/// from its key and the time alone.
struct SceneSignal {
    enum class Kind {
        FmBroadcast, ///< on the air all day, as wide as the music is loud
        AmBroadcast, ///< carrier with sidebands, fading
        AmVoice,     ///< a carrier that comes for an over, with speech on it
        NfmVoice,    ///< comes for an over, some kHz wide
        SsbVoice,    ///< comes for an over, syllables without a carrier
        Burst,       ///< a fraction of a second now and then
        Carrier,     ///< steady
        Drift,       ///< a carrier that wanders slowly to and fro by extentHz
        Sweep,       ///< a carrier that runs from its frequency up by extentHz, again and again
        Block,       ///< digital, flat over extentHz
    };

    Kind kind = Kind::Carrier;
    double frequencyHz = 0.0;
    double level = 0.0;    ///< raw level units
    double extentHz = 0.0; ///< see the kinds
    /// Length of one round, of one over's slot, or of the slot that a burst falls into.
    double seconds = 1.0;
    quint64 key = 0;

    /// No emission is ever farther than this from frequencyHz, bells not counted.
    [[nodiscard]] double reachHz() const { return extentHz; }
    [[nodiscard]] Emissions at(double time) const;
};

} // namespace veldron
