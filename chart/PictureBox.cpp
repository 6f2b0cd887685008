// SPDX-License-Identifier: MIT
#include "chart/PictureBox.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QtMath>

namespace veldron {

namespace {

constexpr int kLabelPixels = 11;

QColor toColor(quint32 colour) {
    return QColor::fromRgb(PixelSurface::toDevice(colour));
}

QPoint pixelOf(const QMouseEvent &event) {
    return {qFloor(event.position().x()), qFloor(event.position().y())};
}

int bytesPerLine(const PixelSurface &surface) {
    return static_cast<int>(surface.stride() * qsizetype{sizeof(quint32)});
}

} // namespace

PictureBox::PictureBox(QWidget *parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setFocusPolicy(Qt::ClickFocus);
    setFont(labelFont());
}

QFont PictureBox::labelFont() {
    QFont font(QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kLabelPixels);
    return font;
}

bool PictureBox::fits() const {
    return m_drawn.width() == width() && m_drawn.height() == height() &&
           m_drawn.scale() == qMax(devicePixelRatioF(), 1.0);
}

bool PictureBox::prepare() {
    if (fits()) {
        return false;
    }
    m_drawn = PixelSurface(width(), height(), devicePixelRatioF());
    m_shownApart = false;
    return true;
}

PixelSurface &PictureBox::surface() {
    if (!m_shownApart) {
        m_shown = m_drawn;
        m_shownApart = true;
    }
    return m_drawn;
}

QRegion PictureBox::Print(PixelSurface &surface, const std::vector<PlannedText> &texts) const {
    if (texts.empty() || surface.bounds().isEmpty()) {
        return {};
    }
    QImage image(reinterpret_cast<uchar *>(surface.deviceLine(0)), surface.deviceWidth(),
                 surface.deviceHeight(), bytesPerLine(surface), QImage::Format_RGB32);
    image.setDevicePixelRatio(surface.scale());
    QPainter painter(&image);
    painter.setFont(font());
    const QFontMetrics metrics = fontMetrics();
    QRegion covered;
    for (const PlannedText &text : texts) {
        painter.setPen(toColor(text.colour));
        painter.drawText(text.at.x(), text.at.y() + metrics.ascent(), text.text);
        const QRect area(text.at.x() - 1, text.at.y() - 1, metrics.horizontalAdvance(text.text) + 3,
                         metrics.height() + 2);
        const QRect inside = area & surface.bounds();
        if (!inside.isEmpty()) {
            surface.noteChange(inside);
            covered |= inside;
        }
    }
    return covered;
}

int PictureBox::textWidth(const QString &text) const {
    return fontMetrics().horizontalAdvance(text);
}

void PictureBox::Refresh() {
    m_shownApart = false;
    const QRect changed = m_drawn.takeChange();
    if (!changed.isEmpty()) {
        update(changed);
    }
}

QImage PictureBox::shownImage() const {
    const PixelSurface &surface = shown();
    QImage image(reinterpret_cast<const uchar *>(surface.deviceLine(0)), surface.deviceWidth(),
                 surface.deviceHeight(), bytesPerLine(surface), QImage::Format_RGB32);
    image.setDevicePixelRatio(surface.scale());
    return image;
}

void PictureBox::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    if (!fits()) {
        // Drawing is not for here: black for now, and a full redraw once this is over.
        painter.fillRect(event->rect(), Qt::black);
        QMetaObject::invokeMethod(this, &PictureBox::exposed, Qt::QueuedConnection);
        return;
    }
    painter.drawImage(QPointF(0, 0), shownImage());
}

void PictureBox::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    Q_EMIT exposed();
}

void PictureBox::mousePressEvent(QMouseEvent *event) {
    Q_EMIT pressed(pixelOf(*event), event->button());
}

void PictureBox::mouseMoveEvent(QMouseEvent *event) {
    Q_EMIT moved(pixelOf(*event), event->buttons());
}

void PictureBox::mouseReleaseEvent(QMouseEvent *) {
    Q_EMIT released();
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent *event) {
    // The press of the second click is not told again; of another button it is a press like any.
    if (event->button() == Qt::LeftButton) {
        Q_EMIT doubleClicked();
    } else {
        Q_EMIT pressed(pixelOf(*event), event->button());
    }
}

void PictureBox::leaveEvent(QEvent *event) {
    QWidget::leaveEvent(event);
    Q_EMIT pointerLeft();
}

void PictureBox::focusOutEvent(QFocusEvent *event) {
    QWidget::focusOutEvent(event);
    Q_EMIT focusLost();
}

} // namespace veldron
