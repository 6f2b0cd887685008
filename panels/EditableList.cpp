// SPDX-License-Identifier: MIT
#include "panels/EditableList.h"

#include "panels/Accessibility.h"
#include "utilities/NumberTexts.h"

#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

namespace veldron {

EditableList::EditableList(QWidget *parent) : DropDownList(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    lineEdit()->setAttribute(Qt::WA_InputMethodEnabled, false);
    // The toolkit's slot would pick the row whose text equals what has been typed.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
}

Hertz EditableList::rowHertz(int row) const {
    return Hertz::fromDouble(
        GeneralUtilities::LeadingNumber(GeneralUtilities::DigitsOnly(itemText(row))));
}

void EditableList::showValue(const QString &text, Hertz value) {
    int found = -1;
    for (int row = 0; row < count() && found < 0; ++row) {
        found = rowHertz(row) == value ? row : -1;
    }
    showText(found, text);
}

void EditableList::showRowText(int row, const QString &noneText) {
    showText(row, row < 0 ? noneText : itemText(row));
}

void EditableList::showText(int row, const QString &text) {
    const QString before = currentText();
    setCurrentIndex(row);
    // A row brings a text of its own, and the text may have been typed over while the row stayed.
    setEditText(text);
    if (currentText() != before) {
        Accessibility::announceValue(*this, currentText());
    }
}

void EditableList::showPopup() {
    m_isOpen = true;
    QComboBox::showPopup();
}

void EditableList::hidePopup() {
    QComboBox::hidePopup();
    if (!std::exchange(m_isOpen, false)) {
        return;
    }
    // Enter and Escape close the open rows first and are delivered to this list afterwards. They
    // were meant for the rows, so keyPressEvent drops the next key.
    m_closingKey = true;
    QMetaObject::invokeMethod(
        this, [this] { m_closingKey = false; }, Qt::QueuedConnection);
}

void EditableList::keyReleaseEvent(QKeyEvent *event) {
    m_closingKey = false;
    DropDownList::keyReleaseEvent(event);
}

void EditableList::keyPressEvent(QKeyEvent *event) {
    if (std::exchange(m_closingKey, false)) {
        event->accept();
        return;
    }
    DropDownList::keyPressEvent(event);
}

} // namespace veldron
