// SPDX-License-Identifier: MIT
#pragma once

#include "panels/ctlFrequency.h"
#include "tests/panels/PanelFixture.h"

namespace veldron {

/// The receiver panel with a receiver that has everything: 100 MHz, "VK3900", 10 kHz, "NFM".
class CtlFrequency : public PanelFixture<ctlFrequency, ReceiverChangeCode> {
protected:
    CtlFrequency() {
        panel->setFrequency(Hertz::fromWhole(100'000'000));
        panel->setRX(7);
        panel->setStep(10'000);
        panel->setMode(2);
    }
    qint64 hertz() const { return panel->Frequency().rounded(); }
};

} // namespace veldron
