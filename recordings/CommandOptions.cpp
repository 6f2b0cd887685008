// SPDX-License-Identifier: MIT
#include "recordings/CommandOptions.h"

#include "common/DateTimeText.h"
#include "common/TimeOfDay.h"
#include "common/UntrappedError.h"
#include "recordings/ByteSource.h"
#include "recordings/CommandError.h"
#include "recordings/TimeForms.h"

#include <QFile>
#include <QLocale>
#include <QTime>

namespace veldron {

namespace {

/// The order in which the present locale writes day and month.
DateOrder orderOfLocale() {
    const QByteArray text = DateTimeText(QLocale::system()).dateText(QDate(2005, 3, 21)).toLatin1();
    return DateForms::read(text, DateForms::of(DateOrder::MonthDayYear)).forms == 0
               ? DateOrder::DayMonthYear
               : DateOrder::MonthDayYear;
}

} // namespace

void DateOptions::addTo(CommandLine &options) {
    options
        .option("--date-order", order,
                "Order of day, month and year in the recording: dmy, mdy or ymd")
        .oneOf({"dmy", "mdy", "ymd"});
}

RecordingDates::Rules DateOptions::rules() const {
    RecordingDates::Rules rules{std::nullopt, orderOfLocale()};
    if (order == "dmy") {
        rules.given = DateOrder::DayMonthYear;
    } else if (order == "mdy") {
        rules.given = DateOrder::MonthDayYear;
    } else if (order == "ymd") {
        rules.given = DateOrder::YearMonthDay;
    }
    return rules;
}

void LocaleOption::addTo(CommandLine &options) {
    options
        .option("--locale", name,
                "Locale that playback runs under, such as de_DE (default: this machine's)")
        .called("NAME");
}

QLocale LocaleOption::locale() const {
    if (name.empty()) {
        return QLocale::system();
    }
    const QString text = QString::fromStdString(name);
    const QLocale locale(text);
    // An unknown name gives the C locale.
    if (locale == QLocale::c() && name != "C") {
        throw CommandError(ExitCode::WrongUsage,
                           QStringLiteral("\"%1\" is no locale such as de_DE").arg(text));
    }
    return locale;
}

void OutputOptions::addTo(CommandLine &options) {
    options.option("-o,--output", path, "File to write, - for standard output").called("OUT");
    options.flag("--force", force, "Replace a file that is there already");
}

std::unique_ptr<OutputFile> OutputOptions::open(const std::string &byDefault,
                                                const std::string &input) const {
    return open(byDefault, std::vector<std::string>{input});
}

std::unique_ptr<OutputFile> OutputOptions::open(const std::string &byDefault,
                                                const std::vector<std::string> &inputs) const {
    const std::string &target = path.empty() ? byDefault : path;
    for (const std::string &input : inputs) {
        if (target != "-" && input != "-" && FileSource(input).isFile(target)) {
            throw UntrappedError(UntrappedError::Kind::File,
                                 QFile::decodeName(target.c_str()) +
                                     QStringLiteral(": this is the recording itself"));
        }
    }
    return std::make_unique<OutputFile>(target, force);
}

void TimeWindow::addTo(CommandLine &options) {
    options.option("--from", from, "First moment: 2005-03-21 14:00:00, 2005-03-21 or 14:00")
        .called("TIME");
    options.option("--to", to, "First moment that is left out, like --from").called("TIME");
}

TimeWindow::Bound TimeWindow::read(const std::string &text) {
    QString rest = QString::fromStdString(text).trimmed();
    Bound bound;
    const QString day = rest.left(10);
    if (const QDate date = QDate::fromString(day, Qt::ISODate);
        day.size() == 10 && date.isValid()) {
        bound.day = date;
        rest = rest.mid(11); // a blank or a T between
    }
    const QTime time =
        rest.isEmpty() && bound.day ? QTime(0, 0) : QTime::fromString(rest, Qt::ISODate);
    if (!time.isValid()) {
        throw CommandError(ExitCode::WrongUsage,
                           QStringLiteral("\"%1\" is no time such as "
                                          "\"2005-03-21 14:00:00\" or \"14:00\"")
                               .arg(QString::fromStdString(text)));
    }
    bound.second = QTime(0, 0).secsTo(time);
    return bound;
}

void TimeWindow::parse() {
    if (!from.empty()) {
        m_first = read(from);
    }
    if (!to.empty()) {
        m_last = read(to);
    }
}

void TimeWindow::fixDay(const QDate &firstDay) {
    for (std::optional<Bound> *bound : {&m_first, &m_last}) {
        if (*bound && !(*bound)->day) {
            (*bound)->day = firstDay;
        }
    }
}

bool TimeWindow::has(const RecordedScan &scan) {
    if (isOpen()) {
        return true;
    }
    if (!scan.date) {
        return false;
    }
    fixDay(*scan.date);
    const qint64 moment = momentOf(*scan.date, scan.second);
    return (!m_first || moment >= momentOf(*m_first->day, m_first->second)) &&
           (!m_last || moment < momentOf(*m_last->day, m_last->second));
}

qint64 momentOf(const QDate &date, qint32 second) {
    return date.toJulianDay() * kSecondsPerDay + second;
}

} // namespace veldron
