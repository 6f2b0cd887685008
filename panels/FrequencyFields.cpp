// SPDX-License-Identifier: MIT
#include "panels/FrequencyFields.h"

#include "panels/EditableList.h"
#include "panels/EntryBox.h"

namespace veldron {

void FrequencyFields::add(EntryBox &box, const Field &field) {
    add(box, box, field);
}

void FrequencyFields::add(EditableList &list, const Field &field) {
    add(list, *list.lineEdit(), field);
}

void FrequencyFields::add(QWidget &control, QLineEdit &box, const Field &field) {
    PanelFields::Field parts;
    parts.takeKey = [this, &control, &box, field](char16_t key) {
        return takeKey(control, box, field, key);
    };
    parts.leave = [this, field] {
        // The field shows the stored value again, but Editing stays true: apply raises the event.
        m_fields.close();
        field.apply();
    };
    parts.disable = [this, &control, field] {
        if (m_fields.isOpenIn(control)) {
            cancel();
        }
        field.show();
    };
    parts.entryText = [this] {
        return m_entry.EntryText();
    };
    m_fields.add(control, box, std::move(parts));
}

bool FrequencyFields::takeKey(const QWidget &control, QLineEdit &box, const Field &field,
                              char16_t key) {
    if (!m_entry.Editing()) {
        // The first key of an entry takes the place of what the field shows.
        box.clear();
    }
    const Hertz result = m_entry.ParseFrequencyKey(key, field.defaultUnit());
    if (m_entry.Editing()) {
        m_fields.open(control);
        return true;
    }
    m_fields.close();
    if (result <= Hertz()) {
        return false;
    }
    // The apply routine raises its event only out of an entry in progress, and ends it then.
    m_entry.setEditing(true);
    field.store(result);
    field.apply();
    return true;
}

void FrequencyFields::takePick() {
    m_fields.close();
    m_entry.setEditing(true);
}

void FrequencyFields::cancel() {
    m_fields.close();
    m_entry.setEditing(false);
}

void FrequencyFields::raiseOutOfEntry(const std::function<void()> &raise) {
    if (m_entry.Editing()) {
        // In this order, because a slot of the event may move the focus and relies on the entry
        // being in progress still.
        raise();
        m_entry.setEditing(false);
    }
}

} // namespace veldron
