// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace veldron {

/// A small dialog for a delay in milliseconds, 0 to 1000. Nothing in the program shows it or reads
/// its text. The button, the close box and Escape hide it.
class frmDelay : public QDialog {
    Q_OBJECT

public:
    explicit frmDelay(QWidget *parent = nullptr);

public Q_SLOTS:
    void reject() override { accept(); }

private:
    void layOut();
    void wireControls();
    void keepInRange(const QString &text);

    QLabel *Label1 = nullptr;
    QLineEdit *Text1 = nullptr;
    QPushButton *cmdOK = nullptr;
};

} // namespace veldron
