// SPDX-License-Identifier: MIT
#include "panels/FieldProtocol.h"

#include <QApplication>

namespace veldron::FieldProtocol {

std::optional<char16_t> entryCharacter(const QKeyEvent &event) {
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        return std::nullopt;
    }
    switch (event.key()) {
    case Qt::Key_Backspace:
        return FrequencyEntry::kBackspace;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return FrequencyEntry::kEnter;
    case Qt::Key_Escape:
        return FrequencyEntry::kEscape;
    default:
        break;
    }
    const QString text = event.text();
    // Tab and Delete type control characters.
    if (text.isEmpty() || text[0].category() == QChar::Other_Control) {
        return std::nullopt;
    }
    return text[0].unicode();
}

bool isLoss(const QWidget &field, const QFocusEvent &event) {
    switch (event.reason()) {
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
    case Qt::ActiveWindowFocusReason:
        return false;
    default:
        break;
    }
    // The application knows the new owner of the focus before the old one hears of its loss.
    const QWidget *taker = QApplication::focusWidget();
    return field.isEnabled() && taker != nullptr && taker != &field &&
           taker->window() == field.window();
}

bool takeKey(FrequencyEntry &entry, char16_t key, const Field &field) {
    if (!entry.Editing()) {
        field.empty();
    }
    const Hertz result = entry.ParseFrequencyKey(key, field.defaultUnit);
    if (entry.Editing() || result <= Hertz()) {
        return false;
    }
    // The apply routine raises its event only out of an entry in progress, and ends it then.
    entry.setEditing(true);
    field.accept(result);
    return true;
}

} // namespace veldron::FieldProtocol
