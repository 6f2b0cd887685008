// SPDX-License-Identifier: MIT
#include "panels/EntryBox.h"

#include <algorithm>

namespace veldron {

EntryBox::EntryBox(QWidget *parent) : QLineEdit(parent) {
    // An input method would put text in without any key.
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

QValidator::State EntryBox::TypingLimit::validate(QString &text, int &position) const {
    Q_UNUSED(position)
    return text.size() <= std::max(limit, shown) ? Acceptable : Invalid;
}

void EntryBox::setTypingLimit(int length) {
    if (m_typing == nullptr) {
        m_typing = new TypingLimit(this);
        m_typing->shown = text().size();
        setValidator(m_typing);
        connect(this, &QLineEdit::textChanged, m_typing,
                [this](const QString &present) { m_typing->shown = present.size(); });
    }
    m_typing->limit = length;
}

int EntryBox::typingLimit() const {
    return m_typing != nullptr ? static_cast<int>(m_typing->limit) : maxLength();
}

void EntryBox::showText(const QString &text) {
    if (m_typing != nullptr) {
        // Before the text comes: while a text counts as invalid, the box lets everything in.
        m_typing->shown = std::max(m_typing->shown, text.size());
    }
    setText(text);
    if (m_typing != nullptr) {
        m_typing->shown = this->text().size();
    }
}

void EntryBox::keyPressEvent(QKeyEvent *event) {
    const auto character = FieldProtocol::entryCharacter(*event);
    if (character && m_filter && m_filter(*character)) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void EntryBox::focusOutEvent(QFocusEvent *event) {
    QLineEdit::focusOutEvent(event);
    if (FieldProtocol::isLoss(*this, *event)) {
        Q_EMIT focusLost();
    }
}

} // namespace veldron
