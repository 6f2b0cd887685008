// SPDX-License-Identifier: MIT
#include "utilities/FrequencyEntry.h"

#include "utilities/NumberTexts.h"

#include <cmath>

namespace veldron {

namespace {

constexpr qint32 kKilo = 1000;
constexpr qint32 kMega = 1'000'000;

} // namespace

Hertz FrequencyEntry::ParseFrequencyKey(char16_t Key, Unit DefaultUnit) {
    if (!m_Editing) {
        m_Editing = true;
        m_EntryText.clear();
        m_EntryScale = 1;
    }
    act(Key, DefaultUnit);
    limit();
    return Hertz::fromDouble(m_EntryScale * GeneralUtilities::LeadingNumber(m_EntryText));
}

void FrequencyEntry::act(char16_t key, Unit defaultUnit) {
    if (key >= u'0' && key <= u'9') {
        appendDigit(key);
    } else if (key == kBackspace) {
        m_EntryText.chop(1);
    } else if (key == u',' || key == u'.') {
        m_EntryScale = kKilo;
        m_EntryText.append(QLatin1Char('.'));
    } else if (key == u'K' || key == u'k') {
        finish(kKilo);
    } else if (key == u'M' || key == u'm') {
        finish(kMega);
    } else if (key != u' ') {
        finish(defaultUnit == Unit::M ? kMega : kKilo);
    }
}

void FrequencyEntry::appendDigit(char16_t digit) {
    constexpr qsizetype longEnoughToCut = 8;
    constexpr qsizetype kept = 10;
    m_EntryText.append(QChar(digit));
    // On purpose two numbers: nothing is lost before the eleventh character.
    if (m_EntryText.size() >= longEnoughToCut) {
        m_EntryText = m_EntryText.right(kept);
    }
}

void FrequencyEntry::finish(qint32 scale) {
    m_EntryScale = scale;
    m_Editing = false;
}

void FrequencyEntry::limit() {
    const double highest = kCeiling / m_EntryScale;
    if (std::abs(GeneralUtilities::LeadingNumber(m_EntryText)) > highest) {
        m_EntryText = QLatin1Char(' ') + QString::number(static_cast<qint64>(highest));
    }
}

} // namespace veldron
