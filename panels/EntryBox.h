// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QValidator>

#include "common/ErrorGuard.h"

namespace veldron {

/// A text box of a panel. Text comes in by keys, by pasting, by dropping and from code, never from
/// an input method.
class EntryBox : public QLineEdit {
    Q_OBJECT

public:
    explicit EntryBox(ErrorGuard guard, QWidget *parent = nullptr);

    /// At most \a length characters can be typed or pasted. What code shows may be longer, and
    /// stays when the limit shrinks.
    void setTypingLimit(int length);
    /// Text from code, of any length; announced if it is another.
    void showText(const QString &text);

private:
    /// Lets the text grow up to the limit, and never grow when it is over the limit already. The
    /// toolkit's own maximum length would cut a text that code shows.
    class TypingLimit : public QValidator {
    public:
        using QValidator::QValidator;
        State validate(QString &text, int &position) const override;
        qsizetype limit = 0;
        qsizetype shown = 0;
    };

    ErrorGuard m_guard;
    TypingLimit *m_typing = nullptr;
};

} // namespace veldron
