// SPDX-License-Identifier: MIT
#include "tests/program/ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"

#include <gtest/gtest.h>

#include <csignal>

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kTitle = QStringLiteral("VELDRON");
const QString kProgram = QStringLiteral("veldron");
const QString kSimulator = QStringLiteral("veldron-simulator");

/// Puts an executable into the folder, without a copy where the file system allows that.
void stage(const char *from, const QString &to) {
    if (::link(from, QFile::encodeName(to).constData()) != 0) {
        ASSERT_TRUE(QFile::copy(QFile::decodeName(from), to)) << from;
    }
}

bool isControl(const ScreenItem &item) {
    static const QStringList roles = {QStringLiteral("text"), QStringLiteral("combo box"),
                                      QStringLiteral("check box")};
    return roles.contains(item.role);
}

/// A control stands right under its label, their left edges in line, or to the right of it.
bool belongsTo(const ScreenItem &item, const ScreenItem &label) {
    constexpr int kSlack = 8;
    constexpr int kReach = 60;
    const bool under = qAbs(item.place.left() - label.place.left()) <= kSlack &&
                       item.place.top() > label.place.top() &&
                       item.place.top() - label.place.bottom() <= kSlack;
    const bool beside = qAbs(item.place.center().y() - label.place.center().y()) <= kSlack &&
                        item.place.left() > label.place.right() &&
                        item.place.left() - label.place.right() <= kReach;
    return under || beside;
}

const ScreenItem *find(const QList<ScreenItem> &items, const QString &role, const QString &name) {
    for (const ScreenItem &item : items) {
        if (item.role == role && item.name == name) {
            return &item;
        }
    }
    return nullptr;
}

std::optional<ScreenItem> controlIn(const QList<ScreenItem> &all, const QString &label) {
    const ScreenItem *found = find(all, QStringLiteral("label"), label);
    if (found == nullptr) {
        return std::nullopt;
    }
    for (const ScreenItem &item : all) {
        if (isControl(item) && belongsTo(item, *found)) {
            return item;
        }
    }
    return std::nullopt;
}

} // namespace

ProgramRun::ProgramRun() : m_folder(QDir::currentPath() + QStringLiteral("/program-XXXXXX")) {
    stage(VELDRON_PROGRAM, path(kProgram));
    stage(VELDRON_SIMULATOR, path(kSimulator));
    QDir(m_folder.path()).mkdir(QStringLiteral("ports"));
    m_process.setChildProcessModifier([this] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (m_obeysRights) {
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
            ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
        }
        if (m_ignoredSignal != 0) {
            std::signal(m_ignoredSignal, SIG_IGN);
        }
        if (m_fileLimit >= 0) {
            const rlimit limit{static_cast<rlim_t>(m_fileLimit), static_cast<rlim_t>(m_fileLimit)};
            ::setrlimit(RLIMIT_FSIZE, &limit);
            // A write beyond the limit must fail, as on a full disk, and not end the process.
            std::signal(SIGXFSZ, SIG_IGN);
        }
    });
}

ProgramRun::~ProgramRun() {
    if (isRunning()) {
        m_process.kill();
        m_process.waitForFinished();
    }
    QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void ProgramRun::write(const QString &name, const QByteArray &content) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray ProgramRun::content(const QString &name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool ProgramRun::exists(const QString &name) const {
    return QFile::exists(path(name));
}

/// Root ignores a folder's rights unless the capability to do so is dropped.
void ProgramRun::lockFolder() {
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::ReadOwner | QFile::ExeOwner));
    m_obeysRights = true;
}

