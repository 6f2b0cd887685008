// SPDX-License-Identifier: MIT
#include "panels/EntryBox.h"

#include "panels/Accessibility.h"

#include <algorithm>
#include <utility>

namespace veldron {

EntryBox::EntryBox(ErrorGuard guard, QWidget *parent)
    : QLineEdit(parent), m_guard(std::move(guard)) {
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
        connectGuarded(m_guard, this, &QLineEdit::textChanged, m_typing,
                       [this](const QString &present) { m_typing->shown = present.size(); });
    }
    m_typing->limit = length;
}

void EntryBox::showText(const QString &text) {
    const QString before = this->text();
    if (m_typing != nullptr) {
        // Ahead of setText: as long as the validator finds the present text invalid, the toolkit
        // lets every edit through.
        m_typing->shown = std::max(m_typing->shown, text.size());
    }
    setText(text);
    if (m_typing != nullptr) {
        m_typing->shown = this->text().size();
    }
    if (this->text() != before) {
        Accessibility::announceValue(*this, this->text());
    }
}

} // namespace veldron
