// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>

namespace veldron {

/// What one transmitter puts on the air at one moment.
struct Emission {
    double frequencyHz = 0.0;
    /// All of its power, in raw level units (dB above raw 0). How much of it one sample shows
    /// depends on the resolution bandwidth.
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

/// A transmitter of the scene at an absolute frequency. Its emissions are a function of its key and
/// the time: nothing is kept from one scan to the next, and time may go either way.
struct SceneSignal {
    enum class Kind {
        FmBroadcast, ///< on the air all day, as wide as the music is loud
        AmBroadcast, ///< carrier with sidebands, fading
        AmVoice,     ///< a carrier with speech, on for one transmission at a time
        NfmVoice,    ///< some kHz wide, on for one transmission at a time
        SsbVoice,    ///< syllables without a carrier, on for one transmission at a time
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
    /// Period of a drift or sweep; length of the slot that holds one transmission or burst.
    double seconds = 1.0;
    /// Seed of all that is random about it.
    quint64 key = 0;

    /// No emission is ever farther than this from frequencyHz, bells not counted.
    [[nodiscard]] double reachHz() const { return extentHz; }
    /// What is on the air at \a time seconds; none between two transmissions.
    [[nodiscard]] Emissions at(double time) const;
};

} // namespace veldron
