// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QWheelEvent>

#include "panels/FieldProtocol.h"

namespace veldron {

/// A drop-down list with a text that can be typed over.
///
/// Typed text never acts by itself: it is not completed, adds no row and picks none. Users' picks
/// are the signal activated, also of the row that is shown. The wheel over the closed list does
/// nothing. The list itself holds the focus, not its text.
class EditableList : public QComboBox {
    Q_OBJECT

public:
    explicit EditableList(QWidget *parent = nullptr);

    /// \a filter sees each character of an entry first.
    void setKeyFilter(FieldProtocol::KeyFilter filter) { m_filter = std::move(filter); }
    /// The whole hertz that the digits of a row come to: 25000 for "25.000".
    [[nodiscard]] Hertz rowHertz(int row) const;
    /// Shows \a text from code. The row that stands for \a value, if there is one, becomes the
    /// present row, so that the arrow keys go on from there.
    void showValue(const QString &text, Hertz value);
    /// Shows \a row from code, or \a noneText with no row for -1.
    void showRow(int row, const QString &noneText = QString());
    /// Takes the text out and leaves the rows alone.
    void clearField() { clearEditText(); }
    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    /// Another control of the window has taken the focus.
    void focusLost();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool isSwallowed(const QKeyEvent &event) const;

    FieldProtocol::KeyFilter m_filter;
    bool m_isOpen = false;
    bool m_closingKey = false;
};

} // namespace veldron
