// SPDX-License-Identifier: MIT
#pragma once

#include "tests/chart/PlainPicture.h"

#include "chart/BinGrid.h"
#include "chart/ScanStore.h"
#include "chart/WaterfallStore.h"
#include "common/Clock.h"
#include "utilities/Palette.h"

#include <array>

namespace veldron {

/// The chart without its shortcuts: the same stores, but every drawing is a whole one, and there is
/// no window. Size and density are set from outside and take effect at the next drawing.
///
/// It proves that caches, scrolling and repainted regions lose no pixel. It doesn't prove that
/// scans, peaks, ages and rows are right, because it takes them from the product's own stores; the
/// tests of the stores do that.
class PlainChart {
public:
    PlainChart(Clock &clock, const PictureBox &box)
        : m_clock(clock), m_box(box), m_scans(m_grid.binCount()), m_rows(clock.timeOfDay()) {
        for (std::size_t i = 0; i < m_colours.size(); ++i) {
            m_colours.at(i) = static_cast<quint32>(i) * 0x010101U;
        }
    }

    int width = 0;
    int height = 0;
    double density = 1.0;
    DisplayTypeCode displayType = DisplayTypeCode::Trace;
    qint32 timespan = 0;
    float split = 0.5F;
    LevelScale scale;

    [[nodiscard]] const BinGrid &grid() const { return m_grid; }
    [[nodiscard]] const WaterfallStore &rows() const { return m_rows; }
    [[nodiscard]] const PlainPicture &shown() const { return m_shown; }
    [[nodiscard]] ChartLayout layout() const {
        return ChartLayout::of(width, height, displayType, split);
    }
    [[nodiscard]] bool spreads() const {
        return m_grid.screenResolution(layout().plotWidth()) < m_grid.dataResolution();
    }
    [[nodiscard]] bool peak() const { return m_peak; }

    void drawAxes() {
        if (!layout().isDrawable()) {
            return;
        }
        if (!m_drawn.fits(width, height, density)) {
            // The old picture can't be shown until the next refresh, so the whole of a new one is.
            wipeAndDrawAxes();
            paintScan();
        }
        wipeAndDrawAxes();
    }
    void refresh() {
        if (m_peak) {
            m_scans.agePeaks({timeOfPeaks(), m_rows.playback(), timespan});
        }
        if (!layout().isDrawable()) {
            return;
        }
        if (!m_drawn.fits(width, height, density)) {
            wipeAndDrawAxes();
        }
        paintScan();
    }
    void redraw() {
        if (layout().isDrawable()) {
            wipeAndDrawAxes();
        }
        refresh();
    }
    void resized() {
        m_rows.fitViewTo(height - ChartMargins::kTop - ChartMargins::kBottom);
        redraw();
    }

    void take(const LevelScan &levels) {
        if (m_scans.accepts(levels)) {
            m_rows.addScan(levels, m_clock.timeOfDay());
            m_scans.take(levels);
        }
    }
    void tick() {
        m_rows.resetAfterClockJump(m_clock.timeOfDay());
        advance(m_clock.timeOfDay());
    }
    void playTo(float time) {
        m_rows.setPlaybackTime(time);
        advance(time);
    }
    void setPlayback(bool on) { m_rows.setPlayback(on); }
    void setPoll(qint16 milliseconds) { m_rows.setPoll(milliseconds); }
    void setUpdate(qint32 seconds) {
        m_rows.setUpdate(seconds, m_clock.timeOfDay());
        resized();
    }
    void setPeak(bool on) {
        if (on && !m_peak) {
            m_scans.zeroPeaks();
        }
        m_peak = on;
    }
    void setPalette(qint16 scheme) {
        for (std::size_t i = 0; i < m_colours.size(); ++i) {
            const int level = scale.schemeLevel(static_cast<int>(i));
            m_colours.at(i) = GeneralUtilities::PaletteColour(static_cast<quint8>(level), scheme);
        }
        refresh();
    }
    void setGrid(Hertz resolution, Hertz start, Hertz stop) {
        m_grid.setDataResolution(resolution);
        gridChanged();
        if (m_grid.setScanStart(start)) {
            gridChanged();
            m_rows.clearRows();
        }
        if (m_grid.setScanStop(stop)) {
            gridChanged();
            m_rows.clearRows();
        }
    }
    void lookFrom(qint32 row) {
        m_rows.lookFrom(row);
        redraw();
    }
    void rewind(qint16 count) {
        if (count == 0 || !m_rows.step(count)) {
            return;
        }
        if (count < 0) {
            m_scans.zeroPeaks();
        }
        for (qint32 bin = 0; bin < m_grid.binCount(); ++bin) {
            m_scans.setLevel(bin, m_rows.level(bin, m_rows.playRow()));
        }
        m_rows.centreOnPlayRow(layout().fallHeight());
        redraw();
    }

private:
    void gridChanged() {
        m_scans.reset(m_grid.binCount());
        drawAxes();
    }
    void advance(float time) {
        m_rows.AdvanceRows(time, 0.0F, [this](bool) {
            if (displayType == DisplayTypeCode::TraceAndWaterfall) {
                redraw();
            }
        });
    }
    [[nodiscard]] float timeOfPeaks() {
        if (!m_rows.playback()) {
            return m_clock.timeOfDay();
        }
        double time = static_cast<double>(m_rows.playbackTime()) -
                      m_rows.poll() * static_cast<double>(m_rows.playRow()) / 1000.0;
        while (time < 0.0) {
            time += 86400.0;
        }
        return static_cast<float>(time);
    }
    void wipeAndDrawAxes() {
        m_drawn = PlainPicture(width, height, density);
        m_drawn.axes(AxisPlan::of({layout(), m_grid, scale, displayType, m_rows.update(),
                                   m_rows.rowInterval(), m_rows.nextRowTime(), m_rows.firstRow(),
                                   [this](const QString &text) {
                                       return m_box.textWidth(text);
                                   }}),
                     m_box);
    }
    void paintScan() {
        const ChartLayout l = layout();
        if (l.plotWidth() > 1) {
            const PlainPicture::Trace trace{m_scans.current(), m_grid.cellCount(), scale,
                                            m_peak ? &m_scans.peaks() : nullptr};
            if (spreads()) {
                m_drawn.spread(l, trace);
            } else {
                m_drawn.gather(l, trace);
            }
            if (displayType == DisplayTypeCode::TraceAndWaterfall) {
                paintWaterfall(l);
            }
        }
        m_shown = m_drawn;
    }
    void paintWaterfall(const ChartLayout &l) {
        m_rows.limitFirstRow(l.fallHeight());
        if (m_grid.cellCount() <= WaterfallStore::kWidth) {
            m_drawn.waterfall(l, m_grid.cellCount(), [this](int column, int row) {
                return m_colours[m_rows.level(column, m_rows.firstRow() + row)];
            });
        }
    }

    Clock &m_clock;
    const PictureBox &m_box;
    BinGrid m_grid;
    ScanStore m_scans;
    WaterfallStore m_rows;
    bool m_peak = false;
    std::array<quint32, 256> m_colours{};
    PlainPicture m_drawn;
    PlainPicture m_shown;
};

} // namespace veldron
