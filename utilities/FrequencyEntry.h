// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"

#include <QString>
#include <QtGlobal>

namespace veldron {

/// A frequency or a step that is being typed, one key at a time.
///
/// Each panel has one, which all its fields share. The key that ends the entry decides the scale: K
/// and M their own, Enter, Escape and any other key but a blank that of the field. A point sets the
/// scale of K until then, which only counts for the limit of 3.5 GHz that no entry goes above. No
/// key is an error.
class FrequencyEntry {
public:
    /// What a number without a unit letter means in a field.
    enum class Unit { M, K };

    static constexpr char16_t kBackspace = 8;
    static constexpr char16_t kEnter = 13;
    static constexpr char16_t kEscape = 27;
    /// No entry goes above it, in hertz.
    static constexpr double kCeiling = 3'500'000'000.0;

    /// Takes the character \a Key into the entry, beginning a new one if none is in progress, and
    /// returns what the entry comes to. That only means something once Editing() is false.
    Hertz ParseFrequencyKey(char16_t Key, Unit DefaultUnit);

    /// True while an entry is in progress.
    [[nodiscard]] bool Editing() const { return m_Editing; }
    void setEditing(bool value) { m_Editing = value; }
    /// What has been typed so far, commas already turned into points.
    [[nodiscard]] const QString &EntryText() const { return m_EntryText; }
    /// 1, 1000 or 1000000: hertz in one unit of the typed number.
    [[nodiscard]] qint32 EntryScale() const { return m_EntryScale; }

private:
    void act(char16_t key, Unit defaultUnit);
    void appendDigit(char16_t digit);
    void finish(qint32 scale);
    void limit();

    bool m_Editing = false;
    QString m_EntryText;
    qint32 m_EntryScale = 1;
};

} // namespace veldron
