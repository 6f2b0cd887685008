// SPDX-License-Identifier: MIT
#pragma once

#include "link/frmVDR.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingLinkHost.h"
#include "tests/support/ScriptedSerialControl.h"

#include <gtest/gtest.h>

#include <ostream>

/// Shows the text in a failed comparison.
inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << bytes.toPercentEncoding(" ?").toStdString();
}

namespace veldron {

inline void PrintTo(const Hertz &value, std::ostream *out) {
    *out << value.toText().toStdString() << " Hz";
}

/// The link with its protected members made public.
class OpenedVDR : public frmVDR {
public:
    using frmVDR::frmVDR;
    using frmVDR::LastReply;
    using frmVDR::ReportCommsFailure;
    using frmVDR::SendCommand;
    using frmVDR::settings;
};

/// Seconds that an exchange waits for stale bytes before it sends its command.
inline constexpr double kStaleQuiet = 0.002;

/// A link over a scripted line, at 10:00, with no port open.
class LinkFixture : public testing::Test {
protected:
    /// Opens COM 3 and brings the link up; the records are empty afterwards.
    void bringUp() {
        vdr.setCommPort(3);
        control.queueReply(QStringLiteral("RIVE"), "IVE Ver 2.01 \r\n");
        vdr.Connect();
        control.clearCommands();
        control.clearWrites();
    }
    /// Sends \a command, to which the unit answers \a reply.
    bool exchange(const QString &command, const QByteArray &reply) {
        control.queueReply(command, reply);
        return vdr.SendCommand(command);
    }

    ManualClock clock{36000.0};
    ScriptedSerialControl control{clock};
    RecordingLinkHost host;
    OpenedVDR vdr{control, clock, host};
};

} // namespace veldron
