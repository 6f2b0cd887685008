// SPDX-License-Identifier: MIT
#pragma once

#include "app/frmDisplay.h"

#include "app/StatusPanels.h"
#include "chart/ctlChartSpectrum.h"
#include "common/DateTimeText.h"
#include "history/ctlPlayback.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"
#include "tests/app/FakeDialogs.h"
#include "tests/app/StatusBarReader.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ScriptedSerialControl.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLocale>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace veldron {

/// The whole main form on the offscreen display: a scripted unit on COM 3, a clock that is moved by
/// hand, boxes and file dialogs that answer at once, and a program folder of its own.
///
/// Nothing exists before start(), so that a test can first say which ports there are and what the
/// unit holds. The unit is a simple one: it keeps whatever is written to it. It starts in Spectrum
/// mode at 100 MHz with 10 MHz of span, data mode Normal and receiver 7; in Channel mode it has
/// 144 MHz to 146 MHz in steps of 25 kHz and its marker at 145 MHz.
class FormFixture : public testing::Test {
protected:
    FormFixture() {
        dropForm();
        m_control.setUnit(true);
        setPorts({3}, 3);
        resetUnit();
    }
    ~FormFixture() override { dropForm(); }

    // ---- the world before the start

    /// \a ports exist; the unit is on COM \a unitPort, 0 for none.
    void setPorts(const std::vector<qint16> &ports, qint16 unitPort) {
        m_control.setPorts(ports);
        m_control.setUnitPort(unitPort == 0 ? qint16{99} : unitPort);
    }
    /// All of the unit's settings as they were at first.
    void resetUnit() {
        const std::vector<std::pair<const char *, const char *>> values{
            {"URX", "7"},   {"UST", "25"}, {"UAT", "2"},  {"UMD", "1"}, {"SGN", "-20"},
            {"SDM", "1"},   {"SBW", "2"},  {"SAV", "8"},  {"SME", "3"}, {"UOM", "1"},
            {"SCF", "100"}, {"SSP", "10"}, {"ICD", "145"}};
        for (const auto &[letters, value] : values) {
            setUnit(letters, QLatin1String(value));
        }
        setUnit("UCS", "144 25 146");
    }
    /// What the unit answers to "R" and \a letters, from now on.
    void setUnit(const char *letters, const QString &value) {
        m_control.setUnitValue(QLatin1String(letters), value);
    }
    [[nodiscard]] QString unitHolds(const char *letters) const {
        return m_control.unitValue(QLatin1String(letters));
    }
    void setUnitToChannelMode() { setUnit("UOM", "3"); }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    void writeFile(const QString &name, const QByteArray &bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray readFile(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // ---- start and end

    void dropForm() {
        if (m_form && m_form->hasEnded()) {
            // The end of the program stops every event loop until the next one of the application.
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
            QApplication::exec();
        }
        m_form.reset();
        // A window that goes asks the application to quit; the next form has no part in that.
        QCoreApplication::removePostedEvents(QCoreApplication::instance());
    }
    void make(const QString &manual = {}) {
        dropForm(); // gives the line back before another form takes it
        m_form = std::make_unique<frmDisplay>(
            frmDisplay::Dependencies{m_control, m_clock, m_dialogs, m_texts, m_folder.path(),
                                     QStringLiteral("1.0.0"), manual});
    }
    void start() {
        make();
        m_form->load();
    }
    /// Starts, and forgets what the start has sent.
    void startUp() {
        start();
        forgetSent();
    }
    void startUpInChannelMode() {
        setUnitToChannelMode();
        startUp();
    }
    /// Runs the event loop with \a act as its first event until the program ends; its exit code.
    int runUntilEnd(const std::function<void()> &act) {
        constexpr int kGivenUp = 99;
        QTimer::singleShot(0, m_form.get(), act);
        QTimer::singleShot(20000, m_form.get(), [] { QCoreApplication::exit(kGivenUp); });
        return QApplication::exec();
    }

    // ---- the line

    /// The commands on the wire since the last call.
    QStringList sent() {
        const QStringList commands = m_control.commands();
        m_control.clearCommands();
        return commands;
    }
    void forgetSent() { m_control.clearCommands(); }
    /// What reading everything back sends outside Channel mode, in data mode Normal.
    [[nodiscard]] static QStringList readBack() {
        return {"RURX", "RUST", "RUAT", "RUMD", "RSGN", "RSDM", "RSBW", "RUOM", "RSSP", "RSCF"};
    }
    /// The same in Channel mode.
    [[nodiscard]] static QStringList readBackChannels() {
        return {"RURX", "RUST", "RUAT", "RUMD", "RSGN", "RSDM", "RSBW", "RUOM", "RUCS", "RICD"};
    }

    // ---- the poll

    [[nodiscard]] QTimer *pollTimer() const {
        return m_form->findChild<PollTimer *>()->findChild<QTimer *>();
    }
    [[nodiscard]] bool isPolling() const { return pollTimer()->isActive(); }
    /// The poll timer's tick, if it runs.
    void tick() {
        if (isPolling()) {
            QTimerEvent event(pollTimer()->timerId());
            QCoreApplication::sendEvent(pollTimer(), &event);
        }
    }
    /// Moves the clock just past the next full second and ticks, \a times times.
    void poll(int times = 1) {
        for (int done = 0; done < times; ++done) {
            m_clock.advance(std::floor(m_clock.seconds()) + 1.03 - m_clock.seconds());
            tick();
        }
    }

    // ---- the form

    template <typename T>
    [[nodiscard]] T &child(const char *name) const {
        T *found = m_form->findChild<T *>(QLatin1String(name));
        if (found == nullptr) {
            ADD_FAILURE() << "the form has no " << name;
            std::abort();
        }
        return *found;
    }
    [[nodiscard]] ctlFrequency &receiver() const { return child<ctlFrequency>("ctlFrequency1"); }
    [[nodiscard]] ctlMonitorMode &monitor() const {
        return child<ctlMonitorMode>("ctlMonitorMode1");
    }
    [[nodiscard]] ctlDataMode &data() const { return child<ctlDataMode>("ctlDataMode1"); }
    [[nodiscard]] ctlChartSpectrum &chart() const {
        return child<ctlChartSpectrum>("ctlChartSpectrum1");
    }
    /// Text of the chart's own status bar, which is never shown.
    [[nodiscard]] QString chartStatus() const {
        return chart().findChild<QStatusBar *>()->currentMessage();
    }
    [[nodiscard]] ctlPlayback &transport() const { return child<ctlPlayback>("ctlPlayback1"); }
    /// Writes one of the display settings from code.
    template <typename T>
    void writeDisplay(T DisplaySettings::*field, std::type_identity_t<T> value) {
        DisplaySettings values = displaySettings().values();
        values.*field = value;
        displaySettings().setValues(values);
    }
    [[nodiscard]] frmDisplaySettings &displaySettings() const {
        return *m_form->findChildren<frmDisplaySettings *>().first();
    }
    [[nodiscard]] frmCommSettings &commSettings() const {
        return *m_form->findChildren<frmCommSettings *>().first();
    }
    [[nodiscard]] StatusPanels &statusBar() const {
        return *m_form->findChildren<StatusPanels *>().first();
    }
    /// Text of panel 1.
    [[nodiscard]] QString status() const { return statusText(statusBar()); }
    [[nodiscard]] ActivityImage activity() const { return shownActivity(statusBar()); }
    /// Texts of panels 2 and 3.
    [[nodiscard]] QString place() const {
        return panelText(statusBar(), "Panel2") + " | " + panelText(statusBar(), "Panel3Text");
    }
    [[nodiscard]] QAction &entry(const char *name) const { return child<QAction>(name); }

    // ---- what the user does

    /// As if the user had made \a panel raise Changed.
    template <typename Panel, typename Code>
    static void raise(Panel &panel, Code What) {
        Q_EMIT panel.Changed(What);
    }
    /// Picks a menu entry; what it shows answers at once.
    void pick(const char *name) { entry(name).trigger(); }
    /// Picks a menu entry that shows a dialog of the program's own, runs \a act over it, and then
    /// closes it with OK unless it is gone already.
    void pickDialog(const char *name, const std::function<void(QDialog &)> &act = {}) {
        QTimer::singleShot(0, m_form.get(), [act] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            if (act) {
                act(*dialog);
            }
            if (dialog->isVisible()) {
                dialog->accept();
            }
        });
        pick(name);
    }
    /// The user picks \a row of the list \a name on \a owner.
    static void pickRow(QWidget &owner, const char *name, int row) {
        auto *list = owner.findChild<QComboBox *>(QLatin1String(name));
        ASSERT_NE(list, nullptr);
        list->setCurrentIndex(row);
        Q_EMIT list->activated(row);
    }
    /// A double click on the chart that has put the marker onto \a frequency.
    void doubleClickChart(Hertz frequency) {
        chart().setMarkerEn(true);
        chart().setRXFreq(frequency);
        raise(chart(), 0);
    }

    /// Ten o'clock and a bit, so that the first tick of the poll is due.
    ManualClock m_clock{36000.2};
    ScriptedSerialControl m_control{m_clock};
    FakeDialogs m_dialogs;
    QTemporaryDir m_folder;
    DateTimeText m_texts{QLocale::c()};
    std::unique_ptr<frmDisplay> m_form;
};

/// Hertz of a number of megahertz.
inline Hertz megahertz(double value) {
    return Hertz::fromDouble(value * 1000000.0);
}

} // namespace veldron