void ProgramRun::limitMemory(qint64 bytes) const {
    QFile file(QStringLiteral("/proc/%1/statm").arg(processId()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    constexpr int kData = 5;
    const qint64 present =
        file.readAll().split(' ').value(kData).toLongLong() * ::sysconf(_SC_PAGESIZE);
    const auto most = static_cast<rlim_t>(present + bytes);
    const rlimit limit{most, most};
    ASSERT_EQ(::prlimit(static_cast<pid_t>(processId()), RLIMIT_DATA, &limit, nullptr), 0);
}

void ProgramRun::sendSignal(int number) const {
    ASSERT_EQ(::kill(static_cast<pid_t>(processId()), number), 0);
}

qint64 ProgramRun::residentSize() const {
    QFile file(QStringLiteral("/proc/%1/statm").arg(processId()));
    const bool opened = file.open(QIODevice::ReadOnly);
    return opened ? file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE) : 0;
}

bool ProgramRun::plugUnit(int port, const QStringList &options) {
    return m_unit.start(path(kSimulator), path(QStringLiteral("ports/COM%1").arg(port)),
                        path(QStringLiteral("simulator.log")), options);
}

void ProgramRun::setVariable(const QString &name, const QString &value) {
    m_variables[name] = value;
}

void ProgramRun::removeVariable(const QString &name) {
    m_variables[name] = std::nullopt;
}

void ProgramRun::preload(const QString &library) {
    if (!m_preloads.contains(library)) {
        m_preloads.append(library);
    }
}

void ProgramRun::shiftClock(int seconds) {
    preload(QStringLiteral(VELDRON_SHIFTED_CLOCK));
    setVariable(QStringLiteral("VELDRON_CLOCK_SHIFT"), QString::number(seconds));
}

void ProgramRun::speedUpSteadyClock(int times) {
    setVariable(QStringLiteral("VELDRON_CLOCK_RATE"), QString::number(times));
}

void ProgramRun::slowDownDisk(std::chrono::milliseconds delay) {
    const QString file = QStringLiteral("disk-delay");
    write(file, QByteArray::number(delay.count()) + '\n');
    setVariable(QStringLiteral("VELDRON_DISK_DELAY"), path(file));
    preload(QStringLiteral(VELDRON_SLOW_DISK));
}

ClockFile &ProgramRun::shareClock() {
    m_clock = std::make_unique<ClockFile>(path(QStringLiteral("clock")));
    preload(QStringLiteral(VELDRON_SHIFTED_CLOCK));
    setVariable(QStringLiteral("VELDRON_CLOCK_FILE"), m_clock->path());
    setVariable(QStringLiteral("VELDRON_CLOCK_HURRIES"), QStringLiteral("1"));
    m_unit.setVariable(QStringLiteral("LD_PRELOAD"), QStringLiteral(VELDRON_SHIFTED_CLOCK));
    m_unit.setVariable(QStringLiteral("VELDRON_CLOCK_FILE"), m_clock->path());
    return *m_clock;
}

void ProgramRun::launch() {
    setVariable(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    setVariable(QStringLiteral("QT_SCALE_FACTOR"), QString::number(m_scale));
    if (!m_preloads.isEmpty()) {
        setVariable(QStringLiteral("LD_PRELOAD"), m_preloads.join(QLatin1Char(':')));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto variable = m_variables.cbegin(); variable != m_variables.cend(); ++variable) {
        if (variable.value()) {
            environment.insert(variable.key(), *variable.value());
        } else {
            environment.remove(variable.key());
        }
    }
    m_process.setProcessEnvironment(environment);
    m_process.setWorkingDirectory(m_folder.path());
    m_process.start(path(kProgram), QStringList());
    ASSERT_TRUE(m_process.waitForStarted());
}

bool ProgramRun::open() {
    launch();
    return awaitWindow();
}

bool ProgramRun::awaitWindow() {
    const bool shown = Desk::awaitWindow(kTitle, 30s) &&
                       eventually(10s, [this] { return m_reader.attach(m_process.processId()); }) &&
                       eventually(10s, [this] { return control("RX Frequency").has_value(); });
    focusWindow();
    return shown;
}

bool ProgramRun::ends(std::chrono::milliseconds limit) {
    return m_process.state() == QProcess::NotRunning ||
           m_process.waitForFinished(static_cast<int>(limit.count()));
}

std::optional<ScreenItem> ProgramRun::control(const QString &label) const {
    return controlIn(items(), label);
}

std::optional<ScreenItem> ProgramRun::named(const QString &role, const QString &name) const {
    const QList<ScreenItem> all = items();
    const ScreenItem *found = find(all, role, name);
    return found == nullptr ? std::nullopt : std::optional<ScreenItem>(*found);
}

QString ProgramRun::shown(const QString &label) const {
    return textOf(control(label));
}

QMap<QString, QString> ProgramRun::shown(const QStringList &labels) const {
    const QList<ScreenItem> all = items();
    QMap<QString, QString> texts;
    for (const QString &label : labels) {
        texts[label] = textOf(controlIn(all, label));
    }
    return texts;
}

QString ProgramRun::textOf(const std::optional<ScreenItem> &control) const {
    if (!control) {
        return QStringLiteral("(not there)");
    }
    if (control->role == QLatin1String("check box")) {
        return control->isChecked ? QStringLiteral("on") : QStringLiteral("off");
    }
    return m_reader.textOf(*control);
}

QString ProgramRun::shownAfterWait(const QString &label, const QString &text,
                                   std::chrono::milliseconds limit) {
    QString present;
    (void)eventually(limit, [&] {
        present = shown(label);
        return present == text;
    });
    return present;
}

bool ProgramRun::isEnabled(const QString &label) const {
    const std::optional<ScreenItem> item = control(label);
    return item && item->isEnabled;
}

QString ProgramRun::panel(int index) const {
    const QList<ScreenItem> all = items();
    int panels = 0;
    for (const ScreenItem &item : all) {
        const bool inBar =
            item.parent >= 0 && all.at(item.parent).role == QLatin1String("status bar");
        if (inBar && panels++ == index) {
            return item.role == QLatin1String("label") ? item.name : item.description;
        }
    }
    return {};
}

bool ProgramRun::awaitStatus(const QString &text, std::chrono::milliseconds limit) {
    return eventually(limit, [&] { return statusText() == text; });
}

/// The chart's picture is the largest thing in the window that has nothing larger inside.
QRect ProgramRun::chart() const {
    const QList<ScreenItem> all = items();
    QRect inside;
    for (const ScreenItem &item : all) {
        const bool inWindow = item.parent >= 0 && all.at(item.parent).parent < 0;
        if (inWindow && item.role == QLatin1String("filler")) {
            inside = item.place;
        }
    }
    QRect largest;
    for (const ScreenItem &item : all) {
        const bool larger =
            item.place.height() > largest.height() ||
            (item.place.height() == largest.height() && item.place.width() <= largest.width());
        if (item.role == QLatin1String("filler") && item.place != inside && larger &&
            inside.contains(item.place)) {
            largest = item.place;
        }
    }
    return largest;
}

void ProgramRun::focusWindow() const {
    Desk::focus(kTitle);
}

void ProgramRun::enter(const QString &label, const QString &text, const QString &endKey) {
    const std::optional<ScreenItem> item = control(label);
    ASSERT_TRUE(item) << qPrintable(label);
    constexpr int kInside = 12;
    Desk::click({item->place.left() + kInside, item->place.center().y()});
    Desk::type(text);
    if (!endKey.isEmpty()) {
        Desk::key(endKey);
    }
}

void ProgramRun::pick(const QString &label, const QString &row) {
    const std::optional<ScreenItem> list = control(label);
    ASSERT_TRUE(list) << qPrintable(label);
    constexpr int kArrow = 8;
    Desk::click({list->place.right() - kArrow, list->place.center().y()});
    std::optional<ScreenItem> entry;
    const bool opened = eventually(5s, [&] {
        entry = named(QStringLiteral("list item"), row);
        return entry && list->place.width() > 0 && entry->place.height() > 0;
    });
    ASSERT_TRUE(opened) << qPrintable(label + ": " + row);
    Desk::click(entry->place.center());
}

void ProgramRun::clickControl(const QString &label) {
    const std::optional<ScreenItem> item = control(label);
    ASSERT_TRUE(item) << qPrintable(label);
    Desk::click(item->place.center());
}

void ProgramRun::clickButton(const QString &name) {
    static const QStringList roles = {QStringLiteral("push button"), QStringLiteral("check box"),
                                      QStringLiteral("slider")};
    for (const ScreenItem &item : items()) {
        if (item.name == name && roles.contains(item.role)) {
            Desk::click(item.place.center());
            return;
        }
    }
    FAIL() << "no button " << qPrintable(name);
}

void ProgramRun::choose(const QString &menu, const QString &entry) {
    focusWindow();
    const std::optional<ScreenItem> title = named(QStringLiteral("menu item"), menu);
    ASSERT_TRUE(title) << qPrintable(menu);
    Desk::click(title->place.center());
    std::optional<ScreenItem> found;
    ASSERT_TRUE(eventually(5s, [&] {
        found = named(QStringLiteral("menu item"), entry);
        return found.has_value();
    })) << qPrintable(entry);
    Desk::click(found->place.center());
}

bool ProgramRun::pollFourTimesASecond() {
    const QString title = QStringLiteral("Communication Settings");
    choose(QStringLiteral("Settings"), QStringLiteral("Communications..."));
    if (!Desk::awaitWindow(title, 5s)) {
        return false;
    }
    Desk::focus(title);
    pick(QStringLiteral("VDR poll rate"), QStringLiteral("0.25s"));
    clickButton(QStringLiteral("OK"));
    const bool closed = eventually(5s, [&] { return !Desk::hasWindow(title); });
    focusWindow();
    return closed;
}

/// A file that is not there yet is made only after a question.
void ProgramRun::agreeToNewFile(const QString &file) const {
    const QString question =
        QFileInfo(file).fileName() + QStringLiteral(" does not exist.\nDo you want to create it?");
    const QList<ScreenItem> all = items();
    const ScreenItem *yes = find(all, QStringLiteral("push button"), QStringLiteral("Yes"));
    if (yes != nullptr && find(all, QStringLiteral("label"), question) != nullptr) {
        Desk::click(yes->place.center());
    }
}

bool ProgramRun::nameFile(const QString &title, const QString &file) const {
    if (!Desk::awaitWindow(title, 10s)) {
        return false;
    }
    Desk::focus(title);
    Desk::key(QStringLiteral("ctrl+a"));
    Desk::type(file);
    Desk::key(QStringLiteral("Return"));
    return true;
}

bool ProgramRun::answerFileDialog(const QString &title, const QString &file) {
    return nameFile(title, file) && eventually(5s, [&] {
               agreeToNewFile(file);
               return !Desk::hasWindow(title);
           });
}

bool ProgramRun::answerQuestion(const QString &text, const QString &button) {
    const auto isUp = [&] {
        return named(QStringLiteral("label"), text).has_value();
    };
    if (!eventually(5s, isUp)) {
        return false;
    }
    clickButton(button);
    return eventually(5s, [&] { return !isUp(); });
}

} // namespace veldron
