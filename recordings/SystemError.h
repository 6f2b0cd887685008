// SPDX-License-Identifier: MIT
#pragma once

#include "common/UntrappedError.h"

#include <QString>

namespace veldron {

/// The error that the system reported for the file \a name with the number \a code (of errno), as
/// "name: what".
[[nodiscard]] UntrappedError systemError(const QString &name, int code);

} // namespace veldron
