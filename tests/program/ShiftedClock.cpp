// SPDX-License-Identifier: MIT
// Preloaded into a program: another clock than the machine's.
//
// VELDRON_CLOCK_SHIFT tells by how many seconds its time of day runs ahead, VELDRON_CLOCK_RATE how
// many times as fast as the machine's its steady clock runs. The kernel's own waits last as long as
// ever, unless VELDRON_CLOCK_FILE names a SharedClock and VELDRON_CLOCK_HURRIES is set: then the
// program's first thread waits for a part of the time only, and both clocks skip the rest. A wait
// for a reply on a terminal line still lasts as long as ever, because who is at its other end
// doesn't hurry. So a day passes as fast as the program can work, and a busy machine can't make it
// late.
#include "tests/program/SharedClock.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr std::int64_t kNanoseconds = 1000000000;

std::int64_t numberIn(const char *variable, std::int64_t otherwise) {
    const char *text = std::getenv(variable);
    return text != nullptr ? std::atoll(text) : otherwise;
}

std::int64_t shift() {
    static const std::int64_t seconds = numberIn("VELDRON_CLOCK_SHIFT", 0);
    return seconds * kNanoseconds;
}

std::int64_t rate() {
    static const std::int64_t factor = numberIn("VELDRON_CLOCK_RATE", 1);
    return factor;
}

/// Zeros if there is none.
veldron::SharedClock &shared() {
    static veldron::SharedClock none{};
    static veldron::SharedClock &clock = []() -> veldron::SharedClock & {
        const char *file = std::getenv("VELDRON_CLOCK_FILE");
        const int descriptor = file != nullptr ? ::open(file, O_RDWR | O_CLOEXEC) : -1;
        void *place = descriptor < 0 ? MAP_FAILED
                                     : ::mmap(nullptr, sizeof(veldron::SharedClock),
                                              PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        if (descriptor >= 0) {
            ::close(descriptor);
        }
        return place == MAP_FAILED ? none : *static_cast<veldron::SharedClock *>(place);
    }();
    return clock;
}

std::int64_t inNanoseconds(const timespec &time) {
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

timespec asTimespec(std::int64_t nanoseconds) {
    return {nanoseconds / kNanoseconds, nanoseconds % kNanoseconds};
}

bool isTimeOfDay(clockid_t clock) {
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
}

bool isSteady(clockid_t clock) {
    return clock == CLOCK_MONOTONIC || clock == CLOCK_MONOTONIC_COARSE;
}

std::int64_t machines(clockid_t clock) {
    timespec now{};
    syscall(SYS_clock_gettime, clock, &now);
    return inNanoseconds(now);
}

/// How many times shorter than wanted the waits of this thread are.
std::int64_t haste() {
    static const bool hurries = std::getenv("VELDRON_CLOCK_HURRIES") != nullptr;
    return hurries && ::gettid() == ::getpid() ? shared().haste.load() : 0;
}

/// Waits by \a wait, which is given the time and returns 0 when it passed without an event, for a
/// part of \a time nanoseconds. The clocks skip what is left of them.
template <typename Wait>
long waitInHaste(std::int64_t time, std::int64_t divisor, Wait wait) {
    const std::int64_t begin = machines(CLOCK_MONOTONIC);
    const timespec part = asTimespec(time / divisor);
    const long result = wait(part);
    if (result == 0) {
        const std::int64_t left = time - (machines(CLOCK_MONOTONIC) - begin);
        shared().skipped += left > 0 ? left : 0;
    }
    return result;
}

/// A reply is awaited for longer than that; less is waited for what nobody expects.
constexpr std::int64_t kLongWait = 2 * kNanoseconds / 1000;

bool waitsForALine(const pollfd *watched, nfds_t count, const timespec &limit) {
    return count == 1 && inNanoseconds(limit) > kLongWait && ::isatty(watched->fd) != 0;
}

/// The kernel counts the size of a set of signals in bytes, one bit a signal.
constexpr std::size_t kSignalSetSize = 8;

long machinesPoll(pollfd *watched, nfds_t count, const timespec *limit, const sigset_t *signals) {
    // The kernel writes the rest of the time into what it is given.
    timespec rest = limit != nullptr ? *limit : timespec{};
    return syscall(SYS_ppoll, watched, count, limit != nullptr ? &rest : nullptr, signals,
                   kSignalSetSize);
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec *reading) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, reading);
    if (result == 0 && isTimeOfDay(clock)) {
        *reading =
            asTimespec(inNanoseconds(*reading) + shift() + shared().shift + shared().skipped);
    } else if (result == 0 && isSteady(clock)) {
        *reading = asTimespec(inNanoseconds(*reading) * rate() + shared().skipped);
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

int ppoll(pollfd *watched, nfds_t count, const timespec *limit, const sigset_t *signals) {
    const std::int64_t divisor = haste();
    if (divisor <= 1 || limit == nullptr || inNanoseconds(*limit) <= 0 ||
        waitsForALine(watched, count, *limit)) {
        return static_cast<int>(machinesPoll(watched, count, limit, signals));
    }
    return static_cast<int>(waitInHaste(inNanoseconds(*limit), divisor, [&](const timespec &part) {
        return machinesPoll(watched, count, &part, signals);
    }));
}

int poll(pollfd *watched, nfds_t count, int milliseconds) {
    const timespec limit = asTimespec(std::int64_t{milliseconds} * (kNanoseconds / 1000));
    return ppoll(watched, count, milliseconds < 0 ? nullptr : &limit, nullptr);
}

int clock_nanosleep(clockid_t clock, int flags, const timespec *time, timespec *rest) {
    const std::int64_t divisor = haste();
    if (divisor <= 1 || flags != 0) {
        return static_cast<int>(
            syscall(SYS_clock_nanosleep, clock, flags, time, rest) == 0 ? 0 : errno);
    }
    return static_cast<int>(waitInHaste(inNanoseconds(*time), divisor, [&](const timespec &part) {
        return syscall(SYS_clock_nanosleep, clock, 0, &part, rest) == 0 ? 0L : long{errno};
    }));
}

int nanosleep(const timespec *time, timespec *rest) {
    const int error = clock_nanosleep(CLOCK_MONOTONIC, 0, time, rest);
    errno = error != 0 ? error : errno;
    return error == 0 ? 0 : -1;
}
}
