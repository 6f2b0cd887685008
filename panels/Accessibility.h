// SPDX-License-Identifier: MIT
// What assistive technology is told of the panels beyond what the toolkit tells it by itself.
#pragma once

#include <QString>

class QFrame;
class QWidget;

namespace veldron::Accessibility {

/// Names \a control. A list that can be typed into passes the name on to its text, which assistive
/// technology sees as a control of its own.
void setName(QWidget &control, const QString &name);
/// Makes \a panel a named group of controls.
void describePanel(QFrame &panel, const QString &name);
/// Keeps \a holder, which is there to hold the focus alone, and its children from being presented
/// as something to see.
void describeAsInvisible(QWidget &holder);
/// Announces that the program has given \a control the new value \a text.
void announceValue(QWidget &control, const QString &text);

} // namespace veldron::Accessibility
