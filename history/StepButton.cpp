// SPDX-License-Identifier: MIT
#include "history/StepButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

namespace veldron {

StepButton::StepButton(const ErrorGuard &guard, QWidget *parent) : QToolButton(parent) {
    connectGuarded(guard, this, &QToolButton::pressed, this, &StepButton::pressedByItself);
}

/// The toolkit emits pressed inside the events of mouse and keyboard, for a pointer that returns to
/// the held button, and for a press action without an event. Only the last is handled here.
void StepButton::pressedByItself() {
    if (!m_inEvent && !m_held) {
        Q_EMIT wentDown();
        Q_EMIT wentUp();
    }
}

void StepButton::mousePressEvent(QMouseEvent *event) {
    const QScopedValueRollback<bool> inEvent(m_inEvent, true);
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
    const QScopedValueRollback<bool> inEvent(m_inEvent, true);
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
