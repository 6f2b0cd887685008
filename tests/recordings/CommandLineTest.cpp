// SPDX-License-Identifier: MIT
#include "recordings/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

namespace veldron {

namespace {

/// A program of two commands, and what a line has made of their variables.
class CommandLineTest : public testing::Test {
protected:
    CommandLineTest() {
        read.option("FILE", files, "What to read").required();
        read.option("--colour", colour, "What to draw with").oneOf({"red", "green"}).showDefault();
        CommandLine form = read.choice("Form");
        const DeclaredOption picture = form.flag("--picture", isPicture, "Draw it");
        form.flag("--table", isTable, "List it");
        read.option("--size", size, "How large").called("WxH").needs(picture);
    }

    std::optional<int> run(std::vector<std::string> words) {
        words.insert(words.begin(), "program");
        std::vector<char *> line;
        for (std::string &word : words) {
            line.push_back(word.data());
        }
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const std::optional<int> code = program.read(static_cast<int>(line.size()), line.data());
        printed = testing::internal::GetCapturedStdout();
        complaint = testing::internal::GetCapturedStderr();
        return code;
    }

    std::vector<std::string> files;
    std::string colour = "red";
    std::string size = "as it is";
    bool isPicture = false;
    bool isTable = false;
    std::string printed;
    std::string complaint;
    ProgramCommandLine program{"program", "Reads and writes.", "1.2.3", "That is all."};
    CommandLine read = program.addCommand("read", "Reads files.", "Example: program read x");
    CommandLine write = program.addCommand("write", "Writes files.", "");
};

TEST_F(CommandLineTest, namedCommand_hasItsValuesAndTheOthersKeepTheirs) {
    EXPECT_EQ(run({"read", "--table", "a", "b"}), std::nullopt);

    EXPECT_TRUE(read.isNamed());
    EXPECT_FALSE(write.isNamed());
    EXPECT_EQ(files, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(isTable);
    EXPECT_FALSE(isPicture);
    EXPECT_EQ(colour, "red");
    EXPECT_EQ(size, "as it is");
}

TEST_F(CommandLineTest, noCommandOrAnUnknownOne_isRefusedOnStandardError) {
    EXPECT_EQ(run({}), 64);
    EXPECT_NE(complaint, "");
    EXPECT_EQ(run({"rite"}), 64);
    EXPECT_EQ(printed, "");
}

TEST_F(CommandLineTest, requiredValueLeftOut_isRefused) {
    EXPECT_EQ(run({"read", "--table"}), 64);
    EXPECT_NE(complaint.find("FILE"), std::string::npos) << complaint;
}

TEST_F(CommandLineTest, valueThatIsNoneOfThose_isRefused) {
    EXPECT_EQ(run({"read", "--table", "--colour", "green", "a"}), std::nullopt);
    EXPECT_EQ(colour, "green");
    EXPECT_EQ(run({"read", "--table", "--colour", "blue", "a"}), 64);
}

TEST_F(CommandLineTest, choice_takesOneAndOnlyOne) {
    EXPECT_EQ(run({"read", "a"}), 64);
    EXPECT_EQ(run({"read", "--picture", "--table", "a"}), 64);
    EXPECT_EQ(run({"read", "--picture", "a"}), std::nullopt);
}

TEST_F(CommandLineTest, optionWithoutTheOneItNeeds_isRefused) {
    EXPECT_EQ(run({"read", "--table", "--size", "8x8", "a"}), 64);
    EXPECT_EQ(run({"read", "--picture", "--size", "8x8", "a"}), std::nullopt);
    EXPECT_EQ(size, "8x8");
}

TEST_F(CommandLineTest, versionAndHelp_arePrintedAndEndWithNought) {
    EXPECT_EQ(run({"--version"}), 0);
    EXPECT_EQ(printed, "1.2.3\n");
    EXPECT_EQ(run({"--help"}), 0);
    EXPECT_NE(printed.find("Reads and writes."), std::string::npos);
    EXPECT_NE(printed.find("Writes files."), std::string::npos);
    EXPECT_NE(printed.find("That is all."), std::string::npos);
    EXPECT_EQ(run({"read", "--help"}), 0);
    for (const char *part : {"WxH", "red", "How large", "Example: program read x"}) {
        EXPECT_NE(printed.find(part), std::string::npos) << part << " in\n" << printed;
    }
}

} // namespace

} // namespace veldron
