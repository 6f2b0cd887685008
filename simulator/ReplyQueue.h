// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <deque>
#include <optional>

namespace veldron {

/// Bytes that leave together, after a pause.
struct Portion {
    QByteArray bytes;
    double pause = 0.0; ///< seconds of quiet before the first byte
    bool image = false; ///< at the line speed of the image download
};

/// Bytes waiting to be sent, each released at the moment at which a real line would have carried
/// it.
///
/// Byte k (from 0) of a portion is released k + 1 byte times after the portion began; a portion
/// begins when the line is free and its pause is over. With bunches, as USB adapters hand bytes
/// over, a byte waits for the last one of its bunch or of the portion. The caller gives the time,
/// in seconds that never go back.
class ReplyQueue {
public:
    /// Eight data bits with start bit, no parity and two stop bits.
    static constexpr int kBitsPerByte = 11;
    static constexpr int kBaud = 9600;
    /// The image download's line: one stop bit.
    static constexpr int kImageBitsPerByte = 10;
    static constexpr int kImageBaud = 115200;

    /// With \a baud 0 everything but the pauses takes no time. \a bunch is 1 or more bytes.
    explicit ReplyQueue(int baud = kBaud, int bunch = 1);

    /// Behind what waits already; an empty portion only keeps the line quiet for its pause.
    void add(const Portion &portion, double now);
    /// All bytes released by \a now.
    [[nodiscard]] QByteArray takeDue(double now);
    /// When the next byte is released; nothing when no byte waits.
    [[nodiscard]] std::optional<double> nextDue() const;
    /// Drops what waits; the line is free at once.
    void clear();

private:
    /// A portion on its way out.
    struct Run {
        QByteArray bytes;
        double begin = 0.0;
        double secondsPerByte = 0.0;
        int bunch = 1;
        qsizetype sent = 0;

        /// When byte \a index is released: with the last byte of its bunch.
        [[nodiscard]] double due(qsizetype index) const {
            const qsizetype through = std::min((index / bunch + 1) * bunch, bytes.size());
            return begin + static_cast<double>(through) * secondsPerByte;
        }
    };

    int m_baud;
    int m_bunch;
    double m_lineFree = 0.0;
    std::deque<Run> m_runs;
};

} // namespace veldron
