// SPDX-License-Identifier: MIT
#include "simulator/UnitReceivers.h"

#include <algorithm>
#include <cstddef>

namespace veldron::UnitReceivers {

namespace {

const std::vector<Receiver> &table() {
    static const std::vector<Receiver> kTable = {
        {"Other (10M)", {}, false},
        {"Other (45M)", {}, false},
        {"VK1100", {5, 7, 8, 9, 10, 16, 17}, true},
        {"VK2400B", {1, 2, 5, 7, 8, 9}, true},
        {"VK3700(10M)", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, true},
        {"VK3700(45M)", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, true},
        {"VK3900", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, true},
        {"VK-SIX", {1, 2, 5, 7, 8, 9, 10, 12}, true},
        {"VM-T4400", {1, 5, 7, 8, 9, 11, 12, 13, 14, 15}, false},
        {"VM-T3300", {1, 5, 7, 8, 11, 12, 13}, false},
        {"VKF2700", {1, 2, 3, 4, 5}, true},
    };
    return kTable;
}

} // namespace

int last() {
    return static_cast<int>(table().size());
}

const Receiver &at(int code) {
    return table().at(static_cast<std::size_t>(code - kFirst));
}

bool takesCommands(int code) {
    return !at(code).modes.empty();
}

bool hasMode(int code, int mode) {
    const std::vector<int> &modes = at(code).modes;
    return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

} // namespace veldron::UnitReceivers
