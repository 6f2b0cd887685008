// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// What the chart shows, by the numbers of its DisplayType. Any other number leaves room for a
/// waterfall and draws none.
enum class DisplayTypeCode : qint16 {
    Trace = 0,
    TraceAndWaterfall = 1,
};

[[nodiscard]] constexpr DisplayTypeCode displayTypeWith(bool waterfall) {
    return waterfall ? DisplayTypeCode::TraceAndWaterfall : DisplayTypeCode::Trace;
}

} // namespace veldron
