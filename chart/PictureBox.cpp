// SPDX-License-Identifier: MIT
#include "chart/PictureBox.h"

#include "utilities/Colour.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QtMath>

#include <cmath>

namespace veldron {

namespace {

constexpr int kLabelPixels = 11;

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
    setFocusPolicy(Qt::StrongFocus); // its keys look back in the waterfall
    setFont(labelFont());
}

QFont PictureBox::labelFont() {
    QFont font(QStringList{QStringLiteral("DejaVu Sans"), QStringLiteral("sans-serif")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kLabelPixels);
    return font;
}

bool PictureBox::fits() const {
    return m_surface.width() == width() && m_surface.height() == height() &&
           m_surface.scale() == qMax(devicePixelRatioF(), 1.0);
}

bool PictureBox::prepare() {
    if (fits()) {
        return false;
    }
    m_surface.resize(width(), height(), devicePixelRatioF());
    return true;
}

void PictureBox::Print(PixelSurface &surface, const std::vector<PlannedText> &texts) const {
    if (texts.empty() || surface.bounds().isEmpty()) {
        return;
    }
    QImage target(reinterpret_cast<uchar *>(surface.deviceLine(0)), surface.deviceWidth(),
                  surface.deviceHeight(), bytesPerLine(surface), QImage::Format_RGB32);
    target.setDevicePixelRatio(surface.scale());
    QPainter painter(&target);
    painter.setFont(font());
    const int ascent = fontMetrics().ascent();
    for (const PlannedText &text : texts) {
        painter.setPen(QColor::fromRgb(toRgb(text.colour)));
        painter.drawText(text.at.x(), text.at.y() + ascent, text.text);
        if (const QRect inside = textArea(text) & surface.bounds(); !inside.isEmpty()) {
            surface.noteChange(inside);
        }
    }
}

QRect PictureBox::textArea(const PlannedText &text) const {
    // A pixel more on each side, for what the smoothing of the edges adds.
    return {text.at.x() - 1, text.at.y() - 1, textWidth(text.text) + 3, textHeight() + 2};
}

int PictureBox::textWidth(const QString &text) const {
    return fontMetrics().horizontalAdvance(text);
}

int PictureBox::textHeight() const {
    return fontMetrics().height();
}

void PictureBox::Refresh(const PictureChange &change) {
    if (change.rows != 0) {
        scrollWindow(change.scrolled, change.rows);
    }
    for (const QRect &area : change.painted) {
        repaintSoon(area);
    }
}

bool PictureBox::isWhole() const {
    return m_surface.scale() == std::floor(m_surface.scale());
}

// Where a pixel isn't a whole number of device pixels, the toolkit rounds place and size of an area
// apart from each other, and may leave out its last column or row of device pixels.
void PictureBox::repaintSoon(const QRect &area) {
    update(isWhole() ? area : area.adjusted(-1, -1, 1, 1));
}

void PictureBox::scrollWindow(const QRect &area, int rows) {
    if (!isWhole()) {
        repaintSoon(area);
        return;
    }
    scroll(0, rows, area);
    // Pixels of the lines over the picture moved with it, which shows where a line ends within.
    for (const QWidget *line : findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
        const QRect place = line->geometry();
        const bool crosses = place.top() <= area.top() && place.bottom() >= area.bottom();
        if (line->isVisible() && !crosses && place.intersects(area)) {
            update(place | place.translated(0, rows));
        }
    }
}

QImage PictureBox::image() const {
    QImage image(reinterpret_cast<const uchar *>(m_surface.deviceLine(0)), m_surface.deviceWidth(),
                 m_surface.deviceHeight(), bytesPerLine(m_surface), QImage::Format_RGB32);
    image.setDevicePixelRatio(m_surface.scale());
    return image;
}

void PictureBox::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    if (!fits()) {
        // A paint event draws nothing: black for now, and a redraw once it is over.
        painter.fillRect(event->rect(), Qt::black);
        QMetaObject::invokeMethod(this, &PictureBox::exposed, Qt::QueuedConnection);
        return;
    }
    const QTransform toDevice = painter.deviceTransform();
    painter.setWorldTransform(toDevice.inverted());
    // Each rectangle by itself, because in a clip of several the toolkit paints span by span.
    const QRegion clip = painter.paintEngine()->systemClip();
    for (const QRect &area : clip.isEmpty() ? QRegion(painter.window()) : clip) {
        painter.setClipRect(area);
        paintDevicePixels(painter, toDevice);
    }
}

// One device pixel of the surface on one of the screen, without resampling. Where the box lies
// between device pixels the picture is moved by less than one, and what that bares is black, as the
// picture's edges are.
void PictureBox::paintDevicePixels(QPainter &painter, const QTransform &toDevice) const {
    QImage picture = image();
    picture.setDevicePixelRatio(1.0);
    const QRect place(toDevice.map(QPointF(0.0, 0.0)).toPoint(), picture.size());
    painter.drawImage(place.topLeft(), picture);
    const QRect box = toDevice.mapRect(QRectF(rect())).toAlignedRect();
    for (const QRect &bared : QRegion(box) - place) {
        painter.fillRect(bared, Qt::black);
    }
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

void PictureBox::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
        Q_EMIT scrollKeyPressed(static_cast<Qt::Key>(event->key()));
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PictureBox::focusOutEvent(QFocusEvent *event) {
    QWidget::focusOutEvent(event);
    Q_EMIT focusLost();
}

} // namespace veldron
