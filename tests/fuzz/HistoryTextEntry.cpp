// SPDX-License-Identifier: MIT
#include "tests/fuzz/HistoryTextEntry.h"

#include "tests/fuzz/Demand.h"
#include "tests/fuzz/LiteralPlayback.h"

#include <QLocale>

namespace veldron {

void readHistoryText(const std::uint8_t *bytes, std::size_t size) {
    static const DateTimeText kBritish{QLocale(QLocale::English, QLocale::UnitedKingdom)};
    static const DateTimeText kGerman{QLocale(QLocale::German, QLocale::Germany)};
    const QByteArray file(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    for (const DateTimeText *texts : {&kBritish, &kGerman}) {
        const LiteralOutcome outcome = playLiterally(file, *texts);
        demand(!outcome.errorLine || !outcome.error.contains(QLatin1Char('\n')));
    }
}

} // namespace veldron
