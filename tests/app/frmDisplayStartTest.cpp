// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include "app/QtDialogs.h"
#include "app/frmSplash.h"

#include <QMessageBox>
#include <QTest>
#include <QWindow>

namespace veldron {
namespace {

/// Notes whether the splash's picture was painted while no port had been opened yet.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(const ScriptedSerialControl &control) : m_control(control) {
        qApp->installEventFilter(this);
    }
    [[nodiscard]] bool seenBeforeFirstOpen() const { return m_seen; }
    bool eventFilter(QObject *watched, QEvent *event) override {
        const auto *widget = qobject_cast<const QWidget *>(watched);
        m_seen = m_seen || (event->type() == QEvent::Paint && widget != nullptr &&
                            widget->objectName() == "Image1" &&
                            qobject_cast<const frmSplash *>(widget->window()) != nullptr &&
                            !m_control.writes().contains("PortOpen=true"));
        return QObject::eventFilter(watched, event);
    }

private:
    const ScriptedSerialControl &m_control;
    bool m_seen = false;
};

class FrmDisplayStartTest : public FormFixture {
protected:
    [[nodiscard]] QStringList portRows() const {
        const auto *list = commSettings().findChild<QComboBox *>("cboComPort");
        QStringList rows;
        for (int row = 0; row < list->count(); ++row) {
            rows.append(list->itemText(row));
        }
        return rows;
    }
    [[nodiscard]] int portRow() const {
        return commSettings().findChild<QComboBox *>("cboComPort")->currentIndex();
    }
    [[nodiscard]] static QWindow *splashWindow() {
        for (const QWidget *window : QApplication::topLevelWidgets()) {
            if (qobject_cast<const frmSplash *>(window) != nullptr && window->isVisible()) {
                return window->windowHandle();
            }
        }
        return nullptr;
    }
    [[nodiscard]] static bool splashIsUp() { return splashWindow() != nullptr; }
    /// Another program takes the unit's port as soon as the search has found the unit there.
    void takePortAfterTheSearch() {
        m_control.setCommandHook(
            [this](const QString &) { m_control.failOpen(3, SerialErrorCode::kPortInUse); });
    }
    /// \a act comes from the window system while the splash comes up; true if no splash is left
    /// when the search begins.
    bool closesTheSplash(const std::function<void(QWindow &)> &act) {
        bool acted = false;
        bool left = true;
        m_control.setCommandHook([&](const QString &) { left = left && splashIsUp(); });
        QTimer::singleShot(0, [&] {
            if (QWindow *window = splashWindow()) {
                acted = true;
                act(*window);
            }
        });
        start();
        m_control.setCommandHook({});
        EXPECT_TRUE(acted);
        return !left;
    }
    /// Presses OK of the box that is up, as soon as one is.
    void acceptBox() {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            m_boxAccepted = true;
            box->accept();
        } else {
            QTimer::singleShot(5, m_form.get(), [this] { acceptBox(); });
        }
    }
    [[nodiscard]] static bool hourglass() {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    }

    bool m_boxAccepted = false;
};

TEST_F(FrmDisplayStartTest, unitOnTheOnlyPort_isFoundConnectedAndReadBack) {
    start();
    EXPECT_EQ(sent(), (QStringList{"RIVE", "RIVE"}) + readBack());
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(pollTimer()->interval(), 1000);
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
    EXPECT_EQ(activity(), ActivityImage::Blank);
}

TEST_F(FrmDisplayStartTest, line_isSetUpBeforeTheFirstPortIsTried) {
    start();
    const QStringList writes = m_control.writes();
    EXPECT_LT(writes.indexOf("Handshaking=2"), writes.indexOf("Settings=9600,n,8,2"));
    EXPECT_LT(writes.indexOf("Settings=9600,n,8,2"), writes.indexOf("CommPort=1"));
}

TEST_F(FrmDisplayStartTest, unitOnTheThirdPort_selectsRow3) {
    setPorts({2, 5, 9, 11}, 9);
    start();
    EXPECT_EQ(portRows(), (QStringList{"None", "COM 2", "COM 5", "COM 9", "COM 11"}));
    EXPECT_EQ(portRow(), 3);
    EXPECT_EQ(m_control.CommPort(), 9);
    EXPECT_EQ(sent(), (QStringList{"RIVE", "RIVE", "RIVE", "RIVE"}) + readBack());
    EXPECT_EQ(status(), "VELDRON connected on COM 9");
}

