// SPDX-License-Identifier: MIT
#include "tests/fuzz/LineEntry.h"

#include "common/DateTimeText.h"
#include "common/Hertz.h"
#include "common/TextFile.h"
#include "utilities/NumberTexts.h"

#include <QBuffer>

#include <cstdlib>
#include <memory>

namespace veldron {

namespace {

void demand(bool kept) {
    if (!kept) {
        std::abort();
    }
}

void readValue(const QString &value) {
    static const DateTimeText kTexts{QLocale::c()};
    static_cast<void>(GeneralUtilities::LeadingNumber(value));
    static_cast<void>(GeneralUtilities::DigitsOnly(value));
    for (const char mark : {'.', ','}) {
        const QLatin1Char decimalMark(mark);
        if (const auto frequency = Hertz::fromText(value, decimalMark)) {
            demand(Hertz::fromText(frequency->toText(decimalMark), decimalMark) == frequency);
        }
    }
    if (const auto date = kTexts.readDate(value)) {
        demand(kTexts.readDate(kTexts.dateText(*date)) == date);
    }
    if (const auto time = kTexts.readTime(value)) {
        demand(kTexts.readTime(kTexts.timeText(*time)) == time);
    }
}

} // namespace

void readLinesOf(const std::uint8_t *bytes, std::size_t size) {
    const auto length = static_cast<qsizetype>(size);
    auto file = std::make_unique<QBuffer>();
    file->setData(QByteArray(reinterpret_cast<const char *>(bytes), length));
    file->open(QIODevice::ReadOnly);
    TextFileReader reader(std::move(file));
    qint64 least = 0;
    qint64 lines = 0;
    while (!reader.atEnd()) {
        const QString line = reader.readLine();
        ++lines;
        demand(reader.lineNumber() == lines);
        demand(!line.contains(QLatin1Char('\r')) && !line.contains(QLatin1Char('\n')));
        least += reader.lastLineLength();
        readValue(line.mid(line.indexOf(QLatin1Char(' ')) + 1));
    }
    // Each line but the last has an end of one or two bytes.
    demand(least + qMax<qint64>(lines - 1, 0) <= length && least + 2 * lines >= length);
}

} // namespace veldron
