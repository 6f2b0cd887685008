// SPDX-License-Identifier: MIT
#include "settings/frmDisplaySettings.h"

#include "settings/PalettePreview.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>

#include <vector>

namespace veldron {
namespace {

class FrmDisplaySettingsTest : public testing::Test {
protected:
    FrmDisplaySettingsTest() { m_form.show(); }

    QCheckBox *box(const char *name) { return m_form.findChild<QCheckBox *>(QLatin1String(name)); }
    QComboBox *list(const char *name) { return m_form.findChild<QComboBox *>(QLatin1String(name)); }
    QLabel *label(const char *name) { return m_form.findChild<QLabel *>(QLatin1String(name)); }
    QPushButton *ok() { return m_form.findChild<QPushButton *>("OKButton"); }
    void tick(const char *name) { QTest::keyClick(box(name), Qt::Key_Space); }
    /// The user's pick of a row by the keyboard: home, down to the row.
    void pick(const char *name, int row) {
        for (int i = list(name)->currentIndex(); i < row; ++i) {
            QTest::keyClick(list(name), Qt::Key_Down);
        }
        for (int i = list(name)->currentIndex(); i > row; --i) {
            QTest::keyClick(list(name), Qt::Key_Up);
        }
    }
    /// A write of one setting from code.
    template <typename T>
    void write(T DisplaySettings::*field, std::type_identity_t<T> value) {
        DisplaySettings values = m_form.values();
        values.*field = value;
        m_form.setValues(values);
    }
    void writeDefaults() { m_form.setValues(DisplaySettings::atStart()); }
    std::vector<int> events() {
        std::vector<int> bits;
        for (const QList<QVariant> &event : m_events) {
            bits.push_back(event.first().toInt());
        }
        return bits;
    }
    QStringList rows(const char *name) {
        QStringList texts;
        for (int i = 0; i < list(name)->count(); ++i) {
            texts.append(list(name)->itemText(i));
        }
        return texts;
    }

