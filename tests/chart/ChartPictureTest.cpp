// SPDX-License-Identifier: MIT
// Whole pictures, compared pixel for pixel with a plain painter that paints everything anew.
#include "tests/chart/ChartFixture.h"
#include "tests/chart/PlainPicture.h"

#include "utilities/Palette.h"

#include <random>

namespace veldron {
namespace {

// The history as flat bytes, 320 a row, newest row first; its first row is open.
class PlainRows {
public:
    void scan(const LevelScan &levels) {
        if (m_closed) {
            std::fill_n(m_bytes.begin(), kWidth, quint8{0});
            m_closed = false;
        }
        for (std::size_t i = 0; i < levels.size(); ++i) {
            m_bytes[i] = std::max(m_bytes[i], levels[i]);
        }
    }
    void close() {
        const std::vector<quint8> copy(m_bytes.begin(), m_bytes.begin() + kWidth);
        m_bytes.insert(m_bytes.begin(), copy.begin(), copy.end());
        m_closed = true;
    }
    [[nodiscard]] quint8 at(int column, int row) const {
        return m_bytes[static_cast<std::size_t>(row * kWidth + column)];
    }

private:
    static constexpr int kWidth = 320;

    std::vector<quint8> m_bytes = std::vector<quint8>(kWidth * 1000);
    bool m_closed = false;
};

class Pictures : public ChartTest {
protected:
    // Waterfall on, a second a row, in \a scheme, and nothing in the history yet.
    void beginRows(qint16 scheme) {
        chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        chart.setUpdate(1);
        chart.setPalette(scheme);
        chart.setPlayback(true);
        chart.setPlayback(false);
        timer().stop();
        chart.onTimer1();
        rows = PlainRows();
    }
    void take(const LevelScan &levels) {
        chart.SetData(levels);
        chart.Refresh();
        rows.scan(levels);
        current = levels;
    }
    void closeRow() {
        seconds(1);
        rows.close();
    }
    LevelScan randomScan(std::size_t bins) {
        LevelScan levels(bins);
        for (quint8 &level : levels) {
            level = static_cast<quint8>(30 + random() % 90);
        }
        return levels;
    }
    [[nodiscard]] ChartLayout layout() const {
        return ChartLayout::of(picture().ScaleWidth(), picture().ScaleHeight(), chart.DisplayType(),
                               chart.SplitFraction());
    }
    [[nodiscard]] AxisPlan plan(const BinGrid &grid) {
        const auto update = static_cast<float>(chart.Update());
        const float nextRow = (std::floor(clock.timeOfDay() / update) + 1.0F) * update;
        return AxisPlan::of({layout(), grid, scale, chart.DisplayType(), chart.Update(), update,
                             nextRow, 0, [this](const QString &text) {
                                 return picture().textWidth(text);
                             }});
    }
    // The picture as it is after the axes alone.
    [[nodiscard]] PlainPicture wiped(const BinGrid &grid = {}) {
        PlainPicture plain(picture().ScaleWidth(), picture().ScaleHeight());
        plain.axes(plan(grid), picture());
        return plain;
    }
    void addWaterfall(PlainPicture &plain, qint16 scheme, int cells = 320) const {
        plain.waterfall(layout(), cells, [&](int column, int row) {
            const int level = scale.schemeLevel(rows.at(column, row));
            return GeneralUtilities::PaletteColour(static_cast<quint8>(level), scheme);
        });
    }

    [[nodiscard]] bool labelsReachIntoThePlot() {
        const std::vector<PlannedText> labels = plan({}).texts;
        return std::any_of(labels.begin(), labels.end(), [this](const PlannedText &label) {
            return picture().textArea(label).intersects(layout().plotInside());
        });
    }

