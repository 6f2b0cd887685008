// SPDX-License-Identifier: MIT
#include "app/StartReport.h"

#include <QString>
#include <QtGlobal>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace veldron {

namespace {

QString g_told;

void note(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) {
    g_told = message;
}

/// As the toolkit does when it finds no display.
void fail() {
    qFatal("This application failed to start.\nAvailable are: none.");
}

TEST(StartReport, fatalMessage_endsWithALineAndCodeOne) {
    EXPECT_EXIT(
        {
            const StartReport report;
            fail();
        },
        testing::ExitedWithCode(EXIT_FAILURE),
        "^veldron: There is no display to show the window on. This application failed to "
        "start.\n$");
}

TEST(StartReport, fatalMessageAfterIt_abortsAsEver) {
    EXPECT_EXIT(
        {
            { const StartReport report; }
            fail();
        },
        testing::KilledBySignal(SIGABRT), "failed to start");
}

TEST(StartReport, otherMessages_goWhereTheyWent) {
    const QtMessageHandler before = qInstallMessageHandler(note);
    {
        const StartReport report;
        qWarning("no font");
    }
    EXPECT_EQ(g_told, "no font");
    qWarning("no cursor");
    EXPECT_EQ(g_told, "no cursor");
    qInstallMessageHandler(before);
}

} // namespace

} // namespace veldron
