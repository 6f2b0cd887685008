// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Unit.h"

#include <QByteArray>

#include <functional>
#include <utility>

namespace veldron {

/// The record of the exchanges, one line each:
///
///     > "RIFD\r\n"                                  what the unit heard
///     < "IFD321 \r\n"                               a line that it sent, spoilt or not
///     = scan 321 bytes, 45 to 96, ended             the samples behind it, "unended" without
///                                                   terminator, and then the samples in hex
///     = image 168036 bytes
///     ! silent                                      what went wrong, or was done by hand
///
/// Bytes outside printable ASCII stand as \r, \n or \xNN.
class TrafficLog {
public:
    using Sink = std::function<void(const QByteArray &line)>;

    /// A log that nobody reads.
    TrafficLog() = default;
    /// \a sink takes each line without an end; \a withScans adds the samples.
    TrafficLog(Sink sink, bool withScans) : m_sink(std::move(sink)), m_withScans(withScans) {}

    void heard(const QByteArray &line) const;
    void said(const UnitReply &reply) const;
    void noted(const QByteArray &text) const;

private:
    Sink m_sink;
    bool m_withScans = false;
};

/// \a bytes in double quotes, readable in one line.
[[nodiscard]] QByteArray quotedBytes(const QByteArray &bytes);

} // namespace veldron