    PlainRows rows;
    LevelScan current;
    LevelScale scale;
    std::mt19937 random{5};
};

using ChartPictureTest = Pictures;

struct PictureCase {
    const char *name;
    int width;
    int height;
};

TEST_F(ChartPictureTest, traceAlone_isThePlainPainters) {
    const PictureCase cases[] = {{"spread", 695, 400},
                                 {"spread, large", 1280, 800},
                                 {"spread, few columns more than bins", 400, 300},
                                 {"gather, a bin a column", 375, 300},
                                 {"gather", 300, 400}};
    current = LevelScan(321, 0);
    for (const PictureCase &c : cases) {
        size(c.width, c.height);
        PlainPicture expected = wiped();
        expected.trace(layout(), {current, 320, {}});
        for (int i = 0; i < 4; ++i) {
            take(randomScan(321));
            expected.trace(layout(), {current, 320, {}});
            EXPECT_EQ(expected.differences(picture().surface()), 0) << c.name << ", scan " << i;
        }
    }
}

TEST_F(ChartPictureTest, traceOverWaterfall_isThePlainPaintersInEverySize) {
    const PictureCase cases[] = {{"spread", 695, 400},
                                 {"spread, large", 1280, 800},
                                 {"spread, odd", 500, 333},
                                 {"gather, a bin a column", 375, 300},
                                 {"gather", 300, 400}};
    for (const PictureCase &c : cases) {
        size(c.width, c.height);
        beginRows(3);
        for (int i = 0; i < 30; ++i) {
            take(randomScan(321));
            closeRow();
        }
        PlainPicture expected = wiped();
        expected.trace(layout(), {current, 320, {}});
        take(randomScan(321));
        expected.trace(layout(), {current, 320, {}});
        addWaterfall(expected, 3);
        EXPECT_EQ(expected.differences(picture().surface()), 0) << c.name;
    }
}

TEST_F(ChartPictureTest, lastBinOfAFullScan_isSeenInTheRowBelow) {
    beginRows(0);
    for (const int last : {50, 90, 70, 100}) {
        LevelScan levels = randomScan(321);
        take(levels);
        levels[320] = static_cast<quint8>(last);
        take(levels);
        PlainPicture expected = wiped();
        expected.trace(layout(), {levels, 320, {}});
        addWaterfall(expected, 0);
        EXPECT_EQ(expected.differences(picture().surface()), 0) << last;
        EXPECT_GE(rows.at(0, 1), last);
        closeRow();
    }
}

TEST_F(ChartPictureTest, gatheredTraceThatRunsIntoTheWaterfall_leavesItWhole) {
    size(300, 400);
    beginRows(1);
    for (int i = 0; i < 100; ++i) {
        take(LevelScan(321, static_cast<quint8>(50 + i % 40)));
        closeRow();
    }
    PlainPicture expected = wiped();
    expected.trace(layout(), {current, 320, {}});
    for (const int level : {60, 20, 0, 0}) {
        take(LevelScan(321, static_cast<quint8>(level)));
        expected.trace(layout(), {current, 320, {}});
        addWaterfall(expected, 1);
        EXPECT_EQ(expected.differences(picture().surface()), 0) << level;
    }
    EXPECT_EQ(shown(100, 190), ChartColours::kBackground); // between plot and waterfall
}

TEST_F(ChartPictureTest, gridOfMoreCellsThanTheHistory_showsNoWaterfallUntilItFitsAgain) {
    BinGrid wide;
    wide.setDataResolution(hz(20000));
    const LevelScan levels(501, 90);
    beginRows(3);
    for (int i = 0; i < 30; ++i) {
        take(randomScan(320));
        closeRow();
    }
    chart.setDataResolution(hz(20000));
    take(levels);
    PlainPicture blank = wiped(wide);
    blank.trace(layout(), {levels, 500, {}});
    EXPECT_EQ(blank.differences(picture().surface()), 0);
    chart.setSplitFraction(0.3F); // the waterfall's place was the trace's before
    blank = wiped(wide);
    blank.trace(layout(), {levels, 500, {}});
    EXPECT_EQ(blank.differences(picture().surface()), 0);

    chart.setDataResolution(hz(31250));
    take(LevelScan(320, 80));
    PlainPicture expected = wiped();
    expected.trace(layout(), {current, 320, {}});
    addWaterfall(expected, 3);
    EXPECT_EQ(expected.differences(picture().surface()), 0);
}

TEST_F(ChartPictureTest, labelsThatRunIntoThePlot_areCoveredByTheTrace) {
    const PictureCase cases[] = {{"spread", 695, 400}, {"gather", 300, 400}};
    scale.start = -32768; // six places
    scale.offset = -32768;
    chart.setdBStart(scale.start);
    chart.setdBOffset(scale.offset);
    for (const PictureCase &c : cases) {
        size(c.width, c.height);
        for (const DisplayTypeCode type :
             {DisplayTypeCode::Trace, DisplayTypeCode::TraceAndWaterfall}) {
            beginRows(0);
            chart.setDisplayType(type);
            take(LevelScan(321, 20)); // a third of the height
            chart.DrawAxes();
            EXPECT_TRUE(labelsReachIntoThePlot()) << c.name << ", " << static_cast<int>(type);
            take(LevelScan(321, 20));
            PlainPicture expected = wiped();
            expected.trace(layout(), {current, 320, scale});
            if (type == DisplayTypeCode::TraceAndWaterfall) {
                addWaterfall(expected, 0);
            }
            EXPECT_EQ(expected.differences(picture().surface()), 0)
                << c.name << ", " << static_cast<int>(type);
        }
    }
}

TEST_F(ChartPictureTest, labels_arePrintedWhereThePlanPutsThem) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    scan(42);
    for (const PlannedText &text : plan(BinGrid()).texts) {
        int lit = 0;
        for (int y = text.at.y(); y < text.at.y() + 14; ++y) {
            for (int x = text.at.x(); x < text.at.x() + picture().textWidth(text.text); ++x) {
                lit += shown(x, y) != 0 ? 1 : 0;
            }
        }
        EXPECT_GT(lit, 20) << text.text.toStdString();
    }
}

} // namespace
} // namespace veldron
