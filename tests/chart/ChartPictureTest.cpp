// SPDX-License-Identifier: MIT
// Whole pictures, compared pixel for pixel with a plain painter that paints everything anew.
#include "tests/chart/ChartFixture.h"

#include "chart/AxisPlan.h"
#include "common/Numbers.h"
#include "panels/GeneralUtilities.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace veldron {
namespace {

// The expected picture: one colour a pixel, painted point by point from the scan alone.
class PlainPicture {
public:
    PlainPicture(int width, int height)
        : m_width(width), m_height(height),
          m_points(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

    void point(int x, int y, quint32 colour) {
        if (x >= 0 && x < m_width && y >= 0 && y < m_height) {
            m_points[index(x, y)] = colour;
        }
    }
    void line(QPoint from, QPoint to, quint32 colour) {
        const QPoint step(qBound(-1, to.x() - from.x(), 1), qBound(-1, to.y() - from.y(), 1));
        for (QPoint at = from; at != to; at += step) {
            point(at.x(), at.y(), colour);
        }
    }
    void trace(const ChartLayout &l, const LevelScan &scan, int cells) {
        for (int x = l.plotLeft; x < l.plotRight; ++x) {
            const auto bin = static_cast<std::size_t>((x - l.plotLeft) * cells / l.plotWidth());
            const double exact =
                (scan[bin] - 42) / 60.0 * (l.plotTop - l.plotBottom) + l.plotBottom;
            const int y =
                std::clamp(static_cast<int>(std::nearbyint(exact)), l.plotTop, l.plotBottom);
            line({x, l.plotBottom}, {x, y}, ChartColours::kTrace);
            line({x, y}, {x, l.plotTop}, ChartColours::kBackground);
        }
    }
    void waterfall(const ChartLayout &l, const std::vector<LevelScan> &rows, int cells,
                   qint16 scheme) {
        for (int y = l.fallTop; y < l.fallBottom; ++y) {
            const auto row = static_cast<std::size_t>(y - l.fallTop);
            for (int x = l.plotLeft; x < l.plotRight; ++x) {
                const auto bin = static_cast<std::size_t>((x - l.plotLeft) * cells / l.plotWidth());
                const quint8 raw = row < rows.size() ? rows[row][bin] : quint8{0};
                point(x, y, GeneralUtilities::PaletteColour(LevelScale().schemeLevel(raw), scheme));
            }
        }
    }
    [[nodiscard]] quint32 at(int x, int y) const { return m_points[index(x, y)]; }

private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
               static_cast<std::size_t>(x);
    }

    int m_width;
    int m_height;
    std::vector<quint32> m_points;
};

class Pictures : public ChartTest {
protected:
    std::vector<LevelScan> randomScans(std::size_t count, std::size_t bins) {
        std::vector<LevelScan> scans(count, LevelScan(bins));
        for (LevelScan &scan : scans) {
            for (quint8 &level : scan) {
                level = static_cast<quint8>(30 + random() % 90);
            }
        }
        return scans;
    }
    // Axes by the plan, whose lines have tests of their own; labels are left out of the
    // comparison, and so is nothing else.
    AxisPlan plan(const BinGrid &grid, const ChartLayout &layout, float nextRow) {
        return AxisPlan::of({layout, grid, LevelScale(), chart.DisplayType(), chart.Update(),
                             static_cast<float>(chart.Update()), nextRow, 0,
                             [this](const QString &text) {
                                 return picture().textWidth(text);
                             }});
    }
    void expectSame(const PlainPicture &expected, const AxisPlan &axes) {
        QRegion labels;
        for (const PlannedText &text : axes.texts) {
            labels |= QRect(text.at.x() - 1, text.at.y(), picture().textWidth(text.text) + 2, 16);
        }
        int wrong = 0;
        for (int y = 0; y < picture().ScaleHeight(); ++y) {
            for (int x = 0; x < picture().ScaleWidth(); ++x) {
                if (labels.contains(QPoint(x, y))) {
                    continue;
                }
                wrong += shown(x, y) == expected.at(x, y) ? 0 : 1;
            }
        }
        EXPECT_EQ(wrong, 0);
    }

    std::mt19937 random{5};
};

using ChartPictureTest = Pictures;

struct PictureCase {
    int width;
    int height;
};

TEST_F(ChartPictureTest, traceAlone_isThePlainPainters) {
    const PictureCase cases[] = {{695, 400}, {1280, 800}, {400, 300}};
    for (const PictureCase &c : cases) {
        SCOPED_TRACE(c.width);
        size(c.width, c.height);
        const auto scans = randomScans(4, 321);
        for (const LevelScan &scan : scans) {
            chart.SetData(scan);
            chart.Refresh();
        }
        const ChartLayout layout = ChartLayout::of(c.width, c.height, 0, 0.5F);
        const AxisPlan axes = plan(BinGrid(), layout, 0.0F);
        PlainPicture expected(c.width, c.height);
        for (const PlannedLine &line : axes.lines) {
            expected.line(line.from, line.to, line.colour);
        }
        expected.trace(layout, scans.back(), 320);
        expectSame(expected, axes);
    }
}

TEST_F(ChartPictureTest, traceOverWaterfall_isThePlainPaintersInEverySize) {
    const PictureCase cases[] = {{695, 400}, {1280, 800}, {500, 333}};
    chart.setDisplayType(1);
    chart.setUpdate(1);
    chart.setPalette(3);
    for (const PictureCase &c : cases) {
        SCOPED_TRACE(c.width);
        size(c.width, c.height);
        chart.setPlayback(true); // begins with an empty history
        chart.setPlayback(false);
        timer().stop();
        chart.onTimer1();
        const auto scans = randomScans(30, 320);
        std::vector<LevelScan> rows;
        for (const LevelScan &scan : scans) {
            chart.SetData(scan);
            chart.Refresh();
            seconds(1);
            rows.insert(rows.begin(), scan);
        }
        const LevelScan last = randomScans(1, 320)[0];
        chart.SetData(last);
        chart.Refresh();
        rows.insert(rows.begin(), last);
        const ChartLayout layout = ChartLayout::of(c.width, c.height, 1, 0.5F);
        const AxisPlan axes = plan(BinGrid(), layout, clock.timeOfDay() + 1.0F);
        PlainPicture expected(c.width, c.height);
        for (const PlannedLine &line : axes.lines) {
            expected.line(line.from, line.to, line.colour);
        }
        expected.trace(layout, last, 320);
        expected.waterfall(layout, rows, 320, 3);
        expectSame(expected, axes);
    }
}

TEST_F(ChartPictureTest, labels_arePrintedWhereThePlanPutsThem) {
    chart.setDisplayType(1);
    scan(42);
    const ChartLayout layout = ChartLayout::of(695, 400, 1, 0.5F);
    for (const PlannedText &text : plan(BinGrid(), layout, 43210.0F).texts) {
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
