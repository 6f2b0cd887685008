// SPDX-License-Identifier: MIT
#include "common/ReportText.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ReportText, textOfAFile_isQuotedPrintableAndShort) {
    const struct {
        const char *situation;
        QString text;
        QString shown;
    } cases[] = {
        {"nothing", "", "\"\""},
        {"plain text", "03/21/2005", "\"03/21/2005\""},
        {"blanks at its ends", " a b ", "\" a b \""},
        {"letters beyond ASCII", QString::fromLatin1("21 F\xe9vrier"),
         QString::fromLatin1("\"21 F\xe9vrier\"")},
        {"control characters", QString::fromLatin1("a\0b\tc\x1b[1m\x7f\x85", 10), "\"a?b?c?[1m?\""},
        {"the invisible hyphen", QString(QChar(0xad)), "\"?\""},
        {"as much as is shown", QString(40, 'x'), '"' + QString(40, 'x') + '"'},
        {"more than is shown", QString(41, 'x'), '"' + QString(40, 'x') + "\"..."},
        {"a raw scan", QString(321, QChar(0)), '"' + QString(40, '?') + "\"..."},
    };
    for (const auto &item : cases) {
        EXPECT_EQ(quotedForReport(item.text).toStdString(), item.shown.toStdString())
            << item.situation;
    }
}

TEST(ReportText, everyCharacterOfAFile_isPrintableInAReport) {
    for (char16_t code = 0; code < 256; ++code) {
        const QString shown = quotedForReport(QString(QChar(code)));
        ASSERT_EQ(shown.size(), 3) << int(code);
        EXPECT_TRUE(shown[1].isPrint()) << int(code);
        EXPECT_EQ(shown[1] == QChar(code), QChar(code).isPrint() || code == u'?') << int(code);
    }
}

} // namespace
} // namespace veldron
