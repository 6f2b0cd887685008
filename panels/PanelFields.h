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

/// The fields of a panel into which text can be typed. It knows in which of them an entry is open
/// and when a field has lost the focus, and shows each key to the field's panel first.
///
/// A field loses the focus when another control of its window takes it. Another window, a pop-up
/// and the menu bar only borrow it, and a field that is disabled tells so instead.
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
        /// What the field shows for as long as an entry is open in it, whatever else changes its
        /// text, with the cursor at its end; text then comes in by keys alone, and what is pasted
        /// or dropped is taken as keys. Without it the field is free.
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
    void keepShown(const Entry &entry);
    void noteFocus(QWidget *now);

    ErrorGuard m_guard;
    QWidget &m_panel;
    std::deque<Entry> m_entries; ///< never moved: m_open points into it
    const Entry *m_open = nullptr;
    QPointer<QWidget> m_focus; ///< the control of the panel's window that had the focus last
    std::function<void()> m_panelLeft;
};

} // namespace veldron
