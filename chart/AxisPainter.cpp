// SPDX-License-Identifier: MIT
#include "chart/AxisPainter.h"

#include "chart/ChartColours.h"

#include <algorithm>
#include <functional>
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

bool intersectsAny(const std::vector<QRect> &areas, const QRect &other) {
    return std::any_of(areas.begin(), areas.end(),
                       [&](const QRect &area) { return area.intersects(other); });
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

bool AxisPainter::replace(PixelSurface &surface, const AxisPlan &plan,
                          const std::vector<QRect> &erased, const std::vector<QRect> &inside) {
    if (surface.generation() != m_generation) {
        return false;
    }
    std::vector<Label> labels = measured(plan.texts);
    std::vector<QRect> areas = erased;
    areas.push_back(difference(plan.lines, labels));
    areas.erase(std::remove_if(areas.begin(), areas.end(), std::mem_fn(&QRect::isEmpty)),
                areas.end());
    // Behind all other areas, each of which may cut labels.
    addCutLabels(areas, labels);
    for (const QRect &kept : inside) {
        if (intersectsAny(areas, kept)) {
            return false;
        }
    }
    m_lines = plan.lines;
    m_labels = std::move(labels);
    repaint(surface, areas);
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
// themselves, would come out thicker. The area of a label that is cut may itself cut another one.
void AxisPainter::addCutLabels(std::vector<QRect> &areas, const std::vector<Label> &labels) {
    for (bool grown = true; grown;) {
        grown = false;
        for (const Label &label : labels) {
            const bool isWhole = std::any_of(areas.begin(), areas.end(), [&](const QRect &area) {
                return area.contains(label.area);
            });
            if (!isWhole && intersectsAny(areas, label.area)) {
                areas.push_back(label.area);
                grown = true;
            }
        }
    }
}

// Areas may overlap, so each step is made in all of them before the next one.
void AxisPainter::repaint(PixelSurface &surface, const std::vector<QRect> &areas) const {
    for (const QRect &area : areas) {
        surface.fill(area, ChartColours::kBackground);
    }
    for (const PlannedLine &line : m_lines) {
        for (const QRect &area : areas) {
            surface.fill(areaOf(line) & area, line.colour);
        }
    }
    std::vector<PlannedText> within;
    for (const Label &label : m_labels) {
        if (intersectsAny(areas, label.area)) {
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
