// SPDX-License-Identifier: MIT
// What the entry fields of all panels have in common: which keys they see, when they have lost the
// focus, and how a key runs through an entry. A field is an EntryBox or an EditableList.
#pragma once

#include "utilities/FrequencyEntry.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QWidget>

#include <functional>
#include <optional>

namespace veldron::FieldProtocol {

/// Looks at a character before its field does; true swallows the key.
using KeyFilter = std::function<bool(char16_t)>;

/// The character with which a key takes part in an entry: what the key types, and Backspace, Enter
/// and Escape by their codes. Nothing for arrows, Tab, Delete, function keys and for every
/// combination with Ctrl, Alt or Meta.
[[nodiscard]] std::optional<char16_t> entryCharacter(const QKeyEvent &event);

/// Whether a focus-out means that another control of the same window has taken the focus from
/// \a field. A pop-up, a menu, another window, or the field being disabled are no such loss.
[[nodiscard]] bool isLoss(const QWidget &field, const QFocusEvent &event);

/// What an entry needs to know of its field.
struct Field {
    FrequencyEntry::Unit defaultUnit;
    std::function<void()> empty;       ///< takes all text out of the field
    std::function<void(Hertz)> accept; ///< stores the value and runs the field's apply routine
};

/// Runs \a key through the panel's \a entry. True when the entry was accepted, so that the key is
/// to be swallowed; the apply routine has then seen Editing as true. An entry that comes to 0 is
/// refused and its key goes on to the field.
[[nodiscard]] bool takeKey(FrequencyEntry &entry, char16_t key, const Field &field);

} // namespace veldron::FieldProtocol
