// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace veldron {

/// What all drop-down lists of the program have in common: the wheel over the closed list picks no
/// row and scrolls what lies under the list instead; an open list scrolls itself.
///
/// Listen to the signal activated for picks of the user. It also comes when the user picks the row
/// that is shown already, and never for a row that code selects.
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
