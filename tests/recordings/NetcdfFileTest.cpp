// SPDX-License-Identifier: MIT
#include "recordings/NetcdfFile.h"

#include "common/UntrappedError.h"
#include "tests/support/FullDisk.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <random>

namespace veldron {
namespace {

class NetcdfFileTest : public testing::Test {
protected:
    /// What ncdump prints with \a options.
    [[nodiscard]] QByteArray dump(const QStringList &options = {}) {
        m_file.close();
        m_out.commit();
        QProcess process;
        process.start("ncdump", options + QStringList{m_folder.filePath("a.nc")});
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.readAllStandardError(), "");
        return process.readAllStandardOutput().simplified();
    }
    /// \a count scans of \a levels, each a second behind the one before.
    void fill(NetcdfFile::GroupNumber group, int count, int levels) {
        for (int i = 0; i < count; ++i) {
            m_file.append(group, 1000 + i, QByteArray(levels, static_cast<char>(i)));
        }
        m_file.finishGroup(group);
    }
    QTemporaryDir m_folder;
    OutputFile m_out{m_folder.filePath("a.nc").toStdString(), false};
    NetcdfFile m_file{m_out};
};

TEST_F(NetcdfFileTest, chunks_areNoLongerThanTheirGroup) {
    fill(m_file.addGroup({"short", 2, std::nullopt, 100}), 7, 2);
    fill(m_file.addGroup({"long", 2, std::nullopt, 100}), 101, 2);
    const QByteArray header = dump({"-hs"});
    EXPECT_TRUE(header.contains("levels:_ChunkSizes = 7, 2 ;")) << header.constData();
    EXPECT_TRUE(header.contains("levels:_ChunkSizes = 100, 2 ;"));
    EXPECT_TRUE(header.contains("time = UNLIMITED ; // (101 currently)"));
    EXPECT_EQ(header.count("levels:_DeflateLevel = 1 ;"), 2);
}

TEST_F(NetcdfFileTest, groupsThatGrowTogether_keepTheirScansApart) {
    const auto one = m_file.addGroup({"one", 1, std::nullopt, 2});
    const auto two = m_file.addGroup({"two", 2, std::vector<double>{1, 2.5}, 3});
    for (int i = 0; i < 5; ++i) {
        m_file.append(one, i, QByteArray(1, static_cast<char>(i)));
        m_file.append(two, 10 + i, QByteArray(2, static_cast<char>(20 + i)));
    }
    m_file.finishGroup(one);
    m_file.finishGroup(two);
    const QByteArray data = dump();
    EXPECT_TRUE(data.contains("time = 0, 1, 2, 3, 4 ; levels = 0, 1, 2, 3, 4 ;"));
    EXPECT_TRUE(data.contains("time = 10, 11, 12, 13, 14 ; levels = 20, 20, 21, 21, 22, 22, 23, "
                              "23, 24, 24 ; frequency = 1, 2.5 ;"))
        << data.constData();
}

TEST_F(NetcdfFileTest, attributes_keepTheirTypeAndOrder) {
    m_file.setAttribute("title", QString::fromUtf8("B\u00e4nder"));
    const auto group = m_file.addGroup({"one", 1, std::nullopt, 2});
    m_file.setAttribute(group, "z", 5);
    m_file.setAttribute(group, "a", 2.5);
    m_file.setAttribute(group, "empty", QString());
    fill(group, 1, 1);
    const QByteArray header = dump({"-h"});
    EXPECT_TRUE(header.contains(":title = \"B\u00e4nder\" ;")) << header.constData();
    EXPECT_TRUE(header.contains(":z = 5 ; :a = 2.5 ; :empty = \"\" ;"));
}

TEST_F(NetcdfFileTest, fullDisk_tellsHowManyScansArrived) {
    const FullDisk full(60000);
    const auto group = m_file.addGroup({"one", 100, std::nullopt, 50});
    std::mt19937 random(5);
    std::string message;
    try {
        for (int i = 0; i < 1000; ++i) {
            QByteArray noise(100, 0);
            std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random()); });
            m_file.append(group, i, noise);
        }
        m_file.finishGroup(group);
    } catch (const UntrappedError &error) {
        message = error.message().toStdString();
    }
    EXPECT_TRUE(message.find("a.nc: File too large (") != std::string::npos) << message;
    EXPECT_TRUE(message.find("(0 of") == std::string::npos) << message;
    EXPECT_TRUE(message.find("50 of the scans arrived)") != std::string::npos ||
                message.find("00 of the scans arrived)") != std::string::npos)
        << message;
}

} // namespace
} // namespace veldron
