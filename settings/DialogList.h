// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QString>

namespace veldron {

/// A fixed drop-down list of a settings dialog: each row has a text and an item value.
///
/// activated means that the user picked a row, also when it is the one that was selected before;
/// code selects rows without any signal that the dialogs listen to. No row is selected until
/// somebody selects one. The wheel over the closed list picks nothing.
class DialogList : public QComboBox {
    Q_OBJECT

public:
    explicit DialogList(QWidget *parent = nullptr);

    /// Appends a row and leaves the selection as it is.
    void addRow(const QString &text, qint32 itemValue);
    /// The first row with this item value, -1 if there is none.
    [[nodiscard]] int rowOfValue(qint32 itemValue) const { return findData(itemValue); }
    /// Item value of the selected row.
    [[nodiscard]] qint32 itemValue() const { return currentData().toInt(); }

protected:
    void wheelEvent(QWheelEvent *event) override;
};

} // namespace veldron
