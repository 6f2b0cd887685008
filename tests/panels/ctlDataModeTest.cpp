// SPDX-License-Identifier: MIT
#include "panels/ctlDataMode.h"
#include "panels/EntryBox.h"
#include "panels/UpDownButtons.h"
#include "tests/panels/PanelFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QToolButton>
#include <QValidator>

namespace veldron {
namespace {

class CtlDataMode : public PanelFixture<ctlDataMode, DataChangeCode> {
protected:
    void write(DataModeCode mode, qint16 samples) {
        panel->setDataMode(mode);
        panel->setSamples(samples);
        events.clear();
    }
    int typingLimit() const {
        int length = 0;
        int place = 0;
        QString text(QStringLiteral("1"));
        while (box("txtSamples")->validator()->validate(text, place) == QValidator::Acceptable) {
            length = static_cast<int>(text.size());
            text += QLatin1Char('1');
        }
        return length;
    }
    int upper() const { return child<UpDownButtons>("udSamples")->upper(); }
    void press(const char *button) { click(button); }
};

TEST(CtlDataModeMade, freshPanel_isNormalWithThreeSamples) {
    const ctlDataMode panel(failingGuard());
    EXPECT_EQ(panel.RBW(), 1);
    EXPECT_EQ(panel.Amp(), 0);
    EXPECT_EQ(panel.DataMode(), DataModeCode::Normal);
    EXPECT_EQ(panel.Samples(), 3);
    EXPECT_TRUE(panel.Enabled());
    for (const char *name : {"txtSamples", "lblSamples", "udSamples", "cmdReset"}) {
        EXPECT_TRUE(panel.findChild<QWidget *>(name)->isHidden()) << name;
    }
    EXPECT_EQ(panel.findChild<UpDownButtons *>("udSamples")->upper(), 31);
}

TEST_F(CtlDataMode, controls_haveTheirLabelsRowsAndTip) {
    EXPECT_EQ(label("Label1"), "RBW");
    EXPECT_EQ(label("Label2"), "Amp");
    EXPECT_EQ(label("Label3"), "Data mode");
    EXPECT_EQ(label("lblSamples"), "Samples");
    EXPECT_EQ(rows("cboRBW"), QStringList({"4 kHz", "32 kHz", "64 kHz", "128 kHz"}));
    EXPECT_EQ(rows("cboAmp"), QStringList({"0 dB", "-10 dB", "-20 dB", "-30 dB"}));
    EXPECT_EQ(rows("cboDataMode"), QStringList({"Normal", "Avg", "Max", "Med"}));
    EXPECT_EQ(child<QPushButton>("cmdReset")->text(), "Reset");
    EXPECT_EQ(child("cmdReset")->toolTip(), "Reset levels to zero");
    EXPECT_EQ(list("cboRBW")->itemData(3).toInt(), 128'000);
    EXPECT_EQ(list("cboAmp")->itemData(3).toInt(), -30);
}

TEST_F(CtlDataMode, upAndDown_fillTheirPlaceWithoutAMargin) {
    panel->show();
    write(DataModeCode::Average, 3);
    const QRect place = child("udSamples")->rect();
    const QRect up = child("udSamplesUp")->geometry();
    const QRect down = child("udSamplesDown")->geometry();
    EXPECT_EQ(up.united(down), place);
    EXPECT_EQ(down.top(), up.bottom() + 1);
}

TEST_F(CtlDataMode, eachRBWRow_isItsPosition) {
    for (qint16 row = 0; row < 4; ++row) {
        events.clear();
        pick("cboRBW", row);
        EXPECT_EQ(panel->RBW(), row + 1);
        EXPECT_EQ(events, Events{Code::RBW});
    }
}

TEST_F(CtlDataMode, eachAmpRow_isItsDecibels) {
    for (qint16 row = 0; row < 4; ++row) {
        events.clear();
        pick("cboAmp", row);
        EXPECT_EQ(panel->Amp(), -10 * row);
        EXPECT_EQ(events, Events{Code::Amp});
    }
}

TEST_F(CtlDataMode, pickedRows_areTheValuesWhenTheEventComes) {
    QList<int> heard;
    QObject::connect(panel, &ctlDataMode::Changed, panel, [&] {
        heard.append({panel->RBW(), panel->Amp()});
    });
    pick("cboRBW", 2);
    pick("cboAmp", 1);
    EXPECT_EQ(heard, (QList<int>{3, 0, 3, -10}));
}

TEST_F(CtlDataMode, eachDataMode_showsItsSampleControls) {
    struct Case {
        int row;
        bool samples;
        bool reset;
        int upper;
        int longest;
    };
    const Case cases[] = {{1, true, false, 31, 2},
                          {0, false, false, 31, 2},
                          {3, true, false, 4, 1},
                          {2, false, true, 4, 1},
                          {0, false, false, 4, 1}};
    for (const Case &mode : cases) {
        events.clear();
        pick("cboDataMode", mode.row);
        EXPECT_EQ(panel->DataMode(), static_cast<DataModeCode>(mode.row + 1));
        for (const char *name : {"txtSamples", "lblSamples", "udSamples"}) {
            EXPECT_EQ(isShown(name), mode.samples) << name << mode.row;
        }
        EXPECT_EQ(isShown("cmdReset"), mode.reset) << mode.row;
        EXPECT_EQ(upper(), mode.upper) << mode.row;
        EXPECT_EQ(typingLimit(), mode.longest) << mode.row;
        EXPECT_EQ(events, Events{Code::DataMode}) << mode.row;
    }
}

TEST_F(CtlDataMode, resetButton_standsInThePlaceOfTheSamples) {
    write(DataModeCode::Average, 3);
    const QPoint place = child("txtSamples")->mapTo(panel, QPoint(0, 0));
    write(DataModeCode::Max, 3);
    EXPECT_EQ(child("cmdReset")->mapTo(panel, QPoint(0, 0)), place);
}

TEST_F(CtlDataMode, medChosenOver20Samples_cutsThemTo4AfterTheEvent) {
    write(DataModeCode::Average, 20);
    using Seen = std::tuple<DataChangeCode, int, int>;
    std::vector<Seen> seen;
    QObject::connect(panel, &ctlDataMode::Changed, &window, [this, &seen](DataChangeCode what) {
        seen.emplace_back(what, panel->Samples(), upper());
    });
    pick("cboDataMode", 3);
    EXPECT_EQ(text("txtSamples"), "4");
    EXPECT_EQ(panel->Samples(), 4);
    EXPECT_EQ(seen, (std::vector<Seen>{{Code::DataMode, 20, 31}, {Code::Samples, 4, 4}}))
        << "first the mode with the old number and limits, then the cut text";
}

TEST_F(CtlDataMode, nineThenEnterInMed_is4AndOneEvent) {
    write(DataModeCode::Median, 3);
    typeInto("txtSamples", "9");
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(text("txtSamples"), "9");
    type("\r");
    EXPECT_EQ(text("txtSamples"), "4");
    EXPECT_EQ(panel->Samples(), 4);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, emptySamplesOnEnter_become2) {
    write(DataModeCode::Average, 7);
    typeInto("txtSamples", "5\b\r");
    EXPECT_EQ(text("txtSamples"), "2");
    EXPECT_EQ(panel->Samples(), 2);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, firstBackspace_emptiesTheText) {
    write(DataModeCode::Average, 17);
    typeInto("txtSamples", "\b");
    EXPECT_EQ(text("txtSamples"), "");
    EXPECT_EQ(panel->Samples(), 17);
}

TEST_F(CtlDataMode, typedSamples_areLimitedInLengthAndPulledIntoTheLimits) {
    struct Case {
        DataModeCode mode;
        const char *keys;
        const char *shown;
        qint16 samples;
    };
    constexpr DataModeCode average = DataModeCode::Average;
    constexpr DataModeCode median = DataModeCode::Median;
    const Case cases[] = {{average, "25", "25", 25},  {average, "99", "99", 31},
                          {average, "123", "12", 12}, {average, "1", "1", 2},
                          {average, "0", "0", 2},     {median, "3", "3", 3},
                          {median, "12", "1", 2},     {median, "4", "4", 4}};
    for (const Case &example : cases) {
        write(example.mode, 3);
        typeInto("txtSamples", example.keys);
        EXPECT_EQ(text("txtSamples"), example.shown) << example.keys;
        key(Qt::Key_Enter);
        EXPECT_EQ(panel->Samples(), example.samples) << example.keys;
        EXPECT_EQ(text("txtSamples"), QString::number(example.samples));
        EXPECT_EQ(events, Events{Code::Samples}) << example.keys;
    }
}

TEST_F(CtlDataMode, enterWithoutAnEntry_checksAndRaises8) {
    write(DataModeCode::Average, 9);
    typeInto("txtSamples", "\r");
    EXPECT_EQ(panel->Samples(), 9);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, otherKeyInAFullBox_endsTheEntryAndGoesOnToTheBox) {
    write(DataModeCode::Median, 3);
    typeInto("txtSamples", "4x");
    EXPECT_EQ(text("txtSamples"), "4") << "there is no room for the letter";
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, otherKeyInABoxWithRoom_isTypedAndChangesTheTextAgain) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "5x");
    EXPECT_EQ(text("txtSamples"), "5x") << "the key is not swallowed";
    EXPECT_EQ(panel->Samples(), 5);
    EXPECT_EQ(events, (Events{Code::Samples, Code::Samples}));
}

TEST_F(CtlDataMode, arrowsAndShift_doNotEndTheEntry) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "1");
    for (const Qt::Key code : {Qt::Key_Left, Qt::Key_End, Qt::Key_Shift, Qt::Key_F2}) {
        key(code);
    }
    type("2\r");
    EXPECT_EQ(panel->Samples(), 12);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, focusLostDuringAnEntry_takesTheNumberAndRaises8) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "12");
    leave();
    EXPECT_EQ(panel->Samples(), 12);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, focusLostWithoutAnEntry_raisesNothing) {
    write(DataModeCode::Average, 3);
    click("txtSamples");
    leave();
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, disabledDuringAnEntry_isNoLossOfFocus) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "12");
    panel->setEnabled(false);
    EXPECT_EQ(panel->Samples(), 3);
    EXPECT_EQ(text("txtSamples"), "3");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, enabledAgainAfterAnEntry_beginsAnew) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "1");
    panel->setEnabled(false);
    panel->setEnabled(true);
    click("cboAmp");
    EXPECT_EQ(events, Events{}) << "nothing is left of the entry";
    key(Qt::Key_Escape);
    typeInto("txtSamples", "2\r");
    EXPECT_EQ(panel->Samples(), 2);
    EXPECT_EQ(events, Events{Code::Samples});
}

