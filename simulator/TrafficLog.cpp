// SPDX-License-Identifier: MIT
#include "simulator/TrafficLog.h"

#include <algorithm>
#include <cstdint>

namespace veldron {

namespace {

QByteArray describeScan(const QByteArray &samples, bool ended) {
    QByteArray text = "scan " + QByteArray::number(samples.size()) + " bytes";
    if (!samples.isEmpty()) {
        const auto lower = [](char a, char b) {
            return static_cast<std::uint8_t>(a) < static_cast<std::uint8_t>(b);
        };
        const auto [low, high] = std::minmax_element(samples.begin(), samples.end(), lower);
        text += ", " + QByteArray::number(static_cast<std::uint8_t>(*low)) + " to " +
                QByteArray::number(static_cast<std::uint8_t>(*high));
    }
    return text + (ended ? ", ended" : ", unended");
}

} // namespace

QByteArray quotedBytes(const QByteArray &bytes) {
    QByteArray text = "\"";
    for (const char c : bytes) {
        if (c == '\r') {
            text += "\\r";
        } else if (c == '\n') {
            text += "\\n";
        } else if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (c < ' ' || c > '~') {
            text += "\\x" + QByteArray(1, c).toHex();
        } else {
            text += c;
        }
    }
    return text + "\"";
}

void TrafficLog::heard(const QByteArray &line) const {
    if (m_sink) {
        m_sink("> " + quotedBytes(line));
    }
}

void TrafficLog::said(const UnitReply &reply) const {
    if (!m_sink) {
        return;
    }
    if (!reply.text.isEmpty()) {
        m_sink("< " + quotedBytes(reply.text));
    }
    if (!reply.samples.isEmpty() || !reply.terminator.isEmpty()) {
        const QByteArray hex = m_withScans ? ": " + reply.samples.toHex() : QByteArray();
        m_sink("= " + describeScan(reply.samples, !reply.terminator.isEmpty()) + hex);
    }
    if (!reply.image.isEmpty()) {
        m_sink("= image " + QByteArray::number(reply.image.size()) + " bytes");
    }
}

void TrafficLog::noted(const QByteArray &text) const {
    if (m_sink) {
        m_sink("! " + text);
    }
}

} // namespace veldron
