// SPDX-License-Identifier: MIT
#pragma once

#include "common/UntrappedError.h"

#include <string>

namespace veldron {

/// The error that the system reported for the file \a path with the number \a code (of errno), as
/// "path: what". "-" is told as the standard stream that it stands for.
[[nodiscard]] UntrappedError systemError(const std::string &path, int code);

} // namespace veldron
