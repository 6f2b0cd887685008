// SPDX-License-Identifier: MIT
#include "history/ctlPlayback.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QSignalSpy>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <QToolButton>

#include <vector>

namespace veldron {
namespace {

class CtlPlaybackTest : public testing::Test {
protected:
    CtlPlaybackTest() { m_control.show(); }

    QToolButton *button(const char *name) {
        return m_control.findChild<QToolButton *>(QLatin1String(name));
    }
    QTimer *timer() { return m_control.findChild<QTimer *>("Timer1"); }
    QSlider *slider() { return m_control.findChild<QSlider *>("Slider1"); }
    void press(const char *name) { QTest::mousePress(button(name), Qt::LeftButton); }
    void release(const char *name) { QTest::mouseRelease(button(name), Qt::LeftButton); }
    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    /// One tick, which only a running timer can give.
    void tick() {
        ASSERT_TRUE(timer()->isActive());
        QTimerEvent event(timer()->timerId());
        QApplication::sendEvent(timer(), &event);
    }
    std::vector<int> steps() {
        std::vector<int> directions;
        for (const QList<QVariant> &step : m_steps) {
            directions.push_back(step.first().toInt());
        }
        return directions;
    }
    bool stepButtonsEnabled() {
        EXPECT_EQ(button("cmdStepForward")->isEnabled(), button("cmdStepBack")->isEnabled());
        return button("cmdStepForward")->isEnabled();
    }
    QColor playColour() {
        return button("cmdPlay")->icon().pixmap(32, 16).toImage().pixelColor(8, 8);
    }
    QRect handle() {
        QStyleOptionSlider option;
        option.initFrom(slider());
        option.minimum = slider()->minimum();
        option.maximum = slider()->maximum();
        option.sliderPosition = slider()->sliderPosition();
        option.sliderValue = slider()->value();
        option.tickPosition = slider()->tickPosition();
        option.subControls = QStyle::SC_All;
        return slider()->style()->subControlRect(QStyle::CC_Slider, &option,
                                                 QStyle::SC_SliderHandle, slider());
    }
    void expectPaused() {
        EXPECT_FALSE(timer()->isActive());
        EXPECT_TRUE(stepButtonsEnabled());
        EXPECT_EQ(playColour(), QColor(Qt::black));
    }
    void expectPlaying() {
        EXPECT_TRUE(timer()->isActive());
        EXPECT_FALSE(stepButtonsEnabled());
        EXPECT_EQ(playColour(), QColor(Qt::red));
    }

