// SPDX-License-Identifier: MIT
#include "recordings/SystemError.h"

#include <cstring>

namespace veldron {

UntrappedError systemError(const QString &name, int code) {
    return {UntrappedError::Kind::File,
            name + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(code))};
}

} // namespace veldron
