// SPDX-License-Identifier: MIT
// What follows a reply line as raw bytes: scans, and the image block at the high line speed.
#include "link/frmVDR.h"

#include "common/WaitLimit.h"
#include "link/Wire.h"

#include <algorithm>
#include <cmath>

namespace veldron {

namespace {

/// One more than a frame: what comes back when too little arrived to be cut.
constexpr std::size_t kScanStore = Wire::kFullFrame + 1;

/// Between two looks at the line, so that several bytes come in at once: waking up for each one of
/// a frame would cost more processor time than everything else that is done with it. Longer than a
/// USB adapter takes to collect 16 bytes, so that each look finds some.
constexpr qint64 kGatherMilliseconds = 20;
/// The same in a frame that takes longer than the line would.
constexpr qint64 kLateGatherMilliseconds = 5;

/// How long to gather when a full frame will be whole in \a left milliseconds.
int gatherMilliseconds(qint64 left) {
    return static_cast<int>(left > 0 ? std::min(left, kGatherMilliseconds)
                                     : kLateGatherMilliseconds);
}

/// The bytes of one frame as they come in.
class ScanFrame {
public:
    /// Stores \a chunk up to the end of the frame. True when the frame has ended; the rest of the
    /// chunk is then dropped.
    bool take(const QByteArray &chunk) {
        return std::any_of(chunk.begin(), chunk.end(), [this](char byte) { return store(byte); });
    }
    [[nodiscard]] bool isEmpty() const { return m_count == 0; }
    /// How long the line takes for what is missing of a full frame.
    [[nodiscard]] qint64 missingMilliseconds() const {
        const auto missing = static_cast<double>(Wire::kFullFrame - m_count);
        return static_cast<qint64>(std::ceil(missing * Wire::kMillisecondsPerByte));
    }
    /// The samples. Three bytes count as the terminator whatever they are, but a frame of no more
    /// than one sample stays as it is, zeros included.
    [[nodiscard]] LevelScan samples() && {
        if (m_count > Wire::kTerminatorLength + 1) {
            m_levels.resize(m_count - Wire::kTerminatorLength);
        }
        return std::move(m_levels);
    }

private:
    bool store(char byte) {
        m_levels[m_count] = static_cast<std::uint8_t>(byte);
        ++m_count;
        return m_count >= Wire::kFullFrame ||
               (m_count > Wire::kTerminatorLength && endsInTerminator());
    }
    [[nodiscard]] bool endsInTerminator() const {
        return m_levels[m_count - 3] == ' ' && m_levels[m_count - 2] == '\r' &&
               m_levels[m_count - 1] == '\n';
    }

    LevelScan m_levels = LevelScan(kScanStore);
    std::size_t m_count = 0;
};

} // namespace

LevelScan frmVDR::GetData() {
    if (!SendCommand(QLatin1String(Wire::kReadScan))) {
        return LevelScan(1);
    }
    ScanFrame frame;
    // Taken behind the header: the limit is one of silence, and each chunk starts it anew.
    float lastArrival = m_clock.timeOfDay();
    const WaitLimit longest(m_clock);
    bool ended = false;
    qint64 wholeAt = 0;
    while (!ended && elapsedSince(lastArrival) < Wire::kQuietLimitSeconds && !longest.isReached()) {
        const QByteArray chunk = m_control.Input();
        if (chunk.isEmpty()) {
            park();
            continue;
        }
        lastArrival = m_clock.timeOfDay();
        const bool isFirst = frame.isEmpty();
        ended = frame.take(chunk);
        const qint64 now = m_clock.steadyMilliseconds();
        if (isFirst) {
            wholeAt = now + frame.missingMilliseconds();
        }
        if (!ended) {
            m_clock.rest(gatherMilliseconds(wholeAt - now));
        }
    }
    return std::move(frame).samples();
}

QByteArray frmVDR::GetGraphic() {
    QByteArray block(Wire::kImageStore, '\0');
    // The result says nothing: a unit that refused sends no block, and the block stays zero.
    static_cast<void>(SendCommand(QLatin1String(Wire::kReadImage)));
    m_control.setPortOpen(false);
    m_control.setSettings(QLatin1String(Wire::kImageLine));
    m_control.setHandshaking(Wire::kRequestToSend);
    m_control.setRThreshold(Wire::kImageReceiveThreshold);
    m_control.setSThreshold(0);
    m_control.setRTSEnable(true);
    // A port that does not open again reads as silence.
    m_control.setPortOpen(true);
    readGraphic(block);
    m_control.setPortOpen(false);
    m_control.setSettings(QLatin1String(Wire::kTextLineAfterImage));
    m_control.setPortOpen(true);
    return block;
}

void frmVDR::readGraphic(QByteArray &block) {
    float lastArrival = m_clock.timeOfDay();
    const WaitLimit longest(m_clock);
    qsizetype count = 0;
    while (count < Wire::kImageSize && elapsedSince(lastArrival) < Wire::kQuietLimitSeconds &&
           !longest.isReached()) {
        const QByteArray chunk = m_control.Input();
        if (!chunk.isEmpty()) {
            lastArrival = m_clock.timeOfDay();
            const qsizetype kept = std::min(chunk.size(), block.size() - count);
            std::copy_n(chunk.begin(), kept, block.begin() + count);
            count += kept;
        }
        if (m_control.InBufferCount() <= 0 && !m_control.RTSEnable()) {
            m_control.setRTSEnable(true);
        }
        if (chunk.isEmpty()) {
            park();
        }
    }
}

} // namespace veldron
