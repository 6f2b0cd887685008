// SPDX-License-Identifier: MIT
// Entries by key into the receiver panel's fields, and what ends them.
#include "tests/panels/CtlFrequencyFixture.h"

#include <QMenu>

namespace veldron {
namespace {

TEST_F(CtlFrequency, entryInFrequency_storesShowsAndRaises1) {
    struct Case {
        const char *keys;
        qint64 hertz;
        const char *text;
    };
    const Case cases[] = {
        {"145.5\r", 145'500'000, "145.50000"},  {"145.5k", 145'500, "0.14550"},
        {"145,5\r", 145'500'000, "145.50000"},  {"145500K", 145'500'000, "145.50000"},
        {"14 5\r", 145'000'000, "145.00000"},   {"145\x1b", 145'000'000, "145.00000"},
        {"145x", 145'000'000, "145.00000"},     {"146\b5M", 145'000'000, "145.00000"},
        {"3600\r", 3'500'000'000, "3500.00000"}};
    for (const Case &example : cases) {
        events.clear();
        typeInto("txtFreq", example.keys);
        EXPECT_EQ(hertz(), example.hertz) << example.keys;
        EXPECT_EQ(text("txtFreq"), example.text) << example.keys;
        EXPECT_EQ(events, Events{Code::Frequency}) << example.keys;
    }
}

TEST_F(CtlFrequency, firstKeyOfAnEntry_emptiesTheBox) {
    typeInto("txtFreq", "1");
    EXPECT_EQ(text("txtFreq"), "1");
    leave();
    typeInto("cboStep", "2");
    EXPECT_EQ(text("cboStep"), "2");
}

TEST_F(CtlFrequency, keysOfAnEntry_areShownAsTyped) {
    typeInto("txtFreq", "145.");
    EXPECT_EQ(text("txtFreq"), "145.");
    type("\b\b");
    EXPECT_EQ(text("txtFreq"), "14");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, zeroThenEnter_changesNothingAndStaysUntilTheFocusMoves) {
    typeInto("txtFreq", "0\r");
    EXPECT_EQ(text("txtFreq"), "0");
    EXPECT_EQ(hertz(), 100'000'000);
    leave();
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, strayLetter_endsTheEntryAndStaysUntilTheNextKey) {
    typeInto("txtFreq", "x");
    EXPECT_EQ(text("txtFreq"), "x");
    type("7");
    EXPECT_EQ(text("txtFreq"), "7");
    type("\r");
    EXPECT_EQ(hertz(), 7'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, focusLostDuringAnEntry_showsTheOldFrequencyAndRaises1) {
    typeInto("txtFreq", "145");
    leave();
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(hertz(), 100'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, focusLostWithoutAnEntry_raisesNothing) {
    click("txtFreq");
    leave();
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, frequencyWrittenDuringAnEntry_letsTheEntryGoOn) {
    typeInto("txtFreq", "14");
    panel->setFrequency(Hertz::fromWhole(88'000'000));
    EXPECT_EQ(text("txtFreq"), "14");
    EXPECT_EQ(hertz(), 88'000'000);
    type("5\r");
    EXPECT_EQ(hertz(), 145'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, arrowsFunctionKeysAndCombinations_areNoKeysOfAnEntry) {
    typeInto("txtFreq", "14");
    for (const Qt::Key code : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_End, Qt::Key_Shift,
                               Qt::Key_F5, Qt::Key_Delete, Qt::Key_CapsLock}) {
        key(code);
    }
    key(Qt::Key_K, Qt::ControlModifier);
    key(Qt::Key_K, Qt::AltModifier);
    type("5\r");
    EXPECT_EQ(hertz(), 145'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, tabDuringAnEntry_isALossOfFocus) {
    typeInto("txtFreq", "145");
    key(Qt::Key_Tab);
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequency, menuDuringAnEntry_isNoLossOfFocus) {
    typeInto("txtFreq", "14");
    QMenu menu;
    menu.addAction("One");
    menu.popup(QPoint(0, 0));
    menu.close();
    EXPECT_EQ(events, Events{});
    type("5\r");
    EXPECT_EQ(hertz(), 145'000'000);
}

TEST_F(CtlFrequency, otherWindowDuringAnEntry_isNoLossOfFocus) {
    typeInto("txtFreq", "14");
    QLineEdit other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(events, Events{});
    other.close();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    type("5\r");
    EXPECT_EQ(hertz(), 145'000'000);
}

TEST_F(CtlFrequency, disabledDuringAnEntry_isNoLossOfFocus) {
    panel->setTuneStep(500);
    typeInto("txtFreq", "145");
    panel->setEnabled(false);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(panel->TuneStep(), 500);
}

TEST_F(CtlFrequency, entryInStep_storesShowsAndRaises4) {
    struct Case {
        const char *keys;
        qint32 step;
        const char *text;
    };
    const Case cases[] = {
        {"12.5\r", 12'500, "12.500"},   {"1M", 1'000'000, "1000.000"},
        {"0.0006\r", 1, "0.001"},       {"25.000\r", 25'000, "25.000"},
        {"25.000\r", 25'000, "25.000"}, {"1999999.99K", 1'999'999'990, "1999999.990"}};
    for (const Case &example : cases) {
        events.clear();
        typeInto("cboStep", example.keys);
        EXPECT_EQ(panel->Step(), example.step) << example.keys;
        EXPECT_EQ(text("cboStep"), example.text) << example.keys;
        EXPECT_EQ(events, Events{Code::Step}) << example.keys;
    }
}

TEST_F(CtlFrequency, stepOf2000000K_isDroppedShownAsOldAndRaised) {
    typeInto("cboStep", "2000000K");
    EXPECT_EQ(panel->Step(), 10'000);
    EXPECT_EQ(text("cboStep"), "10.000");
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlFrequency, stepTypedAsARow_picksNothingUntilItsKeyEndsIt) {
    typeInto("cboStep", "25.000");
    EXPECT_EQ(panel->Step(), 10'000);
    leave();
    EXPECT_EQ(panel->Step(), 10'000);
    EXPECT_EQ(text("cboStep"), "10.000");
    EXPECT_EQ(events, Events{Code::Step});
    EXPECT_EQ(rows("cboStep").size(), 8);
}

TEST_F(CtlFrequency, zeroStep_isRefusedAndStaysUntilTheFocusMoves) {
    typeInto("cboStep", "0\r");
    EXPECT_EQ(text("cboStep"), "0");
    leave();
    EXPECT_EQ(text("cboStep"), "10.000");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, containerWritingBackInTheEvent_raisesNothingMore) {
    QObject::connect(panel, &ctlFrequency::Changed, &window, [this] {
        panel->setFrequency(Hertz::fromWhole(144'000'000));
        panel->setStep(5'000);
    });
    typeInto("txtFreq", "145\r");
    EXPECT_EQ(text("txtFreq"), "144.00000");
    EXPECT_EQ(events, Events{Code::Frequency});
    typeInto("txtFreq", "7\r");
    EXPECT_EQ(events, (Events{Code::Frequency, Code::Frequency}));
}

} // namespace
} // namespace veldron
