// SPDX-License-Identifier: MIT
#pragma once

#include "chart/CursorShape.h"

namespace veldron {

/// The override cursor of the whole screen: one owner for all who change its shape.
///
/// The toolkit stacks override cursors; this keeps at most one of them, so that Default always
/// brings the ordinary cursor back. Needs a QGuiApplication. The last shape set wins.
class ScreenCursor {
public:
    ScreenCursor() = default;
    ScreenCursor(const ScreenCursor &) = delete;
    ScreenCursor &operator=(const ScreenCursor &) = delete;
    /// Leaves the screen with its ordinary cursor.
    ~ScreenCursor();

    void setShape(CursorShape shape);

private:
    CursorShape m_shape = CursorShape::Default;
};

} // namespace veldron
