// SPDX-License-Identifier: MIT
#include "recordings/ByteWindow.h"

#include <cstring>

namespace veldron {

namespace {

constexpr qsizetype kBufferSize = 65536;

/// Calls \a body with the place of each \a byte.
template <typename Body>
void forEach(char byte, QByteArrayView bytes, const Body &body) {
    const char *place = bytes.data();
    const char *const end = place + bytes.size();
    while (place < end) {
        place = static_cast<const char *>(
            std::memchr(place, byte, static_cast<std::size_t>(end - place)));
        if (place == nullptr) {
            return;
        }
        body(place - bytes.data());
        ++place;
    }
}

} // namespace

qint64 lineEndsIn(QByteArrayView bytes, char previous) {
    qint64 count = 0;
    forEach('\r', bytes, [&](qsizetype /*place*/) { ++count; });
    forEach('\n', bytes, [&](qsizetype place) {
        count += (place > 0 ? bytes[place - 1] : previous) == '\r' ? 0 : 1;
    });
    return count;
}

ByteWindow::ByteWindow(ByteSource &source) : m_source(source), m_buffer(kBufferSize) {}

void ByteWindow::fill() {
    if (m_sourceIsEmpty || m_end - m_begin >= kSight) {
        return;
    }
    std::memmove(m_buffer.data(), m_buffer.data() + m_begin,
                 static_cast<std::size_t>(m_end - m_begin));
    m_end -= m_begin;
    m_begin = 0;
    // A pipe may give a few bytes at a time.
    while (!m_sourceIsEmpty && m_end < kSight) {
        const qint64 count = m_source.read(m_buffer.data() + m_end, kBufferSize - m_end);
        m_sourceIsEmpty = count == 0;
        m_end += count;
    }
}

void ByteWindow::advance(qsizetype count) {
    if (count == 0) {
        return;
    }
    const QByteArrayView left = bytes().first(count);
    m_place.line += lineEndsIn(left, m_previous);
    m_place.offset += count;
    m_previous = left.back();
    m_begin += count;
}

} // namespace veldron