TEST_F(FrmDisplayStartTest, noPorts_comesUpWithNoneAndNeverPolls) {
    setPorts({}, 0);
    start();
    EXPECT_EQ(portRows(), QStringList{"None"});
    EXPECT_EQ(portRow(), 0);
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_FALSE(isPolling());
    EXPECT_EQ(status(), "No serial port selected");
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(activity(), ActivityImage::Blank);
}

TEST_F(FrmDisplayStartTest, silentPorts_costASecondEachAndLeaveThePollOff) {
    setPorts({1, 2}, 0);
    start();
    EXPECT_EQ(sent(), (QStringList{"RIVE", "RIVE"}));
    EXPECT_NEAR(m_clock.seconds(), 36002.2, 0.05);
    EXPECT_FALSE(isPolling());
    EXPECT_FALSE(m_control.PortOpen());
    EXPECT_EQ(status(), "No serial port selected");
}

TEST_F(FrmDisplayStartTest, unitOnABusyPort_isListedButNotChosen) {
    m_control.failOpen(3, SerialErrorCode::kPortInUse);
    start();
    EXPECT_EQ(portRows(), (QStringList{"None", "COM 3"}));
    EXPECT_EQ(portRow(), 0);
    EXPECT_FALSE(isPolling());
    EXPECT_EQ(m_dialogs.log(), QStringList());
}

TEST_F(FrmDisplayStartTest, portTakenBetweenSearchAndSelection_goesOnAsIfNoUnitWasFound) {
    writeFile("VELDRON.set", "VELDRONv1 Settings\r\nRBW 3\r\nEndSettings \r\n");
    takePortAfterTheSearch();
    start();
    EXPECT_EQ(m_dialogs.log(), QStringList{"message"});
    EXPECT_EQ(m_dialogs.texts(), QStringList{"COM  3 is in use by another application"});
    EXPECT_EQ(sent(), QStringList{"RIVE"});
    EXPECT_EQ(portRows(), (QStringList{"None", "COM 3"}));
    EXPECT_EQ(portRow(), 0);
    EXPECT_EQ(status(), "No serial port selected");
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_FALSE(splashIsUp());
    EXPECT_FALSE(isPolling());
    EXPECT_FALSE(m_form->hasFailed());
}

TEST_F(FrmDisplayStartTest, portTakenBetweenSearchAndSelection_canBeChosenLater) {
    takePortAfterTheSearch();
    start();
    m_control.setCommandHook({});
    m_control.failOpen(3, 0);
    forgetSent();
    pickDialog("mnuSettingsComms", [](QDialog &dialog) { pickRow(dialog, "cboComPort", 1); });
    EXPECT_EQ(sent(), QStringList{"RIVE"} + readBack());
    EXPECT_TRUE(isPolling());
}

TEST_F(FrmDisplayStartTest, portsMessageClosed_doesNotEndTheProgramBeforeItsWindowIsThere) {
    takePortAfterTheSearch();
    QtDialogs boxes;
    dropForm();
    m_form = std::make_unique<frmDisplay>(
        frmDisplay::Dependencies{m_control, m_clock, boxes, m_texts, m_folder.path(), "1.0.0"});
    boxes.setWindow(m_form.get());
    constexpr int kStillRunning = 7;
    // Before the loop of the program runs, as in life.
    QTimer::singleShot(0, m_form.get(), [this] { acceptBox(); });
    m_form->load();
    EXPECT_TRUE(m_boxAccepted);
    EXPECT_EQ(
        runUntilEnd([] { QTimer::singleShot(20, [] { QCoreApplication::exit(kStillRunning); }); }),
        kStillRunning);
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_FALSE(m_form->hasEnded());
}