    frmDisplaySettings m_form{ErrorGuard([](const UntrappedError &) {})};
    QSignalSpy m_events{&m_form, &frmDisplaySettings::Changed};
};

TEST_F(FrmDisplaySettingsTest, creation_isEmptyAndUnchanged) {
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_EQ(m_form.values().Update, 0);
    EXPECT_EQ(m_form.values().Persistence, 0);
    EXPECT_EQ(m_form.values().PaletteIndex, 0);
    EXPECT_FALSE(m_form.values().PersistenceEnable);
    EXPECT_FALSE(m_form.values().WaterfallEnable);
    EXPECT_FALSE(m_form.values().MarkerEnable);
    EXPECT_EQ(list("cboUpdate")->currentIndex(), -1);
}

TEST_F(FrmDisplaySettingsTest, texts_areThoseOfTheDialog) {
    EXPECT_EQ(m_form.windowTitle(), "Display Settings");
    EXPECT_EQ(box("chkPersistence")->text(), "Peak following");
    EXPECT_EQ(box("chkWaterfall")->text(), "Show waterfall");
    EXPECT_EQ(box("chkMarker")->text(), "Show marker");
    EXPECT_EQ(box("chkMarker")->toolTip(), "Show the Frequency marker on the spectrum display");
    EXPECT_EQ(label("Label5")->text(), "Persistence time");
    EXPECT_EQ(label("Label4")->text(), "Waterfall update rate");
    EXPECT_EQ(label("Label6")->text(), "Waterfall colours");
    EXPECT_EQ(label("Label8")->text(), "low");
    EXPECT_EQ(label("Label9")->text(), "high");
    EXPECT_EQ(ok()->text(), "OK");
}

TEST_F(FrmDisplaySettingsTest, lists_haveTheirTipsLabelsAndRows) {
    EXPECT_EQ(list("cboPersistence")->toolTip(),
              "How long the peak values persist on the spectrum display");
    EXPECT_EQ(list("cboUpdate")->toolTip(), "How fast the waterfall display moves downwards");
    EXPECT_EQ(list("cboPalette")->toolTip(), "Colour scheme for the waterfall display");
    EXPECT_EQ(label("Label5")->buddy(), list("cboPersistence"));
    EXPECT_EQ(label("Label4")->buddy(), list("cboUpdate"));
    EXPECT_EQ(label("Label6")->buddy(), list("cboPalette"));
    EXPECT_EQ(rows("cboPersistence"),
              (QStringList{"5s", "10s", "30s", "1m", "5m", "10m", "30m", "1h", "life"}));
    EXPECT_EQ(rows("cboUpdate"), (QStringList{"1s", "2s", "5s", "10s", "30s", "1m"}));
    EXPECT_EQ(rows("cboPalette"), (QStringList{"black to white", "white to black", "hot metal",
                                               "rainbow", "spectrum 5", "spectrum 6"}));
}

TEST_F(FrmDisplaySettingsTest, previewLabels_standUnderItsEnds) {
    const QRect picture = m_form.findChild<QWidget *>("Picture1")->geometry();
    EXPECT_EQ(label("Label8")->geometry().left(), picture.left());
    EXPECT_EQ(label("Label9")->geometry().right(), picture.right());
    EXPECT_GT(label("Label8")->y(), picture.bottom());
    EXPECT_GT(label("Label9")->y(), picture.bottom());
}

TEST_F(FrmDisplaySettingsTest, defaultsWritten_areShownAndNotNoted) {
    writeDefaults();
    EXPECT_EQ(list("cboUpdate")->currentText(), "1s");
    EXPECT_EQ(list("cboPersistence")->currentText(), "5s");
    EXPECT_EQ(list("cboPalette")->currentText(), "rainbow");
    EXPECT_TRUE(box("chkMarker")->isChecked());
    EXPECT_FALSE(box("chkPersistence")->isChecked());
    EXPECT_FALSE(box("chkWaterfall")->isChecked());
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(FrmDisplaySettingsTest, everyUpdateRow_canBeWrittenAndReadBack) {
    int row = 0;
    for (const qint32 seconds : {1, 2, 5, 10, 30, 60}) {
        write(&DisplaySettings::Update, seconds);
        EXPECT_EQ(m_form.values().Update, seconds);
        EXPECT_EQ(list("cboUpdate")->currentIndex(), row++);
    }
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmDisplaySettingsTest, everyPersistenceRow_canBeWrittenAndReadBack) {
    int row = 0;
    for (const qint32 seconds : {5, 10, 30, 60, 300, 600, 1800, 3600, -1}) {
        write(&DisplaySettings::Persistence, seconds);
        EXPECT_EQ(m_form.values().Persistence, seconds);
        EXPECT_EQ(list("cboPersistence")->currentIndex(), row++);
    }
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmDisplaySettingsTest, everyPaletteRow_canBeWrittenAndReadBack) {
    for (qint16 row = 0; row < 6; ++row) {
        write(&DisplaySettings::PaletteIndex, row);
        EXPECT_EQ(m_form.values().PaletteIndex, row);
        EXPECT_EQ(list("cboPalette")->currentIndex(), row);
    }
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(FrmDisplaySettingsTest, persistenceWrittenAsSeven_selectsNothingAndKeepsItsValue) {
    write(&DisplaySettings::Persistence, 30);
    write(&DisplaySettings::Persistence, 7);
    EXPECT_EQ(m_form.values().Persistence, 30);
    EXPECT_EQ(list("cboPersistence")->currentText(), "30s");
}

TEST_F(FrmDisplaySettingsTest, updateWrittenWithoutARow_changesNothing) {
    write(&DisplaySettings::Update, 10);
    write(&DisplaySettings::Update, 3);
    EXPECT_EQ(m_form.values().Update, 10);
    EXPECT_EQ(list("cboUpdate")->currentText(), "10s");
}

TEST_F(FrmDisplaySettingsTest, paletteIndexOutsideTheList_changesNothing) {
    write(&DisplaySettings::PaletteIndex, 2);
    write(&DisplaySettings::PaletteIndex, 6);
    write(&DisplaySettings::PaletteIndex, -1);
    EXPECT_EQ(m_form.values().PaletteIndex, 2);
    EXPECT_EQ(list("cboPalette")->currentIndex(), 2);
}

TEST_F(FrmDisplaySettingsTest, lifePicked_isMinusOne) {
    writeDefaults();
    pick("cboPersistence", 8);
    EXPECT_EQ(list("cboPersistence")->currentText(), "life");
    EXPECT_EQ(m_form.values().Persistence, -1);
    EXPECT_EQ(m_form.Change(), 8);
}

TEST_F(FrmDisplaySettingsTest, changeReadTwice_isZeroTheSecondTime) {
    tick("chkMarker");
    EXPECT_EQ(m_form.Change(), 64);
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmDisplaySettingsTest, checkBoxesWritten_areShownAndNotNoted) {
    write(&DisplaySettings::PersistenceEnable, true);
    write(&DisplaySettings::WaterfallEnable, true);
    write(&DisplaySettings::MarkerEnable, true);
    EXPECT_TRUE(box("chkPersistence")->isChecked() && box("chkWaterfall")->isChecked() &&
                box("chkMarker")->isChecked());
    EXPECT_TRUE(m_form.values().PersistenceEnable && m_form.values().WaterfallEnable &&
                m_form.values().MarkerEnable);
    write(&DisplaySettings::WaterfallEnable, false);
    EXPECT_FALSE(m_form.values().WaterfallEnable);
    EXPECT_FALSE(box("chkWaterfall")->isChecked());
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(FrmDisplaySettingsTest, checkBoxesTicked_setTheirFieldsAndBits) {
    tick("chkPersistence");
    EXPECT_TRUE(m_form.values().PersistenceEnable);
    tick("chkWaterfall");
    EXPECT_TRUE(m_form.values().WaterfallEnable);
    tick("chkMarker");
    EXPECT_TRUE(m_form.values().MarkerEnable);
    EXPECT_EQ(events(), (std::vector{8, 4, 64}));
    EXPECT_EQ(m_form.Change(), 8 | 4 | 64);
    tick("chkWaterfall");
    EXPECT_FALSE(m_form.values().WaterfallEnable);
    EXPECT_EQ(m_form.Change(), 4);
}

TEST_F(FrmDisplaySettingsTest, listsPicked_setTheirFieldsAndBits) {
    writeDefaults();
    pick("cboUpdate", 1);
    EXPECT_EQ(m_form.values().Update, 2);
    pick("cboPersistence", 1);
    EXPECT_EQ(m_form.values().Persistence, 10);
    pick("cboPalette", 2);
    EXPECT_EQ(m_form.values().PaletteIndex, 2);
    EXPECT_EQ(events(), (std::vector{4, 8, 16}));
    EXPECT_EQ(m_form.Change(), 4 | 8 | 16);
}

TEST_F(FrmDisplaySettingsTest, updateChangedAndChangedBack_stillSetsItsBit) {
    writeDefaults();
    pick("cboUpdate", 1);
    pick("cboUpdate", 0);
    EXPECT_EQ(m_form.values().Update, 1);
    EXPECT_EQ(m_form.Change(), 4);
}

TEST_F(FrmDisplaySettingsTest, paletteSelected_redrawsThePreviewAlsoByCode) {
    auto *const preview = m_form.findChild<PalettePreview *>("Picture1");
    write(&DisplaySettings::PaletteIndex, 1);
    EXPECT_EQ(preview->grab().toImage().pixelColor(0, 2), QColor(255, 255, 255));
    pick("cboPalette", 2);
    EXPECT_EQ(preview->grab().toImage().pixelColor(0, 2), QColor(0, 0, 0));
}

TEST_F(FrmDisplaySettingsTest, okButton_hidesAndKeepsFieldsAndMask) {
    writeDefaults();
    tick("chkWaterfall");
    QTest::mouseClick(ok(), Qt::LeftButton);
    EXPECT_FALSE(m_form.isVisible());
    EXPECT_TRUE(m_form.values().WaterfallEnable);
    EXPECT_EQ(m_form.Change(), 4);
}

TEST_F(FrmDisplaySettingsTest, closeBox_hidesAndKeepsFieldsAndMask) {
    tick("chkWaterfall");
    m_form.close();
    EXPECT_FALSE(m_form.isVisible());
    EXPECT_TRUE(m_form.values().WaterfallEnable);
    EXPECT_EQ(m_form.Change(), 4);
}

TEST_F(FrmDisplaySettingsTest, escape_hidesAndKeepsFieldsAndMask) {
    tick("chkWaterfall");
    QTest::keyClick(&m_form, Qt::Key_Escape);
    EXPECT_FALSE(m_form.isVisible());
    EXPECT_EQ(m_form.result(), QDialog::Accepted);
    EXPECT_EQ(m_form.Change(), 4);
}

TEST_F(FrmDisplaySettingsTest, okWithoutAChange_leavesTheMaskZero) {
    writeDefaults();
    QTest::mouseClick(ok(), Qt::LeftButton);
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmDisplaySettingsTest, hiddenDialog_canBeWrittenAndRead) {
    m_form.hide();
    write(&DisplaySettings::Update, 30);
    write(&DisplaySettings::Persistence, -1);
    EXPECT_EQ(m_form.values().Update, 30);
    EXPECT_EQ(m_form.values().Persistence, -1);
}

TEST_F(FrmDisplaySettingsTest, tabKey_walksTheControlsFromTopToBottom) {
    QStringList walked;
    QWidget *widget = box("chkPersistence");
    do {
        walked.append(widget->objectName());
        do {
            widget = widget->nextInFocusChain();
        } while ((widget->focusPolicy() & Qt::TabFocus) == 0);
    } while (widget != box("chkPersistence"));
    EXPECT_EQ(walked, (QStringList{"chkPersistence", "cboPersistence", "chkWaterfall", "cboUpdate",
                                   "cboPalette", "chkMarker", "OKButton"}));
}

TEST_F(FrmDisplaySettingsTest, reopenedDialog_hasTheFocusOnItsFirstControl) {
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("chkPersistence"));
    m_form.findChild<QWidget *>("chkMarker")->setFocus();
    m_form.accept();
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("chkPersistence"));
}

} // namespace
} // namespace veldron
