// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ScreenCursor.h"
#include "link/LinkHost.h"

namespace veldron {

class UserDialogs;

/// What the link shows on the screen: the hourglass during the port search, and the message that a
/// port is in use.
class LinkScreen : public LinkHost {
public:
    /// Both outlive the object.
    LinkScreen(ScreenCursor &cursor, UserDialogs &dialogs) : m_cursor(cursor), m_dialogs(dialogs) {}

    void setHourglass(bool on) override;
    /// Runs an event loop while the box is up.
    void showMessage(const QString &title, const QString &text) override;

private:
    ScreenCursor &m_cursor;
    UserDialogs &m_dialogs;
};

} // namespace veldron