    ctlPlayback m_control{ErrorGuard([](const UntrappedError &) {})};
    QSignalSpy m_steps{&m_control, &ctlPlayback::Step};
    QSignalSpy m_quits{&m_control, &ctlPlayback::Quit};
};

TEST_F(CtlPlaybackTest, start_isPausedAtOneSecond) {
    expectPaused();
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_EQ(slider()->value(), 2);
    EXPECT_EQ(slider()->toolTip(), "Playback speed 1s");
    EXPECT_EQ(timer()->timerType(), Qt::PreciseTimer);
    EXPECT_TRUE(steps().empty());
}

struct Tip {
    const char *name;
    const char *tip;
    QSize picture;
};

class CtlPlaybackTipTest : public CtlPlaybackTest, public testing::WithParamInterface<Tip> {};

TEST_P(CtlPlaybackTipTest, button_hasItsTipItsNameAndAPictureOfItsSize) {
    QToolButton *const shown = button(GetParam().name);
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->toolTip(), GetParam().tip);
    EXPECT_EQ(shown->accessibleName(), GetParam().tip);
    EXPECT_EQ(shown->iconSize(), GetParam().picture);
    EXPECT_FALSE(shown->icon().isNull());
    EXPECT_NE(shown->focusPolicy() & Qt::TabFocus, 0);
}

INSTANTIATE_TEST_SUITE_P(AllButtons, CtlPlaybackTipTest,
                         testing::Values(Tip{"cmdPlay", "Continuous playback", {32, 16}},
                                         Tip{"cmdPause", "Pause", {16, 16}},
                                         Tip{"cmdStepForward", "Step forward", {16, 16}},
                                         Tip{"cmdStepBack", "Step back", {16, 16}},
                                         Tip{"cmdClose", "Stop playback", {16, 16}}),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(CtlPlaybackTest, slider_hasItsRangeAndItsLabels) {
    EXPECT_EQ(slider()->minimum(), 0);
    EXPECT_EQ(slider()->maximum(), 8);
    EXPECT_EQ(slider()->singleStep(), 1);
    EXPECT_EQ(slider()->pageStep(), 1);
    EXPECT_EQ(m_control.findChild<QLabel *>("Label1")->text(), "slow");
    EXPECT_EQ(m_control.findChild<QLabel *>("Label2")->text(), "fast");
    EXPECT_LT(m_control.findChild<QLabel *>("Label1")->x(), slider()->x());
    EXPECT_GT(m_control.findChild<QLabel *>("Label2")->x(), slider()->x());
}

struct Speed {
    int value;
    int interval;
    const char *tip;
};

class CtlPlaybackSpeedTest : public CtlPlaybackTest, public testing::WithParamInterface<Speed> {};

TEST_P(CtlPlaybackSpeedTest, sliderPosition_givesIntervalAndTip) {
    slider()->setValue(GetParam().value);
    EXPECT_EQ(timer()->interval(), GetParam().interval);
    EXPECT_EQ(slider()->toolTip(), GetParam().tip);
}

INSTANTIATE_TEST_SUITE_P(
    AllPositions, CtlPlaybackSpeedTest,
    testing::Values(Speed{0, 4000, "Playback speed 4s"}, Speed{1, 2000, "Playback speed 2s"},
                    Speed{2, 1000, "Playback speed 1s"}, Speed{3, 500, "Playback speed 500ms"},
                    Speed{4, 250, "Playback speed 250ms"}, Speed{5, 125, "Playback speed 125ms"},
                    Speed{6, 62, "Playback speed 62ms"}, Speed{7, 31, "Playback speed 31ms"},
                    Speed{8, 16, "Playback speed 16ms"}),
    [](const auto &row) { return "at" + std::to_string(row.param.value); });

TEST_F(CtlPlaybackTest, paused_playPlays) {
    click("cmdPlay");
    expectPlaying();
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_TRUE(steps().empty());
}

TEST_F(CtlPlaybackTest, playing_ticksStepForwardAtAnUnchangedInterval) {
    click("cmdPlay");
    tick();
    tick();
    EXPECT_EQ(steps(), (std::vector{1, 1}));
    EXPECT_EQ(timer()->interval(), 1000);
}

TEST_F(CtlPlaybackTest, playing_pausePauses) {
    click("cmdPlay");
    click("cmdPause");
    expectPaused();
}

TEST_F(CtlPlaybackTest, playing_stopPlayPauses) {
    click("cmdPlay");
    m_control.StopPlay();
    expectPaused();
    EXPECT_EQ(m_quits.count(), 0);
}

TEST_F(CtlPlaybackTest, playing_closePausesAndThenQuits) {
    click("cmdPlay");
    bool pausedAtQuit = false;
    QObject::connect(&m_control, &ctlPlayback::Quit, &m_control,
                     [&] { pausedAtQuit = !timer()->isActive() && stepButtonsEnabled(); });
    click("cmdClose");
    expectPaused();
    EXPECT_TRUE(pausedAtQuit);
    EXPECT_EQ(m_quits.count(), 1);
}

TEST_F(CtlPlaybackTest, paused_closeQuits) {
    click("cmdClose");
    expectPaused();
    EXPECT_EQ(m_quits.count(), 1);
}

TEST_F(CtlPlaybackTest, paused_pauseStaysPaused) {
    click("cmdPause");
    expectPaused();
}

TEST_F(CtlPlaybackTest, playPressedTwiceInARow_doesTheSameThingTwice) {
    click("cmdPlay");
    click("cmdPlay");
    expectPlaying();
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_TRUE(steps().empty());
}

TEST_F(CtlPlaybackTest, playPressedAgain_keepsTheCountdown) {
    click("cmdPlay");
    const int running = timer()->timerId();
    click("cmdPlay");
    EXPECT_EQ(timer()->timerId(), running);
}

TEST_F(CtlPlaybackTest, sliderAtTwo_pressAndReleaseGivesOneStepAndOneSecond) {
    press("cmdStepForward");
    EXPECT_EQ(steps(), std::vector{1});
    EXPECT_EQ(timer()->interval(), 700);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_TRUE(stepButtonsEnabled());
    release("cmdStepForward");
    EXPECT_EQ(steps(), std::vector{1});
    EXPECT_EQ(timer()->interval(), 1000);
    expectPaused();
}

TEST_F(CtlPlaybackTest, stepBack_stepsBackOnce) {
    click("cmdStepBack");
    EXPECT_EQ(steps(), std::vector{-1});
    EXPECT_EQ(timer()->interval(), 1000);
    expectPaused();
}

TEST_F(CtlPlaybackTest, heldStepButton_repeatsFasterAndFasterDownToTheFloor) {
    press("cmdStepBack");
    std::vector<int> intervals{timer()->interval()};
    for (int i = 0; i < 8; ++i) {
        tick();
        intervals.push_back(timer()->interval());
    }
    EXPECT_EQ(intervals, (std::vector{700, 350, 175, 88, 44, 22, 15, 15, 15}));
    EXPECT_EQ(steps(), std::vector<int>(9, -1));
    release("cmdStepBack");
    expectPaused();
}

TEST_F(CtlPlaybackTest, firstStepOfAPress_comesBeforeTheTimerIsSet) {
    int intervalAtStep = 0;
    QObject::connect(&m_control, &ctlPlayback::Step, &m_control,
                     [&] { intervalAtStep = timer()->interval(); });
    press("cmdStepForward");
    EXPECT_EQ(intervalAtStep, 1000);
    EXPECT_EQ(timer()->interval(), 700);
}

TEST_F(CtlPlaybackTest, repeatOfAHeldButton_halvesTheIntervalBeforeItsStep) {
    press("cmdStepForward");
    int intervalAtStep = 0;
    QObject::connect(&m_control, &ctlPlayback::Step, &m_control,
                     [&] { intervalAtStep = timer()->interval(); });
    tick();
    EXPECT_EQ(intervalAtStep, 350);
}

TEST_F(CtlPlaybackTest, pressActionOfAssistiveTechnology_makesOneStep) {
    QAccessible::queryAccessibleInterface(button("cmdStepBack"))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(steps(), std::vector{-1});
    expectPaused();
}

TEST_F(CtlPlaybackTest, releasedStepBack_playRunsForward) {
    click("cmdStepBack");
    click("cmdPlay");
    tick();
    EXPECT_EQ(steps(), (std::vector{-1, 1}));
}

TEST_F(CtlPlaybackTest, playByKeyboardDuringHeldStepBack_letsItGoAndRunsForward) {
    press("cmdStepBack");
    tick();
    QTest::keyClick(button("cmdPlay"), Qt::Key_Space);
    EXPECT_EQ(timer()->interval(), 1000);
    tick();
    EXPECT_EQ(steps(), (std::vector{-1, -1, 1}));
    expectPlaying();
}

TEST_F(CtlPlaybackTest, stopPlayDuringHeldForwardStep_stopsTheTimerAndReleaseRestoresTheSpeed) {
    press("cmdStepForward");
    tick();
    m_control.StopPlay();
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 350);
    release("cmdStepForward");
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
}

TEST_F(CtlPlaybackTest, stopPlayOutOfAPlayedStep_endsPlay) {
    QObject::connect(&m_control, &ctlPlayback::Step, &m_control, [&] { m_control.StopPlay(); });
    click("cmdPlay");
    tick();
    expectPaused();
    EXPECT_EQ(steps(), std::vector{1});
}

TEST_F(CtlPlaybackTest, sliderMovedDuringHeldStep_turnsTheTimerOffUntilTheNextPress) {
    press("cmdStepForward");
    slider()->setValue(3);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 500);
    release("cmdStepForward");
    EXPECT_FALSE(timer()->isActive());
    press("cmdStepForward");
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(CtlPlaybackTest, sliderKeyWhilePlaying_playsOnAtTheNewSpeed) {
    click("cmdPlay");
    QTest::keyClick(slider(), Qt::Key_Right);
    EXPECT_EQ(slider()->value(), 3);
    EXPECT_EQ(timer()->interval(), 500);
    expectPlaying();
}

TEST_F(CtlPlaybackTest, sliderKeyWhilePaused_staysPaused) {
    QTest::keyClick(slider(), Qt::Key_Left);
    EXPECT_EQ(timer()->interval(), 2000);
    expectPaused();
}

TEST_F(CtlPlaybackTest, thumbDraggedWhilePlaying_changesSpeedWithoutStoppingTheTimer) {
    click("cmdPlay");
    slider()->setSliderDown(true);
    slider()->setSliderPosition(8);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 16);
    EXPECT_EQ(slider()->toolTip(), "Playback speed 16ms");
    slider()->setSliderDown(false);
    EXPECT_EQ(timer()->interval(), 16);
    expectPlaying();
}

