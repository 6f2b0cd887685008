// SPDX-License-Identifier: MIT
#pragma once

#include "panels/DropDownList.h"

namespace veldron {

/// A row of a fixed list, as a table of rows writes it.
struct DialogChoice {
    const char *text;
    qint32 value;
};

/// A fixed drop-down list of a settings dialog: each row has a text and an item value.
///
/// Code selects rows without any signal that the dialogs listen to. No row is selected until
/// somebody selects one.
class DialogList : public DropDownList {
    Q_OBJECT

public:
    using DropDownList::DropDownList;

    /// Appends a row and leaves the selection as it is.
    void addRow(const QString &text, qint32 itemValue);
    /// The first row with this item value, -1 if there is none.
    [[nodiscard]] int rowOfValue(qint32 itemValue) const { return findData(itemValue); }
    /// Item value of the selected row.
    [[nodiscard]] qint32 itemValue() const { return currentData().toInt(); }
};

} // namespace veldron
