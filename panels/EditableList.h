// SPDX-License-Identifier: MIT
#pragma once

#include "panels/DropDownList.h"

#include "common/Hertz.h"

namespace veldron {

/// A drop-down list with a text that can be typed over.
///
/// Typed text never acts by itself: it is not completed, adds no row and picks none. The list
/// itself holds the focus, not its text.
class EditableList : public DropDownList {
    Q_OBJECT

public:
    explicit EditableList(QWidget *parent = nullptr);

    /// The whole hertz that the digits of a row come to: 25000 for "25.000".
    [[nodiscard]] Hertz rowHertz(int row) const;
    /// Shows \a text from code, and announces it if it is another. The row that stands for
    /// \a value, if there is one, becomes the present row, so that the arrow keys go on from there.
    void showValue(const QString &text, Hertz value);
    /// Shows \a row from code, or \a noneText with no row for -1, and announces a change.
    void showRowText(int row, const QString &noneText);
    /// Whether the next key press is the one that has just closed the open rows. It is dropped.
    [[nodiscard]] bool isClosingKey() const { return m_closingKey; }
    void showPopup() override;
    void hidePopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    /// Row first, then the text, which a row would overwrite.
    void showText(int row, const QString &text);

    bool m_isOpen = false;
    bool m_closingKey = false;
};

} // namespace veldron
