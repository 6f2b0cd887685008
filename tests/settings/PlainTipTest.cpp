// SPDX-License-Identifier: MIT
#include "settings/PlainTip.h"

#include <QTextDocument>

#include <gtest/gtest.h>

namespace veldron {
namespace {

/// What the toolkit shows for a tool tip.
QString shown(const QString &tip) {
    QTextDocument document;
    Qt::mightBeRichText(tip) ? document.setHtml(tip) : document.setPlainText(tip);
    return document.toPlainText();
}

TEST(PlainTip, textsThatLookLikeMarkUp_areShownAsTheyStand) {
    for (const char *text : {"<b>x<b>.set", "/tmp/<i>a</i>/fake4\nin use", "a & b", "1 < 2", ""}) {
        EXPECT_EQ(shown(plainTip(text)).toStdString(), text);
    }
}

TEST(PlainTip, plainText_staysAsItIs) {
    EXPECT_EQ(plainTip("/dev/ttyS0\nin use").toStdString(), "/dev/ttyS0\nin use");
}

} // namespace
} // namespace veldron
