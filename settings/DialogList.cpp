// SPDX-License-Identifier: MIT
#include "settings/DialogList.h"

#include <QWheelEvent>

namespace veldron {

DialogList::DialogList(QWidget *parent) : QComboBox(parent) {}

void DialogList::addRow(const QString &text, qint32 itemValue) {
    const int selected = currentIndex();
    addItem(text, itemValue);
    // The toolkit selects the first row that comes.
    setCurrentIndex(selected);
}

void DialogList::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

} // namespace veldron
