// SPDX-License-Identifier: MIT
#include "panels/EditableList.h"

#include "utilities/GeneralUtilities.h"

#include <QLineEdit>

#include <utility>

namespace veldron {

EditableList::EditableList(QWidget *parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    lineEdit()->setAttribute(Qt::WA_InputMethodEnabled, false);
    // Both would pick the row whose text equals what has been typed.
    disconnect(lineEdit(), &QLineEdit::returnPressed, this, nullptr);
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    // Keys come to the list; the filter is for those that are sent to its text all the same.
    lineEdit()->installEventFilter(this);
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
    setCurrentIndex(found);
    setEditText(text);
}

void EditableList::showRow(int row, const QString &noneText) {
    setCurrentIndex(row);
    // The text may have been typed over while the row stayed.
    setEditText(row < 0 ? noneText : itemText(row));
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
    // Enter and Escape close the rows before they are delivered, and then come here: they were
    // meant for the rows, and are no keys of an entry.
    m_closingKey = true;
    QMetaObject::invokeMethod(
        this, [this] { m_closingKey = false; }, Qt::QueuedConnection);
}

void EditableList::keyReleaseEvent(QKeyEvent *event) {
    m_closingKey = false;
    QComboBox::keyReleaseEvent(event);
}

void EditableList::keyPressEvent(QKeyEvent *event) {
    if (std::exchange(m_closingKey, false) || isSwallowed(*event)) {
        event->accept();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void EditableList::focusOutEvent(QFocusEvent *event) {
    QComboBox::focusOutEvent(event);
    if (FieldProtocol::isLoss(*this, *event)) {
        Q_EMIT focusLost();
    }
}

bool EditableList::eventFilter(QObject *watched, QEvent *event) {
    if (watched == lineEdit() && event->type() == QEvent::KeyPress &&
        isSwallowed(static_cast<const QKeyEvent &>(*event))) {
        event->accept();
        return true;
    }
    return QComboBox::eventFilter(watched, event);
}

bool EditableList::isSwallowed(const QKeyEvent &event) const {
    const auto character = FieldProtocol::entryCharacter(event);
    return character && m_filter && m_filter(*character);
}

} // namespace veldron