TEST_F(CtlPlaybackTest, thumbDraggedDuringHeldStep_turnsTheTimerOffOnlyWhenLetGo) {
    press("cmdStepForward");
    slider()->setSliderDown(true);
    slider()->setSliderPosition(4);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 250);
    slider()->setSliderDown(false);
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(CtlPlaybackTest, thumbDraggedByTheMouse_movesTheSpeedAlong) {
    const QPoint grip = handle().center();
    QTest::mousePress(slider(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(slider(), QPoint(slider()->width() - 2, grip.y()));
    QTest::mouseRelease(slider(), Qt::LeftButton, Qt::NoModifier,
                        QPoint(slider()->width() - 2, grip.y()));
    EXPECT_EQ(slider()->value(), 8);
    EXPECT_EQ(timer()->interval(), 16);
    expectPaused();
}

TEST_F(CtlPlaybackTest, hiddenAndShownAgain_sliderKeepsItsPlace) {
    slider()->setValue(6);
    m_control.hide();
    m_control.show();
    EXPECT_EQ(slider()->value(), 6);
    EXPECT_EQ(timer()->interval(), 62);
}

TEST_F(CtlPlaybackTest, hiddenDuringHeldStep_stopsRepeating) {
    press("cmdStepBack");
    m_control.hide();
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
}

TEST_F(CtlPlaybackTest, destroyedDuringHeldStep_raisesNothingMore) {
    QWidget window;
    auto *const held = new ctlPlayback(ErrorGuard([](const UntrappedError &) {}), &window);
    window.show();
    int raised = 0;
    QObject::connect(held, &ctlPlayback::Step, &window, [&] { ++raised; });
    QTest::mousePress(held->findChild<QToolButton *>("cmdStepBack"), Qt::LeftButton);
    delete held;
    EXPECT_EQ(raised, 1);
}

TEST_F(CtlPlaybackTest, stepKey_isOneStepAPress) {
    QTest::keyClick(button("cmdStepForward"), Qt::Key_Space);
    QTest::keyClick(button("cmdStepBack"), Qt::Key_Space);
    QTest::keyClick(button("cmdStepForward"), Qt::Key_Space);
    EXPECT_EQ(steps(), (std::vector{1, -1, 1}));
    EXPECT_EQ(timer()->interval(), 1000);
    expectPaused();
}

TEST_F(CtlPlaybackTest, disabledStepButtons_takeNoPressWhilePlaying) {
    click("cmdPlay");
    click("cmdStepForward");
    EXPECT_TRUE(steps().empty());
    EXPECT_EQ(timer()->interval(), 1000);
}

TEST_F(CtlPlaybackTest, tabKey_walksTheControlsFromLeftToRight) {
    std::vector<QString> walked;
    QWidget *widget = button("cmdPlay");
    do {
        walked.push_back(widget->objectName());
        do {
            widget = widget->nextInFocusChain();
        } while ((widget->focusPolicy() & Qt::TabFocus) == 0);
    } while (widget != button("cmdPlay"));
    EXPECT_EQ(walked, (std::vector<QString>{"cmdPlay", "cmdPause", "cmdStepBack", "cmdStepForward",
                                            "cmdClose", "Slider1"}));
}

} // namespace
} // namespace veldron
