// SPDX-License-Identifier: MIT
#include "recordings/SettingsInForce.h"

#include "common/LeadingNumber.h"
#include "common/LevelScan.h"
#include "common/Numbers.h"
#include "recordings/ScanFinder.h"
#include "utilities/Codes.h"

namespace veldron {

bool isDisplayLine(SettingsKey key) {
    return key >= SettingsKey::PersistenceOn && key <= SettingsKey::MarkerOn;
}

void SettingsInForce::take(const RecordedBlock &block) {
    if (block.isWhole()) {
        std::erase_if(m_lines, [](const auto &line) { return !isDisplayLine(line.first); });
    }
    for (const RecordedSetting &line : block.lines) {
        m_lines[line.key] = line.bytes.toByteArray();
    }
}

void SettingsInForce::takeLines(const std::map<SettingsKey, QByteArray> &lines) {
    std::erase_if(m_lines, [](const auto &line) { return !isDisplayLine(line.first); });
    for (const auto &[key, line] : lines) {
        m_lines[key] = line;
    }
}

std::optional<QString> SettingsInForce::value(SettingsKey key) const {
    const auto found = m_lines.find(key);
    if (found == m_lines.end()) {
        return std::nullopt;
    }
    const auto fit = settingsLineAt(found->second, true);
    return fit ? std::optional(QString::fromLatin1(fit->value)) : std::nullopt;
}

std::optional<qint64> SettingsInForce::number(SettingsKey key) const {
    const std::optional<QString> text = value(key);
    return text ? Numbers::roundToExact<qint64>(leadingNumber(*text)) : std::nullopt;
}

std::optional<Hertz> SettingsInForce::hertz(SettingsKey key) const {
    const std::optional<QString> text = value(key);
    if (!text) {
        return std::nullopt;
    }
    const QLatin1Char comma(',');
    return Hertz::fromText(*text, text->contains(comma) ? comma : QLatin1Char('.'));
}

bool SettingsInForce::isAnswered(SettingsKey key) const {
    return value(key) != QStringLiteral("-1");
}

std::optional<FrequencyAxis> SettingsInForce::axis() const {
    using Key = SettingsKey;
    for (const Key key : {Key::MonitorMode, Key::Start, Key::Step, Key::Span, Key::Centre}) {
        if (!isAnswered(key)) {
            return std::nullopt;
        }
    }
    const auto mode = number(Key::MonitorMode);
    if (mode && *mode == static_cast<qint64>(MonitorModeCode::Channel)) {
        const auto start = hertz(Key::Start);
        const auto step = hertz(Key::Step);
        return start && step ? std::optional(FrequencyAxis{*start, *step}) : std::nullopt;
    }
    const auto span = hertz(Key::Span);
    const auto centre = hertz(Key::Centre);
    if (!span || !centre) {
        return std::nullopt;
    }
    const qint64 step = Numbers::divideHalfEven(span->units(), kScanSteps * Hertz::kUnitsPerHertz);
    return FrequencyAxis{*centre - span->dividedBy(2), Hertz::fromWhole(step)};
}

} // namespace veldron
