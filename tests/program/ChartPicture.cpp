// SPDX-License-Identifier: MIT
#include "tests/program/ChartPicture.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace veldron {

namespace {

constexpr int kLeft = 40;
constexpr int kTop = 10;
constexpr int kRight = 15;
constexpr int kBottom = 30;
constexpr int kFoot = 5;
constexpr double kSplit = 0.5;
constexpr int kLevelOffset = -132;
constexpr int kScaleStart = -90;
constexpr int kScaleSpan = 60;
constexpr int kCells = 320;
/// Length of a tick with a label, and the room that the label has at its left.
constexpr int kLongTick = 6;
constexpr int kLabelPixels = 11;
/// The marker's read-out covers the upper end of the plot.
constexpr int kReadOut = 24;

/// Nothing narrower than that is a plot.
constexpr std::size_t kNarrowest = 100;

constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kYellow = qRgb(255, 255, 0);
constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kWhite = qRgb(255, 255, 255);

int evenRounded(double value) {
    return static_cast<int>(std::nearbyint(value));
}

} // namespace

ChartPicture::ChartPicture(const QImage &screen, QRect place, bool waterfall)
    : m_image(screen.copy(place)) {
    const int end = waterfall ? evenRounded(place.height() * kSplit) : place.height();
    m_plot = QRect(QPoint(kLeft, kTop), QPoint(place.width() - kRight - 1, end - kBottom));
}

int ChartPicture::heightOf(int level) const {
    const int bottom = m_plot.bottom();
    const double share = double(level + kLevelOffset - kScaleStart) / kScaleSpan;
    const int row = evenRounded(share * (m_plot.top() - bottom) + bottom);
    return bottom - std::clamp(row, m_plot.top(), bottom);
}

std::vector<int> ChartPicture::traceHeights() const {
    std::vector<int> heights;
    for (int x = m_plot.left(); x <= m_plot.right(); ++x) {
        int y = m_plot.bottom();
        while (y > m_plot.top() && m_image.pixel(x, y) == kRed) {
            --y;
        }
        const QRgb above = m_image.pixel(x, y);
        const bool isMarked = above != kRed && above != kBlack && above != kYellow;
        heights.push_back(isMarked ? -1 : m_plot.bottom() - y);
    }
    return heights;
}

int ChartPicture::wrongColumns(const QByteArray &scan, int cells) const {
    const std::vector<int> heights = traceHeights();
    const int most = m_plot.height() - kReadOut;
    int wrong = scan.isEmpty() || heights.size() < kNarrowest ? 1 : 0;
    for (std::size_t column = 0; column < heights.size(); ++column) {
        const auto bin = static_cast<qsizetype>(double(column) / double(heights.size()) * cells);
        if (bin >= scan.size() || heights[column] < 0) {
            continue;
        }
        const int expected = heightOf(static_cast<quint8>(scan.at(bin)));
        wrong += std::min(expected, most) != std::min(heights[column], most) ? 1 : 0;
    }
    return wrong;
}

bool ChartPicture::isBlackAboveTrace() const {
    const std::vector<int> heights = traceHeights();
    for (std::size_t column = 0; column < heights.size(); ++column) {
        const int x = m_plot.left() + static_cast<int>(column);
        const int end = m_plot.bottom() - heights[column];
        for (int y = m_plot.top() + kReadOut; heights[column] >= 0 && y < end; ++y) {
            if (m_image.pixel(x, y) != kBlack) {
                return false;
            }
        }
    }
    return true;
}

int ChartPicture::heightAt(double share) const {
    constexpr int kReach = 8;
    const std::vector<int> heights = traceHeights();
    const int middle = static_cast<int>(share * double(heights.size()));
    int highest = 0;
    for (int x = middle - kReach; x <= middle + kReach; ++x) {
        if (x >= 0 && x < static_cast<int>(heights.size())) {
            highest = std::max(highest, heights[static_cast<std::size_t>(x)]);
        }
    }
    return highest;
}

int ChartPicture::waterfallColours() const {
    constexpr int kStride = 4;
    QSet<QRgb> colours;
    for (int y = m_plot.bottom() + kBottom + kFoot + 1; y < m_image.height() - kFoot;
         y += kStride) {
        for (int x = m_plot.left(); x <= m_plot.right(); ++x) {
            colours.insert(m_image.pixel(x, y));
        }
    }
    return static_cast<int>(colours.size());
}

std::vector<bool> ChartPicture::rowsWithScan() const {
    constexpr int kFewestColours = 8;
    std::vector<bool> rows;
    for (int y = m_plot.bottom() + kBottom + kFoot + 1; y < m_image.height() - kFoot; ++y) {
        QSet<QRgb> colours;
        for (int x = m_plot.left(); x <= m_plot.right() && colours.size() < kFewestColours; ++x) {
            colours.insert(m_image.pixel(x, y));
        }
        rows.push_back(colours.size() >= kFewestColours);
    }
    return rows;
}

int ChartPicture::scanRows() const {
    const std::vector<bool> rows = rowsWithScan();
    return static_cast<int>(std::count(rows.begin(), rows.end(), true));
}

int ChartPicture::blankRowsBetween() const {
    const std::vector<bool> rows = rowsWithScan();
    const auto first = std::find(rows.begin(), rows.end(), true);
    const auto last = std::find(rows.rbegin(), rows.rend(), true).base();
    return first == rows.end() ? 0 : static_cast<int>(std::count(first, last, false));
}

int ChartPicture::fallTop() const {
    return m_plot.bottom() + kBottom + kFoot;
}

int ChartPicture::fallHeight() const {
    return m_image.height() - kFoot - fallTop();
}

int ChartPicture::shownLevel(int level) {
    return std::clamp(level, kScaleStart - kLevelOffset, kScaleStart - kLevelOffset + kScaleSpan);
}

QByteArray ChartPicture::fallLevels(int row) const {
    QByteArray levels;
    for (int cell = 0; cell < kCells; ++cell) {
        const int x = m_plot.left() + (2 * cell + 1) * m_plot.width() / (2 * kCells);
        const int grey = qGray(m_image.pixel(x, fallTop() + row));
        levels.append(static_cast<char>(evenRounded(grey * double(kScaleSpan) / 255.0) +
                                        kScaleStart - kLevelOffset));
    }
    return levels;
}

std::vector<int> ChartPicture::labelledTicks() const {
    std::vector<int> ticks;
    for (int row = 0; row < fallHeight(); ++row) {
        if (m_image.pixel(m_plot.left() - kLongTick, fallTop() + row) == kWhite) {
            ticks.push_back(row);
        }
    }
    return ticks;
}

bool ChartPicture::hasTimeLabel(int tick, const QString &text) const {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(kLabelPixels);
    const QFontMetrics metrics(font);
    QImage label(metrics.horizontalAdvance(text), metrics.height(), QImage::Format_RGB32);
    label.fill(kBlack);
    QPainter painter(&label);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(kWhite));
    painter.drawText(0, metrics.ascent(), text);
    painter.end();
    constexpr int kHalfLine = 8;
    return m_image.copy(QRect(QPoint(0, fallTop() + tick - kHalfLine), label.size())) == label;
}

} // namespace veldron