TEST_F(CtlDataMode, upAndDown_stepTheTextWithinTheLimits) {
    write(DataModeCode::Median, 3);
    press("udSamplesUp");
    EXPECT_EQ(text("txtSamples"), "4");
    EXPECT_EQ(panel->Samples(), 4);
    press("udSamplesUp");
    EXPECT_EQ(text("txtSamples"), "4");
    EXPECT_EQ(events, Events{Code::Samples}) << "at the limit nothing changes";
    press("udSamplesDown");
    press("udSamplesDown");
    press("udSamplesDown");
    EXPECT_EQ(panel->Samples(), 2);
    EXPECT_EQ(events, (Events{Code::Samples, Code::Samples, Code::Samples}));
}

TEST_F(CtlDataMode, upAndDownFromBeyondTheLimits_comeBackWithin) {
    write(DataModeCode::Average, 99);
    press("udSamplesUp");
    EXPECT_EQ(panel->Samples(), 31);
    write(DataModeCode::Average, -5);
    press("udSamplesDown");
    EXPECT_EQ(panel->Samples(), 2);
}

TEST_F(CtlDataMode, upAndDown_workFromTheKeyboard) {
    write(DataModeCode::Average, 9);
    click("txtSamples");
    key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), child("udSamplesUp"));
    key(Qt::Key_Space);
    EXPECT_EQ(panel->Samples(), 10);
    key(Qt::Key_Tab);
    key(Qt::Key_Space);
    key(Qt::Key_Space);
    EXPECT_EQ(panel->Samples(), 8);
}

