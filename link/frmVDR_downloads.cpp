// SPDX-License-Identifier: MIT
// What follows a reply as raw bytes: scans, and the large block at the high line speed.
#include "link/frmVDR.h"

#include <algorithm>

namespace veldron {

namespace {

constexpr float kQuietLimitSeconds = 1.0F;

constexpr std::size_t kFullScan = 321;
constexpr std::size_t kTerminatorLength = 3;
constexpr std::size_t kFullFrame = kFullScan + kTerminatorLength;
/// One more than a frame; what comes back when too little arrived to be cut.
constexpr std::size_t kScanStore = kFullFrame + 1;

/// A few bytes are let come in before the next look: at 9600 baud one comes each 1.1 ms, and waking
/// for each of a frame would cost more processor time than all else that is done with it.
constexpr int kGatherMilliseconds = 6;

constexpr qsizetype kBlockStore = 168041;
constexpr qsizetype kBlockEnd = 168036;
constexpr qint16 kRequestToSend = 2;
constexpr qint16 kBlockReceiveThreshold = 500;

/// The bytes of one frame as they come in.
class ScanFrame {
public:
    /// Stores \a chunk up to the end of the frame. True when the frame has ended; the rest of the
    /// chunk is then dropped.
    bool take(const QByteArray &chunk) {
        return std::any_of(chunk.begin(), chunk.end(), [this](char byte) { return store(byte); });
    }
    /// The samples. Three bytes count as the terminator whatever they are, but a frame of no more
    /// than one sample stays as it is, zeros included.
    [[nodiscard]] LevelScan samples() && {
        if (m_count > kTerminatorLength + 1) {
            m_levels.resize(m_count - kTerminatorLength);
        }
        return std::move(m_levels);
    }

private:
    bool store(char byte) {
        m_levels[m_count] = static_cast<std::uint8_t>(byte);
        ++m_count;
        return m_count >= kFullFrame || (m_count > kTerminatorLength && endsInTerminator());
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
    if (!SendCommand(QStringLiteral("RIFD"))) {
        return LevelScan(1);
    }
    ScanFrame frame;
    // The limit is one of silence: each chunk starts it anew.
    float lastArrival = m_clock.timeOfDay();
    bool ended = false;
    while (!ended && elapsedSince(lastArrival) < kQuietLimitSeconds) {
        const QByteArray chunk = m_control.Input();
        if (chunk.isEmpty()) {
            park();
            continue;
        }
        lastArrival = m_clock.timeOfDay();
        ended = frame.take(chunk);
        if (!ended) {
            m_clock.rest(kGatherMilliseconds);
        }
    }
    return std::move(frame).samples();
}

QByteArray frmVDR::GetGraphic() {
    QByteArray block(kBlockStore, '\0');
    // Whether the unit took the command shows in the block alone.
    static_cast<void>(SendCommand(QStringLiteral("RVIM")));
    m_control.setPortOpen(false);
    m_control.setSettings(QStringLiteral("115200,N,8,1"));
    m_control.setHandshaking(kRequestToSend);
    m_control.setRThreshold(kBlockReceiveThreshold);
    m_control.setSThreshold(0);
    m_control.setRTSEnable(true);
    // A port that does not open again reads as silence.
    m_control.setPortOpen(true);
    readGraphic(block);
    m_control.setPortOpen(false);
    m_control.setSettings(QStringLiteral("9600,N,8,2"));
    m_control.setPortOpen(true);
    return block;
}

void frmVDR::readGraphic(QByteArray &block) {
    float lastArrival = m_clock.timeOfDay();
    qsizetype count = 0;
    while (count < kBlockEnd && elapsedSince(lastArrival) < kQuietLimitSeconds) {
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
