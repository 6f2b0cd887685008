// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "app/UserDialogs.h"

#include <QPointer>

namespace veldron {

/// The boxes and file dialogs of the toolkit, over the active window.
///
/// The file dialogs are the toolkit's own on every desktop, because a name that may not be written
/// is refused inside them.
///
/// Each call runs an event loop of its own until the user has closed the box. Timers tick and slots
/// run meanwhile, so whoever calls looks at the state anew behind it.
class QtDialogs : public UserDialogs {
public:
    /// The window that the dialogs belong to; set once it exists.
    void setWindow(QWidget *window) { m_window = window; }

    std::optional<QString> openFile(const FileRequest &request) override;
    std::optional<QString> saveFile(const FileRequest &request) override;
    void showMessage(const QString &title, const QString &text) override;
    bool askOkOrCancel(const QString &title, const QString &text) override;
    void showError(const QString &text) override;

private:
    /// The dialog that is up, or the window if it can be seen. Nothing during the start, where a
    /// box stands by itself.
    [[nodiscard]] QWidget *owner() const;

    QPointer<QWidget> m_window;
};

/// Why \a path may not be written, in a sentence for the user; empty if it may.
[[nodiscard]] QString refusalToWrite(const QString &path);

} // namespace veldron
