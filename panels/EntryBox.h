// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QValidator>

#include "panels/FieldProtocol.h"

namespace veldron {

/// A text box whose keys can be looked at, and swallowed, before it takes them.
class EntryBox : public QLineEdit {
    Q_OBJECT

public:
    explicit EntryBox(QWidget *parent = nullptr);

    /// \a filter sees each character of an entry first.
    void setKeyFilter(FieldProtocol::KeyFilter filter) { m_filter = std::move(filter); }
    /// At most \a length characters can be typed or pasted. What code shows may be longer, and
    /// stays when the limit shrinks.
    void setTypingLimit(int length);
    [[nodiscard]] int typingLimit() const;
    /// Text from code, of any length.
    void showText(const QString &text);
    void clearField() { showText(QString()); }

Q_SIGNALS:
    /// Another control of the window has taken the focus.
    void focusLost();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    /// Lets the text grow up to the limit, and never grow when it is over the limit already.
    class TypingLimit : public QValidator {
    public:
        using QValidator::QValidator;
        State validate(QString &text, int &position) const override;
        qsizetype limit = 0;
        qsizetype shown = 0;
    };

    FieldProtocol::KeyFilter m_filter;
    TypingLimit *m_typing = nullptr;
};

} // namespace veldron
