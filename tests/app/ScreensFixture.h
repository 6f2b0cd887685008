// SPDX-License-Identifier: MIT
#pragma once

#include "tests/app/FormFixture.h"

#include <QBackingStore>
#include <QImage>

namespace veldron {

/// The main form on a display of several screens, each of another density. Only for programs that
/// Screens.cpp is part of.
class ScreensFixture : public FormFixture {
protected:
    /// Moves the window to the screen of \a density (1, 1.25, 1.5, 1.75 or 2), where it has its
    /// size again and paints itself.
    void goTo(double density) {
        const QSize size = m_form->size();
        m_form->move(100 + static_cast<int>((density - 1.0) * 40000.0), 50); // as in screens.json
        m_form->resize(size);
        QApplication::processEvents();
        ASSERT_EQ(m_form->devicePixelRatioF(), density);
        ASSERT_EQ(m_form->size(), size);
    }
    /// What the screen shows of \a window, in device pixels.
    [[nodiscard]] static QImage onScreen(const QWidget &window) {
        const auto *image = dynamic_cast<QImage *>(window.backingStore()->paintDevice());
        return image != nullptr ? image->copy() : QImage();
    }
};

} // namespace veldron
