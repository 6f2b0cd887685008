// SPDX-License-Identifier: MIT
#include "app/StatusPanels.h"

#include "app/ActivityPicture.h"
#include "tests/app/StatusBarReader.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLabel>
#include <QLocale>
#include <QTextDocument>
#include <QTimer>
#include <QTimerEvent>

namespace veldron {
namespace {

class StatusPanelsTest : public testing::Test {
protected:
    StatusPanelsTest() {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        m_bar.setAttribute(Qt::WA_QuitOnClose, false);
    }
    ~StatusPanelsTest() override { QLocale::setDefault(QLocale::system()); }

    template <typename T>
    T *panel(const char *name) {
        return m_bar.findChild<T *>(QLatin1String(name));
    }
    QTimer *clockTimer() { return m_bar.findChild<QTimer *>(); }
    /// The clock's own tick.
    void minutePasses() {
        m_clock.advance(60);
        QTimerEvent event(clockTimer()->timerId());
        QCoreApplication::sendEvent(clockTimer(), &event);
    }

    ManualClock m_clock{36000.0 + 5 * 60 + 12};
    StatusPanels m_bar{ErrorGuard([](const UntrappedError &) { FAIL(); }), m_clock};
};

TEST_F(StatusPanelsTest, design_hasOnePanelWithItsText) {
    EXPECT_EQ(statusText(m_bar), "Finding Serial Ports");
    EXPECT_EQ(panel<QLabel>("Panel2"), nullptr);
    EXPECT_EQ(panel<QWidget>("Panel3"), nullptr);
    EXPECT_EQ(panelText(m_bar, "Panel2"), "");
}

TEST_F(StatusPanelsTest, withoutThePanels_whatIsForThemIsDropped) {
    m_bar.showActivity(ActivityImage::Busy);
    m_bar.hideClockAndActivity();
    m_bar.showTexts("a", "b");
    m_bar.showClockAndActivity();
    EXPECT_EQ(shownActivity(m_bar), ActivityImage::Blank);
    EXPECT_EQ(panelText(m_bar, "Panel2"), "");
    EXPECT_EQ(panelText(m_bar, "Panel3Text"), "");
}

TEST_F(StatusPanelsTest, addedPanels_showClockAndBlankPicture) {
    m_bar.addPanels();
    EXPECT_EQ(panelText(m_bar, "Panel2"), "10:05");
    EXPECT_EQ(shownActivity(m_bar), ActivityImage::Blank);
    EXPECT_GE(panel<QLabel>("Panel2")->minimumWidth(), 24);
    EXPECT_GE(panel<QWidget>("Panel3")->minimumWidth(), 24);
}

TEST_F(StatusPanelsTest, panelsAddedTwice_areThereOnce) {
    m_bar.addPanels();
    m_bar.addPanels();
    EXPECT_EQ(m_bar.findChildren<ActivityPicture *>().size(), 1);
}

TEST_F(StatusPanelsTest, clock_goesOnEachMinute) {
    m_bar.addPanels();
    EXPECT_TRUE(clockTimer()->isActive());
    EXPECT_LE(clockTimer()->interval(), 48001);
    minutePasses();
    EXPECT_EQ(panelText(m_bar, "Panel2"), "10:06");
    EXPECT_TRUE(clockTimer()->isActive());
}

TEST_F(StatusPanelsTest, localeWhoseShortTimeHasSeconds_showsNone) {
    QLocale::setDefault(QLocale::c());
    m_bar.addPanels();
    EXPECT_EQ(panelText(m_bar, "Panel2"), "10:05");
}

TEST_F(StatusPanelsTest, twelveHourLocale_showsItsMark) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    m_bar.addPanels();
    EXPECT_TRUE(panelText(m_bar, "Panel2").startsWith("10:05"));
    EXPECT_TRUE(panelText(m_bar, "Panel2").endsWith("AM"));
}

TEST_F(StatusPanelsTest, playback_putsTextsInPlaceOfClockAndPicture) {
    m_bar.addPanels();
    m_bar.showActivity(ActivityImage::Busy);
    m_bar.hideClockAndActivity();
    m_bar.showTexts("14 Mar 2026 10:00:00", "39.06%");
    EXPECT_EQ(panelText(m_bar, "Panel2"), "14 Mar 2026 10:00:00");
    EXPECT_EQ(panelText(m_bar, "Panel3Text"), "39.06%");
    EXPECT_TRUE(panel<QWidget>("Panel3")->isHidden());
    EXPECT_FALSE(clockTimer()->isActive());
}

TEST_F(StatusPanelsTest, textsUnderTheClock_leaveClockAndPictureUp) {
    m_bar.addPanels();
    m_bar.showActivity(ActivityImage::Idle);
    m_bar.showTexts("14 Mar 2026 10:00:00", "39.06%");
    EXPECT_EQ(panelText(m_bar, "Panel2"), "10:05");
    EXPECT_TRUE(clockTimer()->isActive());
    EXPECT_EQ(panelText(m_bar, "Panel3Text"), "39.06%");
    EXPECT_FALSE(panel<QWidget>("Panel3Text")->isHidden());
    EXPECT_FALSE(panel<QWidget>("Panel3")->isHidden());
    EXPECT_EQ(shownActivity(m_bar), ActivityImage::Idle);
}

TEST_F(StatusPanelsTest, endOfPlayback_bringsClockAndBlankPictureBack) {
    m_bar.addPanels();
    m_bar.showActivity(ActivityImage::Busy);
    m_bar.hideClockAndActivity();
    m_bar.showTexts("a", "b");
    m_bar.showClockAndActivity();
    EXPECT_EQ(panelText(m_bar, "Panel2"), "10:05");
    EXPECT_EQ(panelText(m_bar, "Panel3Text"), "");
    EXPECT_EQ(shownActivity(m_bar), ActivityImage::Blank);
    EXPECT_FALSE(panel<QWidget>("Panel3")->isHidden());
    EXPECT_TRUE(clockTimer()->isActive());
}

TEST_F(StatusPanelsTest, playback_leavesTheBarsHeightAlone) {
    m_bar.addPanels();
    const int height = m_bar.sizeHint().height();
    m_bar.hideClockAndActivity();
    m_bar.showTexts("a", "b");
    EXPECT_EQ(m_bar.sizeHint().height(), height);
}

TEST_F(StatusPanelsTest, panel1_takesTheSpareWidth) {
    m_bar.addPanels();
    m_bar.resize(900, 30);
    m_bar.show();
    const auto *first = panel<QLabel>("Panel1");
    EXPECT_GT(first->width(), 600);
    EXPECT_LT(panel<QLabel>("Panel2")->width(), 100);
}

TEST_F(StatusPanelsTest, textTooLongForItsPlace_isCutAndKeptAsATip) {
    const QString text = QString("Recording to file /a/long/path").repeated(9);
    m_bar.addPanels();
    m_bar.resize(300, 30);
    m_bar.show();
    m_bar.setStatusText(text);
    const auto *first = panel<QLabel>("Panel1");
    EXPECT_LT(first->text().size(), text.size());
    EXPECT_EQ(first->toolTip(), text);
    EXPECT_EQ(statusText(m_bar), text);
    m_bar.setStatusText("short");
    EXPECT_EQ(first->text(), "short");
    EXPECT_EQ(first->toolTip(), "");
}

TEST_F(StatusPanelsTest, markUpInATextTooLong_isShownAsItStandsInTheTip) {
    const QString text = QString("Recording to file /a/<b>bold</b>").repeated(9);
    m_bar.addPanels();
    m_bar.resize(300, 30);
    m_bar.show();
    m_bar.setStatusText(text);
    const QString tip = panel<QLabel>("Panel1")->toolTip();
    QTextDocument shown;
    Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
    EXPECT_EQ(shown.toPlainText(), text);
}

} // namespace
} // namespace veldron
