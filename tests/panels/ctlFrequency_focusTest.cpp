// SPDX-License-Identifier: MIT
// Where the focus of the receiver panel goes, and its tuning timer.
#include "tests/panels/CtlFrequencyFixture.h"

#include <QApplication>
#include <QTimer>

namespace veldron {
namespace {

TEST_F(CtlFrequency, focusOnThePanel_goesToTheOnePixelPictureWhereKeysDoNothing) {
    panel->setFocus();
    EXPECT_EQ(QApplication::focusWidget(), child("Picture1"));
    outside->setFocus();
    panel->SetFocus();
    EXPECT_EQ(QApplication::focusWidget(), child("Picture1"));
    EXPECT_EQ(child("Picture1")->size(), QSize(1, 1));
    type("145\r");
    EXPECT_EQ(hertz(), 100'000'000);
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, tabKeyFromThePicture_visitsTheRows) {
    panel->SetFocus();
    for (const char *name : {"cboRX", "txtFreq", "cboStep", "cboMode", "chkAtten"}) {
        key(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), child(name)) << name;
    }
}

TEST_F(CtlFrequency, panelLosingTheFocus_endsTuningAndEntryAfterTheFieldsOwnEvent) {
    panel->setTuneStep(500);
    typeInto("txtFreq", "145");
    EXPECT_EQ(panel->TuneStep(), 500);
    leave();
    EXPECT_EQ(panel->TuneStep(), 0);
    EXPECT_EQ(events, Events{Code::Frequency}) << "the field comes before the panel";
}

TEST_F(CtlFrequency, focusMovingInsideThePanel_keepsTheTuneStep) {
    click("txtFreq");
    panel->setTuneStep(500);
    click("cboStep");
    EXPECT_EQ(panel->TuneStep(), 500);
}

TEST_F(CtlFrequency, timerTick_tunesShowsRaises1AndSpeedsUp) {
    auto *timer = child<QTimer>("Timer1");
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(timer->interval(), 0);
    panel->setTuneStep(2'500);
    timer->setInterval(102);
    QMetaObject::invokeMethod(timer, "timeout");
    EXPECT_EQ(hertz(), 100'002'500);
    EXPECT_EQ(label("lblFreq"), "100.002.500");
    EXPECT_EQ(text("txtFreq"), "100.00000") << "the box is not shown anew";
    EXPECT_EQ(timer->interval(), 76) << "76.5, to even";
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, intervalThatTheTickShortens_isRoundedToTheNearestMillisecond) {
    auto *timer = child<QTimer>("Timer1");
    for (const auto &[before, after] : {std::pair(101, 76), std::pair(103, 77)}) {
        timer->setInterval(before);
        QMetaObject::invokeMethod(timer, "timeout");
        EXPECT_EQ(timer->interval(), after) << "75.75 and 77.25";
    }
}

TEST_F(CtlFrequency, timerTickAtAShortInterval_staysAtTenMilliseconds) {
    auto *timer = child<QTimer>("Timer1");
    timer->setInterval(12);
    QMetaObject::invokeMethod(timer, "timeout");
    EXPECT_EQ(timer->interval(), 10);
    EXPECT_EQ(hertz(), 100'000'000);
}

} // namespace
} // namespace veldron
