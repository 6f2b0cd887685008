// SPDX-License-Identifier: MIT
#pragma once

#include "settings/FileDialogs.h"

#include <QString>

namespace veldron {

/// Everything that the program asks or tells the user in boxes of its own.
class UserDialogs : public FileDialogs {
public:
    /// A message with an OK button.
    virtual void showMessage(const QString &title, const QString &text) = 0;
    /// A question with OK and Cancel, Cancel being the default. True for OK.
    [[nodiscard]] virtual bool askOkOrCancel(const QString &title, const QString &text) = 0;
    /// The last box before the program ends on an error.
    virtual void showError(const QString &text) = 0;
};

} // namespace veldron
