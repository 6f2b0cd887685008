// SPDX-License-Identifier: MIT
#pragma once

#include "panels/PanelFields.h"
#include "utilities/FrequencyEntry.h"

namespace veldron {

class EditableList;
class EntryBox;

/// The frequency and step fields of a panel, which share one entry.
///
/// The key that ends an entry above 0 hands its value to the field; an entry that comes to 0 is
/// refused, and its key goes on to the field, which shows what was typed until the next key or the
/// loss of focus. A field raises its event out of an entry in progress alone, so Editing stays true
/// while its value is stored and shown, and the event is raised before it goes false.
class FrequencyFields {
public:
    struct Field {
        /// What a number without a unit letter means.
        std::function<FrequencyEntry::Unit()> defaultUnit;
        /// Stores the value of an entry.
        std::function<void(Hertz)> store;
        /// Shows the stored value and, out of an entry, raises the event.
        std::function<void()> apply;
        /// Shows the stored value alone.
        std::function<void()> show;
    };

    FrequencyFields(const ErrorGuard &guard, QWidget &panel) : m_fields(guard, panel) {}

    void add(EntryBox &box, const Field &field);
    void add(EditableList &list, const Field &field);
    /// Fields without an entry of their own can be added to it.
    [[nodiscard]] PanelFields &fields() { return m_fields; }

    /// A row was picked in place of an entry: the entry is closed, and the apply routine that runs
    /// next raises its event.
    void takePick();
    /// Closes the entry without any event.
    void cancel();
    /// Runs \a raise if an entry is in progress, and ends it after that.
    void raiseOutOfEntry(const std::function<void()> &raise);

private:
    void add(QWidget &control, QLineEdit &box, const Field &field);
    bool takeKey(const QWidget &control, QLineEdit &box, const Field &field, char16_t key);

    PanelFields m_fields;
    FrequencyEntry m_entry;
};

} // namespace veldron
