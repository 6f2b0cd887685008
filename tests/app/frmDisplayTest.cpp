// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

namespace veldron {
namespace {

class FrmDisplayTest : public FormFixture {
protected:
    /// The widget that holds strips, chart and status bar.
    [[nodiscard]] QWidget &inside() const { return child<QWidget>("Inside"); }
    [[nodiscard]] QWidget &panelStrip() const {
        return *m_form->findChild<QWidget *>("Inside")->findChild<QWidget *>("Picture1");
    }
    [[nodiscard]] QWidget &transportStrip() const { return child<QWidget>("Picture2"); }
    /// The chart's own picture.
    [[nodiscard]] QWidget &picture() const { return *chart().findChild<QWidget *>("Picture1"); }
    void clickCommand1() { child<QPushButton>("Command1").click(); }
    /// A history of three scans ten seconds apart.
    void writeHistory(const QString &name) {
        writeFile(name, "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nEndSettings \r\n"
                        "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\nData CCCC 10:00:20\r\n");
    }
    void expectLayout(bool transportUp) {
        const QRect strip = child<QWidget>("Strip").geometry();
        EXPECT_EQ(transportStrip().y(), strip.y() + strip.height() + 12);
        const int top = transportUp ? transportStrip().y() + transportStrip().height() + 25
                                    : transportStrip().y();
        EXPECT_EQ(chart().geometry(), QRect(10, top, inside().width() - 10,
                                            inside().height() - top - statusBar().height()));
        EXPECT_EQ(transport().isVisible(), transportUp);
    }
    static void move(QWidget &widget, QPoint at) {
        QMouseEvent event(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    /// Onto the marker line, where the chart shows another pointer.
    void moveOntoMarker() {
        const auto *line = picture().findChild<QWidget *>("Line1");
        move(picture(), {line->x(), picture().height() / 4});
    }
};

// ---- scans

TEST_F(FrmDisplayTest, windowNarrowerThanItsPanels_scrollsThemToTheFocus) {
    startUp();
    m_form->resize(560, 420);
    EXPECT_LE(m_form->width(), 560);
    EXPECT_LE(m_form->height(), 420);
    QWidget &list = *data().findChild<QWidget *>("cboRBW");
    EXPECT_TRUE(list.visibleRegion().isEmpty());
    for (int stops = 0; stops < 40 && m_form->focusWidget() != &list; ++stops) {
        QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(list.visibleRegion().boundingRect(), list.rect());
    EXPECT_EQ(panelStrip().visibleRegion().boundingRect().bottom(), panelStrip().rect().bottom());
}

TEST_F(FrmDisplayTest, command1_takesOneScanOutsideTheGrid) {
    startUp();
    poll();
    forgetSent();
    clickCommand1();
    EXPECT_EQ(sent(), QStringList{"RIFD"});
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUST"}));
}

TEST_F(FrmDisplayTest, command1WithoutConnection_doesNothing) {
    setPorts({}, 0);
    startUp();
    clickCommand1();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(status(), "No serial port selected");
}

TEST_F(FrmDisplayTest, command1_isHidden) {
    startUp();
    EXPECT_FALSE(child<QPushButton>("Command1").isVisible());
    EXPECT_EQ(child<QPushButton>("Command1").text(), "Command1");
}

TEST_F(FrmDisplayTest, scan_reachesTheChart) {
    startUp();
    const QImage before = picture().grab().toImage();
    m_control.setScan(QByteArray(321, 'z'));
    poll();
    EXPECT_NE(picture().grab().toImage(), before);
}

TEST_F(FrmDisplayTest, failedScan_goesToTheChartAsItIs) {
    startUp();
    poll();
    const QImage before = picture().grab().toImage();
    m_control.setReply("RIFD", "?\r\n");
    poll();
    // One level of 0 in the first bin.
    EXPECT_NE(picture().grab().toImage(), before);
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayTest, scanWithoutRecording_copiesTheStatus) {
    startUp();
    statusBar().setStatusText("not renewed");
    poll();
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayTest, scanWhileRecording_isWrittenAndShowsTheRecordingText) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    poll();
    EXPECT_TRUE(readFile("a.rec").contains("\r\nData " + QByteArray(321, 'A') + " "));
    EXPECT_TRUE(status().startsWith("Recording to file "));
}

TEST_F(FrmDisplayTest, errorWhileWritingAScan_stopsTheRecordingWithoutAMessage) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    ASSERT_TRUE(QFile::remove(path("a.rec")));
    poll();
    EXPECT_FALSE(m_form->Recording());
    EXPECT_EQ(entry("mnuFileRecord").text(), "Record");
    EXPECT_TRUE(entry("mnuFileExit").isEnabled());
    EXPECT_EQ(m_dialogs.log(), QStringList{"save"});
    poll();
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

// ---- activity

TEST_F(FrmDisplayTest, poll_showsTheLargeDotAndThenTheSmallOne) {
    startUp();
    ActivityImage during = ActivityImage::Blank;
    m_control.setCommandHook([&](const QString &) { during = activity(); });
    poll();
    EXPECT_EQ(during, ActivityImage::Busy);
    EXPECT_EQ(activity(), ActivityImage::Idle);
}

TEST_F(FrmDisplayTest, attemptToConnect_showsTheSmallDotAndThenNone) {
    startUp();
    m_control.setSilent(true);
    poll();
    ActivityImage during = ActivityImage::Busy;
    m_control.setCommandHook([&](const QString &) { during = activity(); });
    poll();
    EXPECT_EQ(during, ActivityImage::Idle);
    EXPECT_EQ(activity(), ActivityImage::Blank);
    EXPECT_EQ(status(), "VELDRON not found on COM 3");
}

TEST_F(FrmDisplayTest, silentUnit_isAskedForScanAndVersionInTurn) {
    startUp();
    m_control.setSilent(true);
    poll(6);
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RIVE", "RIFD", "RIVE", "RIFD", "RIVE"}));
}

// ---- playback and recording hold the controls off

TEST_F(FrmDisplayTest, recording_holdsPanelsAndMenusOff) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    for (const char *name : {"mnuFileLoadSettings", "mnuFileSaveSettings", "mnuFilePlayback",
                             "mnuFileExit", "mnuSettingsComms"}) {
        EXPECT_FALSE(entry(name).isEnabled()) << name;
    }
    for (const char *name : {"mnuFileRecord", "mnuSettingsDisplay", "mnuAbout"}) {
        EXPECT_TRUE(entry(name).isEnabled()) << name;
    }
    EXPECT_FALSE(chart().Enabled() || data().Enabled() || receiver().Enabled() ||
                 monitor().Enabled());
    pick("mnuFileRecord");
    EXPECT_TRUE(chart().Enabled() && data().Enabled() && receiver().Enabled() &&
                monitor().Enabled());
    EXPECT_TRUE(entry("mnuFileExit").isEnabled());
}

TEST_F(FrmDisplayTest, playback_leavesTheUnitAlone) {
    startUp();
    writeHistory("a.rec");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    ASSERT_TRUE(m_form->InPlayback());
    EXPECT_FALSE(isPolling());
    poll(3);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmDisplayTest, displayDialogDuringPlayback_startsNoPoll) {
    startUp();
    writeHistory("a.rec");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    pickDialog("mnuSettingsDisplay");
    EXPECT_FALSE(isPolling());
}

TEST_F(FrmDisplayTest, displayLinesOfAHistory_giveWayToTheDialogsSettings) {
    for (const bool on : {false, true}) {
        startUp();
        writeDisplay(&DisplaySettings::PersistenceEnable, on);
        writeDisplay(&DisplaySettings::WaterfallEnable, on);
        writeDisplay(&DisplaySettings::MarkerEnable, on);
        writeFile("a.rec", QByteArray("VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\n"
                                      "PersistenceOn X\r\nWaterfallOn X\r\nMarkerOn X\r\n"
                                      "EndSettings \r\nData AAAA 10:00:00\r\n"
                                      "Data BBBB 10:00:10\r\n")
                               .replace(" X", on ? " False" : " True"));
        m_dialogs.pickFile(path("a.rec"));
        pick("mnuFilePlayback");
        ASSERT_TRUE(m_form->InPlayback());
        EXPECT_EQ(chart().Peak(), on);
        EXPECT_EQ(chart().DisplayType(), displayTypeWith(on));
        EXPECT_EQ(chart().MarkerEn(), on);
    }
}

TEST_F(FrmDisplayTest, endOfPlayback_readsEverythingBackAndPollsOn) {
    startUp();
    writeHistory("a.rec");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    forgetSent();
    Q_EMIT transport().Quit();
    EXPECT_EQ(sent(), readBack());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(activity(), ActivityImage::Blank);
    EXPECT_TRUE(panelText(statusBar(), "Panel3Text").isEmpty());
}

// ---- layout

TEST_F(FrmDisplayTest, title_isVeldron) {
    make();
    EXPECT_EQ(m_form->windowTitle(), "VELDRON");
}

TEST_F(FrmDisplayTest, severalSizes_followTheLayoutRule) {
    startUp();
    for (const QSize size : {QSize(1024, 700), QSize(1280, 800), QSize(1920, 1000)}) {
        m_form->resize(size);
        QCoreApplication::sendPostedEvents();
        expectLayout(false);
    }
}

TEST_F(FrmDisplayTest, playback_movesTheChartDownAndBack) {
    startUp();
    expectLayout(false);
    writeHistory("a.rec");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    expectLayout(true);
    m_form->resize(m_form->width() + 50, m_form->height() + 50);
    QCoreApplication::sendPostedEvents();
    expectLayout(true);
    Q_EMIT transport().Quit();
    expectLayout(false);
}

TEST_F(FrmDisplayTest, insideTooShortForTheChart_keepsTheChartsHeight) {
    startUp();
    const int height = chart().height();
    inside().setMinimumSize(0, 0);
    inside().resize(inside().width(), 40);
    EXPECT_EQ(chart().height(), height);
}

TEST_F(FrmDisplayTest, smallestWindowInPlayback_keepsTransportChartAndStatusApart) {
    startUp();
    writeHistory("a.rec");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    m_form->resize(m_form->minimumSizeHint());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(m_form->size(), m_form->minimumSizeHint());
    expectLayout(true);
    EXPECT_GT(chart().height(), 0);
    EXPECT_GE(transportStrip().width(), transport().width());
    EXPECT_FALSE(m_form->grab().isNull());
    Q_EMIT transport().Step(1);
    expectLayout(true);
}

TEST_F(FrmDisplayTest, window_fitsTheScreenAndNeverCutsThePanelsOff) {
    startUp();
    EXPECT_LE(m_form->minimumSizeHint().width(), 1024);
    EXPECT_LE(m_form->minimumSizeHint().height(), 700);
    m_form->resize(m_form->minimumSize());
    QCoreApplication::sendPostedEvents();
    EXPECT_LE(data().geometry().right(), panelStrip().width());
    EXPECT_GE(panelStrip().width(), panelStrip().minimumSizeHint().width());
}

TEST_F(FrmDisplayTest, eachControlThatTakesTheFocus_hasAName) {
    startUp();
    for (QWidget *widget : m_form->findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() ||
            widget->focusProxy() != nullptr) {
            continue;
        }
        const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(seen, nullptr);
        EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
    }
}

// ---- pointer

TEST_F(FrmDisplayTest, movesOverTheBareFormAndTheStrips_undoTheChartsPointer) {
    startUp();
    poll();
    for (QWidget *bare : {&inside(), &panelStrip(), &transportStrip()}) {
        moveOntoMarker();
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        move(*bare, {1, 1});
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << bare->objectName().toStdString();
    }
}

TEST_F(FrmDisplayTest, movesOverTheChart_areNoneOverTheBareForm) {
    startUp();
    poll();
    moveOntoMarker();
    const QCursor *cursor = QGuiApplication::overrideCursor();
    ASSERT_NE(cursor, nullptr);
    EXPECT_EQ(cursor->shape(), Qt::SizeHorCursor);
}

TEST_F(FrmDisplayTest, doubleClickOnThePlot_retunes) {
    startUp();
    poll();
    forgetSent();
    const QPoint at(picture().width() / 4, picture().height() / 4);
    QTest::mouseClick(&picture(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(&picture(), Qt::LeftButton, {}, at);
    const QStringList commands = sent();
    ASSERT_FALSE(commands.isEmpty());
    EXPECT_TRUE(commands.first().startsWith("WSCF9"));
    EXPECT_EQ(commands.mid(1), readBack());
    EXPECT_EQ(chart().RXFreq(), monitor().fCentre());
    EXPECT_EQ(receiver().Frequency(), monitor().fCentre());
}

} // namespace
} // namespace veldron
