// SPDX-License-Identifier: MIT
#include "app/Manual.h"
#include "tests/app/FormFixture.h"

#include <QDesktopServices>
#include <QDir>
#include <QTest>
#include <QUrl>

namespace veldron {
namespace {

/// Stands in for the browser. A URL that nobody handles would go to the desktop's.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened.append(url); }
};

class ManualTest : public FormFixture {
protected:
    void startWithManual(const QString &manual) {
        make(manual);
        m_form->load();
        QApplication::setActiveWindow(m_form.get());
    }
    void pressF1() { QTest::keyClick(m_form.get(), Qt::Key_F1); }
    void place(const QString &name) const {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(QFileInfo(name).path()));
        writeFile(name, "manual");
    }

    Browser m_browser;
};

TEST_F(ManualTest, f1_opensTheManualInTheBrowser) {
    startWithManual(QStringLiteral("/usr/share/doc/veldron/html/manual.html"));
    pressF1();
    EXPECT_EQ(m_browser.opened,
              QList<QUrl>{QUrl(QStringLiteral("file:///usr/share/doc/veldron/html/manual.html"))});
    EXPECT_TRUE(m_dialogs.log().isEmpty());
}

TEST_F(ManualTest, f1DuringARecording_opensTheManualAndRecordsOn) {
    startWithManual(QStringLiteral("/a.html"));
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    pressF1();
    EXPECT_EQ(m_browser.opened.size(), 1);
    EXPECT_TRUE(m_form->Recording());
}

TEST_F(ManualTest, f1WithoutAManual_tellsWhereToGetIt) {
    startWithManual({});
    pressF1();
    EXPECT_TRUE(m_browser.opened.isEmpty());
    EXPECT_EQ(m_dialogs.texts(), QStringList{"The manual is not installed. It is in the package "
                                             "veldron-doc."});
}

TEST_F(ManualTest, installedPages_goBeforeTheSourceTree) {
    place("build/share/doc/veldron/html/manual.html");
    place("docs/manual/manual.adoc");
    EXPECT_EQ(Manual::find(path("build/bin")), path("build/share/doc/veldron/html/manual.html"));
}

TEST_F(ManualTest, programInABuildTree_findsThePagesMadeThere) {
    place("build/release/docs/html/manual.html");
    place("docs/manual/manual.adoc");
    EXPECT_EQ(Manual::find(path("build/release/bin")), path("build/release/docs/html/manual.html"));
    EXPECT_EQ(Manual::find(path("build/stage")), path("build/release/docs/html/manual.html"));
}

TEST_F(ManualTest, sourceTreeWithoutPages_givesTheirText) {
    place("docs/manual/manual.adoc");
    EXPECT_EQ(Manual::find(path("build/release/bin")), path("docs/manual/manual.adoc"));
    EXPECT_EQ(Manual::find(path("build/stage")), path("docs/manual/manual.adoc"));
    EXPECT_EQ(Manual::find(path("elsewhere/a/b/c/d")), QString());
}

} // namespace
} // namespace veldron

#include "ManualTest.moc"
