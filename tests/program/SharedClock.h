// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

namespace veldron {

/// What a test and the clock preloaded into a program share, in a file that both have mapped. All
/// values 0 leave the clock as it is.
struct SharedClock {
    /// Nanoseconds by which the time of day is ahead, as after somebody has set it.
    std::atomic<std::int64_t> shift;
    /// Nanoseconds by which both clocks are ahead for waits that were cut short. Written by the
    /// program that hurries.
    std::atomic<std::int64_t> skipped;
    /// The program that hurries cuts its waits to this part of their time, and its clocks skip the
    /// rest, so that it notices nothing. 0 and 1 are waits in full.
    std::atomic<std::int64_t> haste;
};

} // namespace veldron