TEST_F(FrmDisplayStartTest, endAskedForUnderThePortsMessage_keepsTheSettingsOfTheLastRun) {
    const QByteArray settings = "VELDRONv1 Settings\r\nRBW 3\r\nEndSettings \r\n";
    writeFile("VELDRON.set", settings);
    takePortAfterTheSearch();
    make();
    m_dialogs.setWhileUp([this] { m_form->endWithoutQuestion(); });
    EXPECT_EQ(runUntilEnd([this] { m_form->load(); }), 0);
    EXPECT_EQ(m_dialogs.log(), QStringList{"message"});
    EXPECT_TRUE(m_form->hasEnded());
    EXPECT_FALSE(m_form->hasFailed());
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_FALSE(m_control.PortOpen());
    EXPECT_EQ(readFile("VELDRON.set"), settings);
}

TEST_F(FrmDisplayStartTest, deviceThatIsNotTheUnit_isNotChosen) {
    m_control.setVersion("Other 2.0");
    start();
    EXPECT_EQ(sent(), QStringList{"RIVE"});
    EXPECT_FALSE(isPolling());
}

TEST_F(FrmDisplayStartTest, defaults_areThoseOfAFirstRun) {
    setPorts({}, 0);
    start();
    EXPECT_EQ(commSettings().Poll(), 1000);
    EXPECT_EQ(displaySettings().values().Update, 1);
    EXPECT_EQ(displaySettings().values().Persistence, 5);
    EXPECT_EQ(displaySettings().values().PaletteIndex, 3);
    EXPECT_TRUE(displaySettings().values().MarkerEnable);
    EXPECT_FALSE(displaySettings().values().PersistenceEnable);
    EXPECT_FALSE(displaySettings().values().WaterfallEnable);
    EXPECT_EQ(chart().Palette(), 3);
    EXPECT_EQ(chart().Timespan(), 5);
    EXPECT_EQ(chart().Update(), 1);
    EXPECT_TRUE(chart().MarkerEn());
    EXPECT_EQ(pollTimer()->interval(), 500);
}

TEST_F(FrmDisplayStartTest, beforeTheStart_panel1ReadsTheDesignsText) {
    make();
    EXPECT_EQ(status(), "Finding Serial Ports");
    EXPECT_FALSE(isPolling());
    EXPECT_EQ(pollTimer()->interval(), 250);
}

TEST_F(FrmDisplayStartTest, search_runsUnderSplashAndHourglassWithOnePanel) {
    QStringList seen;
    m_control.setCommandHook([&](const QString &) {
        if (seen.isEmpty()) {
            seen = {status(), splashIsUp() ? "splash" : "none", hourglass() ? "busy" : "idle",
                    panelText(statusBar(), "Panel2"), m_form->isVisible() ? "form" : "no form"};
        }
    });
    start();
    EXPECT_EQ(seen, (QStringList{"Finding serial ports", "splash", "busy", "", "no form"}));
}

TEST_F(FrmDisplayStartTest, splash_isPaintedBeforeTheFirstPortIsOpened) {
    PaintWatch paints(m_control);
    start();
    EXPECT_TRUE(paints.seenBeforeFirstOpen());
    EXPECT_TRUE(m_control.writes().contains("PortOpen=true"));
}

TEST_F(FrmDisplayStartTest, keyWhileTheSplashComesUp_closesItAndTheStartGoesOn) {
    EXPECT_TRUE(closesTheSplash([](QWindow &window) { QTest::keyClick(&window, Qt::Key_Space); }));
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayStartTest, clickWhileTheSplashComesUp_closesItAndTheStartGoesOn) {
    EXPECT_TRUE(closesTheSplash([](QWindow &window) {
        QTest::mouseClick(&window, Qt::LeftButton, {}, {window.width() / 2, window.height() / 2});
    }));
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayStartTest, connection_comesAfterTheHourglass) {
    QStringList seen;
    m_control.setCommandHook([&](const QString &) { seen.append(hourglass() ? "busy" : "idle"); });
    start();
    EXPECT_EQ(seen.mid(0, 3), (QStringList{"busy", "idle", "idle"}));
}

TEST_F(FrmDisplayStartTest, endOfTheStart_leavesNoSplashAndAnOrdinaryPointer) {
    start();
    EXPECT_FALSE(splashIsUp());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(panelText(statusBar(), "Panel2").isEmpty());
    EXPECT_FALSE(child<QWidget>("Picture2").isVisible());
    EXPECT_EQ(m_form->focusWidget(), receiver().findChild<QWidget *>("Picture1"));
}

