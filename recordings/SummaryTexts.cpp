// SPDX-License-Identifier: MIT
#include "recordings/SummaryTexts.h"

#include "chart/LevelScale.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace veldron {

namespace {

using Moment = RecordingSummary::Moment;
using Stretch = RecordingSummary::Stretch;

int decibels(int level) {
    return level + LevelScale().offset;
}

QString durationText(qint64 seconds) {
    const auto two = [](qint64 number) {
        return QString::number(number).rightJustified(2, QLatin1Char('0'));
    };
    return QStringLiteral("%1:%2:%3")
        .arg(QString::number(seconds / 3600), two(seconds / 60 % 60), two(seconds % 60));
}

QString axisText(const Stretch &stretch) {
    if (!stretch.axis || stretch.mostLevels == 0) {
        return QStringLiteral("frequencies unknown");
    }
    const auto megahertz = [](Hertz value) {
        return QString::number(value.toDouble() / 1e6, 'f', 6);
    };
    return QStringLiteral("%1 to %2 MHz, step %3 Hz")
        .arg(megahertz(stretch.axis->start), megahertz(stretch.axis->at(stretch.mostLevels - 1)),
             stretch.axis->step.toText());
}

/// Lines of a page: a name in a column of its own, and what it is.
class Page {
public:
    void line(const QString &name, const QString &what) {
        m_text += name.leftJustified(12) + what + QLatin1Char('\n');
    }
    void entry(const QString &what) { line(QString(), what); }
    void more(qint64 all, std::size_t shown) {
        if (all > static_cast<qint64>(shown)) {
            entry(QStringLiteral("and %1 more").arg(all - static_cast<qint64>(shown)));
        }
    }
    [[nodiscard]] const QString &text() const { return m_text; }

private:
    QString m_text;
};

void addTimes(Page &page, const RecordingSummary &summary) {
    if (!summary.first()) {
        return;
    }
    const QString note = QStringLiteral(" (local time of the recording machine)");
    page.line(QStringLiteral("from"), summary.first()->text() + note);
    page.line(QStringLiteral("to"), summary.last()->text());
    if (summary.first()->date) {
        page.line(QStringLiteral("duration"),
                  durationText(summary.last()->seconds() - summary.first()->seconds()));
    }
    if (summary.hasAssumedDates()) {
        page.line(QStringLiteral("dates"),
                  QStringLiteral("day and month can't be told apart; --date-order decides"));
    }
}

void addScans(Page &page, const RecordingSummary &summary) {
    QString scans = QString::number(summary.scanCount());
    if (const auto rate = summary.rate()) {
        scans += QStringLiteral(", %1 a second").arg(*rate, 0, 'f', 3);
    }
    page.line(QStringLiteral("scans"), scans);
    if (summary.failedTransfers() > 0) {
        page.entry(QStringLiteral("of failed transfers: %1").arg(summary.failedTransfers()));
    }
    if (const auto least = summary.level(0.0)) {
        page.line(QStringLiteral("levels"), QStringLiteral("%1 to %2 dB, median %3 dB")
                                                .arg(decibels(*least))
                                                .arg(decibels(*summary.level(1.0)))
                                                .arg(decibels(*summary.level(0.5))));
    }
}

void addSettings(Page &page, const RecordingSummary &summary) {
    page.line(QStringLiteral("settings"),
              QStringLiteral("blocks: %1, stretches of equal settings: %2")
                  .arg(summary.blockCount())
                  .arg(summary.stretchCount()));
    for (const Stretch &stretch : summary.stretches()) {
        page.entry(QStringLiteral("from %1 (line %2): %3 scans, %4")
                       .arg(stretch.first.text(), QString::number(stretch.line),
                            QString::number(stretch.scans), axisText(stretch)));
        QStringList settings;
        for (const auto &[key, value] : stretch.settings) {
            settings.append(key + QLatin1Char(' ') + value);
        }
        page.entry(QStringLiteral("  ") + settings.join(QStringLiteral(", ")));
    }
    page.more(summary.stretchCount(), summary.stretches().size());
}

void addGaps(Page &page, const RecordingSummary &summary) {
    if (summary.gapCount() == 0) {
        page.line(QStringLiteral("gaps"), QStringLiteral("none"));
        return;
    }
    page.line(QStringLiteral("gaps"), QStringLiteral("%1, the longest %2")
                                          .arg(summary.gapCount())
                                          .arg(durationText(summary.longestGap())));
    for (const RecordingSummary::Gap &gap : summary.gaps()) {
        page.entry(QStringLiteral("%1 to %2 (line %3)")
                       .arg(gap.from.text(), gap.to.text(), QString::number(gap.line)));
    }
    page.more(summary.gapCount(), summary.gaps().size());
}

void addPlayback(Page &page, const RecordingSummary &summary) {
    if (summary.stumbleCount() == 0) {
        page.line(QStringLiteral("playback"), QStringLiteral("to the end"));
        return;
    }
    page.line(
        QStringLiteral("playback"),
        QStringLiteral("would end early; lines at which it would: %1").arg(summary.stumbleCount()));
    for (const Stumble &stumble : summary.stumbles()) {
        page.entry(QStringLiteral("line %1: %2").arg(stumble.line).arg(stumble.what));
    }
    page.more(summary.stumbleCount(), summary.stumbles().size());
}

// ---- JSON

QJsonObject objectOf(const Stretch &stretch) {
    QJsonObject settings;
    for (const auto &[key, value] : stretch.settings) {
        settings[key] = value;
    }
    QJsonObject object{{"from", stretch.first.text()},
                       {"line", stretch.line},
                       {"scans", stretch.scans},
                       {"levels", qint64{stretch.mostLevels}},
                       {"settings", settings}};
    if (stretch.axis) {
        object["start_hz"] = stretch.axis->start.toDouble();
        object["step_hz"] = stretch.axis->step.toDouble();
    }
    return object;
}

QJsonObject objectOf(const RecordingSummary::Gap &gap) {
    return {{"from", gap.from.text()},
            {"to", gap.to.text()},
            {"seconds", gap.seconds},
            {"line", gap.line}};
}

QJsonObject objectOf(const Stumble &stumble) {
    return {{"line", stumble.line}, {"what", stumble.what}};
}

QJsonObject objectOf(const RecordingFinding &finding) {
    return {{"line", finding.place.line},
            {"offset", finding.place.offset},
            {"skipped", finding.skipped},
            {"what", finding.what}};
}

template <typename Entry>
QJsonArray arrayOf(const std::vector<Entry> &list) {
    QJsonArray array;
    for (const Entry &entry : list) {
        array.append(objectOf(entry));
    }
    return array;
}

QJsonValue valueOf(const std::optional<Moment> &moment) {
    return moment ? QJsonValue(moment->text()) : QJsonValue();
}

QJsonValue decibelsOf(const std::optional<int> &level) {
    return level ? QJsonValue(decibels(*level)) : QJsonValue();
}

} // namespace

