// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingsDialog.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace veldron {

/// A small dialog for a delay in milliseconds, 0 to 1000. Nothing in the program shows it or reads
/// its text.
class frmDelay : public SettingsDialog {
    Q_OBJECT

public:
    explicit frmDelay(ErrorGuard guard, QWidget *parent = nullptr);

private:
    void layOut();
    void wireControls();
    /// Replaces a number out of the range by the nearest end of it, at each key.
    void keepInRange(const QString &text);

    QLabel *Label1 = nullptr;
    QLineEdit *Text1 = nullptr;
    QPushButton *cmdOK = nullptr;
};

} // namespace veldron
