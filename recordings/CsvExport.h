// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/OutputFile.h"
#include "recordings/RecordingExport.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <vector>

namespace veldron {

/// Writes scans as text with commas.
///
/// In rows, a scan is one line without a headline above it:
///   date, time, low Hz, high Hz, Hz step, samples, dB, dB, ...
/// with the frequencies of the first and the last level in whole hertz, the layout that rtl_power
/// introduced. In columns, a level is one line below a headline: local time, frequency, level.
/// A field that the recording doesn't tell (a date, frequencies) is empty.
class CsvExport : public RecordingExport {
public:
    enum class Layout { Rows, Columns };

    /// \a out outlives the export.
    CsvExport(const std::string &file, TimeWindow window, Console &console, OutputFile &out,
              Layout layout);

protected:
    void settingsChanged() override;
    void take(const RecordedScan &scan) override;

private:
    /// A level with what stands in front of it, and how long that is, in eight bytes that are
    /// copied at once.
    struct LevelText {
        std::array<char, 7> bytes;
        std::uint8_t size;
    };

    void writeRow(const RecordedScan &scan);
    void writeColumns(const RecordedScan &scan);
    static char *putLevel(char *place, LevelText text);
    [[nodiscard]] const QByteArray &dateText(const RecordedScan &scan);

    OutputFile &m_out;
    Layout m_layout;
    std::array<LevelText, 256> m_levelTexts{};
    /// Of a row: what stands between time and levels. By the number of levels, because the upper
    /// end depends on it; worked out when it is needed.
    std::vector<QByteArray> m_middleTexts;
    /// Of a column: the frequency of each level with a comma on both sides.
    std::vector<QByteArray> m_frequencyTexts;
    std::optional<QDate> m_day;
    QByteArray m_dayText;
    bool m_hasHeadline = false;
};

} // namespace veldron
