// SPDX-License-Identifier: MIT
// Rows of the waterfall: their clock, the scroll bar, playback.
#include "chart/ctlChartSpectrum.h"

#include "chart/PictureBox.h"
#include "common/Numbers.h"
#include "common/TimeOfDay.h"

#include <QScrollBar>
#include <QSignalBlocker>
#include <QStatusBar>

#include <limits>

namespace veldron {

void ctlChartSpectrum::setPlayback(bool on) {
    if (on) {
        Timer1->stop();
    } else if (!Timer1->isActive()) {
        Timer1->start();
    }
    m_waterfall.setPlayback(on);
}

void ctlChartSpectrum::setUpdate(qint32 seconds) {
    if (seconds <= 0) {
        return;
    }
    m_waterfall.setUpdate(seconds, m_clock.timeOfDay());
    resizeSteps();
    // Two ticks a row. A new interval starts a running countdown anew, so the same one is not
    // written again.
    const auto interval =
        static_cast<int>(qMin<qint64>(qint64{seconds} * 500, std::numeric_limits<qint32>::max()));
    if (interval != Timer1->interval()) {
        Timer1->setInterval(interval);
    }
}

void ctlChartSpectrum::onTimer1() {
    if (m_grid.binCount() == 0) {
        return;
    }
    const float now = m_clock.timeOfDay();
    m_waterfall.resetAfterClockJump(now);
    AdvanceRows(now);
}

void ctlChartSpectrum::AdvanceRows(float time) {
    const float fallRoom = (1.0F - m_SplitFraction) * static_cast<float>(ScaleHeight()) -
                           ChartMargins::kSplitGap - ChartMargins::kFootGap;
    m_waterfall.AdvanceRows(time, fallRoom,
                            [this](bool scrollBarIsDue) { rowClosed(scrollBarIsDue); });
}

void ctlChartSpectrum::rowClosed(bool scrollBarIsDue) {
    if (scrollBarIsDue) {
        ConfigureScrollBar();
    }
    if (m_DisplayType != DisplayTypeCode::TraceAndWaterfall) {
        return;
    }
    redraw();
    if (m_marker.hasLiveTip()) {
        renewTip();
    }
}

void ctlChartSpectrum::ConfigureScrollBar() {
    // Moving the bar from code must not scroll the view: only the user's moves are taken.
    const QSignalBlocker blocker(VScroll1);
    const int visible = visibleFallRows(ScaleHeight(), m_SplitFraction);
    if (visible <= 0 || m_waterfall.rowCount() <= visible ||
        m_DisplayType != DisplayTypeCode::TraceAndWaterfall) {
        VScroll1->hide();
        return;
    }
    const int split = ScaleHeight() - visible - ChartMargins::kFootGap - ChartMargins::kSplitGap;
    VScroll1->setGeometry(Picture1->width() - ChartMargins::kRight,
                          ChartMargins::kSplitGap + split + 2, ChartMargins::kRight - 2,
                          visible + 1);
    VScroll1->show();
    VScroll1->setRange(0, m_waterfall.rowCount() - visible);
    VScroll1->setPageStep(visible);
    VScroll1->setValue(m_waterfall.firstRow());
}

// A dragged thumb is taken as a share of the rows that there are now, every other move as a row
// number. The two differ as soon as rows have come in since the bar was set up.
void ctlChartSpectrum::onScrollBarMoved(int value) {
    qint64 row = value;
    if (VScroll1->isSliderDown()) {
        const qint64 whole = qint64{VScroll1->maximum()} + VScroll1->pageStep();
        row = Numbers::divideHalfEven(row * m_waterfall.rowCount(), whole);
    }
    m_waterfall.lookFrom(static_cast<qint32>(row));
    redraw();
}

// Row 0 is at the top: a page up goes to newer rows.
void ctlChartSpectrum::onScrollKey(Qt::Key key) {
    if (VScroll1->isHidden()) {
        return;
    }
    if (key == Qt::Key_Home) {
        VScroll1->triggerAction(QAbstractSlider::SliderToMinimum);
    } else {
        VScroll1->triggerAction(key == Qt::Key_PageUp ? QAbstractSlider::SliderPageStepSub
                                                      : QAbstractSlider::SliderPageStepAdd);
    }
}

void ctlChartSpectrum::SetPlaybackTime(const QString &text, QTime time) {
    StatusBar1->showMessage(text);
    const auto seconds = static_cast<float>(time.msecsSinceStartOfDay() / 1000.0);
    // Before rows are closed: the first scan of a playback gives an empty history its clock.
    m_waterfall.setPlaybackTime(seconds);
    AdvanceRows(seconds);
}

bool ctlChartSpectrum::Rewind(qint16 rows) {
    if (rows == 0) {
        return true;
    }
    if (!m_waterfall.step(rows)) {
        return false;
    }
    // Going back, peaks of scans that come later are none.
    if (rows < 0) {
        m_scans.zeroPeaks();
    }
    for (qint32 bin = 0; bin < m_grid.binCount(); ++bin) {
        m_scans.setLevel(bin, m_waterfall.level(bin, m_waterfall.playRow()));
    }
    m_waterfall.centreOnPlayRow(chartLayout().fallHeight());
    redraw();
    ConfigureScrollBar();
    return true;
}

PeakLife ctlChartSpectrum::peakLife() {
    if (!m_waterfall.playback()) {
        return {m_clock.timeOfDay(), false, m_Timespan};
    }
    const qint64 rewound = qint64{m_waterfall.poll()} * m_waterfall.playRow();
    double time =
        static_cast<double>(m_waterfall.playbackTime()) - static_cast<double>(rewound) / 1000.0;
    while (time < 0.0) {
        time += kSecondsPerDay;
    }
    return {static_cast<float>(time), true, m_Timespan};
}

} // namespace veldron
