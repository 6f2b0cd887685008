// SPDX-License-Identifier: MIT
#include "simulator/ReplyQueue.h"

#include <algorithm>

namespace veldron {

ReplyQueue::ReplyQueue(int baud, int bunch) : m_baud(baud), m_bunch(bunch) {}

void ReplyQueue::add(const Portion &portion, double now) {
    double secondsPerByte = 0.0;
    if (m_baud > 0) {
        secondsPerByte =
            portion.image ? double(kImageBitsPerByte) / kImageBaud : double(kBitsPerByte) / m_baud;
    }
    const double begin = std::max(now, m_lineFree) + portion.pause;
    const Run run{portion.bytes, begin, secondsPerByte, m_bunch, 0};
    m_lineFree = portion.bytes.isEmpty() ? begin : run.due(portion.bytes.size() - 1);
    if (!portion.bytes.isEmpty()) {
        m_runs.push_back(run);
    }
}

QByteArray ReplyQueue::takeDue(double now) {
    QByteArray taken;
    while (!m_runs.empty()) {
        Run &run = m_runs.front();
        qsizetype upTo = run.sent;
        while (upTo < run.bytes.size() && run.due(upTo) <= now) {
            ++upTo;
        }
        taken += run.bytes.mid(run.sent, upTo - run.sent);
        run.sent = upTo;
        if (upTo < run.bytes.size()) {
            break;
        }
        m_runs.pop_front();
    }
    return taken;
}

std::optional<double> ReplyQueue::nextDue() const {
    if (m_runs.empty()) {
        return std::nullopt;
    }
    return m_runs.front().due(m_runs.front().sent);
}

void ReplyQueue::clear() {
    m_runs.clear();
    m_lineFree = 0.0;
}

} // namespace veldron
