// SPDX-License-Identifier: MIT
#pragma once

#include "tests/chart/ChartFixture.h"

#include <QBackingStore>
#include <QImage>

namespace veldron {

/// A chart on a display of several screens, each of another density. Only for programs that
/// Screens.cpp is part of.
class ScreensTest : public ChartTest {
protected:
    ScreensTest() { goTo(1.0); }

    /// Moves the window to the screen of \a density (1, 1.25, 1.5, 1.75 or 2), and lets it paint
    /// itself there.
    void goTo(double density) {
        move(density);
        QApplication::processEvents();
    }
    /// The same, but that the window doesn't paint itself.
    void goUnseenTo(double density) {
        chart.setUpdatesEnabled(false);
        move(density);
    }
    void paintAgain() {
        chart.setUpdatesEnabled(true);
        QApplication::processEvents();
    }
    [[nodiscard]] double density() const { return m_density; }
    /// What the screen shows of the window, in device pixels: what has been painted into its
    /// backing store by now.
    [[nodiscard]] QImage onScreen() {
        const auto *image = dynamic_cast<QImage *>(window.backingStore()->paintDevice());
        return image != nullptr ? image->copy() : QImage();
    }

private:
    void move(double density) {
        m_density = density;
        window.move(100 + static_cast<int>((density - 1.0) * 40000.0), 50); // as in screens.json
        ASSERT_EQ(picture().devicePixelRatioF(), density);
    }

    double m_density = 1.0;
};

} // namespace veldron
