// SPDX-License-Identifier: MIT
#include "app/LinkScreen.h"

#include "app/UserDialogs.h"

namespace veldron {

void LinkScreen::setHourglass(bool on) {
    m_cursor.setShape(on ? CursorShape::Hourglass : CursorShape::Default);
}

void LinkScreen::showMessage(const QString &title, const QString &text) {
    m_dialogs.showMessage(title, text);
}

} // namespace veldron
