// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <deque>
#include <optional>

namespace veldron {

/// Bytes that leave together, after a pause.
struct Portion {
    QByteArray bytes;
    double pause = 0.0; ///< seconds of quiet before the first byte
    bool image = false; ///< at the line speed of the image download
};

/// Bytes on their way out, each let go at the moment at which the line would have carried it.
///
/// Byte k (from 0) of a portion is through k + 1 byte times after the portion began; a portion
/// begins when the line is free and its pause is over. Time is given from outside, in seconds that
/// never go back.
class ReplyQueue {
public:
    /// Eight data bits with start bit, no parity and two stop bits.
    static constexpr int kBitsPerByte = 11;
    static constexpr int kBaud = 9600;
    /// The image download's line: one stop bit.
    static constexpr int kImageBitsPerByte = 10;
    static constexpr int kImageBaud = 115200;

    /// \a baud 0 lets everything go at once, but for pauses.
    explicit ReplyQueue(int baud = kBaud);

    void add(const Portion &portion, double now);
    /// All bytes that are through by \a now.
    [[nodiscard]] QByteArray takeDue(double now);
    /// When the next byte is through; nothing when no byte is on its way.
    [[nodiscard]] std::optional<double> nextDue() const;
    [[nodiscard]] bool isEmpty() const { return m_runs.empty(); }
    /// Drops what is on its way; the line is free at once.
    void clear();

private:
    struct Run {
        QByteArray bytes;
        double begin = 0.0;
        double secondsPerByte = 0.0;
        qsizetype sent = 0;

        [[nodiscard]] double due(qsizetype index) const {
            return begin + static_cast<double>(index + 1) * secondsPerByte;
        }
    };

    int m_baud;
    double m_lineFree = 0.0;
    std::deque<Run> m_runs;
};

} // namespace veldron
