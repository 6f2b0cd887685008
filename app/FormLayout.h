// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QSize>

namespace veldron {

/// Where the form puts its strips and the chart, in pixels of its inside. Pure arithmetic.
///
/// From top to bottom: the strip of panels, the strip of the transport while it is visible, the
/// chart, the status bar. The chart gets all that the others leave.
struct FormLayout {
    /// What the layout is worked out from.
    struct Input {
        QSize inside;           ///< of the form, below the menus, status bar included
        int picture1Bottom = 0; ///< lower edge of the strip of panels: top plus height
        int picture2Height = 0; ///< height of the transport's strip
        bool picture2Visible = false;
        int statusBarHeight = 0;
        QSize chart; ///< the chart's size before; kept where the form has no room for it
    };

    /// Upper edge of the transport's strip, worked out also while it is hidden.
    int picture2Top = 0;
    QRect chart;

    [[nodiscard]] static FormLayout of(const Input &input);
};

/// What a window can have of a screen with \a screen free for windows, without its frame.
[[nodiscard]] QSize roomForWindow(QSize screen);

/// The inside's size at which the form opens, menus included. \a least is the smallest that the
/// form can be.
[[nodiscard]] QSize openingSize(QSize screen, QSize least);

} // namespace veldron
