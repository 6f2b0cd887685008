// SPDX-License-Identifier: MIT
#include "simulator/SimulatorOptions.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

std::optional<SimulatorOptions> read(const QString &line) {
    QString error;
    const auto options = SimulatorOptions::read(line.split(' ', Qt::SkipEmptyParts), error);
    EXPECT_EQ(error.isEmpty(), options.has_value()) << qPrintable(line);
    return options;
}

TEST(SimulatorOptions, portAlone_leavesTheDefaults) {
    const auto options = read("--port p");
    ASSERT_TRUE(options);
    EXPECT_EQ(options->port, "p");
    EXPECT_EQ(options->baud, 9600);
    EXPECT_EQ(options->bunch, 1);
    EXPECT_EQ(options->seed, 1U);
    EXPECT_FALSE(options->anyByte || options->logScans || options->exitOnEof || options->help);
}

TEST(SimulatorOptions, everyOption_isTaken) {
    const auto options = read("--port p --pace 1200 --bunch 16 --seed 7 --any-byte --log f "
                              "--log-scans --exit-on-eof");
    ASSERT_TRUE(options);
    EXPECT_EQ(options->baud, 1200);
    EXPECT_EQ(options->bunch, 16);
    EXPECT_EQ(options->seed, 7U);
    EXPECT_EQ(options->logFile, "f");
    EXPECT_TRUE(options->anyByte && options->logScans && options->exitOnEof);
    EXPECT_EQ(read("--port p --pace none")->baud, 0);
    EXPECT_EQ(read("--port p --bunch 1")->bunch, 1);
    EXPECT_TRUE(read("--help")->help);
}

TEST(SimulatorOptions, nonsense_isRefusedWithAReason) {
    for (const char *line : {"", "--port", "--port p --pace 0", "--port p --pace -1",
                             "--port p --pace fast", "--port p --bunch 0", "--port p --bunch x",
                             "--port p --seed x", "--port p --what", "--port p --log", "p"}) {
        EXPECT_FALSE(read(line)) << line;
    }
}

TEST(SimulatorOptions, help_namesEveryOption) {
    for (const char *name :
         {"--port", "--pace", "--bunch", "--seed", "--any-byte", "--log", "--log-scans",
          "--exit-on-eof", "--help", "silence", "unplug", "scan-early"}) {
        EXPECT_TRUE(SimulatorOptions::helpText().contains(name)) << name;
    }
}

} // namespace
} // namespace veldron
