// SPDX-License-Identifier: MIT
#pragma once

#include "app/frmDisplay.h"
#include "bench/BenchDialogs.h"
#include "bench/InstantUnit.h"
#include "common/DateTimeText.h"
#include "tests/support/ManualClock.h"

#include <QTemporaryDir>

namespace veldron {

/// The whole form with its chart at 1280 x 800, on a clock that only moves when it is told to, over
/// a unit that answers at once or over no unit at all. File dialogs pick "bench.rec" in a folder
/// of its own.
class BenchForm {
public:
    enum class UnitPresence { None, OnCom1 };
    explicit BenchForm(UnitPresence presence);

    /// Picks a menu entry and brings the chart back to its size, with waterfall and peaks.
    void pick(const char *entry);
    /// One second goes by: a tick of the poll and one of the chart's row clock.
    void passSecond();
    void takeScan();
    void playbackStep(qint16 direction);
    [[nodiscard]] QString file() const;
    /// Why the form ended, empty while it has not.
    [[nodiscard]] QString error() const { return m_dialogs.error(); }

private:
    void dressChart();

    QTemporaryDir m_folder;
    ManualClock m_clock{43200.03};
    InstantUnit m_control;
    DateTimeText m_texts{QLocale::c()};
    BenchDialogs m_dialogs;

public:
    frmDisplay form;
    ctlChartSpectrum *chart = nullptr;
};

} // namespace veldron
