// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ScreenCursor.h"
#include "chart/ctlChartSpectrum.h"
#include "common/DateTimeText.h"
#include "common/LevelScan.h"
#include "tests/support/ManualClock.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

namespace veldron {

/// A chart alone in a window of 1280 x 800, on a screen of any density and on a clock that moves by
/// hand. Only for programs that have the screens of the chart's tests.
///
/// Rows are closed by the cases, not by the timer. Scans are receiver noise with its real
/// statistics and a few steady carriers, so that each differs from the one before in nearly every
/// bin.
class ChartBench {
public:
    enum class Levels { OnTheScale, UnderIt };

    /// On a screen of the density that the case has as its argument, in hundredths.
    explicit ChartBench(benchmark::State &state, Hertz resolution = Hertz::fromWhole(31250),
                        Levels levels = Levels::OnTheScale);

    /// One scan comes and is drawn.
    void feed();
    /// One second goes by: a row of the waterfall closes and is drawn.
    void closeRow();
    /// Brings what was drawn to the window, as the event loop does.
    static void show();
    /// One step of 20 pixels both ways, on a walk between 1200 x 720 and 1360 x 880 that takes 16
    /// steps.
    void resizeBy20();
    /// A waterfall with 10,000 rows behind it, live or in playback.
    void fillHistory();
    void fillPlayback();

    /// Times \a step alone in seven rounds of \a steps, each with \a prepare before it, beside
    /// seven rounds of a memcpy of the picture's pixels. Gives the medians; the case fails when
    /// less than \a litShare of the picture isn't black.
    void measure(int steps, double litShare, const std::function<void()> &step,
                 const std::function<void()> &prepare = {});

private:
    [[nodiscard]] double memcpySeconds();
    [[nodiscard]] double litShare() const;

    benchmark::State &m_state;
    ManualClock m_clock{43200.0};
    DateTimeText m_texts{QLocale::c()};
    ScreenCursor m_cursor;
    ErrorGuard m_guard{[](const UntrappedError &error) {
        qFatal("%s", error.what());
    }};
    std::vector<LevelScan> m_scans;
    std::size_t m_nextScan = 0;
    int m_resizes = 4; // in the middle of the walk
    std::vector<quint32> m_pixels;
    std::vector<quint32> m_copy;

public:
    ctlChartSpectrum chart;
};

} // namespace veldron
