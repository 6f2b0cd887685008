// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"

#include <functional>
#include <utility>
#include <vector>

namespace veldron {

/// A clock that moves only when it is told to: by hand, by a fixed amount at each reading (for the
/// loops that wait on the time of day), or by what a rest asks for.
class ManualClock : public Clock {
public:
    ManualClock() = default;
    explicit ManualClock(double secondsOfDay, QDate date = QDate(2026, 3, 14))
        : m_date(date), m_seconds(secondsOfDay) {}

    float timeOfDay() override {
        const auto reading = static_cast<float>(m_seconds);
        ++m_readings;
        advance(m_stepPerReading);
        return reading;
    }
    QDateTime now() override {
        if (m_dateHook) {
            m_dateHook();
        }
        return QDateTime(m_date, QTime(0, 0).addMSecs(static_cast<int>(m_seconds * 1000.0)));
    }
    qint64 steadyMilliseconds() override { return static_cast<qint64>(m_steadySeconds * 1000.0); }
    void rest(int milliseconds) override {
        m_rests.push_back(milliseconds);
        advance(milliseconds / 1000.0);
    }

    /// Moves on by \a seconds, over midnight into the next day where it comes to that.
    void advance(double seconds) {
        m_steadySeconds += seconds;
        if (m_frozen) {
            return;
        }
        m_seconds += seconds;
        while (m_seconds >= 86400.0) {
            m_seconds -= 86400.0;
            m_date = m_date.addDays(1);
        }
    }
    /// Sets the time of day within the present date.
    void setTimeOfDay(double seconds) { m_seconds = seconds; }
    /// From now on only the steady reading moves: the time of day stands still.
    void freezeTimeOfDay() { m_frozen = true; }
    void setDate(QDate date) { m_date = date; }
    /// Called at each reading of the date, such as the one that a settings block is headed with.
    void setDateHook(std::function<void()> hook) { m_dateHook = std::move(hook); }
    /// Each reading of the time of day moves the clock by \a seconds afterwards.
    void setStepPerReading(double seconds) { m_stepPerReading = seconds; }
    [[nodiscard]] double seconds() const { return m_seconds; }
    /// The steady reading in seconds, with the parts below a millisecond.
    [[nodiscard]] double steadySeconds() const { return m_steadySeconds; }
    [[nodiscard]] int readings() const { return m_readings; }
    [[nodiscard]] const std::vector<int> &rests() const { return m_rests; }

private:
    QDate m_date = QDate(2026, 3, 14);
    double m_seconds = 0.0;
    double m_steadySeconds = 1000.0;
    bool m_frozen = false;
    double m_stepPerReading = 0.0;
    int m_readings = 0;
    std::function<void()> m_dateHook;
    std::vector<int> m_rests;
};

} // namespace veldron