TEST_F(CtlDataMode, upDuringAnEntry_endsTheEntryFirst) {
    write(DataModeCode::Average, 3);
    typeInto("txtSamples", "12");
    press("udSamplesUp");
    EXPECT_EQ(panel->Samples(), 13);
    EXPECT_EQ(events, (Events{Code::Samples, Code::Samples}));
}

TEST_F(CtlDataMode, textPasted_isLimitedAndNoticed) {
    write(DataModeCode::Average, 3);
    click("txtSamples");
    box("txtSamples")->selectAll();
    QGuiApplication::clipboard()->setText("123");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(text("txtSamples"), "3");
    QGuiApplication::clipboard()->setText("17");
    box("txtSamples")->selectAll();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(panel->Samples(), 17);
}

TEST_F(CtlDataMode, ampWrittenBetweenRows_selectsTheEvenRowAndKeepsTheValue) {
    struct Case {
        qint16 amp;
        const char *row;
    };
    const Case cases[] = {{0, "0 dB"},     {-5, "0 dB"},    {-6, "-10 dB"},
                          {-10, "-10 dB"}, {-14, "-10 dB"}, {-15, "-20 dB"},
                          {-25, "-20 dB"}, {-26, "-30 dB"}, {-30, "-30 dB"}};
    for (const Case &example : cases) {
        panel->setAmp(example.amp);
        EXPECT_EQ(text("cboAmp"), example.row) << example.amp;
        EXPECT_EQ(panel->Amp(), example.amp);
    }
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, rbwWritten5AndAmpWritten10_changeNothing) {
    panel->setRBW(2);
    panel->setAmp(-20);
    for (const int value : {5, -1, 32767}) {
        panel->setRBW(static_cast<qint16>(value));
        EXPECT_EQ(panel->RBW(), 2) << value;
    }
    for (const int value : {10, 1, -31}) {
        panel->setAmp(static_cast<qint16>(value));
        EXPECT_EQ(panel->Amp(), -20) << value;
    }
    EXPECT_EQ(text("cboRBW"), "32 kHz");
    EXPECT_EQ(text("cboAmp"), "-20 dB");
}

