// SPDX-License-Identifier: MIT
// What assistive technology sees of the panels.
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "tests/panels/PanelFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include <set>

namespace veldron {
namespace {

class PanelAccessibility : public testing::Test {
protected:
    PanelAccessibility() {
        auto *strip = new QHBoxLayout(&window);
        for (QFrame *panel : panels()) {
            strip->addWidget(panel);
        }
        frequency->setRX(3);
        frequency->setMode(5);
        frequency->setStep(10'000);
        DataModeCode mode = DataModeCode::Average;
        data->setDataMode(mode);
        data->setSamples(3);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    std::vector<QFrame *> panels() const { return {frequency, monitor, data}; }
    static QAccessibleInterface *seen(QObject *object) {
        return QAccessible::queryAccessibleInterface(object);
    }
    /// Everything that \a root presents as shown, itself included.
    static std::vector<QAccessibleInterface *> shownFrom(QAccessibleInterface *root) {
        std::vector<QAccessibleInterface *> found;
        if (root == nullptr || root->state().invisible) {
            return found;
        }
        found.push_back(root);
        for (int i = 0; i < root->childCount(); ++i) {
            const auto below = shownFrom(root->child(i));
            found.insert(found.end(), below.begin(), below.end());
        }
        return found;
    }
    QWidget *child(const char *name) { return window.findChild<QWidget *>(QLatin1String(name)); }

    QWidget window;
    ctlFrequency *frequency = new ctlFrequency(failingGuard(), &window);
    ctlMonitorMode *monitor = new ctlMonitorMode(failingGuard(), &window);
    ctlDataMode *data = new ctlDataMode(failingGuard(), &window);
};

TEST_F(PanelAccessibility, everythingShown_hasANameAndARole) {
    std::size_t count = 0;
    for (QFrame *panel : panels()) {
        for (const QAccessibleInterface *part : shownFrom(seen(panel))) {
            ++count;
            EXPECT_FALSE(part->text(QAccessible::Name).isEmpty())
                << part->object()->metaObject()->className() << " in "
                << part->object()->parent()->objectName().toStdString();
            EXPECT_NE(part->role(), QAccessible::NoRole);
        }
    }
    // Panels, labels, controls, the texts of four lists, the two step buttons and their pair.
    EXPECT_GE(count, 3U + 15U + 16U + 4U + 2U);
}

TEST_F(PanelAccessibility, panels_areNamedGroups) {
    QStringList names;
    for (QFrame *panel : panels()) {
        EXPECT_EQ(seen(panel)->role(), QAccessible::Grouping);
        names += seen(panel)->text(QAccessible::Name);
    }
    EXPECT_EQ(names, (QStringList{"Receiver panel", "Monitor panel", "Data panel"}));
}

TEST_F(PanelAccessibility, textsOfEditableLists_bearTheNamesOfTheirLists) {
    int texts = 0;
    for (QFrame *panel : panels()) {
        for (const auto *list : panel->findChildren<QComboBox *>()) {
            if (list->lineEdit() != nullptr) {
                ++texts;
                EXPECT_FALSE(list->accessibleName().isEmpty());
                EXPECT_EQ(list->lineEdit()->accessibleName(), list->accessibleName());
                EXPECT_EQ(seen(list->lineEdit())->role(), QAccessible::EditableText);
            }
        }
    }
    EXPECT_EQ(texts, 4);
}

TEST_F(PanelAccessibility, renamedFields_areSpokenOfByTheirNewNames) {
    monitor->setMonitorMode(MonitorModeCode::Channel);
    EXPECT_EQ(seen(child("txtCentre"))->text(QAccessible::Name), "Ch. Step");
}

TEST_F(PanelAccessibility, holderOfTheFocus_isNoTabStopAndSaysThatItIsInvisible) {
    QWidget *holder = child("Picture1");
    EXPECT_FALSE(seen(holder)->state().focusable);
    EXPECT_TRUE(seen(holder)->state().invisible);
    EXPECT_EQ(seen(holder)->childCount(), 0);
    EXPECT_EQ(seen(holder)->child(0), nullptr);
    child("cboRX")->setFocus();
    std::set<const QWidget *> visited;
    for (int i = 0; i < 40; ++i) {
        visited.insert(QApplication::focusWidget());
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited.count(holder), 0U);
    EXPECT_EQ(visited.size(), 5U + 6U + 6U);
}

TEST_F(PanelAccessibility, pressActionOfAStepButton_makesOneStep) {
    QAccessibleActionInterface *up = seen(child("udSamplesUp"))->actionInterface();
    ASSERT_NE(up, nullptr);
    up->doAction(QAccessibleActionInterface::pressAction());
    // The toolkit may press the button for a moment before the click.
    EXPECT_TRUE(QTest::qWaitFor([this] { return data->Samples() == 4; }));
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return !qobject_cast<QAbstractButton *>(child("udSamplesUp"))->isDown(); }));
    EXPECT_EQ(data->Samples(), 4);
}

} // namespace
} // namespace veldron
