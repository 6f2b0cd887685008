// SPDX-License-Identifier: MIT
#include "panels/DropDownList.h"

#include "panels/Accessibility.h"

namespace veldron {

void DropDownList::showRow(int row) {
    if (row == currentIndex()) {
        return;
    }
    setCurrentIndex(row);
    Accessibility::announceValue(*this, currentText());
}

} // namespace veldron
