// SPDX-License-Identifier: MIT
// The pictures of the transport's buttons: shapes, not pixels, so that they are sharp at any
// density.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPolygonF>
#include <QSize>

#include <vector>

namespace veldron {

/// The shape on a button of the playback transport.
enum class PlaybackShape {
    DoubleArrow, ///< continuous play, twice as wide as high
    Bars,        ///< pause
    ArrowRight,  ///< step forward
    ArrowLeft,   ///< step back
    Cross,       ///< stop playback
};

namespace PlaybackPicture {

/// Height of every picture; its width is this or, for the double arrow, twice this. In pixels of
/// the control.
inline constexpr int kHeight = 16;

[[nodiscard]] QSize sizeOf(PlaybackShape shape);

/// The closed outlines to fill, in units of the picture (sizeOf wide and high).
[[nodiscard]] std::vector<QPolygonF> outlinesOf(PlaybackShape shape);

/// An icon that draws \a shape anew at whatever size and density it is asked for: in \a colour, or
/// in the palette's colour of button texts if there is none or the button is disabled.
[[nodiscard]] QIcon icon(PlaybackShape shape, const QColor &colour = {});

} // namespace PlaybackPicture

} // namespace veldron
