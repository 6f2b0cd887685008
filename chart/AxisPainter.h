// SPDX-License-Identifier: MIT
#pragma once

#include "chart/AxisPlan.h"
#include "chart/PixelSurface.h"

#include <QRect>

#include <functional>
#include <utility>
#include <vector>

namespace veldron {

/// How labels are measured and printed; the picture, which knows the font, hands it down.
struct LabelPrinter {
    /// The pixels that a label may touch.
    std::function<QRect(const PlannedText &)> area;
    std::function<void(PixelSurface &, const std::vector<PlannedText> &)> print;
};

/// Paints the axes, and paints them again by replacing only what differs.
///
/// Both ways leave the same pixels. It keeps what it painted last as a cache, which another
/// generation of the surface invalidates.
class AxisPainter {
public:
    explicit AxisPainter(LabelPrinter printer) : m_printer(std::move(printer)) {}

    /// Paints \a plan over the one that stands in \a surface. The areas of \a erased, some of which
    /// may be empty, are cleared as well. False, and nothing painted, when that isn't possible
    /// without touching one of \a inside: then paintWhole() is to be called.
    bool replace(PixelSurface &surface, const AxisPlan &plan, const std::vector<QRect> &erased,
                 const std::vector<QRect> &inside);
    /// Wipes the surface but \a inside, and paints \a plan. Those who own what is inside paint it
    /// over in the same turn. Fills the cache anew.
    void paintWhole(PixelSurface &surface, const AxisPlan &plan, const std::vector<QRect> &inside);

private:
    struct Label {
        PlannedText text;
        QRect area;

        /// The area follows from the text, so it is not compared.
        friend bool operator==(const Label &one, const Label &other) {
            return one.text == other.text;
        }
    };

    [[nodiscard]] std::vector<Label> measured(const std::vector<PlannedText> &texts) const;
    /// A rectangle around all that stands in one of the two plans only.
    [[nodiscard]] QRect difference(const std::vector<PlannedLine> &lines,
                                   const std::vector<Label> &labels) const;
    /// Adds the whole area of each label that one of \a areas cuts.
    static void addCutLabels(std::vector<QRect> &areas, const std::vector<Label> &labels);
    /// Wipes \a areas and paints what of the plan lies in them.
    void repaint(PixelSurface &surface, const std::vector<QRect> &areas) const;

    LabelPrinter m_printer;
    quint64 m_generation = 0; // of the surface; 0 is none
    std::vector<PlannedLine> m_lines;
    std::vector<Label> m_labels;
};

} // namespace veldron
