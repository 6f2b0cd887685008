// SPDX-License-Identifier: MIT
// The tables of the receivers that can be attached to the unit: their types and their modes.
//
// Data only. The codes are what the unit speaks and what the panels hold; settings files hold the
// names. The look-ups in these tables are in Receivers.h.
#pragma once

#include <QtGlobal>

#include <array>
#include <span>

namespace veldron::MagicStatics {

/// Names of the receiver's modes; the code of a name is its position counted from 1. The blank at
/// the head of " AM", " CW" and " FM" is part of the name: lists show it, files hold it.
inline constexpr std::array<const char16_t *, 17> kModeNames = {
    u"WFM",  u"NFM", u"SFM", u"WAM", u" AM", u"NAM", u"LSB",  u"USB", u" CW",
    u"AUTO", u"AMW", u" FM", u"FMN", u"AMN", u"CWN", u"WFM1", u"WFM2"};

/// One type of receiver. Nothing else belongs to it: no frequency range, no steps, no offset.
struct Receiver {
    const char16_t *name;
    std::span<const qint16> modes; ///< mode codes, in the order in which a list shows them
    bool hasAttenuator;
};

/// Lists of mode codes, named after the types that have them. A type without a list of its own
/// shares one.
namespace Detail {
inline constexpr std::array<qint16, 7> kModes1100 = {5, 7, 8, 9, 10, 16, 17};
inline constexpr std::array<qint16, 6> kModes2400 = {1, 2, 5, 7, 8, 9};
inline constexpr std::array<qint16, 10> kModesOneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
inline constexpr std::array<qint16, 8> kModesSix = {1, 2, 5, 7, 8, 9, 10, 12};
inline constexpr std::array<qint16, 10> kModes4400 = {1, 5, 7, 8, 9, 11, 12, 13, 14, 15};
inline constexpr std::array<qint16, 7> kModes3300 = {1, 5, 7, 8, 11, 12, 13};
inline constexpr std::array<qint16, 5> kModes2700 = {1, 2, 3, 4, 5};
} // namespace Detail

/// The receiver types; the code of a type is its position counted from 1.
///
/// The order matters: the types without settings of their own come first (isTunable() in
/// Receivers.h counts them), and the highest code can be picked by the user but isn't taken over
/// from the unit (ctlFrequency::setRX), so a new last row changes what the program does with the
/// one before it.
inline constexpr std::array<Receiver, 11> kReceivers = {{
    {u"Other (10M)", {}, false},
    {u"Other (45M)", {}, false},
    {u"VK1100", Detail::kModes1100, true},
    {u"VK2400B", Detail::kModes2400, true},
    {u"VK3700(10M)", Detail::kModesOneToTen, true},
    {u"VK3700(45M)", Detail::kModesOneToTen, true},
    {u"VK3900", Detail::kModesOneToTen, true},
    {u"VK-SIX", Detail::kModesSix, true},
    {u"VM-T4400", Detail::kModes4400, false},
    {u"VM-T3300", Detail::kModes3300, false},
    {u"VKF2700", Detail::kModes2700, true},
}};

/// The name of a code that is in no table.
inline constexpr const char16_t *kNoName = u"ERR";

} // namespace veldron::MagicStatics
