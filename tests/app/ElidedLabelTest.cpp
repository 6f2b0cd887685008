// SPDX-License-Identifier: MIT
#include "app/ElidedLabel.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class ElidedLabelTest : public testing::Test {
protected:
    ElidedLabelTest() {
        label.show();
        label.resize(label.fontMetrics().horizontalAdvance(whole) + 20, 20);
        label.setWholeText(whole);
    }

    const QString whole = QStringLiteral("Recording to file /a/folder/with/a/name/scans.rec");
    ElidedLabel label;
};

TEST_F(ElidedLabelTest, textThatFits_isShownWholeWithoutATip) {
    EXPECT_EQ(label.text(), whole);
    EXPECT_EQ(label.toolTip(), "");
    EXPECT_EQ(label.accessibleName(), whole);
}

TEST_F(ElidedLabelTest, labelMadeNarrow_cutsTheMiddleAndTellsTheWhole) {
    label.resize(120, 20);
    EXPECT_TRUE(label.text().startsWith("Rec"));
    EXPECT_TRUE(label.text().endsWith("rec"));
    EXPECT_LT(label.fontMetrics().horizontalAdvance(label.text()), 121);
    EXPECT_EQ(label.toolTip(), whole);
    EXPECT_EQ(label.accessibleName(), whole);
}

TEST_F(ElidedLabelTest, labelMadeWideAgain_showsTheWhole) {
    label.resize(120, 20);
    label.resize(1000, 20);
    EXPECT_EQ(label.text(), whole);
    EXPECT_EQ(label.toolTip(), "");
}

TEST_F(ElidedLabelTest, longText_asksForNoWidth) {
    EXPECT_EQ(label.minimumSizeHint().width(), 0);
    EXPECT_EQ(label.sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
}

TEST_F(ElidedLabelTest, textLikeMarkup_isShownAsItIs) {
    label.setWholeText("<b>x</b>");
    EXPECT_EQ(label.text(), "<b>x</b>");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
}

} // namespace
} // namespace veldron
