// SPDX-License-Identifier: MIT
// Preloaded into a program: a disk that takes its time. Each flush of a file lasts as many
// milliseconds longer as the first line of the file VELDRON_DISK_DELAY says; none while there is no
// such file.
#include <cstdio>
#include <cstdlib>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

void takeTime() {
    const char *name = std::getenv("VELDRON_DISK_DELAY");
    std::FILE *file = name != nullptr ? std::fopen(name, "r") : nullptr;
    if (file == nullptr) {
        return;
    }
    unsigned milliseconds = 0;
    if (std::fscanf(file, "%u", &milliseconds) == 1) {
        usleep(milliseconds * 1000);
    }
    std::fclose(file);
}

} // namespace

extern "C" {

int fdatasync(int descriptor) {
    takeTime();
    return static_cast<int>(syscall(SYS_fdatasync, descriptor));
}

int fsync(int descriptor) {
    takeTime();
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}
}
