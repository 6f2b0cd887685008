// SPDX-License-Identifier: MIT
// How long the line itself is busy with an answer: no exchange can be faster.
#pragma once

#include <QByteArrayList>

namespace veldron {

/// Seconds that a fresh unit's answers to \a commands take at 9600 baud with 11 bits a byte, one
/// after the other. The simulated line paces what the unit sends; the commands themselves take no
/// time on it, and are left out here as well.
[[nodiscard]] double lineSeconds(const QByteArrayList &commands);

} // namespace veldron
