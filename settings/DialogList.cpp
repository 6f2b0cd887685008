// SPDX-License-Identifier: MIT
#include "settings/DialogList.h"

namespace veldron {

void DialogList::addRow(const QString &text, qint32 itemValue) {
    const int selected = currentIndex();
    addItem(text, itemValue);
    // The toolkit selects a row of its own accord when it is the first one.
    setCurrentIndex(selected);
}

} // namespace veldron
