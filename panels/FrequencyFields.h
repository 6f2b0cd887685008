// SPDX-License-Identifier: MIT
#pragma once

#include "panels/PanelFields.h"
#include "utilities/FrequencyEntry.h"

namespace veldron {

class EditableList;
class EntryBox;

/// The frequency and step fields of a panel, which share one FrequencyEntry: a number can be typed
/// into one of them at a time.
///
/// When a key ends the entry with a value above 0, the field's store() and then apply() run. An
/// entry that comes to 0 is refused: nothing runs, the key goes on to the text box, and the typed
/// text stays until the next key or the loss of focus.
///
/// apply() shows the stored value and raises the panel's event, but raises it only while an entry
/// is in progress. Therefore Editing stays true during store() and apply(), and goes false after
/// the event.
class FrequencyFields {
public:
    struct Field {
        /// What a number without a unit letter means.
        std::function<FrequencyEntry::Unit()> defaultUnit;
        /// Takes over the value of an entry, or drops it if it is out of range.
        std::function<void(Hertz)> store;
        /// Shows the stored value and, out of an entry, raises the event.
        std::function<void()> apply;
        /// Shows the stored value alone.
        std::function<void()> show;
    };

    /// \a panel is the parent of all fields, and outlives this.
    FrequencyFields(const ErrorGuard &guard, QWidget &panel) : m_fields(guard, panel) {}

    void add(EntryBox &box, const Field &field);
    void add(EditableList &list, const Field &field);
    /// Fields without an entry of their own can be added to it.
    [[nodiscard]] PanelFields &fields() { return m_fields; }

    /// A row was picked from a list. An entry that was open ends, and the next apply() raises its
    /// event as if the value had been typed.
    void takePick();
    /// Closes the entry without any event.
    void cancel();
    /// Runs \a raise if an entry is in progress, and ends it after that.
    void raiseOutOfEntry(const std::function<void()> &raise);

private:
    void add(QWidget &control, QLineEdit &box, const Field &field);
    /// True swallows the key: all keys of an entry but one that ends it at 0.
    bool takeKey(const QWidget &control, QLineEdit &box, const Field &field, char16_t key);

    PanelFields m_fields;
    FrequencyEntry m_entry;
};

} // namespace veldron
