// SPDX-License-Identifier: MIT
#include "panels/ctlMonitorMode.h"
#include "tests/panels/PanelFixture.h"

namespace veldron {
namespace {

constexpr qint64 kMega = 1'000'000;

class CtlMonitorMode : public PanelFixture<ctlMonitorMode, MonitorChangeCode> {
protected:
    CtlMonitorMode() {
        panel->setfSpan(Hertz::fromWhole(10 * kMega));
        panel->setfCentre(Hertz::fromWhole(100 * kMega));
    }
    void goToChannelMode() {
        panel->setMonitorMode(MonitorModeCode::Channel);
        panel->setfStart(Hertz::fromWhole(88 * kMega));
        panel->setfCentre(Hertz::fromWhole(25'000));
        panel->setfEnd(Hertz::fromWhole(96 * kMega));
        panel->setfSpan(Hertz::fromWhole(8 * kMega));
        panel->setfStep(Hertz::fromWhole(25'000));
    }
    /// Start, centre, end, span, step in hertz.
    std::vector<double> numbers() const {
        return {panel->fStart().toDouble(), panel->fCentre().toDouble(), panel->fEnd().toDouble(),
                panel->fSpan().toDouble(), panel->fStep().toDouble()};
    }
    QStringList texts() const {
        return {text("txtStart"), text("txtCentre"), text("txtEnd"), text("cboSpan"),
                text("cboStep")};
    }
    using Numbers = std::vector<double>;
};

TEST(CtlMonitorModeMade, freshPanel_isInSpectrumModeWithAllNumbersZero) {
    const ctlMonitorMode panel(failingGuard());
    EXPECT_EQ(panel.MonitorMode(), MonitorModeCode::Spectrum);
    EXPECT_TRUE(panel.Enabled());
    for (const Hertz number :
         {panel.fSpan(), panel.fStep(), panel.fStart(), panel.fCentre(), panel.fEnd()}) {
        EXPECT_EQ(number, Hertz());
    }
    for (const char *name : {"txtStart", "txtCentre", "txtEnd"}) {
        EXPECT_EQ(panel.findChild<QLineEdit *>(name)->text(), "0.00000") << name;
    }
    EXPECT_EQ(panel.findChild<QComboBox *>("cboSpan")->currentText(), "0.00000");
    EXPECT_EQ(panel.findChild<QComboBox *>("cboStep")->currentText(), "0.000");
    EXPECT_EQ(panel.findChild<QComboBox *>("cboMonitorMode")->currentText(), "Spectrum");
}

TEST(CtlMonitorModeMade, lastColumn_endsAtTheMargin) {
    ctlMonitorMode panel(failingGuard());
    panel.show();
    const QRect first = panel.findChild<QWidget *>("cboMonitorMode")->geometry();
    const QRect last = panel.findChild<QWidget *>("cboStep")->geometry();
    EXPECT_EQ(panel.width() - 1 - last.right(), first.left());
}

TEST_F(CtlMonitorMode, controls_haveTheirLabelsAndRows) {
    EXPECT_EQ(label("Label1"), "Monitor mode");
    EXPECT_EQ(label("Label2"), "Span");
    EXPECT_EQ(label("Label3"), "Step");
    EXPECT_EQ(rows("cboMonitorMode"), QStringList({"Spectrum", "Step", "Channel"}));
    EXPECT_EQ(rows("cboSpan"),
              QStringList({"10.000.000", "5.000.000", "2.000.000", "1.000.000", "160.000"}));
    EXPECT_EQ(rows("cboStep"), QStringList({"0.500", "5.000", "6.250", "9.000", "10.000", "12.500",
                                            "20.000", "25.000", "31.250"}));
}

TEST_F(CtlMonitorMode, spanAndCentreWritten_setStepStartAndEnd) {
    EXPECT_EQ(numbers(), (Numbers{95e6, 100e6, 105e6, 10e6, 31'250}));
    EXPECT_EQ(texts(), QStringList({"95.00000", "100.00000", "105.00000", "10.00000", "31.250"}));
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, spanRow160000_givesAStepOf500) {
    pick("cboSpan", 4);
    EXPECT_EQ(numbers(), (Numbers{99.92e6, 100e6, 100.08e6, 160'000, 500}));
    EXPECT_EQ(text("cboSpan"), "0.16000");
    EXPECT_EQ(text("cboStep"), "0.500");
    EXPECT_EQ(events, Events{Code::Span});
}

TEST_F(CtlMonitorMode, spanRowThatEqualsTheSpan_raises3) {
    pick("cboSpan", 0);
    EXPECT_EQ(events, Events{Code::Span});
    EXPECT_EQ(text("cboSpan"), "10.00000");
}

TEST_F(CtlMonitorMode, stepRow31250_givesASpanOf10MHz) {
    panel->setfSpan(Hertz::fromWhole(kMega));
    pick("cboStep", 8);
    EXPECT_EQ(numbers(), (Numbers{95e6, 100e6, 105e6, 10e6, 31'250}));
    pick("cboStep", 8);
    EXPECT_EQ(events, (Events{Code::Step, Code::Step}));
}

TEST_F(CtlMonitorMode, startEntered90_movesTheWholeWindow) {
    typeInto("txtStart", "90\r");
    EXPECT_EQ(numbers(), (Numbers{90e6, 95e6, 100e6, 10e6, 31'250}));
    EXPECT_EQ(texts(), QStringList({"90.00000", "95.00000", "100.00000", "10.00000", "31.250"}));
    EXPECT_EQ(events, Events{Code::Centre});
}

TEST_F(CtlMonitorMode, endEntered_movesTheWholeWindow) {
    typeInto("txtEnd", "90\r");
    EXPECT_EQ(numbers(), (Numbers{80e6, 85e6, 90e6, 10e6, 31'250}));
    EXPECT_EQ(texts(), QStringList({"80.00000", "85.00000", "90.00000", "10.00000", "31.250"}));
    EXPECT_EQ(events, Events{Code::Centre});
}

TEST_F(CtlMonitorMode, centreEntered_movesTheWholeWindow) {
    typeInto("txtCentre", "145.5\r");
    EXPECT_EQ(numbers(), (Numbers{140.5e6, 145.5e6, 150.5e6, 10e6, 31'250}));
    EXPECT_EQ(text("txtCentre"), "145.50000");
    EXPECT_EQ(events, Events{Code::Centre});
}

TEST_F(CtlMonitorMode, spanEntered_keepsTheCentre) {
    typeInto("cboSpan", "2\r");
    EXPECT_EQ(numbers(), (Numbers{99e6, 100e6, 101e6, 2e6, 6'250}));
    EXPECT_EQ(texts(), QStringList({"99.00000", "100.00000", "101.00000", "2.00000", "6.250"}));
    EXPECT_EQ(events, Events{Code::Span});
}

TEST_F(CtlMonitorMode, stepEntered_keepsTheCentre) {
    typeInto("cboStep", "12.5\r");
    EXPECT_EQ(numbers(), (Numbers{98e6, 100e6, 102e6, 4e6, 12'500}));
    EXPECT_EQ(texts(), QStringList({"98.00000", "100.00000", "102.00000", "4.00000", "12.500"}));
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlMonitorMode, spanEntered1000001_roundsTheStepAndTheNextLossOfFocusSetsTheSpan) {
    typeInto("cboSpan", "1000.001K");
    EXPECT_EQ(numbers(), (Numbers{99'499'999.5, 100e6, 100'500'000.5, 1'000'001, 3'125}));
    EXPECT_EQ(events, Events{Code::Span});
    click("cboStep");
    leave();
    EXPECT_EQ(numbers(), (Numbers{99.5e6, 100e6, 100.5e6, 1e6, 3'125}));
    EXPECT_EQ(events, Events{Code::Span}) << "without any further event";
}

TEST_F(CtlMonitorMode, spanOf320ths_roundsTiesToEven) {
    panel->setfSpan(Hertz::fromWhole(160 + 320 * 2));
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(2));
    panel->setfSpan(Hertz::fromWhole(160 + 320 * 3));
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(4));
}

TEST_F(CtlMonitorMode, centreUnderHalfTheSpan_givesANegativeStart) {
    typeInto("txtCentre", "1\r");
    EXPECT_EQ(panel->fStart(), Hertz::fromWhole(-4 * kMega));
    EXPECT_EQ(text("txtStart"), "-4.00000");
}

TEST_F(CtlMonitorMode, endAboveTheCeiling_isShownAsItIs) {
    typeInto("txtCentre", "3500\r");
    EXPECT_EQ(text("txtEnd"), "3505.00000");
}

TEST_F(CtlMonitorMode, spanOf2GHz_isDroppedAndRaisedWithTheOldSpan) {
    typeInto("cboSpan", "2000\r");
    EXPECT_EQ(panel->fSpan(), Hertz::fromWhole(10 * kMega));
    EXPECT_EQ(text("cboSpan"), "10.00000");
    EXPECT_EQ(events, Events{Code::Span});
}

TEST_F(CtlMonitorMode, stepOf100kHz_isDroppedAndRaisedWithTheOldStep) {
    typeInto("cboStep", "100\r");
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(31'250));
    EXPECT_EQ(text("cboStep"), "31.250");
    EXPECT_EQ(events, Events{Code::Step});
    typeInto("cboStep", "99.999\r");
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(99'999));
}

TEST_F(CtlMonitorMode, entryOfZeroInEachField_isRefused) {
    for (const char *name : {"txtStart", "txtCentre", "txtEnd", "cboSpan", "cboStep"}) {
        typeInto(name, "0\r");
        EXPECT_EQ(text(name), "0") << name;
        leave();
    }
    EXPECT_EQ(numbers(), (Numbers{95e6, 100e6, 105e6, 10e6, 31'250}));
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, eachFieldLeftDuringAnEntry_showsItsOldValueAndRaises) {
    struct Case {
        const char *name;
        Code what;
    };
    const Case cases[] = {{"txtStart", Code::Centre},
                          {"txtCentre", Code::Centre},
                          {"txtEnd", Code::Centre},
                          {"cboSpan", Code::Span},
                          {"cboStep", Code::Step}};
    const QStringList before = texts();
    for (const Case &field : cases) {
        events.clear();
        typeInto(field.name, "7");
        leave();
        EXPECT_EQ(events, Events{field.what}) << field.name;
        EXPECT_EQ(texts(), before) << field.name;
    }
}

TEST_F(CtlMonitorMode, stepTypedWithoutATerminator_showsTheOldStepAndRaises2) {
    typeInto("cboStep", "5.000");
    key(Qt::Key_Tab);
    EXPECT_EQ(text("cboStep"), "31.250");
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(31'250));
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlMonitorMode, entryThatMovesToAnotherField_beginsAnew) {
    typeInto("txtStart", "14");
    typeInto("txtEnd", "105\r");
    EXPECT_EQ(panel->fEnd(), Hertz::fromWhole(105 * kMega));
    EXPECT_EQ(events, (Events{Code::Centre, Code::Centre}));
}

TEST_F(CtlMonitorMode, openListDuringAnEntry_isNoLossOfFocus) {
    typeInto("cboSpan", "7");
    key(Qt::Key_F4);
    EXPECT_EQ(events, Events{});
    key(Qt::Key_Escape);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(panel->fSpan(), Hertz::fromWhole(10 * kMega));
}

TEST_F(CtlMonitorMode, spanWrittenAsItIs_leavesARefusedTextAlone) {
    typeInto("cboSpan", "0\r");
    panel->setfSpan(Hertz::fromWhole(10 * kMega));
    EXPECT_EQ(text("cboSpan"), "0");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, spanOrStepWrittenInChannelMode_changesOnlyThatText) {
    goToChannelMode();
    panel->setfSpan(Hertz::fromWhole(5 * kMega));
    EXPECT_EQ(numbers(), (Numbers{88e6, 25'000, 96e6, 5e6, 25'000}));
    panel->setfStep(Hertz::fromWhole(12'500));
    EXPECT_EQ(numbers(), (Numbers{88e6, 25'000, 96e6, 5e6, 12'500}));
    EXPECT_EQ(texts(), QStringList({"88.00000", "25.000", "96.00000", "5.00000", "12.500"}));
}

TEST_F(CtlMonitorMode, startCentreOrEndWrittenInChannelMode_movesNothingElse) {
    goToChannelMode();
    panel->setfStart(Hertz::fromWhole(80 * kMega));
    EXPECT_EQ(numbers(), (Numbers{80e6, 25'000, 96e6, 8e6, 25'000}));
    panel->setfCentre(Hertz::fromWhole(9'000));
    EXPECT_EQ(numbers(), (Numbers{80e6, 9'000, 96e6, 8e6, 25'000}));
    panel->setfEnd(Hertz::fromWhole(81 * kMega));
    EXPECT_EQ(numbers(), (Numbers{80e6, 9'000, 81e6, 8e6, 25'000}));
    EXPECT_EQ(texts(), QStringList({"80.00000", "9.000", "81.00000", "8.00000", "25.000"}));
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, channelStepEntered12point5_is12500InKilohertz) {
    goToChannelMode();
    typeInto("txtCentre", "12.5\r");
    EXPECT_EQ(panel->fCentre(), Hertz::fromWhole(12'500));
    EXPECT_EQ(text("txtCentre"), "12.500");
    EXPECT_EQ(events, Events{Code::Channel});
}

TEST_F(CtlMonitorMode, channelStartAndEndEntered_raise4AndMoveNothingElse) {
    goToChannelMode();
    typeInto("txtEnd", "90\r");
    typeInto("txtStart", "89\r");
    EXPECT_EQ(numbers(), (Numbers{89e6, 25'000, 90e6, 8e6, 25'000}));
    EXPECT_EQ(events, (Events{Code::Channel, Code::Channel}));
}

TEST_F(CtlMonitorMode, channelFieldLeftDuringAnEntry_raises4) {
    goToChannelMode();
    typeInto("txtStart", "7");
    leave();
    EXPECT_EQ(text("txtStart"), "88.00000");
    EXPECT_EQ(events, Events{Code::Channel});
}

TEST_F(CtlMonitorMode, modePicked_setsCaptionsAndListsAndRaises0) {
    pick("cboMonitorMode", 2);
    EXPECT_EQ(panel->MonitorMode(), MonitorModeCode::Channel);
    EXPECT_EQ(label("lblStart"), "Ch. Start");
    EXPECT_EQ(label("lblCentre"), "Ch. Step");
    EXPECT_EQ(label("lblEnd"), "Ch. End");
    EXPECT_EQ(child("txtCentre")->accessibleName(), "Ch. Step");
    EXPECT_FALSE(child("cboSpan")->isEnabled());
    EXPECT_FALSE(child("cboStep")->isEnabled());
    EXPECT_EQ(text("txtCentre"), "100.00000") << "the old form stays until it is written";
    pick("cboMonitorMode", 1);
    EXPECT_EQ(panel->MonitorMode(), MonitorModeCode::Step);
    EXPECT_EQ(label("lblCentre"), "Centre");
    EXPECT_TRUE(child("cboSpan")->isEnabled());
    EXPECT_EQ(events, (Events{Code::MonitorMode, Code::MonitorMode}));
}

TEST_F(CtlMonitorMode, modeWrittenAs4OrMinus1_changesNothing) {
    panel->setMonitorMode(MonitorModeCode::Step);
    for (const int mode : {4, -1, 32767}) {
        panel->setMonitorMode(static_cast<MonitorModeCode>(mode));
        EXPECT_EQ(panel->MonitorMode(), MonitorModeCode::Step) << mode;
        EXPECT_EQ(text("cboMonitorMode"), "Step");
    }
}

TEST_F(CtlMonitorMode, modeWrittenAs0_clearsTheSelectionAndGivesPlainCaptions) {
    panel->setMonitorMode(MonitorModeCode::Channel);
    panel->setMonitorMode(MonitorModeCode::None);
    EXPECT_EQ(panel->MonitorMode(), MonitorModeCode::None);
    EXPECT_EQ(list("cboMonitorMode")->currentIndex(), -1);
    EXPECT_EQ(label("lblStart"), "Start");
    EXPECT_EQ(label("lblCentre"), "Centre");
    EXPECT_EQ(label("lblEnd"), "End");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, modeWrittenAgain_appliesEnabledStatesAndCaptions) {
    panel->setMonitorMode(MonitorModeCode::Channel);
    panel->setEnabled(true);
    EXPECT_TRUE(child("cboSpan")->isEnabled()) << "until the next reaction to the mode";
    panel->setMonitorMode(MonitorModeCode::Channel);
    EXPECT_FALSE(child("cboSpan")->isEnabled());
    EXPECT_FALSE(child("cboStep")->isEnabled());
    child<QLabel>("lblEnd")->setText("other");
    panel->setMonitorMode(MonitorModeCode::Channel);
    EXPECT_EQ(label("lblEnd"), "Ch. End");
}

TEST_F(CtlMonitorMode, enabledFalse_switchesAllSixAndTheReactionKeepsIt) {
    panel->setEnabled(false);
    for (const char *name :
         {"cboMonitorMode", "cboSpan", "cboStep", "txtStart", "txtCentre", "txtEnd"}) {
        EXPECT_FALSE(child(name)->isEnabled()) << name;
    }
    panel->setMonitorMode(MonitorModeCode::Step);
    EXPECT_FALSE(child("cboSpan")->isEnabled());
    EXPECT_FALSE(panel->Enabled());
    EXPECT_TRUE(panel->isEnabled());
}

TEST_F(CtlMonitorMode, stepWrittenWithAFraction_isRoundedToEvenAndReadAsFixedPoint) {
    panel->setfStep(Hertz::fromDouble(500.5));
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(500));
    EXPECT_EQ(panel->fSpan(), Hertz::fromWhole(160'000));
    panel->setMonitorMode(MonitorModeCode::Channel);
    panel->setfStep(Hertz::fromDouble(501.5));
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(502));
    EXPECT_EQ(text("cboStep"), "0.502");
}

TEST_F(CtlMonitorMode, stepWritten_leavesTheTextOfTheCentreAlone) {
    box("txtCentre")->setText("typed over");
    panel->setfStep(Hertz::fromWhole(500));
    EXPECT_EQ(texts(), QStringList({"99.92000", "typed over", "100.08000", "0.16000", "0.500"}));
}

TEST_F(CtlMonitorMode, channelModeLeftWithTheSpanOfTheChannels_setsStepStartAndEndAnew) {
    goToChannelMode();
    panel->setMonitorMode(MonitorModeCode::Spectrum);
    panel->setfSpan(Hertz::fromWhole(8 * kMega));
    panel->setfCentre(Hertz::fromWhole(100 * kMega));
    EXPECT_EQ(numbers(), (Numbers{96e6, 100e6, 104e6, 8e6, 25'000}));
    goToChannelMode();
    panel->setfStep(Hertz::fromWhole(12'500));
    panel->setMonitorMode(MonitorModeCode::Step);
    panel->setfSpan(Hertz::fromWhole(8 * kMega));
    EXPECT_EQ(panel->fStep(), Hertz::fromWhole(25'000)) << "a 320th of the span";
    EXPECT_EQ(panel->fEnd() - panel->fStart(), panel->fSpan());
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, equalSpanWrittenAgainAfterAModeChange_doesNothing) {
    panel->setMonitorMode(MonitorModeCode::Step);
    panel->setfSpan(Hertz::fromWhole(10 * kMega));
    list("cboSpan")->setEditText("typed over");
    panel->setMonitorMode(MonitorModeCode::Step);
    panel->setfSpan(Hertz::fromWhole(10 * kMega));
    EXPECT_EQ(text("cboSpan"), "typed over");
}

TEST_F(CtlMonitorMode, panelDisabledDuringAnEntry_endsItAndShowsTheStoredValue) {
    const QStringList before = texts();
    for (const char *name : {"txtStart", "txtCentre", "txtEnd", "cboSpan", "cboStep"}) {
        typeInto(name, "14");
        panel->setEnabled(false);
        EXPECT_EQ(texts(), before) << name;
        panel->setEnabled(true);
        panel->setMonitorMode(MonitorModeCode::Spectrum);
    }
    typeInto("txtEnd", "105\r");
    EXPECT_EQ(panel->fEnd(), Hertz::fromWhole(105 * kMega));
    EXPECT_EQ(events, Events{Code::Centre});
}

TEST_F(CtlMonitorMode, channelModeWrittenDuringAnEntryOfTheSpan_endsIt) {
    typeInto("cboSpan", "14");
    panel->setMonitorMode(MonitorModeCode::Channel);
    EXPECT_EQ(text("cboSpan"), "10.00000");
    typeInto("txtStart", "5\r");
    EXPECT_EQ(panel->fStart(), Hertz::fromWhole(5 * kMega));
    EXPECT_EQ(events, Events{Code::Channel});
}

TEST_F(CtlMonitorMode, allNumbersWrittenDuringAnEntry_leaveTheEntryShown) {
    for (const char *name : {"txtStart", "txtCentre", "txtEnd", "cboSpan", "cboStep"}) {
        typeInto(name, "14");
        panel->setfSpan(Hertz::fromWhole(2 * kMega));
        panel->setfCentre(Hertz::fromWhole(50 * kMega));
        panel->setfSpan(Hertz::fromWhole(10 * kMega));
        panel->setfCentre(Hertz::fromWhole(100 * kMega));
        EXPECT_EQ(text(name), "14") << name;
        leave();
    }
    EXPECT_EQ(texts(), QStringList({"95.00000", "100.00000", "105.00000", "10.00000", "31.250"}));
}

TEST_F(CtlMonitorMode, focusMovedInTheEvent_findsTheEntryStillInProgress) {
    QObject::connect(panel, &ctlMonitorMode::Changed, &window, [this] { outside->setFocus(); });
    typeInto("txtEnd", "145\r");
    EXPECT_EQ(events, (Events{Code::Centre, Code::Centre}));
}

TEST_F(CtlMonitorMode, largestStep_stillHasASpan) {
    panel->setfStep(Hertz::fromWhole(6'710'886));
    EXPECT_EQ(panel->fSpan(), Hertz::fromWhole(2'147'483'520));
}

TEST_F(CtlMonitorMode, stepWritten6710887_isAnErrorToTheWriter) {
    EXPECT_THROW(panel->setfStep(Hertz::fromWhole(6'710'887)), UntrappedError);
    EXPECT_THROW(panel->setfStep(Hertz::fromWhole(-6'710'888)), UntrappedError);
}

TEST_F(CtlMonitorMode, stepListLeftWithAHugeChannelStep_goesToTheGuard) {
    panel->setMonitorMode(MonitorModeCode::Channel);
    panel->setfStep(Hertz::fromWhole(7'000'000));
    panel->setMonitorMode(MonitorModeCode::Spectrum);
    click("cboStep");
    leave();
    EXPECT_EQ(errors, QStringList{"The span of a step of 7000000 Hz is too large."});
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlMonitorMode, tabKey_visitsTheTwoRowsInOrder) {
    list("cboMonitorMode")->setFocus();
    for (const char *name : {"cboSpan", "cboStep", "txtStart", "txtCentre", "txtEnd"}) {
        key(Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), child(name)) << name;
    }
}

TEST_F(CtlMonitorMode, containerWritingBackInTheEvent_raisesNothingMore) {
    QObject::connect(panel, &ctlMonitorMode::Changed, &window, [this] {
        panel->setfSpan(Hertz::fromWhole(5 * kMega));
        panel->setfCentre(Hertz::fromWhole(50 * kMega));
        panel->setMonitorMode(MonitorModeCode::Step);
    });
    typeInto("txtCentre", "145\r");
    EXPECT_EQ(numbers(), (Numbers{47.5e6, 50e6, 52.5e6, 5e6, 15'625}));
    EXPECT_EQ(events, Events{Code::Centre});
    leave();
    EXPECT_EQ(events, Events{Code::Centre});
}

} // namespace
} // namespace veldron
