// SPDX-License-Identifier: MIT
#include "recordings/PngExport.h"

#include "chart/ChartColours.h"
#include "chart/PixelSurface.h"
#include "recordings/CommandError.h"
#include "recordings/FailedTransfer.h"
#include "recordings/PictureAxes.h"
#include "utilities/Colour.h"
#include "utilities/Palette.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QHash>
#include <QImage>
#include <QList>
#include <QPainter>

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>
#include <utility>

namespace veldron {

namespace {

/// Between two dots of a time line.
constexpr int kDotPitch = 8;
/// Of a scan's poll interval: it may come late by as much again.
constexpr qint64 kPatience = 2;
constexpr int kFontHeight = 12;
/// Of 0 to 100: quick, and some percent larger than the smallest.
constexpr int kPngQuality = 85;
constexpr quint32 kMedianColour = 0x0000FF00;

/// What draws texts needs an application, and a font, but no screen.
void needApplication() {
    if (qGuiApp == nullptr) {
        static int count = 1;
        static std::array<char, 8> name{"export"};
        static std::array<char *, 2> arguments{name.data(), nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // What the toolkit says of a session that isn't there doesn't concern the user.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        static const QGuiApplication application(count, arguments.data());
    }
}

using Counts = WaterfallRaster::Counts;

bool isThere(quint64 count) {
    return count > 0;
}

// Levels of a column, for one where some were counted.
int weakestOf(const Counts &counts) {
    return static_cast<int>(std::find_if(counts.begin(), counts.end(), isThere) - counts.begin());
}
int strongestOf(const Counts &counts) {
    return static_cast<int>(counts.rend() - std::find_if(counts.rbegin(), counts.rend(), isThere)) -
           1;
}
/// The one that half of them don't exceed.
int medianOf(const Counts &counts) {
    const quint64 total = std::accumulate(counts.begin(), counts.end(), quint64{0});
    quint64 below = 0;
    int raw = 0;
    while (raw < 255 && (below += counts.at(static_cast<std::size_t>(raw))) * 2 < total) {
        ++raw;
    }
    return raw;
}

struct Curve {
    int (*levelOf)(const Counts &);
    quint32 colour;
};
/// In the order in which they are drawn: where they meet, the last one shows.
constexpr std::array kCurves{Curve{weakestOf, ChartColours::kFrame}, Curve{medianOf, kMedianColour},
                             Curve{strongestOf, ChartColours::kPeak}};

QRect placed(const PictureAxes::Label &label, QSize size) {
    using Anchor = PictureAxes::Label::Anchor;
    QRect area({0, 0}, size);
    area.moveCenter(label.at);
    if (label.anchor == Anchor::Right) {
        area.moveRight(label.at.x());
    }
    return area;
}

/// Halves the number of greys in \a area, with black and white as they are, so that all colours of
/// a picture have room in a table.
void thinOutGreys(QImage &picture, const QRect &area) {
    const QRect inside = area.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        for (int x = inside.left(); x <= inside.right(); ++x) {
            line[x] = (line[x] & 0xFFFEFEFEU) | (line[x] >> 7U & 0x00010101U);
        }
    }
}

/// The same picture with a table of its colours: a third of the bytes to compress. As it is where
/// it has more than the 256 that fit into a table.
QImage withColourTable(const QImage &picture) {
    constexpr int kMostColours = 256;
    QHash<QRgb, uchar> numbers;
    QList<QRgb> colours;
    QImage indexed(picture.size(), QImage::Format_Indexed8);
    for (int y = 0; y < picture.height(); ++y) {
        const auto *const from = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        uchar *const to = indexed.scanLine(y);
        for (int x = 0; x < picture.width(); ++x) {
            // Neighbours are alike for the most part.
            if (x > 0 && from[x] == from[x - 1]) {
                to[x] = to[x - 1];
                continue;
            }
            auto found = numbers.constFind(from[x]);
            if (found == numbers.constEnd()) {
                if (colours.size() == kMostColours) {
                    return picture;
                }
                found = numbers.insert(from[x], static_cast<uchar>(colours.size()));
                colours.append(from[x]);
            }
            to[x] = *found;
        }
    }
    indexed.setColorTable(colours);
    return indexed;
}

/// Each column reaches as far as the one before it, so that a steep slope has no holes.
void drawCurve(QImage &picture, const QRect &area, const WaterfallRaster &raster,
               const Curve &curve) {
    std::optional<int> before;
    for (int column = 0; column < area.width(); ++column) {
        const Counts &counts = raster.counts(column);
        if (std::none_of(counts.begin(), counts.end(), isThere)) {
            before.reset();
            continue;
        }
        const int y =
            qBound(area.top(), LevelScale().rowOf(curve.levelOf(counts), area.top(), area.bottom()),
                   area.bottom());
        const int from = before.value_or(y);
        const int join = from < y ? from + 1 : from > y ? from - 1 : y;
        for (int at = qMin(y, join); at <= qMax(y, join); ++at) {
            picture.setPixel(area.left() + column, at, toRgb(curve.colour));
        }
        before = y;
    }
}

} // namespace

PngExport::PngExport(const std::string &file, TimeWindow window, Console &console, OutputFile &out,
                     const PictureOptions &options, const RecordingExtent &extent)
    : RecordingExport(file, std::move(window), console), m_out(out),
      m_options(options), m_extent{extent.begin(), extent.end(), options.low.value_or(extent.low()),
                                   options.high.value_or(extent.high())},
      m_palette(options.palette.value_or(static_cast<qint16>(
          extent.palette().value_or(static_cast<qint64>(PaletteCode::Spectrum6))))) {
    const QRect area = PictureLayout::of(options.size, options.hasAxes, options.hasTrace).fall;
    if (area.width() < 1 || area.height() < 1 || m_extent.high < m_extent.low) {
        throw CommandError(ExitCode::WrongUsage,
                           QStringLiteral("the size or the frequencies leave nothing to draw"));
    }
    m_raster = std::make_unique<WaterfallRaster>(area.width(), area.height(), m_extent);
    if (options.hasTrace) {
        m_raster->beginCounting();
    }
}

void PngExport::settingsChanged() {
    const qint64 poll =
        std::clamp<qint64>(settings().number(SettingsKey::Poll).value_or(0), 0, 65535);
    m_interval = kPatience * (poll / 1000 + 1);
}

void PngExport::take(const RecordedScan &scan) {
    if (scan.date && axis() && !isFailedTransfer(scan.levels)) {
        m_raster->take(momentOf(*scan.date, scan.second), m_interval, *axis(), scan.levels);
    }
}

void PngExport::writePicture() {
    m_raster->finish();
    const PictureLayout layout =
        PictureLayout::of(m_options.size, m_options.hasAxes, m_options.hasTrace);
    QImage picture(m_options.size, QImage::Format_RGB32);
    picture.fill(toRgb(ChartColours::kBackground));
    drawWaterfall(picture, layout.fall);
    if (m_options.hasTrace) {
        drawTrace(picture, layout.trace);
    }
    if (m_options.hasAxes) {
        drawAxes(picture, layout);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    withColourTable(picture).save(&buffer, "PNG", kPngQuality);
    m_out.write(bytes);
}

void PngExport::drawWaterfall(QImage &picture, const QRect &area) const {
    std::array<QRgb, 256> colours{};
    for (std::size_t raw = 0; raw < colours.size(); ++raw) {
        const quint8 level = LevelScale().schemeLevel(static_cast<int>(raw));
        colours.at(raw) = toRgb(GeneralUtilities::PaletteColour(level, m_palette));
    }
    for (int y = 0; y < area.height(); ++y) {
        const std::uint8_t *const row = m_raster->row(y);
        auto *const line = reinterpret_cast<QRgb *>(picture.scanLine(area.top() + y));
        for (int x = 0; x < area.width(); ++x) {
            line[area.left() + x] = colours[row[x]];
        }
    }
}

void PngExport::drawTrace(QImage &picture, const QRect &area) const {
    for (const Curve &curve : kCurves) {
        drawCurve(picture, area, *m_raster, curve);
    }
}

void PngExport::drawAxes(QImage &picture, const PictureLayout &layout) const {
    needApplication();
    const PictureAxes axes = PictureAxes::of(m_options.size, layout, m_extent, LevelScale());
    for (const int y : axes.timeRows) {
        for (int x = layout.fall.left(); x <= layout.fall.right(); x += kDotPitch) {
            picture.setPixel(x, y, toRgb(ChartColours::kFrame));
        }
    }
    QList<QRect> texts;
    QPainter painter(&picture);
    for (const PlannedLine &line : axes.lines) {
        painter.fillRect(PixelSurface::lineArea(line.from, line.to), QColor(toRgb(line.colour)));
    }
    // The default font may have serifs, which are hard to read at this size.
    QFont font(QStringLiteral("sans-serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kFontHeight);
    painter.setFont(font);
    painter.setPen(QColor(toRgb(ChartColours::kAxis)));
    for (const PictureAxes::Label &label : axes.labels) {
        const QSize size = painter.fontMetrics().size(Qt::TextSingleLine, label.text);
        texts.append(placed(label, size));
        painter.drawText(texts.last(), Qt::AlignCenter | Qt::TextDontClip, label.text);
    }
    painter.end();
    for (const QRect &area : texts) {
        thinOutGreys(picture, area);
    }
}

} // namespace veldron
