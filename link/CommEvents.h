// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

namespace veldron {

/// An event number of the serial control and its name: below 1000 events of the line, above it
/// errors. QtSerialControl raises number 2 alone, and nothing acts on any of them.
struct CommEventName {
    qint16 event;
    const char *name;
};
inline constexpr std::array<CommEventName, 14> kCommEventNames{{
    {1, "comEvcomEvSend"},
    {2, "comEvReceive"},
    {3, "comEvCTS"},
    {4, "comEvDSR"},
    {5, "comEvCD"},
    {6, "comEvRing"},
    {7, "comEvEOF"},
    {1001, "comEventBreak"},
    {1004, "comEventFrame"},
    {1006, "comEventOverrun"},
    {1008, "comEventRxOver"},
    {1009, "comEventRxParity"},
    {1010, "comEventTxFull"},
    {1011, "comEventDCB"},
}};

/// The name of \a event, "Unknown" for one that has none.
[[nodiscard]] QString commEventName(qint16 event);

} // namespace veldron