QString pageOf(const RecordingSummary &summary, const QString &name) {
    Page page;
    page.line(QStringLiteral("file"),
              QStringLiteral("%1, %2 bytes").arg(name, QString::number(summary.size())));
    addTimes(page, summary);
    addScans(page, summary);
    addGaps(page, summary);
    addSettings(page, summary);
    if (summary.skipped() > 0) {
        page.line(QStringLiteral("skipped"),
                  QStringLiteral("%1 bytes that can't be read").arg(summary.skipped()));
    }
    addPlayback(page, summary);
    return page.text();
}

QByteArray jsonOf(const RecordingSummary &summary, const QString &name) {
    const auto rate = summary.rate();
    const QJsonObject object{{"file", name},
                             {"bytes", summary.size()},
                             {"from", valueOf(summary.first())},
                             {"to", valueOf(summary.last())},
                             {"time_zone", "local time of the recording machine"},
                             {"date_order_assumed", summary.hasAssumedDates()},
                             {"scans", summary.scanCount()},
                             {"failed_transfers", summary.failedTransfers()},
                             {"scans_per_second", rate ? QJsonValue(*rate) : QJsonValue()},
                             {"levels_db", QJsonObject{{"least", decibelsOf(summary.level(0.0))},
                                                       {"median", decibelsOf(summary.level(0.5))},
                                                       {"most", decibelsOf(summary.level(1.0))}}},
                             {"gap_count", summary.gapCount()},
                             {"gaps", arrayOf(summary.gaps())},
                             {"block_count", summary.blockCount()},
                             {"stretch_count", summary.stretchCount()},
                             {"stretches", arrayOf(summary.stretches())},
                             {"skipped_bytes", summary.skipped()},
                             {"findings", arrayOf(summary.findings())},
                             {"plays", summary.stumbleCount() == 0},
                             {"stumble_count", summary.stumbleCount()},
                             {"stumbles", arrayOf(summary.stumbles())}};
    return QJsonDocument(object).toJson();
}

} // namespace veldron
