// SPDX-License-Identifier: MIT
#include "common/ReportText.h"

#include <cstdio>

namespace veldron {

QString quotedForReport(const QString &text) {
    constexpr qsizetype kLongest = 40;
    QString shown = text.left(kLongest);
    for (QChar &character : shown) {
        if (!character.isPrint()) {
            character = QLatin1Char('?');
        }
    }
    const QString quoted = QLatin1Char('"') + shown + QLatin1Char('"');
    return text.size() > kLongest ? quoted + QLatin1String("...") : quoted;
}

void writeReportLine(const QString &text) {
    std::fprintf(stderr, "veldron: %s\n", text.toUtf8().constData());
}

} // namespace veldron
