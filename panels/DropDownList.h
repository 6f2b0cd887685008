// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace veldron {

/// What all drop-down lists of the program have in common: the wheel over the closed list does
/// nothing, while an open one scrolls by itself. Users' picks are the signal activated, also of the
/// row that is shown.
class DropDownList : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    /// Selects \a row from code, -1 for none, and announces the new text.
    void showRow(int row);

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace veldron
