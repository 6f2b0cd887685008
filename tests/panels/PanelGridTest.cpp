// SPDX-License-Identifier: MIT
#include "panels/PanelGrid.h"

#include "utilities/MagicStatics.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace veldron {
namespace {

class PanelGridTest : public testing::Test {
protected:
    /// A line edit in \a cell, under the label "Text" and its number.
    QLineEdit *addBox(PanelGrid::Cell cell) {
        auto *box = new QLineEdit(&panel);
        const QString number = QString::number(++count);
        label = grid.add(cell, "lbl" + number, "Text" + number, "txt" + number, box);
        return box;
    }
    void show() {
        panel.resize(600, panel.sizeHint().height());
        panel.show();
    }

    QFrame panel;
    PanelGrid grid{panel};
    QLabel *label = nullptr; ///< of the box added last
    int count = 0;
};

TEST_F(PanelGridTest, control_standsUnderItsLabelWithNameAndBuddy) {
    QLineEdit *box = addBox({0, 0});
    show();
    EXPECT_EQ(box->objectName(), "txt1");
    EXPECT_EQ(label->objectName(), "lbl1");
    EXPECT_EQ(label->buddy(), box);
    EXPECT_EQ(box->accessibleName(), "Text1");
    EXPECT_EQ(label->x(), box->x());
    EXPECT_LE(label->geometry().bottom(), box->y());
}

TEST_F(PanelGridTest, labelRenamed_givesItsControlTheNewName) {
    QLineEdit *box = addBox({0, 0});
    PanelGrid::rename(*label, "Other");
    EXPECT_EQ(label->text(), "Other");
    EXPECT_EQ(box->accessibleName(), "Other");
}

TEST_F(PanelGridTest, cellsOfARow_areLevelAndOfOneHeight) {
    const QLineEdit *left = addBox({0, 0});
    auto *button = new QPushButton(&panel);
    grid.addControl({0, 1}, "cmd", button);
    show();
    EXPECT_EQ(left->y(), button->y());
    EXPECT_EQ(left->height(), button->height());
    EXPECT_EQ(button->height(), PanelGrid::controlHeight(*button));
}

TEST_F(PanelGridTest, secondRow_standsUnderTheFirst) {
    const QLineEdit *upper = addBox({0, 0});
    addBox({1, 0});
    show();
    EXPECT_GT(label->y(), upper->geometry().bottom());
}

TEST_F(PanelGridTest, hiddenControl_leavesItsPlaceEmpty) {
    QLineEdit *upper = addBox({0, 0});
    const QLineEdit *lower = addBox({1, 0});
    show();
    const QPoint before = lower->pos();
    upper->hide();
    panel.layout()->activate();
    EXPECT_EQ(lower->pos(), before);
}

TEST_F(PanelGridTest, levelledColumns_areAsWideAsTheirWidestControl) {
    QLineEdit *narrow = addBox({0, 0});
    QLineEdit *wide = addBox({0, 1});
    narrow->setFixedWidth(40);
    wide->setMinimumWidth(200);
    grid.levelColumns(2);
    const auto *layout = qobject_cast<QGridLayout *>(panel.layout());
    EXPECT_EQ(layout->columnMinimumWidth(0), layout->columnMinimumWidth(1));
    EXPECT_GE(layout->columnMinimumWidth(0), 200);
}

TEST_F(PanelGridTest, wideColumns_haveRoomForTheLongestReceiver) {
    addBox({0, 0})->setFixedWidth(40);
    QComboBox receivers;
    receivers.setEditable(true);
    receivers.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    receivers.addItem(QString::fromUtf16(MagicStatics::kReceivers[0].name));
    grid.levelWideColumns(1);
    const auto *layout = qobject_cast<QGridLayout *>(panel.layout());
    EXPECT_GE(layout->columnMinimumWidth(0), receivers.sizeHint().width());
}

TEST_F(PanelGridTest, fittedBox_isAsWideAsItsText) {
    QLineEdit *box = addBox({0, 0});
    PanelGrid::fitBox(*box, "12345");
    EXPECT_GT(box->minimumWidth(), box->fontMetrics().horizontalAdvance("12345"));
    EXPECT_LT(box->minimumWidth(), box->fontMetrics().horizontalAdvance("12345") * 2);
    EXPECT_EQ(box->sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
}

} // namespace
} // namespace veldron
