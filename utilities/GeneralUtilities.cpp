// SPDX-License-Identifier: MIT
#include "utilities/GeneralUtilities.h"

#include "common/LeadingNumber.h"
#include "common/TimeOfDay.h"
#include "common/WaitLimit.h"
#include "utilities/MagicStatics.h"

#include <cmath>
#include <limits>

namespace veldron::GeneralUtilities {

namespace {

constexpr float kDay = kSecondsPerDay;
constexpr float kHalfDay = kDay / 2.0F;
/// Longest rest between two looks at the clock.
constexpr int kRestMilliseconds = 5;

/// \a numerator / \a denominator to nearest, halves away from zero. \a denominator is above 0.
qint64 divideHalfAway(qint64 numerator, qint64 denominator) {
    const qint64 quotient = numerator / denominator;
    const qint64 rest = numerator % denominator;
    if (qAbs(rest) < denominator - qAbs(rest)) {
        return quotient;
    }
    return numerator < 0 ? quotient - 1 : quotient + 1;
}

/// \a number with at least one digit more than \a places, and a point before each group of
/// \a groupSize of its last \a places digits.
QString pointedText(qint64 number, int places, int groupSize) {
    const quint64 size =
        number < 0 ? 0U - static_cast<quint64>(number) : static_cast<quint64>(number);
    QString text = QString::number(size).rightJustified(places + 1, QLatin1Char('0'));
    for (qsizetype group = groupSize; group <= places; group += groupSize) {
        // Each point that is already in stands to the right of the next.
        text.insert(text.size() - group - (group / groupSize - 1), QLatin1Char('.'));
    }
    return number < 0 ? QLatin1Char('-') + text : text;
}

qint64 wholeHertz(Hertz value) {
    return divideHalfAway(value.units(), Hertz::kUnitsPerHertz);
}

/// \a size in units of \a unit bytes, in tenths.
qint64 tenthsOf(qint64 size, qint64 unit) {
    return size / unit * 10 + divideHalfAway(size % unit * 10, unit);
}

QString sizeText(qint64 number, const QString &digits, QLatin1Char letter) {
    return QLatin1String(number < 0 ? "-   " : "   ") + digits + letter;
}

QString twoDigits(int number) {
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

const MagicStatics::Receiver *findReceiver(qint16 code) {
    if (code < 1 || static_cast<std::size_t>(code) > MagicStatics::kReceivers.size()) {
        return nullptr;
    }
    return &MagicStatics::kReceivers[static_cast<std::size_t>(code) - 1];
}

} // namespace

QString FormatFileSize(qint64 Size) {
    constexpr qint64 kilo = 1024;
    constexpr qint64 mega = kilo * kilo;
    if (Size < 1000 * kilo) {
        const qint64 tenths = tenthsOf(Size, kilo);
        return sizeText(tenths, pointedText(qAbs(tenths), 1, 1), QLatin1Char('k'));
    }
    if (Size < 100000 * kilo) {
        const qint64 whole = divideHalfAway(Size, kilo);
        return sizeText(whole, QString::number(whole), QLatin1Char('k'));
    }
    const qint64 tenths = tenthsOf(Size, mega);
    return sizeText(tenths, pointedText(tenths, 1, 1), QLatin1Char('M'));
}

QString FrequencyText(Hertz Value) {
    constexpr Hertz limit = Hertz::fromWhole(1'000'000);
    const bool isShort = Value < limit && -limit < Value;
    return pointedText(wholeHertz(Value), isShort ? 3 : 6, 3);
}

QString FormatMHz(Hertz Value) {
    return pointedText(divideHalfAway(Value.units(), 10 * Hertz::kUnitsPerHertz), 5, 5);
}

QString FormatKHz(Hertz Value) {
    return pointedText(wholeHertz(Value), 3, 3);
}

QString DigitsOnly(const QString &Text) {
    QString digits;
    for (const QChar character : Text) {
        if (character >= QLatin1Char('0') && character <= QLatin1Char('9')) {
            digits.append(character);
        }
    }
    return digits;
}

double LeadingNumber(const QString &Text) {
    return leadingNumber(Text);
}

QString ModeName(qint16 Code) {
    if (Code < 1 || static_cast<std::size_t>(Code) > MagicStatics::kModeNames.size()) {
        return QString::fromUtf16(MagicStatics::kNoName);
    }
    return QString::fromUtf16(MagicStatics::kModeNames[static_cast<std::size_t>(Code) - 1]);
}

qint16 ModeCode(const QString &Name) {
    for (std::size_t i = 0; i < MagicStatics::kModeNames.size(); ++i) {
        if (Name == QStringView(MagicStatics::kModeNames[i])) {
            return static_cast<qint16>(i + 1);
        }
    }
    return 0;
}

QString ReceiverName(qint16 Code) {
    const MagicStatics::Receiver *receiver = findReceiver(Code);
    return QString::fromUtf16(receiver != nullptr ? receiver->name : MagicStatics::kNoName);
}

qint16 ReceiverCode(const QString &Name) {
    for (std::size_t i = 0; i < MagicStatics::kReceivers.size(); ++i) {
        if (Name == QStringView(MagicStatics::kReceivers[i].name)) {
            return static_cast<qint16>(i + 1);
        }
    }
    return 0;
}

QVariantList ReceiverTable(qint16 Code) {
    QVariantList table = {ReceiverName(Code)};
    if (const MagicStatics::Receiver *receiver = findReceiver(Code)) {
        for (const qint16 mode : receiver->modes) {
            table.append(QVariant::fromValue(mode));
        }
    }
    return table;
}

bool HasAttenuator(qint16 Code) {
    const MagicStatics::Receiver *receiver = findReceiver(Code);
    return receiver != nullptr && receiver->hasAttenuator;
}

void WaitSeconds(Clock &clock, float Seconds) {
    const float start = clock.timeOfDay();
    const WaitLimit longest(clock);
    float now = start;
    // Not folded at midnight: a wait that crosses it is ended by the steady clock.
    while (start + Seconds > now && !longest.isReached()) {
        clock.rest(kRestMilliseconds);
        now = clock.timeOfDay();
    }
}

float TimeDifference(float From, float To) {
    const float difference = To - From;
    if (difference >= kHalfDay) {
        return difference - kDay;
    }
    return difference < -kHalfDay ? difference + kDay : difference;
}

QString TimeText(float Seconds, bool ShowSeconds) {
    float rest = std::isfinite(Seconds) ? std::fmod(Seconds, kDay) : 0.0F;
    if (rest < 0.0F) {
        rest += kDay;
    } else if (rest == 0.0F && Seconds >= kDay && std::isfinite(Seconds)) {
        // A whole day is hour 24, not hour 0.
        rest = kDay;
    }
    const int whole = static_cast<int>(rest);
    QString text = twoDigits(whole / 3600) + QLatin1Char(':') + twoDigits(whole % 3600 / 60);
    if (ShowSeconds) {
        text += QLatin1Char(':') + twoDigits(whole % 60);
    }
    return text;
}

} // namespace veldron::GeneralUtilities
