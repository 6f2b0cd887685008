// SPDX-License-Identifier: MIT
#include "chart/AxisPainter.h"

#include "chart/ChartColours.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace veldron {

namespace {

// Calls \a visit with each element of either list that lies between their common beginning and
// their common end. The lists are of the same make, and what differs lies together.
template <typename Element, typename Visit>
void visitDifference(const std::vector<Element> &one, const std::vector<Element> &other,
                     Visit visit) {
    const auto [first, otherFirst] =
        std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    const auto [last, otherLast] =
        std::mismatch(one.rbegin(), std::make_reverse_iterator(first), other.rbegin(),
                      std::make_reverse_iterator(otherFirst));
    std::for_each(first, last.base(), visit);
    std::for_each(otherFirst, otherLast.base(), visit);
}

QRect areaOf(const PlannedLine &line) {
    return PixelSurface::lineArea(line.from, line.to);
}

} // namespace

void AxisPainter::paintWhole(PixelSurface &surface, const AxisPlan &plan,
                             const std::vector<QRect> &inside) {
    surface.clearAround(inside);
    m_generation = surface.generation();
    m_lines = plan.lines;
    m_labels = measured(plan.texts);
    for (const PlannedLine &line : plan.lines) {
        surface.line(line.from, line.to, line.colour);
    }
    m_printer.print(surface, plan.texts);
}

bool AxisPainter::replace(PixelSurface &surface, const AxisPlan &plan, const QRect &erased,
                          const std::vector<QRect> &inside) {
    if (surface.generation() != m_generation) {
        return false;
    }
    std::vector<Label> labels = measured(plan.texts);
    const std::array areas{grownToLabels(erased, labels),
                           grownToLabels(difference(plan.lines, labels), labels)};
    for (const QRect &area : areas) {
        for (const QRect &kept : inside) {
            if (area.intersects(kept)) {
                return false;
            }
        }
    }
    m_lines = plan.lines;
    m_labels = std::move(labels);
    for (const QRect &area : areas) {
        repaint(surface, area);
    }
    return true;
}

QRect AxisPainter::difference(const std::vector<PlannedLine> &lines,
                              const std::vector<Label> &labels) const {
    QRect area;
    visitDifference(m_lines, lines, [&](const PlannedLine &line) { area |= areaOf(line); });
    visitDifference(m_labels, labels, [&](const Label &label) { area |= label.area; });
    return area;
}

// A label is printed whole or not at all: its smoothed edges, printed a second time over
// themselves, would come out thicker.
QRect AxisPainter::grownToLabels(QRect area, const std::vector<Label> &labels) {
    for (bool grown = true; grown;) {
        grown = false;
        for (const Label &label : labels) {
            if (area.intersects(label.area) && !area.contains(label.area)) {
                area |= label.area;
                grown = true;
            }
        }
    }
    return area;
}

void AxisPainter::repaint(PixelSurface &surface, const QRect &area) const {
    surface.fill(area, ChartColours::kBackground);
    for (const PlannedLine &line : m_lines) {
        surface.fill(areaOf(line) & area, line.colour);
    }
    std::vector<PlannedText> within;
    for (const Label &label : m_labels) {
        if (area.contains(label.area)) {
            within.push_back(label.text);
        }
    }
    m_printer.print(surface, within);
}

std::vector<AxisPainter::Label> AxisPainter::measured(const std::vector<PlannedText> &texts) const {
    std::vector<Label> labels;
    labels.reserve(texts.size());
    for (const PlannedText &text : texts) {
        labels.push_back({text, m_printer.area(text)});
    }
    return labels;
}

} // namespace veldron
