// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Reads \a bytes as a recording without loss, judges and repairs it. Aborts where a promise is
/// broken: a byte delivered twice or out of order, a scan of an impossible length, a copy that its
/// judge calls playable and another doesn't.
void readRecordingBytes(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
