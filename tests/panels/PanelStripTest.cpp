// SPDX-License-Identifier: MIT
// What the three panels have in common, and how they stand side by side.
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"

#include "tests/panels/PanelFixture.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <functional>
#include <map>
#include <set>

namespace veldron {
namespace {

constexpr int kWindowWidth = 1024;
constexpr int kStripWidth = 1000;
constexpr int kStripHeight = 120;

class PanelStrip : public testing::Test {
protected:
    PanelStrip() {
        auto *strip = new QHBoxLayout(&window);
        strip->setContentsMargins(4, 4, 4, 4);
        strip->setSpacing(4);
        for (QFrame *panel : panels()) {
            strip->addWidget(panel);
        }
        strip->addStretch(1);
        const auto note = [this](auto what) {
            events.push_back(static_cast<qint32>(what));
        };
        QObject::connect(frequency, &ctlFrequency::Changed, &window, note);
        QObject::connect(monitor, &ctlMonitorMode::Changed, &window, note);
        QObject::connect(data, &ctlDataMode::Changed, &window, note);
        window.resize(kWindowWidth, 130);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    std::vector<QFrame *> panels() const { return {frequency, monitor, data}; }
    /// Everything on the panels that can take the keyboard.
    std::vector<QWidget *> focusables() const {
        std::vector<QWidget *> found;
        for (const QFrame *panel : panels()) {
            for (QWidget *widget : panel->findChildren<QWidget *>()) {
                if (widget->focusPolicy() != Qt::NoFocus && widget->window() == &window) {
                    found.push_back(widget);
                }
            }
        }
        return found;
    }
    /// Writes every property of every panel with usual, odd and refused values.
    void writeEverything() {
        for (const int number : {0, 1, 3, 7, 10, 11, -1, -20, 99}) {
            const auto code = static_cast<qint16>(number);
            auto mode = static_cast<DataModeCode>(code);
            frequency->setRX(code);
            frequency->setMode(code);
            frequency->setStep(number * 1'000);
            frequency->setFrequency(Hertz::fromWhole(number * 1'000'000));
            frequency->setAtten(number % 2 != 0);
            monitor->setMonitorMode(static_cast<MonitorModeCode>(code));
            monitor->setfSpan(Hertz::fromWhole(number * 1'000'000));
            monitor->setfStep(Hertz::fromWhole(number * 1'000));
            monitor->setfStart(Hertz::fromWhole(number * 2'000'000));
            monitor->setfCentre(Hertz::fromWhole(number * 3'000'000));
            monitor->setfEnd(Hertz::fromWhole(number * 4'000'000));
            data->setRBW(code);
            data->setAmp(code);
            data->setDataMode(mode);
            data->setSamples(code);
            setAllEnabled(number % 2 == 0);
        }
    }
    void setAllEnabled(bool value) {
        frequency->setEnabled(value);
        frequency->setAttenEn(value);
        frequency->setStepEn(value);
        frequency->setModeEn(value);
        monitor->setEnabled(value);
        data->setEnabled(value);
    }
    /// Runs the event loop until the layouts have settled: one change may ask for another.
    static void settleLayouts() {
        for (int turn = 0; turn < 5; ++turn) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
    }
    void showEverything() {
        frequency->setRX(3);
        DataModeCode mode = DataModeCode::Average;
        data->setDataMode(mode);
    }

    QWidget window;
    ctlFrequency *frequency = new ctlFrequency(failingGuard(), &window);
    ctlMonitorMode *monitor = new ctlMonitorMode(failingGuard(), &window);
    ctlDataMode *data = new ctlDataMode(failingGuard(), &window);
    std::vector<qint32> events;
};

TEST_F(PanelStrip, everyPropertyWrittenByCode_raisesNoEvent) {
    writeEverything();
    EXPECT_EQ(events, std::vector<qint32>{});
}

TEST_F(PanelStrip, everyPropertyWrittenWhileAControlHasTheFocus_raisesNoEvent) {
    showEverything();
    for (QWidget *widget : focusables()) {
        widget->setFocus();
        writeEverything();
        setAllEnabled(true);
        showEverything();
    }
    EXPECT_EQ(events, std::vector<qint32>{});
}

TEST_F(PanelStrip, everyLabel_isTheBuddyAndTheNameOfItsControl) {
    int labels = 0;
    for (const QFrame *panel : panels()) {
        for (const QLabel *label : panel->findChildren<QLabel *>()) {
            if (label->objectName() == "lblFreq") {
                continue;
            }
            ++labels;
            ASSERT_NE(label->buddy(), nullptr) << label->objectName().toStdString();
            EXPECT_EQ(label->buddy()->accessibleName(), label->text());
        }
    }
    EXPECT_EQ(labels, 5 + 6 + 4);
}

TEST_F(PanelStrip, threePanels_fitIntoTheSmallestWindow) {
    showEverything();
    int width = 0;
    for (const QFrame *panel : panels()) {
        width += panel->minimumSizeHint().width();
        EXPECT_LE(panel->height(), kStripHeight);
    }
    EXPECT_LE(width, kStripWidth);
    EXPECT_EQ(window.width(), kWindowWidth);
}

TEST_F(PanelStrip, threePanels_areOfOneHeightAndStandOnCommonBaseLines) {
    showEverything();
    std::set<int> heights;
    std::set<int> labelLines;
    std::set<int> controlLines;
    for (const QFrame *panel : panels()) {
        heights.insert(panel->height());
        for (const QLabel *label : panel->findChildren<QLabel *>()) {
            if (label->buddy() != nullptr) {
                labelLines.insert(label->mapTo(&window, QPoint(0, label->height())).y());
                const QWidget *control = label->buddy();
                controlLines.insert(control->mapTo(&window, QPoint(0, control->height())).y());
            }
        }
    }
    EXPECT_EQ(heights.size(), 1U);
    EXPECT_EQ(labelLines.size(), 2U);
    EXPECT_EQ(controlLines.size(), 2U);
}

TEST_F(PanelStrip, columnsOfEachPanel_areOfOneWidth) {
    showEverything();
    settleLayouts();
    const auto widths = [](const QWidget *panel, const QStringList &names) {
        std::set<int> found;
        for (const QString &name : names) {
            found.insert(panel->findChild<QWidget *>(name)->width());
        }
        return found;
    };
    const auto receiver = widths(frequency, {"cboRX", "cboStep", "cboMode"});
    const auto scan = widths(
        monitor, {"cboMonitorMode", "cboSpan", "cboStep", "txtStart", "txtCentre", "txtEnd"});
    const auto measuring = widths(data, {"cboRBW", "cboAmp", "cboDataMode", "samplesPair"});
    EXPECT_EQ(receiver.size(), 1U);
    EXPECT_EQ(scan.size(), 1U);
    EXPECT_EQ(measuring.size(), 1U);
    EXPECT_EQ(receiver, scan);
    EXPECT_LT(*measuring.begin(), *scan.begin());
}

TEST_F(PanelStrip, samplesAndTheirButtons_fillTheColumnOfAmp) {
    showEverything();
    settleLayouts();
    const auto edge = [this](const char *name) {
        const auto *control = data->findChild<QWidget *>(QLatin1String(name));
        return control->mapTo(data, control->rect().topRight()).x();
    };
    EXPECT_EQ(edge("udSamples"), edge("cboAmp"));
    EXPECT_EQ(edge("udSamplesUp"), edge("cboAmp"));
    EXPECT_EQ(edge("cmdReset"), edge("cboAmp"));
}

TEST_F(PanelStrip, hiddenControls_leaveTheirPlacesEmpty) {
    showEverything();
    settleLayouts();
    const QRect before = monitor->geometry();
    frequency->setRX(0);
    DataModeCode mode = DataModeCode::Normal;
    data->setDataMode(mode);
    QApplication::processEvents();
    EXPECT_EQ(monitor->geometry(), before);
}

TEST_F(PanelStrip, noText_isCutOff) {
    showEverything();
    monitor->setfCentre(Hertz::fromWhole(-1'000'000'000));
    for (const QFrame *panel : panels()) {
        for (const QLabel *label : panel->findChildren<QLabel *>()) {
            if (label->buddy() != nullptr) {
                EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
            }
        }
        for (const QLineEdit *box : panel->findChildren<QLineEdit *>()) {
            EXPECT_GE(box->width(), box->fontMetrics().horizontalAdvance(box->text()) + 6)
                << box->text().toStdString();
        }
    }
}

TEST_F(PanelStrip, controls_keepTheirNames) {
    const std::map<const QFrame *, QStringList> names = {
        {frequency,
         {"Label2", "cboRX", "Label1", "txtFreq", "lblStep", "cboStep", "lblMode", "cboMode",
          "lblAtten", "chkAtten", "Picture1", "lblFreq", "Timer1", "mnuRounding", "mnuNoRound",
          "mnuRound", "mnuRoundHalf"}},
        {monitor,
         {"Label1", "cboMonitorMode", "Label2", "cboSpan", "Label3", "cboStep", "lblStart",
          "txtStart", "lblCentre", "txtCentre", "lblEnd", "txtEnd"}},
        {data,
         {"Label1", "cboRBW", "Label2", "cboAmp", "Label3", "cboDataMode", "lblSamples",
          "txtSamples", "udSamples", "cmdReset"}}};
    for (const auto &[panel, children] : names) {
        for (const QString &name : children) {
            EXPECT_EQ(panel->findChildren<QObject *>(name).size(), 1) << name.toStdString();
        }
    }
}

} // namespace
} // namespace veldron
