// SPDX-License-Identifier: MIT
#include <QGuiApplication>

#include "tests/program/VirtualDesktop.h"

#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    veldron::VirtualDesktop desktop;
    if (!desktop.start()) {
        std::fprintf(stderr, "%s\n", qPrintable(desktop.error()));
        return 1;
    }
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
