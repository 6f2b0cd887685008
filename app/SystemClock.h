// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"

namespace veldron {

/// The machine's local time.
class SystemClock : public Clock {
public:
    float timeOfDay() override;
    QDateTime now() override;
    qint64 steadyMilliseconds() override;
    void rest(int milliseconds) override;
};

} // namespace veldron
