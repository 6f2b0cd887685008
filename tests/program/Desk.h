// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <chrono>

namespace veldron {

/// A user's input and output devices: keyboard, mouse, close box and screen.
///
/// There is no window manager: focus() gives a window the keyboard focus.
namespace Desk {

void move(QPoint place);
void click(QPoint place);
void doubleClick(QPoint place);
void press(QPoint place);
void release();
/// Many acts without a pause, in the words of xdotool.
void perform(const QStringList &words);
/// A key by its name in the X window system, such as "Return" or "alt+f".
void key(const QString &name);
/// Keys one after the other, by their names.
void keys(const QStringList &names);
void type(const QString &text);

/// Waits for a window with exactly this title to be on the screen.
[[nodiscard]] bool awaitWindow(const QString &title, std::chrono::milliseconds limit);
/// True while such a window is on the screen.
[[nodiscard]] bool hasWindow(const QString &title);
/// Titles of all windows on the screen.
[[nodiscard]] QStringList windows();
/// Size of the window in pixels of the screen; empty if there is none.
[[nodiscard]] QSize sizeOf(const QString &title);
/// Gives the window another size, as its user does at the frame.
void resize(const QString &title, QSize size);
/// Gives the window the keyboard focus.
void focus(const QString &title);
/// Sends the message that a click on the window's close box sends.
void pressCloseBox(const QString &title);

[[nodiscard]] QImage screenshot();

} // namespace Desk

} // namespace veldron
