// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "chart/AxisPlan.h"
#include "chart/PixelSurface.h"

#include <QFont>
#include <QImage>
#include <QRegion>

#include <vector>

namespace veldron {

/// A picture that keeps what is drawn on it: one image is drawn on, another is shown.
///
/// What is drawn stays until Cls and is not to be seen before Refresh; painting the widget only
/// shows. Between Refresh and the next drawing the two are the same, and one image stands for
/// both; the shown one is only copied away when something is drawn that isn't shown at once. Both
/// are made anew, black, when the size or the density of the screen changes: call prepare() before
/// drawing. The pointer's events go out as signals, in pixels.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget *parent);

    [[nodiscard]] int ScaleWidth() const { return width(); }
    [[nodiscard]] int ScaleHeight() const { return height(); }

    /// Fits the images to size and screen. True when they were made anew: all that was drawn is
    /// gone.
    bool prepare();
    /// The image to draw on. What is shown stays as it is until Refresh.
    [[nodiscard]] PixelSurface &surface();
    /// The same for those who call Refresh before the event loop turns again, which nobody can
    /// see: it spares the copy.
    [[nodiscard]] PixelSurface &surfaceShownSoon() { return m_drawn; }
    /// Prints each text with its upper left corner at its place, at the screen's full resolution.
    /// Returns the area that they cover. The image is one of the two surfaces above.
    QRegion Print(PixelSurface &surface, const std::vector<PlannedText> &texts) const;
    [[nodiscard]] int textWidth(const QString &text) const;
    /// Shows what has been drawn.
    void Refresh();

    /// What is shown, in device pixels.
    [[nodiscard]] QImage shownImage() const;
    /// The same pixels as numbers.
    [[nodiscard]] const PixelSurface &shown() const { return m_shownApart ? m_shown : m_drawn; }

    /// The fixed face of all of the chart's texts.
    [[nodiscard]] static QFont labelFont();

Q_SIGNALS:
    /// The picture has come into view or onto a screen of another density.
    void exposed();
    void pressed(QPoint at, Qt::MouseButton button);
    void moved(QPoint at, Qt::MouseButtons buttons);
    void released();
    void doubleClicked();
    void pointerLeft();
    void focusLost();

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    [[nodiscard]] bool fits() const;

    PixelSurface m_drawn;
    PixelSurface m_shown;
    bool m_shownApart = false;
};

} // namespace veldron
