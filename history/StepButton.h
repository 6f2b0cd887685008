// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

#include "common/ErrorGuard.h"

namespace veldron {

/// A button that signals its press and its release, each once.
///
/// Unlike the toolkit's pressed, wentDown doesn't come again when the pointer leaves the held
/// button and returns. Each wentDown is followed by exactly one wentUp, also when the held button
/// is disabled or hidden and gets no release event. A key press gives both at once; auto-repeat of
/// the key gives nothing. The press action of assistive technology, which comes without an event of
/// mouse or keyboard, gives both at once too.
class StepButton : public QToolButton {
    Q_OBJECT

public:
    explicit StepButton(const ErrorGuard &guard, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The button was pressed.
    void wentDown();
    /// It was released, or can't be held any more.
    void wentUp();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// The end of a press, told once.
    void letGo();
    void pressedByItself();

    bool m_held = false;
    bool m_inEvent = false; ///< of the mouse or the keyboard
};

} // namespace veldron
