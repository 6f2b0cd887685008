// SPDX-License-Identifier: MIT
#include "panels/PanelFields.h"

#include "panels/EditableList.h"
#include "utilities/FrequencyEntry.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>

#include <optional>
#include <utility>

namespace veldron {

namespace {

/// The character with which a key takes part in an entry: what the key types, and Backspace, Enter
/// and Escape by their codes. Nothing for arrows, Tab, Delete, function keys and for every
/// combination with Ctrl, Alt or Meta.
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

/// Keys with which a closed list moves to another row.
bool picksARow(const QKeyEvent &event) {
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return (event.modifiers() & Qt::AltModifier) == 0;
    default:
        return false;
    }
}

} // namespace

PanelFields::PanelFields(ErrorGuard guard, QWidget &panel)
    : m_guard(std::move(guard)), m_panel(panel) {
    connectGuarded(m_guard, qApp, &QApplication::focusChanged, this,
                   [this](QWidget * /*old*/, QWidget *now) { noteFocus(now); });
}

void PanelFields::add(QWidget &control, QLineEdit &box, Field field) {
    m_entries.push_back({&control, &box, std::move(field)});
    Entry &entry = m_entries.back();
    control.installEventFilter(this);
    if (&control != static_cast<QWidget *>(&box)) {
        box.installEventFilter(this);
    }
    if (entry.field.entryText) {
        const auto keep = [this, &entry] {
            keepShown(entry);
        };
        connectGuarded(m_guard, &box, &QLineEdit::textChanged, this, keep);
        connectGuarded(m_guard, &box, &QLineEdit::cursorPositionChanged, this, keep);
        connectGuarded(m_guard, &box, &QLineEdit::selectionChanged, this, keep);
    }
}

void PanelFields::open(const QWidget &control) {
    m_open = entryOf(&control);
    keepShown(*m_open);
}

bool PanelFields::isOpenIn(const QWidget &control) const {
    return m_open != nullptr && m_open->control == &control;
}

PanelFields::Entry *PanelFields::entryOf(const QObject *object) {
    for (Entry &entry : m_entries) {
        if (object == entry.control || object == entry.box) {
            return &entry;
        }
    }
    return nullptr;
}

bool PanelFields::eventFilter(QObject *watched, QEvent *event) {
    bool swallowed = false;
    m_guard.run([&] {
        Entry *entry = entryOf(watched);
        swallowed = entry != nullptr && handle(*entry, watched, *event);
    });
    return swallowed;
}

bool PanelFields::handle(Entry &entry, const QObject *watched, QEvent &event) {
    if (event.type() == QEvent::KeyPress) {
        return takeKeyPress(entry, static_cast<QKeyEvent &>(event));
    }
    if (event.type() == QEvent::EnabledChange) {
        // Of the control alone: the box of a list is disabled with it, and would tell a second
        // time.
        if (watched == entry.control && !entry.control->isEnabled() && entry.field.disable) {
            entry.field.disable();
        }
        return false;
    }
    if (!entry.field.entryText) {
        return false;
    }
    if (event.type() == QEvent::ContextMenu) {
        showMenu(entry, static_cast<QContextMenuEvent &>(event).globalPos());
        return true;
    }
    if (event.type() == QEvent::Drop) {
        auto &drop = static_cast<QDropEvent &>(event);
        // Copied and never moved, so that the text stays where it was dragged from.
        drop.setDropAction(Qt::CopyAction);
        drop.accept();
        takeText(entry, drop.mimeData()->text());
        return true;
    }
    const bool pastesSelection = event.type() == QEvent::MouseButtonRelease &&
                                 static_cast<QMouseEvent &>(event).button() == Qt::MiddleButton;
    if (pastesSelection) {
        takeText(entry, QGuiApplication::clipboard()->text(QClipboard::Selection));
    }
    return pastesSelection;
}

bool PanelFields::takeKeyPress(Entry &entry, QKeyEvent &event) {
    const auto *list = qobject_cast<EditableList *>(entry.control);
    if (list != nullptr && list->isClosingKey()) {
        return false;
    }
    const bool byKeysAlone = static_cast<bool>(entry.field.entryText);
    if (byKeysAlone && event.matches(QKeySequence::Paste)) {
        takeText(entry, QGuiApplication::clipboard()->text());
        return true;
    }
    const std::optional<char16_t> character = entryCharacter(event);
    if (character && entry.field.takeKey && entry.field.takeKey(*character)) {
        return true;
    }
    // A closed list would go to another row, and so end the entry unseen.
    return byKeysAlone && m_open == &entry && picksARow(event);
}

/// Feeds \a text as keys up to the first that ends the entry.
void PanelFields::takeText(Entry &entry, const QString &text) {
    // An event filter sees mouse events of a disabled field too, and a menu may have been opened
    // before the field was disabled.
    if (!entry.control->isEnabled()) {
        return;
    }
    // Text can be dropped on a field that hasn't got the focus. Taking the focus leaves the field
    // that had it; but in a window that isn't active no signal tells so, and the open entry is left
    // here.
    entry.control->setFocus(Qt::OtherFocusReason);
    if (m_open != nullptr && m_open != &entry) {
        m_open->field.leave();
    }
    for (const QChar character : text) {
        const bool swallowed = entry.field.takeKey(character.unicode());
        if (m_open == &entry) {
            continue;
        }
        // Like the key of a refused entry, the character goes on to the box.
        if (!swallowed && character.isPrint()) {
            entry.box->insert(character);
        }
        return;
    }
}

/// In place of the toolkit's menu, whose entries would change the text without any key.
void PanelFields::showMenu(Entry &entry, QPoint place) {
    auto *menu = new QMenu(entry.box);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *copy = menu->addAction(QStringLiteral("&Copy"));
    copy->setEnabled(entry.box->hasSelectedText());
    connectGuarded(m_guard, copy, &QAction::triggered, entry.box, &QLineEdit::copy);
    QAction *paste = menu->addAction(QStringLiteral("&Paste"));
    paste->setEnabled(entry.box->isEnabled() && !QGuiApplication::clipboard()->text().isEmpty());
    connectGuarded(m_guard, paste, &QAction::triggered, this,
                   [this, &entry] { takeText(entry, QGuiApplication::clipboard()->text()); });
    menu->popup(place);
}

/// Runs after each change of text, cursor or selection, and puts back what the entry shows. Setting
/// the text emits the same signals once more; that run finds nothing left to do.
void PanelFields::keepShown(const Entry &entry) {
    if (m_open != &entry || !entry.field.entryText) {
        return;
    }
    const QString text = entry.field.entryText();
    if (entry.box->text() != text) {
        entry.box->setText(text);
    } else if (entry.box->hasSelectedText() || entry.box->cursorPosition() != text.size()) {
        entry.box->end(false);
    }
}

void PanelFields::noteFocus(QWidget *now) {
    // Another window and the menu bar have the focus for a while only. It comes back to the same
    // control, or another one of this window takes it, and both are told here again.
    if (now == nullptr || now->window() != m_panel.window() || qobject_cast<QMenuBar *>(now)) {
        return;
    }
    QWidget *const before = std::exchange(m_focus, now);
    if (before == nullptr || before == now || !before->isEnabled()) {
        return;
    }
    if (const Entry *left = entryOf(before); left != nullptr && left->field.leave) {
        left->field.leave();
    }
    if (m_panelLeft && m_panel.isAncestorOf(before) && !m_panel.isAncestorOf(now)) {
        m_panelLeft();
    }
}

} // namespace veldron