TEST_F(FrmDisplayStartTest, defaultFile_isSentAndThenReadBack) {
    writeFile("VELDRON.set", "VELDRONv1 Settings\r\nStartSettings 01.01.2026\r\nPalette 5\r\n"
                             "PersistenceOn True\r\nSpan 5000000\r\nRBW 3\r\nEndSettings \r\n");
    start();
    EXPECT_EQ(sent(), (QStringList{"RIVE", "RIVE", "WSSP5", "WSBW3"}) + readBack() + readBack());
    EXPECT_EQ(data().RBW(), 3);
    EXPECT_EQ(monitor().fSpan(), megahertz(5));
    EXPECT_EQ(chart().Palette(), 5);
    EXPECT_TRUE(chart().Peak());
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayStartTest, defaultFileWithoutTheUnit_isNotRead) {
    setPorts({}, 0);
    writeFile("VELDRON.set", "VELDRONv1 Settings\r\nPalette 5\r\nEndSettings \r\n");
    start();
    EXPECT_EQ(chart().Palette(), 3);
}

TEST_F(FrmDisplayStartTest, brokenDefaultFile_keepsTheLinesBeforeAndIsReadBackAnyway) {
    writeFile("VELDRON.set", "VELDRONv1 Settings\r\nRBW 3\r\nCentre nonsense\r\nAmp -10\r\n");
    start();
    const QStringList commands = sent();
    EXPECT_EQ(commands.mid(0, 3), (QStringList{"RIVE", "RIVE", "WSBW3"}));
    EXPECT_EQ(commands.mid(commands.size() - readBack().size()), readBack());
    EXPECT_FALSE(commands.contains("WSGN-10"));
    EXPECT_FALSE(m_form->hasFailed());
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_EQ(m_dialogs.log(), QStringList());
}

TEST_F(FrmDisplayStartTest, secondStart_restoresWhatTheFirstRunEndedWith) {
    startUp();
    monitor().setfCentre(megahertz(433));
    raise(monitor(), MonitorChangeCode::Centre);
    writeDisplay(&DisplaySettings::PaletteIndex, 1);
    m_form->close();
    resetUnit();
    startUp();
    EXPECT_EQ(monitor().fCentre(), megahertz(433));
    EXPECT_EQ(unitHolds("SCF"), "433");
    EXPECT_EQ(chart().Palette(), 1);
}

TEST_F(FrmDisplayStartTest, secondStart_sendsTheSettingsInTheFilesOrder) {
    startUp();
    m_form->close();
    start();
    EXPECT_EQ(sent(), (QStringList{"RIVE", "RIVE", "WUOM1", "WSSP10", "WSCF100", "WURX7", "WUMD1",
                                   "WUST25", "WUAT2", "WSBW2", "WSGN-20", "WSDM1"}) +
                          readBack() + readBack());
}

TEST_F(FrmDisplayStartTest, firstTick_comesAfterTheFormIsShown) {
    bool early = false;
    m_control.setCommandHook([&](const QString &command) { early |= command == "RIFD"; });
    start();
    EXPECT_FALSE(early);
    poll();
    EXPECT_TRUE(early);
}

TEST_F(FrmDisplayStartTest, keyOnTheSplash_closesItEarlyWithoutHarm) {
    m_control.setCommandHook([](const QString &) {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (qobject_cast<frmSplash *>(window) != nullptr) {
                window->close();
            }
        }
    });
    start();
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(isPolling());
    constexpr int kStillRunning = 7;
    EXPECT_EQ(
        runUntilEnd([] { QTimer::singleShot(20, [] { QCoreApplication::exit(kStillRunning); }); }),
        kStillRunning);
}

TEST_F(FrmDisplayStartTest, endAskedForWhileTheSplashComesUp_startsNothing) {
    make();
    runUntilEnd([this] {
        QTimer::singleShot(0, m_form.get(), [this] { m_form->endWithoutQuestion(); });
        m_form->load();
    });
    EXPECT_TRUE(m_form->hasEnded());
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_EQ(m_control.writes(), QStringList());
}

} // namespace
} // namespace veldron
