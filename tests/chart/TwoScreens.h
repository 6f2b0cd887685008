// SPDX-License-Identifier: MIT
#pragma once

#include "tests/chart/ChartFixture.h"

namespace veldron {

/// A chart on a display of two screens, the second one of double density. Only for programs that
/// TwoScreens.cpp is part of.
class TwoScreensTest : public ChartTest {
protected:
    TwoScreensTest() { goTo(1); }

    /// Moves the window to the screen of \a density, 1 or 2, and lets it paint itself there.
    void goTo(int density) {
        move(density);
        QApplication::processEvents();
    }
    /// The same, but that the window doesn't paint itself.
    void goUnseenTo(int density) {
        chart.setUpdatesEnabled(false);
        move(density);
    }
    void paintAgain() {
        chart.setUpdatesEnabled(true);
        QApplication::processEvents();
    }
    [[nodiscard]] int density() const { return m_density; }

private:
    void move(int density) {
        m_density = density;
        chart.move(density == 1 ? 100 : 1700, 50);
        ASSERT_EQ(picture().devicePixelRatioF(), density);
    }

    int m_density = 1;
};

} // namespace veldron
