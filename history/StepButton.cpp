// SPDX-License-Identifier: MIT
#include "history/StepButton.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace veldron {

StepButton::StepButton(QWidget *parent) : QToolButton(parent) {}

void StepButton::mousePressEvent(QMouseEvent *event) {
    QToolButton::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && !m_held) {
        m_held = true;
        Q_EMIT wentDown();
    }
}

void StepButton::mouseReleaseEvent(QMouseEvent *event) {
    QToolButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        letGo();
    }
}

void StepButton::keyPressEvent(QKeyEvent *event) {
    const bool pressKey = event->key() == Qt::Key_Space || event->key() == Qt::Key_Select;
    if (pressKey && !event->isAutoRepeat() && !m_held) {
        Q_EMIT wentDown();
        Q_EMIT wentUp();
    }
    QToolButton::keyPressEvent(event);
}

void StepButton::changeEvent(QEvent *event) {
    QToolButton::changeEvent(event);
    // A disabled button gets no release.
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        letGo();
    }
}

void StepButton::hideEvent(QHideEvent *event) {
    QToolButton::hideEvent(event);
    letGo();
}

void StepButton::letGo() {
    if (m_held) {
        m_held = false;
        Q_EMIT wentUp();
    }
}

} // namespace veldron
