// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "chart/AxisPlan.h"
#include "chart/ChartPainter.h"
#include "chart/PixelSurface.h"

#include <QFont>
#include <QImage>
#include <QTransform>

#include <vector>

namespace veldron {

/// Shows a surface that is painted outside of paint events; a paint event only copies it.
///
/// Whoever paints calls prepare() before, which fits the surface to size and screen, and Refresh()
/// with what changed afterwards, both before the event loop runs again. Mouse events go out as
/// signals, in pixels.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget *parent);

    /// Size of the picture in its own pixels, whatever the density of the screen.
    [[nodiscard]] int ScaleWidth() const { return width(); }
    [[nodiscard]] int ScaleHeight() const { return height(); }

    /// False when the size or the density of the screen is another than the surface's.
    [[nodiscard]] bool fits() const;
    /// Makes the surface fit. True when it didn't: then its content is undefined.
    bool prepare();
    /// What is painted on, and shown.
    [[nodiscard]] PixelSurface &surface() { return m_surface; }
    [[nodiscard]] const PixelSurface &surface() const { return m_surface; }
    /// Prints each text with its upper left corner at its place, at the screen's full resolution.
    void Print(PixelSurface &surface, const std::vector<PlannedText> &texts) const;
    /// The pixels that a printed text may touch.
    [[nodiscard]] QRect textArea(const PlannedText &text) const;
    [[nodiscard]] int textWidth(const QString &text) const;
    [[nodiscard]] int textHeight() const;
    /// Brings what changed on the surface to the window.
    void Refresh(const PictureChange &change);

    /// The surface as an image of device pixels, which shares its memory: good until the next
    /// prepare() that returns true.
    [[nodiscard]] QImage image() const;

    /// The fixed face of all of the chart's texts.
    [[nodiscard]] static QFont labelFont();

Q_SIGNALS:
    /// The picture has come into view or onto a screen of another density.
    void exposed();
    /// The mouse over the picture. The press of a double click's second click is not told, only the
    /// double click.
    void pressed(QPoint at, Qt::MouseButton button);
    void moved(QPoint at, Qt::MouseButtons buttons);
    void released();
    void doubleClicked();
    void pointerLeft();
    void focusLost();
    /// Page Up, Page Down or Home; other keys go to the parent.
    void scrollKeyPressed(Qt::Key key);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// True where a pixel is a whole number of device pixels, so that the window's content can be
    /// moved by pixels without a remainder.
    [[nodiscard]] bool isWhole() const;
    void paintDevicePixels(QPainter &painter, const QTransform &toDevice) const;
    void repaintSoon(const QRect &area);
    void scrollWindow(const QRect &area, int rows);

    PixelSurface m_surface;
};

} // namespace veldron
