// SPDX-License-Identifier: MIT
#include "history/PlaybackPicture.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <algorithm>

namespace veldron {

namespace {

QPolygonF triangle(qreal left, qreal right) {
    return QPolygonF({QPointF(left, 2.0), QPointF(right, 8.0), QPointF(left, 14.0)});
}

QPolygonF bar(qreal left) {
    return QPolygonF(QRectF(left, 2.0, 3.0, 12.0));
}

QPolygonF cross() {
    return QPolygonF({QPointF(3.0, 5.0), QPointF(5.0, 3.0), QPointF(8.0, 6.0), QPointF(11.0, 3.0),
                      QPointF(13.0, 5.0), QPointF(10.0, 8.0), QPointF(13.0, 11.0),
                      QPointF(11.0, 13.0), QPointF(8.0, 10.0), QPointF(5.0, 13.0),
                      QPointF(3.0, 11.0), QPointF(6.0, 8.0)});
}

class PlaybackIconEngine : public QIconEngine {
public:
    PlaybackIconEngine(PlaybackShape shape, const QColor &colour)
        : m_shape(shape), m_colour(colour) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override {
        const QSize drawn = PlaybackPicture::sizeOf(m_shape);
        const qreal scale = std::min(rect.width() / static_cast<qreal>(drawn.width()),
                                     rect.height() / static_cast<qreal>(drawn.height()));
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(m_colour.isValid() && mode != QIcon::Disabled ? m_colour
                                                                        : textColour(mode));
        painter->translate(QRectF(rect).center());
        painter->scale(scale, scale);
        painter->translate(-drawn.width() / 2.0, -drawn.height() / 2.0);
        for (const QPolygonF &outline : PlaybackPicture::outlinesOf(m_shape)) {
            painter->drawPolygon(outline);
        }
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return picture;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new PlaybackIconEngine(*this); }

private:
    /// Asked for at each painting, because the desktop may turn dark at any time.
    static QColor textColour(QIcon::Mode mode) {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        return QGuiApplication::palette().color(group, QPalette::ButtonText);
    }

    PlaybackShape m_shape;
    QColor m_colour;
};

} // namespace

QSize PlaybackPicture::sizeOf(PlaybackShape shape) {
    return {shape == PlaybackShape::DoubleArrow ? 2 * kHeight : kHeight, kHeight};
}

std::vector<QPolygonF> PlaybackPicture::outlinesOf(PlaybackShape shape) {
    switch (shape) {
    case PlaybackShape::DoubleArrow:
        return {triangle(4.0, 16.0), triangle(16.0, 28.0)};
    case PlaybackShape::Bars:
        return {bar(3.0), bar(10.0)};
    case PlaybackShape::ArrowRight:
        return {triangle(3.0, 14.0)};
    case PlaybackShape::ArrowLeft:
        return {triangle(13.0, 2.0)};
    case PlaybackShape::Cross:
        return {cross()};
    }
    return {};
}

QIcon PlaybackPicture::icon(PlaybackShape shape, const QColor &colour) {
    // The icon owns its engine.
    return QIcon(new PlaybackIconEngine(shape, colour));
}

} // namespace veldron
