// SPDX-License-Identifier: MIT
#include "tests/program/ClockFile.h"

#include <QFile>

#include <gtest/gtest.h>

#include <utility>

#include <sys/mman.h>

namespace veldron {

namespace {

constexpr std::int64_t kNanosecondsPerMillisecond = 1000000;

} // namespace

ClockFile::ClockFile(QString path) : m_path(std::move(path)) {
    QFile file(m_path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(sizeof(SharedClock)));
    void *place =
        ::mmap(nullptr, sizeof(SharedClock), PROT_READ | PROT_WRITE, MAP_SHARED, file.handle(), 0);
    EXPECT_NE(place, MAP_FAILED);
    m_clock = static_cast<SharedClock *>(place);
}

ClockFile::~ClockFile() {
    ::munmap(m_clock, sizeof(SharedClock));
    QFile::remove(m_path);
}

QDateTime ClockFile::now() const {
    const std::int64_t ahead = m_clock->shift + m_clock->skipped;
    return QDateTime::currentDateTime().addMSecs(ahead / kNanosecondsPerMillisecond);
}

void ClockFile::turn(std::chrono::milliseconds by) {
    m_clock->shift += by.count() * kNanosecondsPerMillisecond;
}

void ClockFile::set(const QDateTime &moment) {
    turn(std::chrono::milliseconds(now().msecsTo(moment)));
}

} // namespace veldron
