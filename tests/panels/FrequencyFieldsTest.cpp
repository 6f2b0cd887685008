// SPDX-License-Identifier: MIT
#include "panels/FrequencyFields.h"

#include "panels/EditableList.h"
#include "panels/EntryBox.h"
#include "tests/panels/PanelFixture.h"

#include <gtest/gtest.h>

#include <QFrame>

#include <utility>

namespace veldron {
namespace {

/// A box in megahertz and a list in kilohertz that share an entry. The log has what their panel is
/// asked to do, and "event" where an apply routine raises one.
class FrequencyFieldsTest : public testing::Test {
protected:
    FrequencyFieldsTest() {
        auto *strip = new QHBoxLayout(panel);
        strip->addWidget(box);
        strip->addWidget(list);
        list->addItems({"5.000", "25.000"});
        fields.add(*box, field("box", FrequencyEntry::Unit::M, [this] { box->showText("old"); }));
        fields.add(*list, field("list", FrequencyEntry::Unit::K, {}));
        window.resize(400, 100);
        panel->resize(400, 100);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        box->setFocus();
    }

    FrequencyFields::Field field(const QString &name, FrequencyEntry::Unit unit,
                                 const std::function<void()> &showStored) {
        const auto show = [this, name, showStored] {
            log += name + " show";
            if (showStored) {
                showStored();
            }
        };
        return {.defaultUnit = [unit] { return unit; },
                .store = [this, name](Hertz value) { log += name + ' ' + value.toText(); },
                .apply =
                    [this, show] {
                        show();
                        fields.raiseOutOfEntry([this] { log += "event"; });
                    },
                .show = show};
    }
    void type(const char *keys) {
        for (const char *next = keys; *next != '\0'; ++next) {
            QTest::keyClick(window.windowHandle(), *next);
        }
    }
    void key(Qt::Key code) { QTest::keyClick(window.windowHandle(), code); }
    [[nodiscard]] QStringList taken() { return std::exchange(log, {}); }

    QWidget window;
    QFrame *panel = new QFrame(&window);
    EntryBox *box = new EntryBox(failingGuard(), panel);
    EditableList *list = new EditableList(panel);
    QStringList log;
    FrequencyFields fields{failingGuard(), *panel};
};

TEST_F(FrequencyFieldsTest, entryEndedByEnter_isStoredInTheFieldsUnitShownAndRaised) {
    type("145.5");
    EXPECT_EQ(taken(), QStringList());
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), (QStringList{"box 145500000", "box show", "event"}));
}

TEST_F(FrequencyFieldsTest, entryInAList_takesTheListsUnit) {
    list->setFocus();
    log.clear();
    type("12.5");
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), (QStringList{"list 12500", "list show", "event"}));
}

TEST_F(FrequencyFieldsTest, unitLetter_endsTheEntry) {
    type("25k");
    EXPECT_EQ(taken(), (QStringList{"box 25000", "box show", "event"}));
}

TEST_F(FrequencyFieldsTest, entryOfZero_isRefusedAndStays) {
    type("0");
    key(Qt::Key_Return);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(box->text(), "0");
}

TEST_F(FrequencyFieldsTest, strayLetter_takesThePlaceOfTheOldText) {
    box->showText("old");
    type("x");
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(box->text(), "x");
}

TEST_F(FrequencyFieldsTest, fieldLeftDuringAnEntry_isAppliedWithoutAValue) {
    type("12");
    list->setFocus();
    EXPECT_EQ(taken(), (QStringList{"box show", "event"}));
    EXPECT_EQ(box->text(), "old");
}

TEST_F(FrequencyFieldsTest, fieldLeftWithoutAnEntry_isAppliedWithoutAnEvent) {
    list->setFocus();
    EXPECT_EQ(taken(), QStringList{"box show"});
}

TEST_F(FrequencyFieldsTest, fieldDisabledDuringAnEntry_showsItsValueWithoutAnEvent) {
    type("12");
    box->setEnabled(false);
    EXPECT_EQ(taken(), QStringList{"box show"});
    fields.raiseOutOfEntry([this] { log += "event"; });
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(FrequencyFieldsTest, rowPickedOverAnEntry_raisesOutOfTheNextApplyOnly) {
    type("12");
    fields.takePick();
    EXPECT_FALSE(fields.fields().isOpenIn(*box));
    fields.raiseOutOfEntry([this] { log += "event"; });
    fields.raiseOutOfEntry([this] { log += "event"; });
    EXPECT_EQ(taken(), QStringList{"event"});
}

TEST_F(FrequencyFieldsTest, entryCancelled_raisesNothing) {
    type("12");
    fields.cancel();
    fields.raiseOutOfEntry([this] { log += "event"; });
    EXPECT_EQ(taken(), QStringList());
    EXPECT_FALSE(fields.fields().isOpenIn(*box));
}

TEST_F(FrequencyFieldsTest, eventOfAnEntry_findsItStillInProgress) {
    type("12");
    fields.raiseOutOfEntry([this] { fields.raiseOutOfEntry([this] { log += "inner event"; }); });
    EXPECT_EQ(taken(), QStringList{"inner event"});
}

} // namespace
} // namespace veldron
