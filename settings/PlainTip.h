// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// \a text as a tool tip that shows it as it stands. The toolkit has no plain format for tool tips,
/// and takes what looks like mark-up for mark-up; file names, names of processes and what the unit
/// sends may look so.
[[nodiscard]] QString plainTip(const QString &text);

} // namespace veldron
