// SPDX-License-Identifier: MIT
// Long random sequences of all that changes the picture, on screens of each density. After each
// step the picture in memory is compared, byte for byte, with that of a chart that paints
// everything anew, point by point; and what the screen shows with what it shows when all of it is
// repainted.
#include "tests/chart/PlainChart.h"
#include "tests/chart/Screens.h"

#include "common/Numbers.h"

#include <array>
#include <cmath>
#include <map>
#include <random>
#include <string>

namespace veldron {
namespace {

struct Size {
    int width;
    int height;
};
struct Grid {
    qint64 resolution;
    qint64 start;
    qint64 stop;
};

class Sequence : public ScreensTest, public testing::WithParamInterface<double> {
protected:
    Sequence() {
        chart.move(7, 11); // not whole device pixels where the density isn't whole
        plain.density = GetParam();
        goTo(GetParam());
        clock.setTimeOfDay(86000.0); // midnight is on the way
        resize({300, 220});
        redrawWhereExposed();
        setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        setUpdate(1);
    }

    template <typename T, std::size_t Count>
    T oneOf(const T (&values)[Count]) {
        return values[random() % Count];
    }
    int below(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    // Scans and rows.
    LevelScan anyScan() {
        const int bins = plain.grid().binCount();
        LevelScan levels(static_cast<std::size_t>(
            oneOf({bins, bins, bins, bins + 1, bins + 2, bins + 3, (bins + 1) / 2, 321, 0})));
        // Signals on the scale, under it, over it, and of any level.
        const int kind = below(5);
        const int lowest = std::array{45, 0, 95, 0, below(120)}.at(static_cast<std::size_t>(kind));
        const int range = std::array{50, 42, 160, 256, 1}.at(static_cast<std::size_t>(kind));
        for (quint8 &level : levels) {
            level = static_cast<quint8>(lowest + below(range));
        }
        return levels;
    }
    void takeScan() { take(anyScan()); }
    // A signal that comes with all of the trace and goes alone: a narrow area is painted over a
    // part of a wide one.
    void changeOneBin() {
        LevelScan levels(static_cast<std::size_t>(plain.grid().binCount()), 60);
        quint8 &one = levels[random() % levels.size()];
        take(LevelScan(levels.size(), 95));
        one = 90;
        take(levels);
        QApplication::processEvents();
        one = 60;
        take(levels);
    }
    void take(const LevelScan &levels) {
        chart.SetData(levels);
        plain.take(levels);
        if (below(10) != 0) {
            refresh();
        }
    }
    void refresh() {
        chart.Refresh();
        plain.refresh();
    }
    void drawAxes() {
        chart.DrawAxes();
        plain.drawAxes();
    }
    void passTime() {
        if (chart.Playback()) {
            playTo(m_played + oneOf({0, 1, 1, 1, 2, 15}));
        } else {
            clock.advance(oneOf({0.25, 1.0, 1.0, 1.0, 2.0, 6.0, 30.0}));
            chart.onTimer1();
            plain.tick();
        }
    }
    void jump() {
        clock.setTimeOfDay(std::fmod(clock.seconds() + 86400.0 - 100.0, 86400.0));
        if (!chart.Playback()) {
            chart.onTimer1();
            plain.tick();
        }
        refresh();
    }
    // More rows than can be seen; without a waterfall none of them is drawn.
    void runOn() {
        const DisplayTypeCode type = chart.DisplayType();
        setDisplayType(DisplayTypeCode::Trace);
        for (int i = 0; i < 120; ++i) {
            const LevelScan levels(static_cast<std::size_t>(plain.grid().binCount()),
                                   static_cast<quint8>(40 + (m_run += 7) % 90));
            chart.SetData(levels);
            plain.take(levels);
            if (chart.Playback()) {
                playTo(m_played + 1);
            } else {
                clock.advance(1.0);
                chart.onTimer1();
                plain.tick();
            }
        }
        setDisplayType(type);
    }
    void playTo(int time) {
        m_played = time;
        const QTime moment = QTime(0, 0).addSecs(m_played % 86400);
        chart.SetPlaybackTime(moment.toString(QStringLiteral("HH:mm:ss")), moment);
        plain.playTo(static_cast<float>(m_played % 86400));
    }
    void setPlayback() {
        const bool on = !chart.Playback();
        const qint16 poll = oneOf<qint16>({1000, 1000, 250, 0});
        chart.setPoll(poll);
        plain.setPoll(poll);
        chart.setPlayback(on);
        timer().stop();
        plain.setPlayback(on);
        refresh();
    }
    void rewind() {
        const auto count = static_cast<qint16>(below(41) - 25);
        chart.Rewind(count);
        plain.rewind(count);
    }

    // Settings.
    void setUpdate(qint32 seconds) {
        chart.setUpdate(seconds);
        plain.setUpdate(seconds);
    }
    void changeUpdate() { setUpdate(oneOf({1, 1, 2, 5})); }
    void changePalette() {
        const auto scheme = static_cast<qint16>(below(7));
        chart.setPalette(scheme);
        plain.setPalette(scheme);
    }
    void changePeak() {
        chart.setPeak(!chart.Peak());
        plain.setPeak(chart.Peak());
        plain.timespan = oneOf({0, 3});
        chart.setTimespan(plain.timespan);
    }
    void changeScale() {
        plain.scale.start = oneOf<qint16>({-90, -90, -75, -110});
        chart.setdBStart(plain.scale.start);
    }
    void changeGrid() {
        const Grid grid = oneOf<Grid>({{31250, 0, 10000000},
                                       {31250, 0, 10000000},
                                       {31250, 0, 9968750},
                                       {100000, 5000000, 12000000},
                                       {1000000, 1000000, 5000000},
                                       {20000, 0, 10000000}});
        chart.setDataResolution(hz(grid.resolution));
        chart.setScanStart(hz(grid.start));
        chart.setScanStop(hz(grid.stop));
        plain.setGrid(hz(grid.resolution), hz(grid.start), hz(grid.stop));
    }

    // The picture.
    void setDisplayType(DisplayTypeCode type) {
        if (type != chart.DisplayType()) {
            chart.setDisplayType(type);
            plain.displayType = type;
            plain.redraw();
        }
    }
    void changeDisplayType() {
        setDisplayType(displayTypeWith(chart.DisplayType() == DisplayTypeCode::Trace));
    }
    void changeSplit() {
        plain.split = oneOf({0.5F, 0.5F, 0.3F, 0.7F, 0.1F});
        chart.setSplitFraction(plain.split);
        plain.redraw();
    }
    void resize(Size to) {
        if (chart.width() != to.width || chart.height() != to.height) {
            plain.width = to.width;
            plain.height = to.height;
            size(to.width, to.height);
            plain.resized();
        }
    }
    void changeSize() {
        resize(
            oneOf<Size>({{300, 220}, {300, 220}, {420, 180}, {375, 200}, {250, 320}, {480, 260}}));
    }
    void scroll() {
        if (scrollBar().isHidden()) {
            return;
        }
        const int to = below(scrollBar().maximum() + 1);
        if (to != scrollBar().value()) {
            scrollBar().setValue(to);
            plain.lookFrom(to);
        }
    }
    void dragThumb() {
        const int to = below(scrollBar().maximum() + 1);
        if (scrollBar().isHidden() || to == scrollBar().value()) {
            return;
        }
        const qint64 whole = qint64{scrollBar().maximum()} + scrollBar().pageStep();
        scrollBar().setSliderDown(true);
        scrollBar().setSliderPosition(to);
        scrollBar().setSliderDown(false);
        plain.lookFrom(static_cast<qint32>(
            Numbers::divideHalfEven(qint64{to} * plain.rows().rowCount(), whole)));
    }
    // The lines and texts over the picture, which move with a scrolled window if nobody sees to it.
    void changeMarker() { chart.setMarkerEn(!chart.MarkerEn()); }
    void tune() {
        chart.setRXFreq(hz(oneOf<qint64>({1000000, 5000000, 5031250, 9968750, 20000000})));
        plain.drawAxes(); // as each write of the receive frequency does
    }
    void clickPicture() {
        const QPoint at(40 + below(chart.width() - 60), 11 + below(chart.height() - 20));
        QTest::mousePress(&picture(), Qt::LeftButton, {}, at);
        QTest::mouseRelease(&picture(), Qt::LeftButton, {}, at);
    }

    // Back and forth between the screen of this test and any other.
    [[nodiscard]] double anotherDensity() {
        return density() == GetParam() ? oneOf({1.0, 1.25, 1.5, 1.75, 2.0}) : GetParam();
    }
    void changeScreen() {
        plain.density = anotherDensity();
        goTo(plain.density);
    }
    void changeScreenUnseen() {
        plain.density = anotherDensity();
        goUnseenTo(plain.density);
        if (below(2) == 0) {
            refresh();
        } else {
            drawAxes();
        }
        paintAgain();
    }

    struct Step {
        const char *name;
        int weight;
        void (Sequence::*take)();
    };
    const std::array<Step, 24> steps{{{"scan", 40, &Sequence::takeScan},
                                      {"one bin", 20, &Sequence::changeOneBin},
                                      {"refresh", 3, &Sequence::refresh},
                                      {"axes", 6, &Sequence::drawAxes},
                                      {"time", 30, &Sequence::passTime},
                                      {"jump of the clock", 3, &Sequence::jump},
                                      {"many rows", 8, &Sequence::runOn},
                                      {"palette", 4, &Sequence::changePalette},
                                      {"split", 6, &Sequence::changeSplit},
                                      {"update", 2, &Sequence::changeUpdate},
                                      {"rewind", 6, &Sequence::rewind},
                                      {"display type", 3, &Sequence::changeDisplayType},
                                      {"grid", 9, &Sequence::changeGrid},
                                      {"size", 5, &Sequence::changeSize},
                                      {"scroll bar", 8, &Sequence::scroll},
                                      {"thumb", 4, &Sequence::dragThumb},
                                      {"peak", 4, &Sequence::changePeak},
                                      {"playback", 2, &Sequence::setPlayback},
                                      {"scale", 3, &Sequence::changeScale},
                                      {"marker", 6, &Sequence::changeMarker},
                                      {"receiver", 6, &Sequence::tune},
                                      {"click", 6, &Sequence::clickPicture},
                                      {"screen", 2, &Sequence::changeScreen},
                                      {"screen, unseen", 2, &Sequence::changeScreenUnseen}}};

    void run(int count) {
        std::vector<const Step *> bag;
        for (const Step &step : steps) {
            bag.insert(bag.end(), static_cast<std::size_t>(step.weight), &step);
        }
        for (int i = 0; i < count; ++i) {
            const Step &step = *bag[static_cast<std::size_t>(below(static_cast<int>(bag.size())))];
            (this->*step.take)();
            redrawWhereExposed();
            ASSERT_EQ(plain.shown().differences(picture().surface()), 0)
                << "step " << i << ", " << step.name;
            ASSERT_TRUE(showsWhatARepaintShows()) << "step " << i << ", " << step.name;
            redrawWhereExposed(); // by the events that the look at the screen has run
            ++met[step.name];
            noteWhatIsSeen();
        }
    }
    void redrawWhereExposed() {
        for (; m_exposures < exposed.count(); ++m_exposures) {
            plain.redraw();
        }
    }
    bool showsWhatARepaintShows() {
        QApplication::processEvents();
        // The toolkit repaints a child that was shown or moved a few milliseconds later.
        QEvent update(QEvent::UpdateRequest);
        QApplication::sendEvent(&window, &update);
        const QImage found = onScreen();
        window.repaint();
        const QImage expected = onScreen();
        return found == expected && found.size() == (QSizeF(window.size()) * density()).toSize();
    }
    void noteWhatIsSeen() {
        const bool drawn = plain.layout().isDrawable();
        const bool fall = drawn && chart.DisplayType() == DisplayTypeCode::TraceAndWaterfall;
        met["not to be drawn"] += drawn ? 0 : 1;
        met["spread"] += drawn && plain.spreads() ? 1 : 0;
        met["gathered over a waterfall"] += fall && !plain.spreads() ? 1 : 0;
        met["more cells than columns of the history"] += fall && plain.grid().cellCount() > 320;
        met["scrolled back"] += fall && plain.rows().firstRow() > 0 ? 1 : 0;
        met["peaks"] += drawn && plain.peak() ? 1 : 0;
        met["in playback"] += fall && chart.Playback() ? 1 : 0;
        met["on this screen"] += drawn && density() == GetParam() ? 1 : 0;
    }

    std::mt19937 random{20};
    PlainChart plain{clock, picture()};
    std::map<std::string, int> met;
    QSignalSpy exposed{&picture(), &PictureBox::exposed};

private:
    int m_exposures = 0;
    int m_played = 36000;
    int m_run = 0;
};

using ChartSequenceTest = Sequence;

TEST_P(ChartSequenceTest, eachOfManySteps_leavesThePictureThatAPlainRedrawMakes) {
    ASSERT_NO_FATAL_FAILURE(run(600));
    for (const Step &step : steps) {
        EXPECT_GT(met[step.name], 0) << step.name;
    }
    for (const auto &[name, count] : met) {
        EXPECT_GT(count, 0) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Densities, ChartSequenceTest, testing::Values(1.0, 1.25, 1.5, 1.75, 2.0));

} // namespace
} // namespace veldron
