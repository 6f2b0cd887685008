// SPDX-License-Identifier: MIT
#include "tests/fuzz/SettingsTextEntry.h"

#include "common/TextFile.h"
#include "format/FileErrors.h"
#include "format/SettingsBlock.h"
#include "format/SettingsValue.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/PlainText.h"

#include <QBuffer>

#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace veldron {

namespace {

enum class Form { Text, Flag, Whole16, Whole32, Frequency, Number };

/// In the order of the keys.
constexpr std::array kForms{
    Form::Text,   Form::Flag,      Form::Whole32, Form::Flag,    Form::Whole16,   Form::Whole32,
    Form::Flag,   Form::Whole32,   Form::Whole16, Form::Number,  Form::Frequency, Form::Frequency,
    Form::Number, Form::Frequency, Form::Number,  Form::Text,    Form::Text,      Form::Whole32,
    Form::Flag,   Form::Whole16,   Form::Whole16, Form::Whole16, Form::Whole16,   Form::Text};
static_assert(kForms.size() == kSettingsKeys.size());

/// An error's text with its place is one line, however long the value is.
constexpr qsizetype kLongestMessage = 300;

class Lines : public LineSink {
public:
    void writeLine(const QString &line) override { list.push_back(FileLine::of(line)); }
    std::vector<FileLine> list;
};

class SettingsText {
public:
    explicit SettingsText(const QByteArray &file) : m_reader(openBuffer(file)) {}

    void read() {
        if (!m_reader.atEnd()) {
            (void)m_reader.readLine();
        }
        while (!m_reader.atEnd()) {
            m_text = m_reader.readLine();
            takeLine();
        }
        checkBlock();
    }

private:
    static std::unique_ptr<QIODevice> openBuffer(const QByteArray &file) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(file);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }

    void takeLine() {
        const FileLine line = FileLine::of(m_text);
        const bool hasBlank = m_text.contains(QLatin1Char(' '));
        demand(line.text() == (hasBlank ? m_text : m_text + QLatin1Char(' ')));
        demand(!line.key.contains(QLatin1Char(' ')));
        const std::optional<SettingsKey> key = settingsKeyOf(line.key);
        demand(m_block.take(line) == key.has_value());
        demand(SettingsBlock::isEnd(line) == (key == SettingsKey::EndSettings));
        if (!key) {
            return;
        }
        demand(textOf(*key) == line.key);
        if (line.key == QLatin1String("StartSettings")) {
            m_values.clear();
        }
        m_values[line.key] = line.value;
        readValue(kForms.at(static_cast<std::size_t>(*key)), line.value);
    }

    void readValue(Form form, const QString &value) {
        switch (form) {
        case Form::Text:
            break;
        case Form::Flag:
            demand(SettingsValue::flag(value) == (value.toLatin1() == "True"));
            demand(SettingsValue::flag(SettingsValue::ofFlag(true)));
            break;
        case Form::Whole16:
            readWhole<qint16>(value);
            break;
        case Form::Whole32:
            readWhole<qint32>(value);
            break;
        case Form::Frequency:
            readFrequency(value, '.');
            readFrequency(value, ',');
            break;
        case Form::Number:
            readNumber(value);
            break;
        }
    }

    template <typename T>
    void readWhole(const QString &value) {
        const double plain = std::nearbyint(PlainText::leadingNumber(value.toLatin1()));
        const bool fits =
            plain >= std::numeric_limits<T>::min() && plain <= std::numeric_limits<T>::max();
        try {
            const T number = SettingsValue::whole<T>(value);
            demand(fits && static_cast<double>(number) == plain);
            demand(SettingsValue::whole<T>(SettingsValue::ofWhole(number)) == number);
        } catch (const UntrappedError &error) {
            demand(!fits);
            checkError(error, UntrappedError::Kind::Overflow);
        }
    }

    void readFrequency(const QString &value, char mark) {
        using Kind = PlainText::Decimal::Kind;
        const QByteArray bytes = value.toLatin1();
        const auto plain = PlainText::strictDecimal(PlainText::trimmed(bytes), mark);
        const QLatin1Char decimalMark(mark);
        // Within ten units of the end of the range the reader may refuse.
        constexpr qint64 kSure = std::numeric_limits<qint64>::max() - 20;
        try {
            const Hertz frequency = SettingsValue::frequency(value, decimalMark);
            demand(plain.kind == Kind::Fits && frequency.units() == plain.units);
            const QString text = SettingsValue::ofFrequency(frequency, decimalMark);
            demand(qAbs(plain.units) > kSure ||
                   SettingsValue::frequency(text, decimalMark) == frequency);
        } catch (const UntrappedError &error) {
            demand(plain.kind != Kind::Fits || qAbs(plain.units) > kSure);
            checkError(error, UntrappedError::Kind::BadValue);
        }
    }

    void readNumber(const QString &value) {
        constexpr double kLimit = 9223372036854775808.0;
        const double plain = PlainText::leadingNumber(value.toLatin1());
        const double units = std::nearbyint(plain * 10000.0);
        const bool fits = units >= -kLimit && units < kLimit;
        try {
            const Hertz number = SettingsValue::numberOfHertz(value);
            demand(fits && static_cast<double>(number.units()) == units);
            // As many digits as a double holds survive their text.
            constexpr double kExact = 1e11;
            const QString text = SettingsValue::ofFrequency(number, QLatin1Char('.'));
            demand(std::abs(plain) > kExact || SettingsValue::numberOfHertz(text) == number);
        } catch (const UntrappedError &error) {
            demand(!fits);
            checkError(error, UntrappedError::Kind::Overflow);
        }
    }

    void checkError(const UntrappedError &error, UntrappedError::Kind kind) const {
        demand(error.kind() == kind);
        const QString told = FileErrors::inLastLine(m_reader, m_text, error).message();
        demand(told.startsWith(QStringLiteral("Line %1 of the file").arg(m_reader.lineNumber())));
        demand(told.size() < kLongestMessage && !told.contains(QLatin1Char('\n')));
    }

    void checkBlock() const {
        Lines written;
        m_block.writeTo(written);
        SettingsBlock again;
        std::optional<SettingsKey> last;
        for (const FileLine &line : written.list) {
            demand(again.take(line));
            const std::optional<SettingsKey> key = settingsKeyOf(line.key);
            demand(!last || *last < *key);
            last = key;
        }
        for (std::size_t number = 0; number < kSettingsKeys.size(); ++number) {
            const auto key = static_cast<SettingsKey>(number);
            const auto plain = m_values.find(QLatin1String(kSettingsKeys.at(number)));
            const bool isThere = plain != m_values.end();
            demand(m_block.value(key) == (isThere ? std::optional(plain->second) : std::nullopt));
            demand(again.value(key) == m_block.value(key));
        }
    }

    TextFileReader m_reader;
    SettingsBlock m_block;
    std::map<QString, QString> m_values; ///< what the block must hold
    QString m_text;
};

} // namespace

void readSettingsText(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray file(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    SettingsText(file).read();
}

} // namespace veldron
