// SPDX-License-Identifier: MIT
#include "chart/ScreenCursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace veldron {

namespace {

Qt::CursorShape cursorOf(CursorShape shape) {
    switch (shape) {
    case CursorShape::NorthSouth:
        return Qt::SizeVerCursor;
    case CursorShape::EastWest:
        return Qt::SizeHorCursor;
    case CursorShape::Hourglass:
        return Qt::WaitCursor;
    case CursorShape::Default:
        break;
    }
    return Qt::ArrowCursor;
}

} // namespace

ScreenCursor::~ScreenCursor() {
    setShape(CursorShape::Default);
}

void ScreenCursor::setShape(CursorShape shape) {
    if (shape == m_shape) {
        return;
    }
    if (shape == CursorShape::Default) {
        QGuiApplication::restoreOverrideCursor();
    } else if (m_shape == CursorShape::Default) {
        QGuiApplication::setOverrideCursor(QCursor(cursorOf(shape)));
    } else {
        // In place of the one that is up: a second one on the stack would outlive the next Default.
        QGuiApplication::changeOverrideCursor(QCursor(cursorOf(shape)));
    }
    m_shape = shape;
}

} // namespace veldron
