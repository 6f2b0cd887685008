// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// What the link shows to the user: the pointer's shape and one message box.
class LinkHost {
public:
    LinkHost() = default;
    LinkHost(const LinkHost &) = delete;
    LinkHost &operator=(const LinkHost &) = delete;
    virtual ~LinkHost() = default;

    /// Shows the hourglass pointer, or the default one again.
    virtual void setHourglass(bool on) = 0;
    /// Shows a message box with an OK button and returns when the user has closed it. The event
    /// loop runs meanwhile, so the program may have been ended behind it (frmVDR::isUnloaded).
    virtual void showMessage(const QString &title, const QString &text) = 0;
};

} // namespace veldron
