// SPDX-License-Identifier: MIT
#include "chart/RowScrollBar.h"

#include <QApplication>
#include <QPaintEvent>

#include <gtest/gtest.h>

namespace veldron {
namespace {

class PaintCount : public QObject {
public:
    explicit PaintCount(QObject &watched) { watched.installEventFilter(this); }
    bool eventFilter(QObject * /*watched*/, QEvent *event) override {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    /// Since the last call.
    int take() {
        // A repaint may ask for another turn of the event loop.
        for (int turn = 0; turn < 4; ++turn) {
            QApplication::processEvents();
        }
        return std::exchange(m_count, 0);
    }

private:
    int m_count = 0;
};

TEST(RowScrollBar, rangeThatMovesTheThumbByPartOfAPixel_paintsNothing) {
    RowScrollBar bar(Qt::Vertical);
    bar.resize(13, 170);
    bar.setPageStep(170);
    bar.show();
    PaintCount paints(bar);
    bar.setRange(0, 2000);
    paints.take();
    bar.setRange(0, 2001);
    EXPECT_EQ(paints.take(), 0);
    bar.setRange(0, 300);
    EXPECT_GE(paints.take(), 1);
    bar.setValue(1);
    EXPECT_EQ(paints.take(), 0);
    bar.setValue(150);
    EXPECT_GE(paints.take(), 1);
}

} // namespace
} // namespace veldron
