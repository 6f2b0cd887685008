// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Lets the link talk to a unit that answers whatever \a bytes say, on a clock that is moved by
/// hand, and holds each result against a plain reading of the answer.
///
/// The first byte says how to talk: with its lowest bit set the talk begins just before midnight,
/// without its second bit it is held a second time with all bytes coming one by one. The rest are
/// acts, with 0x1E between them: the first byte of an act chooses one of the link's properties
/// or downloads, four more its value where it writes one, and what is left is the unit's answer,
/// with 0x1D between its turns where the act sends several commands. FuzzedLine has the bytes that
/// mean something in an answer.
///
/// Ends the process where an act takes longer than its limits, a result isn't the one of the
/// answer, a value that the unit took isn't read back as it was, a command holds anything but
/// letters and digits, or the talk depends on whether bytes come together or one by one.
void talkToUnit(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
