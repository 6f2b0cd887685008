// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"

namespace veldron {

/// A frequency of so many Hertz, short enough for tables of them.
constexpr Hertz hz(qint64 hertz) {
    return Hertz::fromWhole(hertz);
}

} // namespace veldron
