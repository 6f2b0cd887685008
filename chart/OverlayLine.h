// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace veldron {

/// A horizontal or vertical line over the picture, one pixel thick; its end point is not painted.
///
/// It lies above the picture's image, so that moving it repaints nothing but itself, and lets the
/// pointer through. Coordinates are pixels of the parent and may lie outside of it.
class OverlayLine : public QWidget {
    Q_OBJECT

public:
    /// Hidden, white.
    explicit OverlayLine(const QString &name, QWidget *parent);

    [[nodiscard]] int X1() const { return m_from.x(); }
    [[nodiscard]] int Y1() const { return m_from.y(); }
    [[nodiscard]] int X2() const { return m_to.x(); }
    [[nodiscard]] int Y2() const { return m_to.y(); }
    /// Moves the line sideways, with both ends at \a x.
    void setX(int x);
    void setY2(int y);
    void setEnds(QPoint from, QPoint to);
    /// True when it is to be seen, whether or not the window is.
    [[nodiscard]] bool Visible() const { return !isHidden(); }
    /// Shows or hides; costs nothing where the line is so already.
    void showIf(bool visible);
    /// \a colour is 0x00BBGGRR.
    void setBorderColor(quint32 colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    /// Gives the widget the line's rectangle, within the limits of a widget's geometry.
    void place();

    QPoint m_from;
    QPoint m_to;
    QColor m_colour = Qt::white;
};

} // namespace veldron
