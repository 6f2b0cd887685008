// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "tests/program/ClockFile.h"
#include "tests/program/ScreenReader.h"
#include "tests/program/SimulatedUnit.h"

#include <chrono>
#include <memory>
#include <optional>

namespace veldron {

// What the program shows and keeps in its folder.
inline const QString kMainWindow = QStringLiteral("VELDRON");
inline const QString kConnected = QStringLiteral("VELDRON connected on COM 3");
inline const QString kDefaultFile = QStringLiteral("VELDRON.set");
inline const QString kBandFile = QStringLiteral("band.rec");

/// The program itself in a folder of its own, with a simulated unit on one of the folder's ports,
/// and somebody who uses it through screen, keys and mouse.
///
/// A control is named by the label above or before it, a button by its caption or tip.
class ProgramRun {
public:
    ProgramRun();
    ProgramRun(const ProgramRun &) = delete;
    ProgramRun &operator=(const ProgramRun &) = delete;
    ~ProgramRun();

    // The folder.
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    void write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] QByteArray content(const QString &name) const;
    [[nodiscard]] bool exists(const QString &name) const;

    // The unit.
    [[nodiscard]] bool plugUnit(int port = 3,
                                const QStringList &options = {QStringLiteral("--pace"),
                                                              QStringLiteral("none")});
    [[nodiscard]] SimulatedUnit &unit() { return m_unit; }

    // The process.
    /// Files that the program writes may not grow beyond \a bytes: a full disk.
    void limitFiles(qint64 bytes) { m_fileLimit = bytes; }
    /// The program obeys the rights of files and folders, for root too.
    void obeyRights() { m_obeysRights = true; }
    /// The running program may not take more than \a bytes of memory beyond those it has.
    void limitMemory(qint64 bytes) const;
    /// Takes away the program's right to write into its own folder, for root too.
    void lockFolder();
    /// The program's time of day runs \a seconds ahead of the machine's.
    void shiftClock(int seconds);
    /// The program's steady clock runs \a times as fast as the machine's, if the clock is shifted.
    void speedUpSteadyClock(int times);
    /// Program and unit run by a clock that can be set and hurried while they run; called before
    /// either is started. Returns the clock.
    ClockFile &shareClock();
    /// Each flush of a file lasts so much longer from now on. Before the program is started it must
    /// be called once, with 0 if the disk is to be quick at first.
    void slowDownDisk(std::chrono::milliseconds delay);
    /// A variable of the environment that the program will be started in.
    void setVariable(const QString &name, const QString &value);
    void removeVariable(const QString &name);
    /// The program starts with the signal ignored, as under nohup.
    void ignoreSignal(int number) { m_ignoredSignal = number; }
    /// Pixels of the screen for one of the program's.
    void setScale(int factor) { m_scale = factor; }
    void launch();
    /// Launches the program and waits until its window is there and can be read.
    [[nodiscard]] bool open();
    /// Waits for the window of a program that has been launched.
    [[nodiscard]] bool awaitWindow();
    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    /// Resident size of the process in bytes, as the system counts it.
    [[nodiscard]] qint64 residentSize() const;
    void sendSignal(int number) const;
    void sendTerminate() { m_process.terminate(); }
    void sendKill() { m_process.kill(); }
    /// True if it ends within the time; exitCode() tells how.
    [[nodiscard]] bool ends(std::chrono::milliseconds limit = std::chrono::seconds(15));
    [[nodiscard]] int exitCode() const { return m_process.exitCode(); }
    [[nodiscard]] bool hasCrashed() const { return m_process.exitStatus() == QProcess::CrashExit; }
    [[nodiscard]] QByteArray errorOutput() { return m_process.readAllStandardError(); }

    [[nodiscard]] ScreenReader &reader() { return m_reader; }

    // What the screen shows.
    /// True once the program has worked off the input that came before.
    [[nodiscard]] bool answers() const { return m_reader.answers(); }
    [[nodiscard]] QList<ScreenItem> items() const { return m_reader.read(); }
    [[nodiscard]] std::optional<ScreenItem> control(const QString &label) const;
    [[nodiscard]] std::optional<ScreenItem> named(const QString &role, const QString &name) const;
    /// What a control shows: its text, its row, or "on" and "off".
    [[nodiscard]] QString shown(const QString &label) const;
    /// The same for several controls at one moment.
    [[nodiscard]] QMap<QString, QString> shown(const QStringList &labels) const;
    /// Waits until a control shows a text; what it shows then.
    [[nodiscard]] QString shownAfterWait(const QString &label, const QString &text,
                                         std::chrono::milliseconds limit = std::chrono::seconds(8));
    [[nodiscard]] bool isEnabled(const QString &label) const;
    /// The texts of the status bar's panels.
    [[nodiscard]] QString statusText() const { return panel(0); }
    [[nodiscard]] QString panel(int index) const;
    [[nodiscard]] bool awaitStatus(const QString &text,
                                   std::chrono::milliseconds limit = std::chrono::seconds(8));
    /// Where the chart's picture is on the screen.
    [[nodiscard]] QRect chart() const;

    // Input.
    void enter(const QString &label, const QString &text, const QString &endKey = "Return");
    void pick(const QString &label, const QString &row);
    void clickControl(const QString &label);
    void clickButton(const QString &name);
    void choose(const QString &menu, const QString &entry);
    /// Chooses the fastest poll rate, in the dialog: a settings file would change the tick of the
    /// poll timer and leave the grid of the polls. False when the dialog doesn't come or go.
    [[nodiscard]] bool pollFourTimesASecond();
    /// Waits for a dialog, gives it the keys, names a file and presses Enter; agrees to a new file.
    [[nodiscard]] bool answerFileDialog(const QString &title, const QString &file);
    /// The same up to Enter, without waiting for what follows.
    [[nodiscard]] bool nameFile(const QString &title, const QString &file) const;
    /// Waits for a question with \a text, presses \a button and waits until it is gone.
    [[nodiscard]] bool answerQuestion(const QString &text, const QString &button);

private:
    void preload(const QString &library);
    [[nodiscard]] QString textOf(const std::optional<ScreenItem> &control) const;
    void focusWindow() const;
    void agreeToNewFile(const QString &file) const;

    QTemporaryDir m_folder;
    SimulatedUnit m_unit;
    QProcess m_process;
    ScreenReader m_reader;
    qint64 m_fileLimit = -1;
    bool m_obeysRights = false;
    /// Of the environment; nothing takes the variable away.
    QMap<QString, std::optional<QString>> m_variables;
    QStringList m_preloads;
    std::unique_ptr<ClockFile> m_clock;
    int m_ignoredSignal = 0;
    int m_scale = 1;
};

} // namespace veldron
