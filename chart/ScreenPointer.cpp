// SPDX-License-Identifier: MIT
#include "chart/ScreenPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace veldron {

namespace {

Qt::CursorShape cursorOf(PointerShape shape) {
    switch (shape) {
    case PointerShape::NorthSouth:
        return Qt::SizeVerCursor;
    case PointerShape::EastWest:
        return Qt::SizeHorCursor;
    case PointerShape::Hourglass:
        return Qt::WaitCursor;
    case PointerShape::Default:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

ScreenPointer::~ScreenPointer() {
    setShape(PointerShape::Default);
}

void ScreenPointer::setShape(PointerShape shape) {
    if (shape == m_shape) {
        return;
    }
    if (shape == PointerShape::Default) {
        QGuiApplication::restoreOverrideCursor();
    } else if (m_shape == PointerShape::Default) {
        QGuiApplication::setOverrideCursor(QCursor(cursorOf(shape)));
    } else {
        QGuiApplication::changeOverrideCursor(QCursor(cursorOf(shape)));
    }
    m_shape = shape;
}

} // namespace veldron
