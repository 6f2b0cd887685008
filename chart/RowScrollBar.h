// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QScrollBar>

namespace veldron {

/// A scroll bar that repaints itself only when its thumb has moved or grown by a pixel.
///
/// Each closed row changes the bar's range, and with 1,000 rows the thumb by a small part of a
/// pixel; to paint the bar costs more than to draw the row.
class RowScrollBar : public QScrollBar {
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

protected:
    void sliderChange(SliderChange change) override;
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] QRect thumb() const;

    /// Where the thumb was when the bar last asked for a repaint.
    QRect m_thumb;
};

} // namespace veldron
