// SPDX-License-Identifier: MIT
// Look-ups in the tables of receiver types and of their modes. Bad codes and names are no errors:
// the answer is "ERR", 0 or false.
#pragma once

#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace veldron::GeneralUtilities {

/// The name of a mode code from 1 to 17, "ERR" for any other.
[[nodiscard]] QString ModeName(qint16 Code);
/// The code of a mode name, blanks and case included; 0 for any other text.
[[nodiscard]] qint16 ModeCode(const QString &Name);
/// The name of a receiver code from 1 to 11, "ERR" for any other.
[[nodiscard]] QString ReceiverName(qint16 Code);
/// The code of a receiver name; 0 for any other text.
[[nodiscard]] qint16 ReceiverCode(const QString &Name);
/// Element 0 is the receiver's name (QString), elements 1 upward are its mode codes (qint16) in
/// the order of the list. A code outside 1 to 11 yields the one element "ERR".
[[nodiscard]] QVariantList ReceiverTable(qint16 Code);
/// Whether the receiver has an attenuator that can be switched; false for unknown codes.
[[nodiscard]] bool HasAttenuator(qint16 Code);
/// Whether mode and step of the receiver can be set: of all but the first two types, which stand
/// for any other receiver. 0, for none chosen, has nothing to set.
[[nodiscard]] constexpr bool isTunable(qint16 code) {
    constexpr qint16 lastOther = 2;
    return code > lastOther;
}

} // namespace veldron::GeneralUtilities
