// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/ByteSource.h"
#include "recordings/RecordingVisitor.h"

#include <QByteArrayView>

#include <vector>

namespace veldron {

/// The stretch of a file that is in memory, with room for what lies ahead, and its place.
///
/// Order of calls: fill(), then bytes() and advance() as often as is wanted. What was in sight
/// stays in memory behind an advance(), up to the next fill().
class ByteWindow {
public:
    /// At least this many bytes are in sight after fill(), or all up to the end.
    static constexpr qsizetype kSight = 4096;

    explicit ByteWindow(ByteSource &source);

    /// Reads on where less than kSight is in sight.
    void fill();
    /// What is in sight. Valid up to the next fill().
    [[nodiscard]] QByteArrayView bytes() const {
        return {m_buffer.data() + m_begin, m_end - m_begin};
    }
    /// Whether bytes() reaches to the end of the file.
    [[nodiscard]] bool reachesEnd() const { return m_sourceIsEmpty; }
    /// Leaves \a count bytes behind.
    void advance(qsizetype count);
    /// Where the bytes in sight begin.
    [[nodiscard]] RecordedPlace place() const { return m_place; }
    /// The byte in front of them, 0 at the beginning of the file.
    [[nodiscard]] char previous() const { return m_previous; }

private:
    ByteSource &m_source;
    std::vector<char> m_buffer;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    bool m_sourceIsEmpty = false;
    RecordedPlace m_place;
    char m_previous = 0;
};

/// How many lines end within \a bytes. \a previous is the byte in front of them: an LF behind a CR
/// ends no line of its own.
[[nodiscard]] qint64 lineEndsIn(QByteArrayView bytes, char previous);

} // namespace veldron
