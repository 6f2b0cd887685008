// SPDX-License-Identifier: MIT
#pragma once

#include "common/ErrorGuard.h"

#include <QDialog>

namespace veldron {

/// What the settings dialogs have in common. Each is made once, lives hidden for the whole run, and
/// keeps what it shows: OK, the close box and Escape all hide it and change nothing else. Each time
/// it comes up, the first control has the focus.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    /// \a guard receives what the slots of the dialog throw.
    explicit SettingsDialog(ErrorGuard guard, QWidget *parent);

public Q_SLOTS:
    /// The close box and Escape: nothing is ever taken back, because what was changed may have
    /// acted already.
    void reject() override { accept(); }

protected:
    void showEvent(QShowEvent *event) override;
    /// For the connections of the dialogs.
    [[nodiscard]] const ErrorGuard &guard() const { return m_guard; }
    /// The control that a dialog which comes up gives the focus to.
    void setFirstControl(QWidget *control) { m_firstControl = control; }

private:
    ErrorGuard m_guard;
    QWidget *m_firstControl = nullptr;
};

} // namespace veldron
