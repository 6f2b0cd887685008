// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace veldron {

/// The forms of time texts that the recorder writes, over all locales of the system.
///
/// A recording doesn't tell its locale, but all its times have one form. A Set holds the forms that
/// are still possible, a bit each: begin with all(), and go on with the set that each text leaves.
/// Several forms may fit a text; all of them then tell the same time.
class TimeForms {
public:
    using Set = std::uint32_t;
    struct Reading {
        Set forms;     ///< those that fit
        qint32 second; ///< of the day, 0 to 86399
    };
    /// No time text is longer, in bytes.
    static constexpr qsizetype kLongest = 32;

    [[nodiscard]] static Set all();
    /// The time that the whole \a text is in one of the forms of \a among.
    [[nodiscard]] static std::optional<Reading> read(QByteArrayView text, Set among);
    /// Whether a text of one of the forms of \a among may begin with all of \a text and go on.
    [[nodiscard]] static bool mayGoOn(QByteArrayView text, Set among);
};

} // namespace veldron
