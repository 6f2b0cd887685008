// SPDX-License-Identifier: MIT
// Preloaded into the program: its time of day runs beside the machine's by a number of seconds that
// VELDRON_CLOCK_SHIFT tells, and its steady clock runs VELDRON_CLOCK_RATE times as fast as the
// machine's. The kernel's own waits last as long as ever.
#include <cstdlib>
#include <ctime>

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

time_t shift() {
    static const time_t seconds = [] {
        const char *text = std::getenv("VELDRON_CLOCK_SHIFT");
        return text != nullptr ? static_cast<time_t>(std::atoll(text)) : time_t{0};
    }();
    return seconds;
}

/// 1 without a word of it.
long rate() {
    static const long factor = [] {
        const char *text = std::getenv("VELDRON_CLOCK_RATE");
        return text != nullptr ? std::atol(text) : 1L;
    }();
    return factor;
}

void speedUp(timespec &reading) {
    constexpr long kNanoseconds = 1000000000;
    const long fraction = reading.tv_nsec * rate();
    reading.tv_sec = reading.tv_sec * rate() + fraction / kNanoseconds;
    reading.tv_nsec = fraction % kNanoseconds;
}

bool isTimeOfDay(clockid_t clock) {
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *reading) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, reading);
    if (result == 0 && isTimeOfDay(clock)) {
        reading->tv_sec += shift();
    } else if (result == 0 && clock == CLOCK_MONOTONIC) {
        speedUp(*reading);
    }
    return static_cast<int>(result);
}

int gettimeofday(timeval *reading, void * /*zone*/) noexcept {
    timespec now{};
    const int result = clock_gettime(CLOCK_REALTIME, &now);
    reading->tv_sec = now.tv_sec;
    reading->tv_usec = now.tv_nsec / 1000;
    return result;
}

time_t time(time_t *reading) noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    if (reading != nullptr) {
        *reading = now.tv_sec;
    }
    return now.tv_sec;
}
}
