// SPDX-License-Identifier: MIT
#include "chart/OverlayLine.h"

#include "utilities/Colour.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace veldron {

namespace {

// Beyond every picture and within what a widget's geometry can hold.
constexpr int kFarthest = 30000;

} // namespace

OverlayLine::OverlayLine(const QString &name, QWidget *parent) : QWidget(parent) {
    setObjectName(name);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    place();
    hide();
}

void OverlayLine::setX(int x) {
    setEnds({x, Y1()}, {x, Y2()});
}

void OverlayLine::setY2(int y) {
    setEnds(m_from, {X2(), y});
}

void OverlayLine::setEnds(QPoint from, QPoint to) {
    m_from = from;
    m_to = to;
    place();
}

void OverlayLine::showIf(bool visible) {
    if (visible != Visible()) {
        setVisible(visible);
    }
}

void OverlayLine::setBorderColor(quint32 colour) {
    m_colour = QColor::fromRgb(toRgb(colour));
    update();
}

void OverlayLine::place() {
    const bool level = Y1() == Y2() && X1() != X2();
    const int left = std::clamp(std::min(X1(), X2()), -kFarthest, kFarthest);
    const int top = std::clamp(std::min(Y1(), Y2()), -kFarthest, kFarthest);
    const int length =
        std::clamp(std::max(std::abs(X2() - X1()), std::abs(Y2() - Y1())), 0, kFarthest);
    setGeometry(left, top, level ? length : 1, level ? 1 : length);
}

void OverlayLine::paintEvent(QPaintEvent *) {
    QPainter(this).fillRect(rect(), m_colour);
}

} // namespace veldron
