// SPDX-License-Identifier: MIT
#include "app/frmSplash.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QProcess>
#include <QProcessEnvironment>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

namespace veldron {
namespace {

/// Counts how often a widget is painted.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget &widget) { widget.installEventFilter(this); }
    [[nodiscard]] int count() const { return m_count; }
    bool eventFilter(QObject *watched, QEvent *event) override {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

private:
    int m_count = 0;
};

class FrmSplashTest : public testing::Test {
protected:
    FrmSplashTest() { m_splash.show(); }
    QLabel *label(const char *name) { return m_splash.findChild<QLabel *>(QLatin1String(name)); }
    QFrame *frame() { return m_splash.findChild<QFrame *>("Frame1"); }

    QWidget m_owner;
    frmSplash m_splash{"1.0.0", &m_owner};
};

TEST_F(FrmSplashTest, labels_tellProductAndVersion) {
    EXPECT_EQ(label("Label4")->text(), "PC control for");
    EXPECT_EQ(label("lblProductName")->text(), "VELDRON");
    EXPECT_EQ(label("Label2")->text(), "Panoramic spectrum unit");
    EXPECT_EQ(label("lblVersion")->text(), "Version 1.0.0");
}

TEST_F(FrmSplashTest, description_isTheAddressInLines) {
    EXPECT_EQ(makerAddress(),
              "VELDRON project\rPanoramic spectrum control\rFree software, MIT licence");
    EXPECT_EQ(label("lblDescription")->text(),
              "VELDRON project\nPanoramic spectrum control\nFree software, MIT licence");
}

TEST_F(FrmSplashTest, closing_doesNotEndTheProgram) {
    EXPECT_FALSE(m_splash.testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(FrmSplashTest, labels_areInArial) {
    for (const char *name :
         {"Label4", "lblProductName", "Label2", "lblVersion", "lblDescription"}) {
        EXPECT_EQ(label(name)->font().family(), "Arial") << name;
    }
}

TEST_F(FrmSplashTest, controls_standInTheFrame) {
    for (const char *name :
         {"Image1", "Label4", "lblProductName", "Label2", "lblVersion", "lblDescription"}) {
        EXPECT_EQ(label(name)->parentWidget(), frame()) << name;
    }
}

TEST_F(FrmSplashTest, controls_standWithinEvenMargins) {
    QRect controls;
    for (const QLabel *control : frame()->findChildren<QLabel *>()) {
        controls = controls.united(control->geometry());
    }
    EXPECT_GT(controls.left(), 10);
    EXPECT_EQ(frame()->width() - 1 - controls.right(), controls.left());
    EXPECT_GT(controls.top(), 10);
    EXPECT_EQ(frame()->height() - 1 - controls.bottom(), controls.top());
}

TEST_F(FrmSplashTest, builtInPicture_hasSixteenColoursAndItsSize) {
    const QImage picture(":/veldron/splash.png");
    EXPECT_EQ(picture.size(), QSize(2146, 972));
    EXPECT_EQ(picture.format(), QImage::Format_Indexed8);
    EXPECT_EQ(picture.colorCount(), 16);
}

TEST_F(FrmSplashTest, image_showsTheWholePictureScaled) {
    EXPECT_EQ(label("Image1")->size(), QSize(536, 243));
    const QImage shown = label("Image1")->pixmap(Qt::ReturnByValue).toImage();
    ASSERT_FALSE(shown.isNull());
    const QImage whole = QImage(":/veldron/splash.png")
                             .convertToFormat(QImage::Format_RGB32)
                             .scaled(shown.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (const QPoint place : {QPoint(3, 200), QPoint(268, 120), QPoint(530, 200)}) {
        EXPECT_EQ(shown.pixel(place), whole.pixel(place));
    }
}

TEST_F(FrmSplashTest, image_isDrawnInEachPixelOfTheDisplay) {
    const double density = m_splash.devicePixelRatioF();
    ASSERT_EQ(density, qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
    const QSize size = label("Image1")->size() * density;
    EXPECT_EQ(label("Image1")->grab().toImage().convertToFormat(QImage::Format_RGB32),
              QImage(":/veldron/splash.png")
                  .convertToFormat(QImage::Format_RGB32)
                  .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

/// Density and room of a screen are read once, at the start of a program: in one of its own. The
/// display of the tests has 800 by 800 pixels, so that at two for one only 400 are left.
void passOnADenseDisplay(const QString &test) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.remove("GTEST_TOTAL_SHARDS");
    environment.remove("GTEST_SHARD_INDEX");
    QProcess dense;
    dense.setProcessEnvironment(environment);
    dense.setProcessChannelMode(QProcess::MergedChannels);
    dense.start(QApplication::applicationFilePath(), {"--gtest_filter=FrmSplashTest." + test});
    ASSERT_TRUE(dense.waitForFinished());
    const QByteArray output = dense.readAll();
    EXPECT_TRUE(output.contains("[  PASSED  ] 1 test.")) << output.constData();
}

TEST_F(FrmSplashTest, image_isDrawnInEachPixelOfADenseDisplay) {
    passOnADenseDisplay("image_isDrawnInEachPixelOfTheDisplay");
}

TEST_F(FrmSplashTest, form_fitsOnTheScreenWithItsPictureUndistorted) {
    EXPECT_TRUE(m_splash.screen()->availableGeometry().contains(m_splash.geometry()));
    EXPECT_TRUE(frame()->rect().contains(label("Image1")->geometry()));
    const QSize picture = label("Image1")->size();
    EXPECT_NEAR(picture.height(), picture.width() * 243.0 / 536.0, 1.0);
    EXPECT_GT(picture.width(), 300);
}

TEST_F(FrmSplashTest, form_fitsOnASmallScreen) {
    passOnADenseDisplay("form_fitsOnTheScreenWithItsPictureUndistorted");
}

TEST_F(FrmSplashTest, owner_isTheParentAndTheFormIsAWindow) {
    EXPECT_EQ(m_splash.parentWidget(), &m_owner);
    EXPECT_TRUE(m_splash.isWindow());
    EXPECT_FALSE(m_splash.isModal());
}

TEST_F(FrmSplashTest, builtInPicture_isTheOneThatTheScriptDraws) {
    const QTemporaryDir folder;
    const QString drawn = folder.filePath("drawn.png");
    ASSERT_EQ(QProcess::execute(VELDRON_MAKE_SPLASH, {drawn}), 0);
    const QImage picture(drawn);
    EXPECT_EQ(picture.size(), QSize(2146, 972));
    EXPECT_EQ(picture.colorTable(), QImage(":/veldron/splash.png").colorTable());
    EXPECT_TRUE(picture == QImage(":/veldron/splash.png"));
}

TEST_F(FrmSplashTest, shownForm_isPaintedWhenTheWaitIsOver) {
    frmSplash splash("1.0.0");
    PaintWatch painted(*splash.findChild<QLabel *>("Image1"));
    splash.show();
    const int before = painted.count();
    splash.awaitPaint();
    EXPECT_TRUE(splash.windowHandle()->isExposed());
    EXPECT_GT(painted.count(), before);
}

TEST_F(FrmSplashTest, formThatNeverReachesTheScreen_isWaitedForHalfASecond) {
    frmSplash splash("1.0.0");
    splash.setAttribute(Qt::WA_DontShowOnScreen);
    splash.show();
    QElapsedTimer waited;
    waited.start();
    splash.awaitPaint();
    EXPECT_FALSE(splash.windowHandle()->isExposed());
    EXPECT_GE(waited.elapsed(), 500);
    EXPECT_LT(waited.elapsed(), 1500);
}

TEST_F(FrmSplashTest, closedForm_isNotWaitedFor) {
    m_splash.close();
    QElapsedTimer waited;
    waited.start();
    m_splash.awaitPaint();
    EXPECT_LT(waited.elapsed(), 400);
    EXPECT_FALSE(m_splash.isVisible());
}

TEST_F(FrmSplashTest, keyPress_closesIt) {
    QTest::keyClick(&m_splash, Qt::Key_A);
    EXPECT_FALSE(m_splash.isVisible());
}

TEST_F(FrmSplashTest, clickOnTheFrame_closesIt) {
    QTest::mouseClick(frame(), Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
    EXPECT_FALSE(m_splash.isVisible());
}

TEST_F(FrmSplashTest, clickOnThePicture_closesIt) {
    QTest::mouseClick(label("Image1"), Qt::LeftButton);
    EXPECT_FALSE(m_splash.isVisible());
}

TEST_F(FrmSplashTest, otherMouseButton_leavesIt) {
    QTest::mouseClick(frame(), Qt::RightButton, Qt::NoModifier, QPoint(4, 4));
    EXPECT_TRUE(m_splash.isVisible());
}

TEST_F(FrmSplashTest, closedEarly_canBeHiddenAndDoesNotEndTheProgram) {
    bool quit = false;
    QObject::connect(qApp, &QApplication::lastWindowClosed, &m_splash, [&] { quit = true; });
    QTest::keyClick(&m_splash, Qt::Key_Escape);
    QApplication::processEvents();
    m_splash.hide();
    EXPECT_FALSE(m_splash.isVisible());
    EXPECT_FALSE(quit);
}

} // namespace
} // namespace veldron
