// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <chrono>

namespace veldron {

/// What somebody in front of the screen does: keys, mouse, the close box, and looking.
///
/// There is no window manager: a window gets the keys when it is told to by focus().
namespace Desk {

void move(QPoint place);
void click(QPoint place);
void doubleClick(QPoint place);
void press(QPoint place);
void release();
/// A key by its name in the X window system, such as "Return" or "alt+f".
void key(const QString &name);
void type(const QString &text);

/// Waits for a window with exactly this title to be on the screen.
[[nodiscard]] bool awaitWindow(const QString &title, std::chrono::milliseconds limit);
/// True while such a window is on the screen.
[[nodiscard]] bool hasWindow(const QString &title);
/// Titles of all windows on the screen.
[[nodiscard]] QStringList windows();
/// Gives the window the keys.
void focus(const QString &title);
/// What a press of the window's close box sends.
void pressCloseBox(const QString &title);

[[nodiscard]] QImage screenshot();

} // namespace Desk

} // namespace veldron
