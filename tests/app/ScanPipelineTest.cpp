// SPDX-License-Identifier: MIT
#include "app/ScanPipeline.h"

#include "tests/app/StatusBarReader.h"
#include "tests/support/HistoryFixture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace veldron {
namespace {

class ScanPipelineTest : public testing::Test {
protected:
    ScanPipelineTest() {
        fixture.dialogs.answer = folder.filePath("scans.rec");
        fixture.line.setScan(QByteArray(321, 'a'));
        fixture.connectUnit();
        fixture.ctlChartSpectrum1.show();
        QApplication::processEvents();
    }
    void record() { fixture.recorder.mnuFileRecord(); }
    [[nodiscard]] QByteArray recorded() const {
        QFile file(*fixture.dialogs.answer);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A picture of the chart as it stands.
    [[nodiscard]] QImage picture() { return fixture.ctlChartSpectrum1.grab().toImage(); }

    QTemporaryDir folder;
    HistoryFixture fixture;
    StatusPanels bar{fixture.guard, fixture.clock};
    ScanPipeline scans{
        {fixture.vdr, fixture.ctlChartSpectrum1, fixture.session, fixture.recorder, bar}};
};

TEST_F(ScanPipelineTest, scan_isAskedForAndShown) {
    const QImage before = picture();
    scans.TakeScan();
    EXPECT_EQ(fixture.log, QStringList{"RIFD"});
    EXPECT_NE(picture(), before);
}

TEST_F(ScanPipelineTest, noRecording_showsTheStateOfTheLink) {
    scans.TakeScan();
    EXPECT_EQ(statusText(bar), fixture.vdr.Status());
    EXPECT_FALSE(statusText(bar).isEmpty());
    EXPECT_EQ(recorded(), "");
}

TEST_F(ScanPipelineTest, recording_writesTheScanAndLeavesTheStatusToTheRecorder) {
    record();
    bar.setStatusText("as before");
    scans.TakeScan();
    EXPECT_EQ(recorded().count("\r\nData aaa"), 1);
    EXPECT_TRUE(fixture.status.startsWith("Recording to file"));
    EXPECT_EQ(statusText(bar), "as before");
}

TEST_F(ScanPipelineTest, scanThatFails_isShownAndRecordedAllTheSame) {
    record();
    fixture.line.setSilent(true);
    scans.TakeScan();
    EXPECT_FALSE(fixture.vdr.Connected());
    EXPECT_EQ(recorded().count("\r\nData "), 1);
}

} // namespace
} // namespace veldron
