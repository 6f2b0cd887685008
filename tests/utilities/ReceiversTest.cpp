// SPDX-License-Identifier: MIT
#include "utilities/Receivers.h"
#include "utilities/MagicStatics.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace veldron {
namespace {

using namespace GeneralUtilities;

QString joined(const QVariantList &table) {
    QStringList parts;
    for (const QVariant &element : table) {
        parts += element.toString();
    }
    return parts.join(QLatin1Char('|'));
}

TEST(Receivers, eachModeCode_hasItsNameAndBack) {
    const QStringList names = {"WFM",  "NFM", "SFM", "WAM", " AM", "NAM", "LSB",  "USB", " CW",
                               "AUTO", "AMW", " FM", "FMN", "AMN", "CWN", "WFM1", "WFM2"};
    ASSERT_EQ(names.size(), 17);
    for (qint16 code = 1; code <= 17; ++code) {
        EXPECT_EQ(ModeName(code), names[code - 1]) << code;
        EXPECT_EQ(ModeCode(names[code - 1]), code);
    }
}

TEST(Receivers, modeCodeOutsideTheTable_isERR) {
    for (const int code : {-32768, -1, 0, 18, 32767}) {
        EXPECT_EQ(ModeName(static_cast<qint16>(code)), "ERR") << code;
    }
}

TEST(Receivers, modeNameWithoutItsBlankOrInLowerCase_isNoMode) {
    for (const char *name : {"AM", "am", " am", " AM ", "CW", "FM", "wfm", "", "ERR", "WFM3"}) {
        EXPECT_EQ(ModeCode(name), 0) << name;
    }
}

TEST(Receivers, eachReceiver_hasItsNameItsModesAndItsAttenuator) {
    struct Case {
        const char *table;
        bool hasAttenuator;
    };
    const Case cases[] = {{"Other (10M)", false},
                          {"Other (45M)", false},
                          {"VK1100|5|7|8|9|10|16|17", true},
                          {"VK2400B|1|2|5|7|8|9", true},
                          {"VK3700(10M)|1|2|3|4|5|6|7|8|9|10", true},
                          {"VK3700(45M)|1|2|3|4|5|6|7|8|9|10", true},
                          {"VK3900|1|2|3|4|5|6|7|8|9|10", true},
                          {"VK-SIX|1|2|5|7|8|9|10|12", true},
                          {"VM-T4400|1|5|7|8|9|11|12|13|14|15", false},
                          {"VM-T3300|1|5|7|8|11|12|13", false},
                          {"VKF2700|1|2|3|4|5", true}};
    qint16 code = 0;
    for (const Case &expected : cases) {
        ++code;
        EXPECT_EQ(joined(ReceiverTable(code)), expected.table);
        EXPECT_EQ(ReceiverName(code), QString(expected.table).section('|', 0, 0));
        EXPECT_EQ(ReceiverCode(ReceiverName(code)), code);
        EXPECT_EQ(HasAttenuator(code), expected.hasAttenuator) << code;
    }
    EXPECT_EQ(code, static_cast<qint16>(MagicStatics::kReceivers.size()));
}

TEST(Receivers, receiverTableOfNoReceiver_hasTheSingleElementERR) {
    for (const int code : {-1, 0, 12, 32767}) {
        EXPECT_EQ(joined(ReceiverTable(static_cast<qint16>(code))), "ERR") << code;
        EXPECT_EQ(ReceiverName(static_cast<qint16>(code)), "ERR") << code;
    }
}

TEST(Receivers, receiverTableOfOther10M_hasItsNameAndNoModes) {
    EXPECT_EQ(ReceiverTable(1), QVariantList{QString("Other (10M)")});
}

TEST(Receivers, receiverTableTwice_givesListsOfTheirOwn) {
    QVariantList first = ReceiverTable(4);
    first.clear();
    EXPECT_EQ(ReceiverTable(4).size(), 7);
}

TEST(Receivers, receiverNameNotInTheTable_isNoReceiver) {
    for (const char *name : {"", "None", "ERR", "vk1100", "VK1100 ", "Other"}) {
        EXPECT_EQ(ReceiverCode(name), 0) << name;
    }
}

TEST(Receivers, attenuatorOutsideAndInsideTheTable_isAsListed) {
    for (const int code : {0, 1, 2, 9, 10, 12, -3}) {
        EXPECT_FALSE(HasAttenuator(static_cast<qint16>(code))) << code;
    }
    for (const int code : {3, 4, 5, 6, 7, 8, 11}) {
        EXPECT_TRUE(HasAttenuator(static_cast<qint16>(code))) << code;
    }
}

} // namespace
} // namespace veldron
