// SPDX-License-Identifier: MIT
#include "tests/fuzz/LineEntry.h"

#include "common/DateTimeText.h"
#include "common/Hertz.h"
#include "common/TextFile.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/PlainText.h"
#include "utilities/NumberTexts.h"

#include <QBuffer>

#include <algorithm>
#include <limits>
#include <memory>

namespace veldron {

namespace {

using PlainText::Decimal;

QByteArray bytesOf(const std::uint8_t *bytes, std::size_t size) {
    return {reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size)};
}

/// What stands behind the first blank, the whole line where it has none.
QString valueOf(const QString &line) {
    return line.mid(line.indexOf(QLatin1Char(' ')) + 1);
}

void readNumbers(const QString &value) {
    const QByteArray plain = value.toLatin1();
    // A number past the range of a double is its end for the program.
    constexpr double kMost = std::numeric_limits<double>::max();
    demand(GeneralUtilities::LeadingNumber(value) ==
           qBound(-kMost, PlainText::leadingNumber(plain), kMost));
    const QString digits = GeneralUtilities::DigitsOnly(value);
    demand(digits.size() == std::count_if(plain.begin(), plain.end(),
                                          [](char byte) { return byte >= '0' && byte <= '9'; }));
    for (const char mark : {'.', ','}) {
        const QLatin1Char decimalMark(mark);
        const Decimal decimal = PlainText::strictDecimal(PlainText::trimmed(plain), mark);
        const auto frequency = Hertz::fromText(value, decimalMark);
        // So near to the end of the range the program may refuse.
        constexpr qint64 kSure = std::numeric_limits<qint64>::max() - 20;
        if (frequency) {
            demand(decimal.kind == Decimal::Kind::Fits && frequency->units() == decimal.units);
            demand(qAbs(decimal.units) > kSure ||
                   Hertz::fromText(frequency->toText(decimalMark), decimalMark) == frequency);
        } else {
            demand(decimal.kind != Decimal::Kind::Fits || qAbs(decimal.units) > kSure);
        }
    }
}

void readTimes(const QString &value) {
    static const DateTimeText kTexts{QLocale::c()};
    if (const auto date = kTexts.readDate(value)) {
        demand(kTexts.readDate(kTexts.dateText(*date)) == date);
    }
    if (const auto time = kTexts.readTime(value)) {
        demand(kTexts.readTime(kTexts.timeText(*time)) == time);
    }
}

} // namespace

void readLinesOf(const std::uint8_t *bytes, std::size_t size) {
    auto file = std::make_unique<QBuffer>();
    file->setData(bytesOf(bytes, size));
    file->open(QIODevice::ReadOnly);
    TextFileReader reader(std::move(file));
    qint64 number = 0;
    for (const PlainText::Line &plain : PlainText::linesOf(bytesOf(bytes, size))) {
        demand(!reader.atEnd());
        const QString line = reader.readLine();
        demand(line == QString::fromLatin1(plain.bytes));
        demand(reader.lineNumber() == ++number);
        demand(reader.lastLineLength() == plain.bytes.size());
        demand(reader.lastLineEnded() == plain.ended);
        readNumbers(valueOf(line));
    }
    demand(reader.atEnd());
}

void readTimesOf(const std::uint8_t *bytes, std::size_t size) {
    for (const PlainText::Line &line : PlainText::linesOf(bytesOf(bytes, size))) {
        readTimes(valueOf(QString::fromLatin1(line.bytes)));
    }
}

} // namespace veldron
