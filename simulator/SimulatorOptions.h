// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ReplyQueue.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace veldron {

/// The command line of the simulator, with what holds where an option is missing. helpText() says
/// what each means.
struct SimulatorOptions {
    QString port; ///< where the link is made; never empty unless help is wanted
    int baud = ReplyQueue::kBaud;
    int bunch = 1; ///< bytes handed over together
    quint64 seed = 1;
    bool anyByte = false;
    QString logFile;
    bool logScans = false;
    bool exitOnEof = false;
    bool help = false;

    /// Reads \a arguments, the program's name not among them. Nothing, with a reason in \a error,
    /// if they make no sense.
    [[nodiscard]] static std::optional<SimulatorOptions> read(const QStringList &arguments,
                                                              QString &error);
    [[nodiscard]] static QByteArray helpText();
};

} // namespace veldron
