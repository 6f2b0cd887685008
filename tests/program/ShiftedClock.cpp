// SPDX-License-Identifier: MIT
// Preloaded into the program: its time of day runs beside the machine's by a number of seconds that
// VELDRON_CLOCK_SHIFT tells. Steady clocks are left alone.
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

bool isTimeOfDay(clockid_t clock) {
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *reading) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, reading);
    if (result == 0 && isTimeOfDay(clock)) {
        reading->tv_sec += shift();
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
