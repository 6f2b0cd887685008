// SPDX-License-Identifier: MIT
#include "app/frmAbout.h"

#include "app/frmSplash.h"
#include "common/UntrappedError.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace veldron {
namespace {

class FrmAboutTest : public testing::Test {
protected:
    FrmAboutTest() {
        QFile program(m_folder.filePath("veldron"));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        EXPECT_TRUE(program.setFileTime(QDateTime(QDate(2026, 3, 14), QTime(12, 0)),
                                        QFileDevice::FileModificationTime));
        m_facts.title = "VELDRON";
        m_facts.version = "1.0.0";
        m_facts.programFile = program.fileName();
        m_facts.locale = QLocale(QLocale::English, QLocale::UnitedKingdom);
    }
    void connectUnit(const QString &version) {
        m_facts.Connected = true;
        m_facts.Status = "VELDRON connected on COM 3";
        m_facts.Version = version;
    }
    static QString text(const frmAbout &form, const char *name) {
        return form.findChild<QLabel *>(QLatin1String(name))->text();
    }

    QTemporaryDir m_folder;
    AboutFacts m_facts;
    ErrorGuard m_guard{[](const UntrappedError &) {
        FAIL();
    }};
};

TEST_F(FrmAboutTest, caption_namesTheProgram) {
    EXPECT_EQ(frmAbout(m_guard, m_facts).windowTitle(), "About VELDRON");
}

TEST_F(FrmAboutTest, labels_tellTitleAndMaker) {
    const frmAbout form(m_guard, m_facts);
    EXPECT_EQ(text(form, "lblTitle"), "PC control software for VELDRON");
    EXPECT_EQ(text(form, "lblDescription"), makerAddress().replace('\r', '\n'));
}

TEST_F(FrmAboutTest, versionLine_tellsWhenTheProgramFileWasBuilt) {
    EXPECT_EQ(text(frmAbout(m_guard, m_facts), "lblVersion"),
              "Version 1.0.0  " + m_facts.locale.toString(QDate(2026, 3, 14), QLocale::LongFormat));
    EXPECT_TRUE(text(frmAbout(m_guard, m_facts), "lblVersion").contains("14 March 2026"));
}

TEST_F(FrmAboutTest, noConnection_showsNoFirmwareLine) {
    m_facts.Status = "No serial port selected";
    m_facts.Version = "Ver 1.5";
    EXPECT_EQ(infoText(m_facts), "");
    EXPECT_EQ(text(frmAbout(m_guard, m_facts), "lblInfo"), "");
}

TEST_F(FrmAboutTest, connection_showsStatusAndFirmware) {
    connectUnit("Ver 1.5");
    EXPECT_EQ(infoText(m_facts), "VELDRON connected on COM 3\rFirmware Ver 1.5");
    EXPECT_EQ(text(frmAbout(m_guard, m_facts), "lblInfo"),
              "VELDRON connected on COM 3\nFirmware Ver 1.5");
}

TEST_F(FrmAboutTest, versionOfTheUnit_isShownExactlyAsItCame) {
    connectUnit("  <b>Ver</b> 1.5 & more ");
    const frmAbout form(m_guard, m_facts);
    EXPECT_TRUE(text(form, "lblInfo").endsWith("\nFirmware   <b>Ver</b> 1.5 & more "));
    EXPECT_EQ(form.findChild<QLabel *>("lblInfo")->textFormat(), Qt::PlainText);
}

TEST_F(FrmAboutTest, connectionWithoutVersion_showsAnEmptyFirmware) {
    connectUnit("");
    EXPECT_EQ(text(frmAbout(m_guard, m_facts), "lblInfo"), "VELDRON connected on COM 3\nFirmware ");
}

TEST_F(FrmAboutTest, programFileGone_isAFileError) {
    m_facts.programFile = m_folder.filePath("gone");
    try {
        const frmAbout form(m_guard, m_facts);
        FAIL() << "made without the program's file";
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
        EXPECT_TRUE(error.message().contains("gone"));
    }
}

TEST_F(FrmAboutTest, labelsAndButton_standInOneColumnWithinEvenMargins) {
    connectUnit("Ver 1.5");
    frmAbout form(m_guard, m_facts);
    form.show();
    int above = 0;
    QRect column;
    for (const char *name : {"lblTitle", "lblVersion", "lblDescription", "lblInfo", "cmdOK"}) {
        const QRect place = form.findChild<QWidget *>(QLatin1String(name))->geometry();
        EXPECT_GT(place.top(), above) << name;
        above = place.bottom();
        column = column.united(place);
    }
    EXPECT_GT(column.left(), 10);
    EXPECT_EQ(form.width() - 1 - column.right(), column.left());
    EXPECT_GT(column.top(), 10);
    EXPECT_EQ(form.height() - 1 - column.bottom(), column.top());
}

TEST_F(FrmAboutTest, okButton_closesTheForm) {
    frmAbout form(m_guard, m_facts);
    form.show();
    QTest::mouseClick(form.findChild<QPushButton *>("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(form.isVisible());
}

TEST_F(FrmAboutTest, enterAndEscape_closeTheForm) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        frmAbout form(m_guard, m_facts);
        form.show();
        QTest::keyClick(&form, key);
        EXPECT_FALSE(form.isVisible());
    }
}

} // namespace
} // namespace veldron
