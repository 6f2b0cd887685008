// SPDX-License-Identifier: MIT
// Draws the picture of the splash form: a spectrum over its waterfall, as a simulated unit scans
// it, in 16 colours. The same scene gives the same file, byte for byte.
//
// Usage: make_splash <file.png>

#include "simulator/Scene.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <vector>

namespace veldron {
namespace {

constexpr int kWidth = 2146;
constexpr int kHeight = 972;
constexpr int kTraceHeight = 396; ///< the spectrum; a rule and the waterfall stand below it
constexpr int kRuleHeight = 4;
constexpr int kWaterfallTop = kTraceHeight + kRuleHeight;
constexpr int kRowHeight = 4;
constexpr int kTraceThickness = 5;
constexpr int kGridLines = 5;
constexpr double kLowestLevel = 38.0; ///< the scale of trace and colours, raw levels
constexpr double kHighestLevel = 96.0;

constexpr quint64 kSeed = 1;
constexpr double kSecondsPerRow = 1.0;

/// Indexes of the colour table; the waterfall's colours fill its rest.
enum Ink : quint8 { Paper, Grid, Fill, Trace, FirstColour };
constexpr int kColours = 16;
constexpr int kWaterfallColours = kColours - FirstColour;

constexpr std::array<std::array<quint8, 3>, kColours> kPalette{{
    {12, 14, 24},
    {44, 50, 70},
    {30, 70, 92},
    {236, 240, 120},
    {20, 12, 70},
    {24, 22, 110},
    {22, 40, 150},
    {16, 72, 180},
    {10, 112, 186},
    {10, 152, 160},
    {24, 182, 110},
    {96, 204, 56},
    {184, 214, 34},
    {240, 186, 24},
    {246, 116, 20},
    {236, 36, 24},
}};

class Picture {
public:
    void set(int x, int y, int ink) {
        if (y >= 0 && y < kHeight) {
            m_inks[indexOf(x, y)] = static_cast<quint8>(ink);
        }
    }
    void column(int x, int top, int bottom, int ink) {
        for (int y = top; y < bottom; ++y) {
            set(x, y, ink);
        }
    }
    /// The lines as they stand in the file: no filter, two pixels a byte.
    [[nodiscard]] QByteArray packed() const {
        QByteArray bytes;
        for (int y = 0; y < kHeight; ++y) {
            bytes.append('\0');
            for (int x = 0; x < kWidth; x += 2) {
                bytes.append(static_cast<char>(at(x, y) * kColours + at(x + 1, y)));
            }
        }
        return bytes;
    }

private:
    [[nodiscard]] int at(int x, int y) const { return m_inks[indexOf(x, y)]; }
    [[nodiscard]] static std::size_t indexOf(int x, int y) {
        return static_cast<std::size_t>(y) * kWidth + static_cast<std::size_t>(x);
    }

    std::vector<quint8> m_inks = std::vector<quint8>(std::size_t{kWidth} * kHeight, Paper);
};

LevelScan scanAt(double seconds, quint64 turn) {
    static const Scene scene(kSeed);
    static const UnitSettings settings;
    ScanWay way;
    way.bandwidthHz = settings.bandwidthHz();
    way.amplitude = settings.amplitude();
    return scene.scan(settings.plan(), way, seconds, turn);
}

int levelAt(const LevelScan &scan, int x) {
    return scan[static_cast<std::size_t>(x) * scan.size() / kWidth];
}

/// Share of the scale, 0 to 1.
double shareOf(double level) {
    return std::clamp((level - kLowestLevel) / (kHighestLevel - kLowestLevel), 0.0, 1.0);
}

void drawGrid(Picture &picture) {
    for (int line = 1; line <= kGridLines; ++line) {
        const int y = kTraceHeight * line / (kGridLines + 1);
        for (int x = 0; x < kWidth; ++x) {
            picture.column(x, y, y + 2, Grid);
        }
    }
    for (int line = 1; line < 10; ++line) {
        for (int x = kWidth * line / 10; x < kWidth * line / 10 + 2; ++x) {
            picture.column(x, 0, kTraceHeight, Grid);
        }
    }
}

void drawTrace(Picture &picture, const LevelScan &scan) {
    std::optional<int> before;
    for (int x = 0; x < kWidth; ++x) {
        const double share = shareOf(levelAt(scan, x));
        const int y = kTraceHeight - 12 - static_cast<int>(share * (kTraceHeight - 32));
        picture.column(x, y, kTraceHeight, Fill);
        const int from = std::min(y, before.value_or(y));
        const int to = std::max(y, before.value_or(y)) + kTraceThickness;
        for (int side = 0; side < kTraceThickness; ++side) {
            picture.column(std::max(0, x - side), from, to, Trace);
        }
        before = y;
    }
}

void drawWaterfall(Picture &picture) {
    quint64 turn = 1;
    for (int top = kWaterfallTop; top < kHeight; top += kRowHeight, ++turn) {
        const LevelScan scan = scanAt(static_cast<double>(turn) * -kSecondsPerRow, turn);
        for (int x = 0; x < kWidth; ++x) {
            const int step = static_cast<int>(shareOf(levelAt(scan, x)) * kWaterfallColours);
            picture.column(x, top, top + kRowHeight,
                           FirstColour + std::min(step, kWaterfallColours - 1));
        }
    }
}

QByteArray bigEndian(quint32 value) {
    QByteArray bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        bytes.append(static_cast<char>((value >> shift) & 0xFFU));
    }
    return bytes;
}

quint32 crcOf(const QByteArray &bytes) {
    quint32 crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

QByteArray chunk(const QByteArray &name, const QByteArray &data) {
    return bigEndian(static_cast<quint32>(data.size())) + name + data +
           bigEndian(crcOf(name + data));
}

/// A PNG file of 4 bits a pixel with a colour table.
QByteArray pngOf(const Picture &picture) {
    QByteArray palette;
    for (const auto &colour : kPalette) {
        for (const quint8 channel : colour) {
            palette.append(static_cast<char>(channel));
        }
    }
    const QByteArray format("\x04\x03\x00\x00\x00", 5);
    // The compressed stream comes behind four bytes of its length.
    const QByteArray pixels = qCompress(picture.packed(), 9).mid(4);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) +
           chunk("IHDR", bigEndian(kWidth) + bigEndian(kHeight) + format) + chunk("PLTE", palette) +
           chunk("IDAT", pixels) + chunk("IEND", QByteArray());
}

} // namespace
} // namespace veldron

int main(int argc, char **argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_splash <file.png>\n");
        return 2;
    }
    veldron::Picture picture;
    veldron::drawGrid(picture);
    veldron::drawTrace(picture, veldron::scanAt(0.0, 0));
    veldron::drawWaterfall(picture);
    QFile file(QString::fromLocal8Bit(argv[1]));
    const QByteArray png = veldron::pngOf(picture);
    if (!file.open(QIODevice::WriteOnly) || file.write(png) != png.size() || !file.flush()) {
        std::fprintf(stderr, "make_splash: can't write %s\n", argv[1]);
        return 1;
    }
    return 0;
}
