// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veldron {

/// Runs veldron-history as a shell does.
class HistoryRun : public testing::Test {
protected:
    struct Result {
        int code = -1;
        QByteArray out;
        QByteArray error;
    };

    /// Milliseconds. Python alone takes seconds to start, and half a minute on a busy machine.
    static constexpr int kMostWait = 120'000;

    [[nodiscard]] static QString program() { return QStringLiteral(VELDRON_HISTORY); }
    [[nodiscard]] Result run(const QStringList &arguments, const QByteArray &input = {}) const {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(program(), arguments);
        EXPECT_TRUE(process.waitForStarted());
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished(kMostWait));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                process.readAllStandardOutput(), process.readAllStandardError()};
    }
    [[nodiscard]] Result shell(const QString &command) const {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral("/bin/bash"), {QStringLiteral("-c"), command});
        EXPECT_TRUE(process.waitForFinished(kMostWait));
        return {process.exitCode(), process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    void put(const QString &name, const QByteArray &bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray content(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QTemporaryDir m_folder;
};

} // namespace veldron
