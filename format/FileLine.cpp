// SPDX-License-Identifier: MIT
#include "format/FileLine.h"

namespace veldron {

FileLine FileLine::of(const QString &line) {
    const qsizetype blank = line.indexOf(QLatin1Char(' '));
    return blank < 0 ? FileLine{line, {}} : FileLine{line.left(blank), line.mid(blank + 1)};
}

QString FileLine::text() const {
    return key + QLatin1Char(' ') + value;
}

} // namespace veldron
