// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"
#include "recordings/OutputFile.h"
#include "recordings/RecordingExtent.h"
#include "recordings/WaterfallRaster.h"

#include <QSize>

#include <memory>
#include <optional>

class QImage;
class QRect;

namespace veldron {

struct PictureLayout;

/// How a picture shall look.
struct PictureOptions {
    /// Of the whole picture, axes included, in pixels.
    QSize size{1280, 800};
    std::optional<Hertz> low; ///< nothing: as the recording
    std::optional<Hertz> high;
    std::optional<qint16> palette; ///< nothing: that of the recording
    bool hasTrace = false;
    bool hasAxes = true;
};

/// Draws the waterfall of a recording, in the colours of the chart: the second pass, behind a
/// RecordingExtent that told what there is to show. writePicture() takes the place of finish(),
/// whose messages the first pass has given.
class PngExport : public RecordingExport {
public:
    /// \a out outlives the export. CommandError where the size or the frequencies leave nothing to
    /// draw.
    PngExport(const std::string &file, TimeWindow window, Console &console, OutputFile &out,
              const PictureOptions &options, const RecordingExtent &extent);

    /// The first pass has told them.
    void finding(const RecordingFinding & /*finding*/) override {}
    /// Ends the picture, behind the end of the recording, and writes it.
    void writePicture();

protected:
    void settingsChanged() override;
    void take(const RecordedScan &scan) override;

private:
    void drawWaterfall(QImage &picture, const QRect &area) const;
    /// The weakest, the median and the strongest level of each column.
    void drawTrace(QImage &picture, const QRect &area) const;
    void drawAxes(QImage &picture, const PictureLayout &layout) const;

    OutputFile &m_out;
    PictureOptions m_options;
    WaterfallRaster::Extent m_extent;
    std::unique_ptr<WaterfallRaster> m_raster;
    /// Seconds that a scan lasts at most where none follows: twice its poll period, which is taken
    /// up to a whole second first.
    qint64 m_interval = 1;
    qint16 m_palette;
};

} // namespace veldron