TEST_F(CtlDataMode, eachRBWWritten_selectsItsRow) {
    for (qint16 bandwidth = 4; bandwidth >= 1; --bandwidth) {
        panel->setRBW(bandwidth);
        EXPECT_EQ(panel->RBW(), bandwidth);
        EXPECT_EQ(list("cboRBW")->currentIndex(), bandwidth - 1);
    }
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, rbwWritten0_clearsTheSelection) {
    panel->setRBW(0);
    EXPECT_EQ(panel->RBW(), 0);
    EXPECT_EQ(list("cboRBW")->currentIndex(), -1);
}

TEST_F(CtlDataMode, dataModeWritten9_selectsNormalAndTurnsTheCallersVariableTo1) {
    for (const int value : {9, 5, 0, -1}) {
        DataModeCode mode = DataModeCode::Median;
        panel->setDataMode(mode);
        mode = static_cast<DataModeCode>(value);
        panel->setDataMode(mode);
        EXPECT_EQ(mode, DataModeCode::Normal) << value;
        EXPECT_EQ(panel->DataMode(), DataModeCode::Normal);
        EXPECT_EQ(text("cboDataMode"), "Normal");
    }
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, dataModeWrittenInRange_leavesTheCallersVariableAndIsSilent) {
    write(DataModeCode::Average, 20);
    DataModeCode mode = DataModeCode::Median;
    panel->setDataMode(mode);
    EXPECT_EQ(mode, DataModeCode::Median);
    EXPECT_EQ(text("cboDataMode"), "Med");
    EXPECT_EQ(text("txtSamples"), "4");
    EXPECT_EQ(panel->Samples(), 4);
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlDataMode, samplesWritten99_areShownUntilTheNextCheck) {
    write(DataModeCode::Median, 99);
    EXPECT_EQ(text("txtSamples"), "99");
    EXPECT_EQ(panel->Samples(), 99);
    typeInto("txtSamples", "\r");
    EXPECT_EQ(text("txtSamples"), "4");
    write(DataModeCode::Average, 99);
    DataModeCode mode = DataModeCode::Average;
    panel->setDataMode(mode);
    EXPECT_EQ(panel->Samples(), 31) << "writing the same mode checks too";
}

TEST_F(CtlDataMode, resetPressed_raises16AlsoWhileDisabled) {
    write(DataModeCode::Max, 3);
    click("cmdReset");
    panel->setEnabled(false);
    click("cmdReset");
    key(Qt::Key_Space);
    EXPECT_EQ(events, (Events{Code::Reset, Code::Reset, Code::Reset}));
}

TEST_F(CtlDataMode, resetPressedWhileCodeWrites_raises16) {
    write(DataModeCode::Average, 20);
    // The text changes while the mode is being written.
    const auto connection = QObject::connect(box("txtSamples"), &QLineEdit::textChanged, &window,
                                             [this] { child<QPushButton>("cmdReset")->click(); });
    panel->setSamples(5);
    QObject::disconnect(connection);
    EXPECT_EQ(events, Events{Code::Reset});
}

TEST_F(CtlDataMode, normalAndMax_keepTheHiddenSamples) {
    write(DataModeCode::Average, 20);
    for (DataModeCode mode : {DataModeCode::Normal, DataModeCode::Max}) {
        panel->setDataMode(mode);
        EXPECT_EQ(text("txtSamples"), "20");
        EXPECT_EQ(panel->Samples(), 20);
    }
    panel->setSamples(7);
    EXPECT_EQ(text("txtSamples"), "7");
}

TEST_F(CtlDataMode, enabledFalse_switchesTheFiveControlsButNotReset) {
    panel->setEnabled(false);
    for (const char *name : {"cboRBW", "cboAmp", "cboDataMode", "txtSamples", "udSamples"}) {
        EXPECT_FALSE(child(name)->isEnabled()) << name;
    }
    EXPECT_TRUE(child("cmdReset")->isEnabled());
    EXPECT_TRUE(panel->isEnabled());
    EXPECT_FALSE(panel->Enabled());
}

TEST_F(CtlDataMode, containerWritingBackInTheEvent_raisesNothingMore) {
    write(DataModeCode::Average, 20);
    QObject::connect(panel, &ctlDataMode::Changed, &window, [this] {
        DataModeCode mode = DataModeCode::Max;
        panel->setDataMode(mode);
        panel->setSamples(6);
    });
    pick("cboDataMode", 3);
    EXPECT_EQ(panel->DataMode(), DataModeCode::Max);
    EXPECT_TRUE(isShown("cmdReset"));
    EXPECT_EQ(events, Events{Code::DataMode});
}

} // namespace
} // namespace veldron
