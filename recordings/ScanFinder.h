// SPDX-License-Identifier: MIT
#pragma once

#include "format/SettingsKeys.h"
#include "recordings/TimeForms.h"

#include <QByteArrayView>

#include <array>
#include <optional>

namespace veldron {

/// A settings line that \a bytes begin with.
struct SettingsLineFit {
    SettingsKey key{};
    qsizetype length = 0; ///< with the line end
    QByteArrayView value;
};

/// The settings line that \a rest begins with; nothing where that is none, or none of a length that
/// a setting may have. \a isAll says that the file ends with \a rest.
[[nodiscard]] std::optional<SettingsLineFit> settingsLineAt(QByteArrayView rest, bool isAll);

/// Finds where a scan ends. Its line is the key, the levels, a blank, a time text and a line end,
/// and the levels may hold any byte; so the blank and the time are looked for first where the
/// length of the neighbours puts them, once some of them had the same one. Where they aren't there,
/// the nearest place counts at which a time text, a line end and a known key (or the end of the
/// file) follow each other.
class ScanFinder {
public:
    struct Fit {
        qsizetype levels;
        qsizetype timeLength;
        qsizetype length; ///< of the line, with its end
        TimeForms::Reading time;
        bool isFollowed; ///< by a known key or the end of the file
    };
    /// Bytes of the key with its blank.
    static constexpr qsizetype kKeyLength = 5;
    /// Levels of the longest scan that is ever recorded.
    static constexpr qsizetype kMostLevels = 325;

    /// Whether \a rest begins with the key of a scan.
    [[nodiscard]] static bool isScanKey(QByteArrayView rest);
    /// The scan that \a rest begins with. \a isAll says that the file ends with \a rest; otherwise
    /// there are at least some hundred bytes.
    [[nodiscard]] std::optional<Fit> find(QByteArrayView rest, bool isAll) const;
    /// Which neighbours' lengths count: those that several scans had, or any.
    enum class Trust { Run, Any };
    /// The same, where the length of a neighbour fits and a known key follows.
    [[nodiscard]] std::optional<Fit> findByNeighbours(QByteArrayView rest, bool isAll,
                                                      Trust trust) const;
    /// Notes a scan that was found: its length, and the forms that times may still have.
    void note(const Fit &fit);

private:
    [[nodiscard]] std::optional<Fit> findNearest(QByteArrayView rest, bool isAll) const;
    [[nodiscard]] std::optional<Fit> fitOf(QByteArrayView rest, bool isAll, qsizetype levels) const;

    struct Neighbour {
        qsizetype levels;
        int run; ///< scans of this length one behind the other
    };

    /// The last scan, and the last one that was of another length. Where lengths change from scan
    /// to scan, two short scans may happen to end where one of a neighbour's length would, so only
    /// a run is trusted to tell where to look first.
    std::array<Neighbour, 2> m_neighbours{{{321, 0}, {1, 0}}};
    TimeForms::Set m_forms = TimeForms::all();
};

} // namespace veldron
