// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>

#include <vector>

namespace veldron {

/// The chart's picture on the screen, read back: how high the trace stands in each column.
///
/// Works out the places by itself, from what a user can know: the margins of 40, 10, 15 and 30
/// pixels, a scale of 60 dB from -90 dB, 321 levels over the plot.
class ChartPicture {
public:
    /// \a place is where the picture is on the screen, \a waterfall whether the plot has only the
    /// upper half of it.
    ChartPicture(const QImage &screen, QRect place, bool waterfall = false);

    [[nodiscard]] int plotWidth() const { return m_plot.width(); }
    /// Height of the trace in each column of the plot, in pixels; -1 where a marker's line hides
    /// it.
    [[nodiscard]] std::vector<int> traceHeights() const;
    /// Columns in which the trace doesn't stand as \a scan asks for, with \a cells steps across.
    [[nodiscard]] int wrongColumns(const QByteArray &scan, int cells = 320) const;
    /// True if every pixel of the plot above the trace and below the marker's read-out is black.
    [[nodiscard]] bool isBlackAboveTrace() const;
    /// Height of the trace at a place from 0 to 1 across the plot: the highest of a few columns.
    [[nodiscard]] int heightAt(double share) const;
    /// Number of different colours in the waterfall, one row of pixels in four.
    [[nodiscard]] int waterfallColours() const;
    /// Rows of pixels in the waterfall that show a scan: blank ones have one colour.
    [[nodiscard]] int scanRows() const;
    /// Blank rows of pixels that have rows with a scan both above and below them.
    [[nodiscard]] int blankRowsBetween() const;
    /// Raw levels of a row of pixels in the waterfall, from the top, one a cell of a full scan; in
    /// the palette from black to white, and limited to the scale.
    [[nodiscard]] QByteArray fallLevels(int row) const;
    [[nodiscard]] int fallHeight() const;
    /// Rows of the waterfall, from the top, at which the time axis has a tick with a label.
    [[nodiscard]] std::vector<int> labelledTicks() const;
    /// True if the label at a tick of the time axis is \a text, pixel for pixel.
    [[nodiscard]] bool hasTimeLabel(int tick, const QString &text) const;
    /// A raw level limited to those that the scale can show.
    [[nodiscard]] static int shownLevel(int level);
    /// Height that a raw level has, in pixels.
    [[nodiscard]] int heightOf(int level) const;

    [[nodiscard]] const QImage &image() const { return m_image; }

private:
    /// For each row of pixels of the waterfall, from the top, whether it shows a scan.
    [[nodiscard]] std::vector<bool> rowsWithScan() const;
    [[nodiscard]] int fallTop() const;

    QImage m_image;
    QRect m_plot; ///< from the column beside the axis to the last, from the top to the axis
};

} // namespace veldron
