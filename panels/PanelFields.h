// SPDX-License-Identifier: MIT
#pragma once

#include "common/ErrorGuard.h"

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

class QEvent;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace veldron {

/// Watches the text fields of a panel: each key is offered to the panel before the field gets it,
/// and the panel is told when a field loses the focus. It also knows in which field an entry is
/// open.
///
/// A field counts as left when another control of the same window takes the focus. Another window,
/// a pop-up and the menu bar take it for a while only, which is no loss. A field that is disabled
/// runs disable() and not leave().
class PanelFields : public QObject {
    Q_OBJECT

public:
    /// What the panel does with a field. A function that is empty stands for nothing to do.
    struct Field {
        /// Looks at each character of a key before the field does; true swallows the key.
        std::function<bool(char16_t)> takeKey;
        /// The field has lost the focus.
        std::function<void()> leave;
        /// The field has been disabled: the panel ends its entry and shows the stored value.
        std::function<void()> disable;
        /// The text of the entry. While an entry is open, the field always shows this text with the
        /// cursor at its end; pasted and dropped text is fed to takeKey character by character. A
        /// field without this function can be edited freely.
        std::function<QString()> entryText;
    };

    /// \a panel is the parent of all fields, and outlives this.
    PanelFields(ErrorGuard guard, QWidget &panel);

    /// \a control holds the focus, \a box the text; for a text box they are the same.
    void add(QWidget &control, QLineEdit &box, Field field);
    /// Runs when a control outside the panel takes the focus from one of the panel, after the
    /// field's own leave.
    void setPanelLeft(std::function<void()> panelLeft) { m_panelLeft = std::move(panelLeft); }

    /// An entry is open in \a control from now on, and in no other field.
    void open(const QWidget &control);
    /// The text of the field stays as it is; whoever closes shows the value.
    void close() { m_open = nullptr; }
    [[nodiscard]] bool isOpenIn(const QWidget &control) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Entry {
        QWidget *control = nullptr;
        QLineEdit *box = nullptr;
        Field field;
    };

    [[nodiscard]] Entry *entryOf(const QObject *object);
    bool handle(Entry &entry, const QObject *watched, QEvent &event);
    bool takeKeyPress(Entry &entry, QKeyEvent &event);
    void takeText(Entry &entry, const QString &text);
    void showMenu(Entry &entry, QPoint place);
    /// Puts text and cursor of an open entry back after any change of theirs.
    void keepShown(const Entry &entry);
    /// The focus has moved, within the program or out of it.
    void noteFocus(QWidget *now);

    ErrorGuard m_guard;
    QWidget &m_panel;
    std::deque<Entry> m_entries; ///< never moved: m_open points into it
    const Entry *m_open = nullptr;
    QPointer<QWidget> m_focus; ///< the control of the panel's window that had the focus last
    std::function<void()> m_panelLeft;
};

} // namespace veldron
