// SPDX-License-Identifier: MIT
// The whole window on screens of several densities: each pixel of the picture is a block of device
// pixels with sharp edges, wherever in the window it lies.
#include "tests/app/ScreensFixture.h"

#include "chart/ChartLayout.h"
#include "settings/PalettePreview.h"
#include "utilities/Colour.h"
#include "utilities/Palette.h"

#include <QSet>

namespace veldron {
namespace {

/// First device pixel of pixel \a at: halves go up.
int edge(int at, double density) {
    return static_cast<int>(std::floor(at * density + 0.5));
}

class WindowScreens : public ScreensFixture, public testing::WithParamInterface<double> {
protected:
    /// Peaks and valleys side by side, over rows of all colours.
    void showBusyPicture() {
        startUp();
        chart().setMarkerEn(false); // its text is drawn at full resolution
        chart().setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        chart().setUpdate(1);
        for (int row = 0; row < 60; ++row) {
            chart().SetData(levels(row));
            chart().Refresh();
            m_clock.advance(1.0);
            chart().onTimer1();
        }
        QApplication::processEvents();
    }
    [[nodiscard]] static LevelScan levels(int row) {
        LevelScan scan(321, 0);
        for (std::size_t bin = 0; bin < scan.size(); ++bin) {
            scan[bin] =
                static_cast<quint8>(45 + (bin * 37 + static_cast<std::size_t>(row) * 53) % 80);
        }
        return scan;
    }
    [[nodiscard]] QWidget &picture() const { return *chart().findChild<QWidget *>("Picture1"); }
    /// A widget of its own, which the toolkit rounds to device pixels apart from the picture.
    [[nodiscard]] QWidget &lineOfReceiver() const { return *chart().findChild<QWidget *>("Line2"); }
    [[nodiscard]] QImage withoutLine() const {
        lineOfReceiver().hide();
        QApplication::processEvents();
        return onScreen(*m_form);
    }
    /// The parts of the picture without texts: those of the trace and of the waterfall.
    [[nodiscard]] std::vector<QRect> plots() const {
        const ChartLayout layout = ChartLayout::of(picture().width(), picture().height(),
                                                   chart().DisplayType(), chart().SplitFraction());
        return {layout.plotInside(), layout.fallArea()};
    }
    [[nodiscard]] QPoint pictureAt() const { return picture().mapTo(m_form.get(), QPoint()); }
};

TEST_P(WindowScreens, plots_areTheBlocksOfTheirPixels) {
    showBusyPicture();
    const QImage pixels = withoutLine();
    goTo(GetParam());
    const QImage blocks = withoutLine();
    const QPoint place(edge(pictureAt().x(), GetParam()), edge(pictureAt().y(), GetParam()));
    for (const QRect &plot : plots()) {
        QSet<QRgb> colours;
        int smeared = 0;
        for (int y = plot.top(); y <= plot.bottom(); ++y) {
            for (int x = plot.left(); x <= plot.right(); ++x) {
                const QRgb colour = pixels.pixel(pictureAt() + QPoint(x, y));
                colours.insert(colour);
                const QRect block(QPoint(edge(x, GetParam()), edge(y, GetParam())),
                                  QPoint(edge(x + 1, GetParam()) - 1, edge(y + 1, GetParam()) - 1));
                for (const QPoint corner : {block.topLeft(), block.bottomRight()}) {
                    smeared += blocks.pixel(place + corner) == colour ? 0 : 1;
                }
            }
        }
        EXPECT_EQ(smeared, 0) << plot.top();
        EXPECT_GT(colours.size(), 1) << plot.top();
    }
}

TEST_P(WindowScreens, lineOverThePicture_isSharpAndAsWideAsAPixel) {
    startUp();
    goTo(GetParam());
    ASSERT_TRUE(lineOfReceiver().isVisible());
    const QPoint top = lineOfReceiver().mapTo(m_form.get(), QPoint(0, 40));
    const QImage shown = onScreen(*m_form);
    const QRgb ground = shown.pixel(edge(top.x() - 20, GetParam()), edge(top.y(), GetParam()));
    QSet<QRgb> colours;
    int width = 0;
    for (int x = edge(top.x() - 20, GetParam()); x < edge(top.x() + 20, GetParam()); ++x) {
        const QRgb colour = shown.pixel(x, edge(top.y(), GetParam()));
        colours.insert(colour);
        width += colour == ground ? 0 : 1;
    }
    EXPECT_EQ(colours.size(), 2);
    EXPECT_GE(width, 1);
    EXPECT_LE(width, std::ceil(GetParam()));
}

TEST_P(WindowScreens, previewOfColours_hasNoMixedColumns) {
    startUp();
    goTo(GetParam());
    pickDialog("mnuSettingsDisplay", [this](QDialog &dialog) {
        QApplication::processEvents();
        const auto &preview = *dialog.findChild<PalettePreview *>();
        QSet<QRgb> colours;
        for (int x = 0; x < preview.width(); ++x) {
            const quint8 level = PalettePreview::levelOfColumn(x, preview.width());
            colours.insert(QColor::fromRgb(toRgb(GeneralUtilities::PaletteColour(
                                               level, displaySettings().values().PaletteIndex)))
                               .rgb());
        }
        const QImage shown = onScreen(dialog);
        const QPoint at = preview.mapTo(&dialog, QPoint());
        const int row = edge(at.y() + preview.height() / 2, GetParam());
        const int end = edge(at.x() + preview.width(), GetParam());
        for (int x = edge(at.x(), GetParam()); x < end; ++x) {
            EXPECT_TRUE(colours.contains(shown.pixel(x, row))) << x;
        }
        EXPECT_GT(colours.size(), 50);
    });
}

INSTANTIATE_TEST_SUITE_P(Densities, WindowScreens, testing::Values(1.0, 1.25, 1.5, 2.0));

} // namespace
} // namespace veldron
