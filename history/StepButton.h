// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

#include "common/ErrorGuard.h"

namespace veldron {

/// A button that tells of its way down and its way up as two events.
///
/// The events are those of the mouse's own button, so that a pointer that leaves the held button
/// and comes back presses nothing anew. Each wentDown is followed by exactly one wentUp, also when
/// the held button is disabled or hidden and never sees the release. A key press is a way down and
/// up at once: one press, one step, however long the key is held. So is the press action of
/// assistive technology, which comes without any event of mouse or keyboard.
class StepButton : public QToolButton {
    Q_OBJECT

public:
    explicit StepButton(const ErrorGuard &guard, QWidget *parent = nullptr);

Q_SIGNALS:
    void wentDown();
    void wentUp();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void letGo();
    void pressedByItself();

    bool m_held = false;
    bool m_inEvent = false; ///< of the mouse or the keyboard
};

} // namespace veldron
