// SPDX-License-Identifier: MIT
#include "bench/LineTime.h"

#include "simulator/Unit.h"

namespace veldron {

namespace {
constexpr double kBitsPerByte = 11.0;
constexpr double kBaud = 9600.0;
} // namespace

double lineSeconds(const QByteArrayList &commands) {
    Unit unit;
    qsizetype bytes = 0;
    for (const QByteArray &command : commands) {
        bytes += unit.answer(command).size();
    }
    return static_cast<double>(bytes) * kBitsPerByte / kBaud;
}

} // namespace veldron
