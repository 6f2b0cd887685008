// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/RecordingSummary.h"

#include <QByteArray>
#include <QString>

namespace veldron {

/// The summary of the recording \a name for people, a page of lines.
[[nodiscard]] QString pageOf(const RecordingSummary &summary, const QString &name);

/// The same for scripts: one JSON object. Levels are in dB, frequencies in hertz, moments in ISO
/// form without a zone (they are the local time of the machine that recorded).
[[nodiscard]] QByteArray jsonOf(const RecordingSummary &summary, const QString &name);

} // namespace veldron
