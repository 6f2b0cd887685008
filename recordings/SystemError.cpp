// SPDX-License-Identifier: MIT
#include "recordings/SystemError.h"

#include <QFile>
#include <QString>

#include <cstring>

namespace veldron {

UntrappedError systemError(const std::string &path, int code) {
    return {UntrappedError::Kind::File, QFile::decodeName(path.c_str()) + QStringLiteral(": ") +
                                            QString::fromLocal8Bit(std::strerror(code))};
}

} // namespace veldron
