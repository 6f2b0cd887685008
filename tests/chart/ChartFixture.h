// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include "chart/ChartColours.h"
#include "chart/OverlayLine.h"
#include "chart/PictureBox.h"
#include "chart/ScreenCursor.h"
#include "chart/ctlChartSpectrum.h"
#include "common/ErrorGuard.h"
#include "tests/chart/WholeHertz.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <vector>

namespace veldron {

/// A chart on screen whose clock and timer only the test moves.
class ChartTest : public testing::Test {
protected:
    static constexpr double kNoon = 43200.0;

    ChartTest() {
        timer().stop();
        size(695, 400);
        window.show();
        QApplication::processEvents();
    }

    ~ChartTest() override { EXPECT_TRUE(reported.empty()); }

    void size(int width, int height) {
        chart.resize(width, height);
        window.resize(chart.x() + width, chart.y() + height);
        QApplication::processEvents();
    }
    template <typename Object>
    [[nodiscard]] Object &child(const char *name) const {
        return *chart.findChild<Object *>(QLatin1String(name));
    }
    [[nodiscard]] QTimer &timer() const { return child<QTimer>("Timer1"); }
    [[nodiscard]] QScrollBar &scrollBar() const { return child<QScrollBar>("VScroll1"); }
    [[nodiscard]] PictureBox &picture() const { return child<PictureBox>("Picture1"); }
    [[nodiscard]] OverlayLine &line(const char *name) const { return child<OverlayLine>(name); }
    [[nodiscard]] QLabel &readOut() const { return child<QLabel>("lblMarker"); }
    /// Text of the chart's own status bar, which is never shown.
    [[nodiscard]] QString chartStatus() const {
        return child<QStatusBar>("StatusBar1").currentMessage();
    }
    [[nodiscard]] quint32 shown(int x, int y) const { return picture().surface().pixel(x, y); }

    void scan(quint8 level, std::size_t bins = 321) {
        chart.SetData(LevelScan(bins, level));
        chart.Refresh();
    }
    void seconds(int count) {
        for (int i = 0; i < count; ++i) {
            clock.advance(1.0);
            chart.onTimer1();
        }
    }
    // Rows at 1 s, each with the scan of its second.
    void liveRows(int count) {
        chart.setUpdate(1);
        for (int i = 0; i < count; ++i) {
            scan(static_cast<quint8>(1 + i % 200));
            seconds(1);
        }
    }
    // The row of the picture at which column \a x of the trace turns from background to body.
    [[nodiscard]] int traceTop(int x) const {
        int y = 11;
        while (y < picture().ScaleHeight() && shown(x, y) != ChartColours::kTrace) {
            ++y;
        }
        return y;
    }

    ManualClock clock{kNoon};
    DateTimeText texts{QLocale::c()};
    ScreenCursor cursor;
    std::vector<UntrappedError::Kind> reported; ///< by the guard; a test that expects one takes it
    ErrorGuard guard{[this](const UntrappedError &error) {
        reported.push_back(error.kind());
    }};
    QWidget window;
    ctlChartSpectrum chart{guard, clock, texts, cursor, &window};
};

} // namespace veldron
