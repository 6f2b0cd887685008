// SPDX-License-Identifier: MIT
#pragma once

#include "common/UntrappedError.h"
#include "tests/support/HistoryFixture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTime>

#include <optional>
#include <utility>

namespace veldron {

/// Plays files that a test makes of lines.
class PlaybackTest : public testing::Test {
protected:
    explicit PlaybackTest(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedKingdom))
        : m_fixture(locale) {}

    /// Header and a block with 321 bins from 140.5 to 150.5 MHz.
    [[nodiscard]] static QStringList head(const QString &date = QStringLiteral("21/03/2005")) {
        return {"VELDRONv1 History file",
                "StartSettings " + date,
                "Poll 1000",
                "MonitorMode 1",
                "Span 10000000",
                "Centre 145500000",
                "Receiver Other (10M)",
                "RBW 2",
                "EndSettings "};
    }
    [[nodiscard]] static QString data(const QString &time, const QString &scan = "abc") {
        return "Data " + scan + ' ' + time;
    }
    /// \a count scans, one a second from 10:00:00 on.
    [[nodiscard]] static QStringList scans(int count) {
        QStringList lines;
        for (int i = 0; i < count; ++i) {
            lines.append(data(QTime(10, 0).addSecs(i).toString("HH:mm:ss")));
        }
        return lines;
    }
    [[nodiscard]] QString path() const { return m_folder.filePath("history.rec"); }
    void put(const QStringList &lines, const QString &lineEnd = "\r\n") {
        QByteArray bytes;
        for (const QString &line : lines) {
            bytes += (line + lineEnd).toLatin1();
        }
        putBytes(bytes);
    }
    void putBytes(const QByteArray &bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        m_size = bytes.size();
    }
    void open() {
        m_fixture.dialogs.answer = path();
        m_fixture.playback.mnuFilePlayback();
    }
    void open(const QStringList &lines) {
        put(lines);
        open();
    }
    void step(qint16 direction, int times = 1) {
        for (int i = 0; i < times; ++i) {
            m_fixture.step(direction);
        }
    }
    /// Text of the chart's own status bar, which is never shown.
    [[nodiscard]] QString chartStatus() {
        return chart().findChild<QStatusBar *>()->currentMessage();
    }
    /// Whether the chart shows \a levels already: taking them once more changes no pixel.
    [[nodiscard]] bool shows(const LevelScan &levels) {
        const QImage before = chart().grab().toImage();
        chart().SetData(levels);
        chart().Refresh();
        return chart().grab().toImage() == before;
    }
    [[nodiscard]] QStringList takeLog() { return std::exchange(m_fixture.log, {}); }
    /// Bytes of \a lines with two for each line end.
    [[nodiscard]] static qint64 sizeOf(const QStringList &lines) {
        qint64 size = 0;
        for (const QString &line : lines) {
            size += line.size() + 2;
        }
        return size;
    }
    /// The place shown when \a used bytes are behind the display's share \a part of the time.
    [[nodiscard]] QString place(const QString &time, qint64 used, double part = 1.0,
                                const QString &date = "21/03/2005") const {
        const double share = part * static_cast<double>(used) / static_cast<double>(m_size);
        return date + ' ' + time + " / " + m_fixture.texts.percentText(share);
    }
    template <typename Body>
    [[nodiscard]] static std::optional<UntrappedError> errorOf(Body body) {
        try {
            body();
        } catch (const UntrappedError &error) {
            return error;
        }
        return std::nullopt;
    }
    /// The error that opening gives, as "kind: message".
    void expectOpenError(UntrappedError::Kind kind, const QString &message) {
        expectError(errorOf([this] { open(); }), kind, message);
    }
    void expectStepError(qint16 direction, UntrappedError::Kind kind, const QString &message) {
        expectError(errorOf([this, direction] { step(direction); }), kind, message);
    }
    static void expectError(const std::optional<UntrappedError> &error, UntrappedError::Kind kind,
                            const QString &message) {
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->kind(), kind);
        EXPECT_EQ(error->message().toStdString(), message.toStdString());
    }
    [[nodiscard]] QString atLine(int line, const QString &what) const {
        return "Line " + QString::number(line) + " of the file \"" + path() + "\": " + what + '.';
    }
    [[nodiscard]] ctlChartSpectrum &chart() { return m_fixture.ctlChartSpectrum1; }

    QTemporaryDir m_folder;
    HistoryFixture m_fixture;
    qint64 m_size = 0;
};

} // namespace veldron
