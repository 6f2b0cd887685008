// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/PlaybackJudge.h"
#include "recordings/RecordingVisitor.h"
#include "recordings/SettingsInForce.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <map>
#include <optional>
#include <vector>

namespace veldron {

/// What `info` tells of a recording, gathered in one pass. Of what may come often only the first
/// are kept; the counts are of all. The getters are for after finish().
class RecordingSummary : public RecordingVisitor {
public:
    /// Entries that each list keeps.
    static constexpr std::size_t kMostEntries = 100;

    struct Moment {
        std::optional<QDate> date;
        qint32 second = 0;

        /// ISO form; the time alone where there is no date.
        [[nodiscard]] QString text() const;
        /// As of momentOf(), on a day of 1970 where there is no date: for differences.
        [[nodiscard]] qint64 seconds() const;
    };
    /// Scans with the same settings.
    struct Stretch {
        Moment first;
        qint64 line; ///< of its block
        qint64 scans = 0;
        /// Nothing where the settings don't tell it.
        std::optional<FrequencyAxis> axis;
        /// Levels of its longest scan.
        qsizetype mostLevels = 0;
        /// The lines of the settings without the display lines, as key and value.
        std::vector<std::pair<QString, QString>> settings;
    };
    /// A pause of more than three polls, and more than two seconds.
    struct Gap {
        Moment from;
        Moment to;
        qint64 seconds = 0;
        qint64 line = 0; ///< of the scan behind it
    };

    /// \a texts are those of the program that is to play.
    explicit RecordingSummary(const DateTimeText &texts);

    void bytes(QByteArrayView bytes) override;
    void firstLine(QByteArrayView bytes) override;
    void scan(const RecordedScan &scan) override;
    void block(const RecordedBlock &block) override;
    void finding(const RecordingFinding &finding) override;
    /// Behind the last call of the reader.
    void finish();

    /// Bytes of the file.
    [[nodiscard]] qint64 size() const { return m_size; }
    [[nodiscard]] qint64 scanCount() const { return m_scans; }
    /// Scans that stand for a transfer that failed: one level of 0, or 325 of them.
    [[nodiscard]] qint64 failedTransfers() const { return m_failed; }
    [[nodiscard]] qint64 blockCount() const { return m_blocks; }
    /// The first and the last scan in the file; nothing without a scan.
    [[nodiscard]] std::optional<Moment> first() const { return m_first; }
    [[nodiscard]] std::optional<Moment> last() const { return m_last; }
    /// Scans a second over the whole time, gaps included: one less than the scans, over the seconds
    /// from first to last. Nothing where no time has passed.
    [[nodiscard]] std::optional<double> rate() const;
    [[nodiscard]] qint64 stretchCount() const { return m_stretchCount; }
    [[nodiscard]] const std::vector<Stretch> &stretches() const { return m_stretches; }
    [[nodiscard]] qint64 gapCount() const { return m_gapCount; }
    /// In seconds; 0 without a gap.
    [[nodiscard]] qint64 longestGap() const { return m_longestGap; }
    [[nodiscard]] const std::vector<Gap> &gaps() const { return m_gaps; }
    /// Raw level below which \a share of all levels lie (0 the least, 1 the most); nothing without
    /// levels. Failed transfers don't count.
    [[nodiscard]] std::optional<int> level(double share) const;
    /// Bytes that were neither scan nor setting.
    [[nodiscard]] qint64 skipped() const { return m_skipped; }
    [[nodiscard]] const std::vector<RecordingFinding> &findings() const { return m_findings; }
    /// Places at which playback would end.
    [[nodiscard]] qint64 stumbleCount() const { return m_stumbleCount; }
    [[nodiscard]] const std::vector<Stumble> &stumbles() const { return m_stumbles; }
    /// Whether the dates rest on an assumed order of day and month.
    [[nodiscard]] bool hasAssumedDates() const { return m_hasAssumedDates; }

private:
    /// Goes on with the last stretch where a block has changed nothing but the date.
    void beginStretch(const Moment &moment);
    void noteGap(const Moment &moment, qint64 line);
    void noteLevels(QByteArrayView levels);

    PlaybackJudge m_judge;
    qint64 m_size = 0;
    qint64 m_scans = 0;
    qint64 m_failed = 0;
    qint64 m_blocks = 0;
    std::optional<Moment> m_first;
    std::optional<Moment> m_last;
    SettingsInForce m_settings;
    std::map<SettingsKey, QByteArray> m_stretchLines; ///< those of the last stretch
    qint64 m_blockLine = 1;
    /// A block has come since the last scan.
    bool m_settingsAreNew = true;
    qint64 m_longestPause = 2; ///< that is no gap, in seconds
    std::vector<Stretch> m_stretches;
    /// The present stretch is the last one of m_stretches, and not one too many.
    bool m_lastStretchIsKept = false;
    qint64 m_gapCount = 0;
    qint64 m_longestGap = 0;
    std::vector<Gap> m_gaps;
    /// How often each raw level was measured.
    std::array<qint64, 256> m_levels{};
    qint64 m_skipped = 0;
    std::vector<RecordingFinding> m_findings;
    qint64 m_stumbleCount = 0;
    std::vector<Stumble> m_stumbles;
    bool m_hasAssumedDates = false;
    qint64 m_stretchCount = 0;
};

} // namespace veldron
