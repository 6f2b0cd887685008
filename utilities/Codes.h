// SPDX-License-Identifier: MIT
// The codes that several folders share, with the numbers that the unit speaks on the wire.
//
// Any other number that the unit or a file may hold is representable too: a cast takes it in, and
// whoever gets it decides what it stands for. A read that failed gives -1.
#pragma once

#include <QtGlobal>

namespace veldron {

/// What the unit scans. In Channel each of the numbers start, step and end stands alone; in the
/// two others they are worked out from the centre and the span.
enum class MonitorModeCode : qint16 { None = 0, Spectrum = 1, Step = 2, Channel = 3 };

/// What the unit makes of the scans before it sends one.
enum class DataModeCode : qint16 { None = 0, Normal = 1, Average = 2, Max = 3, Median = 4 };

/// Whether \a mode works on a number of scans, which the unit calls samples.
[[nodiscard]] constexpr bool hasSamples(DataModeCode mode) {
    return mode == DataModeCode::Average || mode == DataModeCode::Median;
}

} // namespace veldron
