// SPDX-License-Identifier: MIT
#pragma once

#include "chart/PointerShape.h"

namespace veldron {

/// The pointer's shape for the whole screen: one holder for all who change it.
///
/// The toolkit stacks override cursors; this keeps at most one of them, so that Default always
/// brings the ordinary pointer back. Needs a QGuiApplication. The last shape set wins.
class ScreenPointer {
public:
    ScreenPointer() = default;
    ScreenPointer(const ScreenPointer &) = delete;
    ScreenPointer &operator=(const ScreenPointer &) = delete;
    /// Leaves the screen with its ordinary pointer.
    ~ScreenPointer();

    void setShape(PointerShape shape);
    [[nodiscard]] PointerShape shape() const { return m_shape; }

private:
    PointerShape m_shape = PointerShape::Default;
};

} // namespace veldron
