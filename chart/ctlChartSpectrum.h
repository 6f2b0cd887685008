// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

#include "chart/AxisPlan.h"
#include "chart/BinGrid.h"
#include "chart/ChartLayout.h"
#include "chart/ChartPainter.h"
#include "chart/LevelScale.h"
#include "chart/MarkerDrag.h"
#include "chart/ScanStore.h"
#include "chart/WaterfallStore.h"
#include "common/Clock.h"
#include "common/DateTimeText.h"
#include "common/ErrorGuard.h"
#include "common/Hertz.h"
#include "common/LevelScan.h"

#include <QTime>

class QLabel;
class QScrollBar;
class QStatusBar;

namespace veldron {

class OverlayLine;
class PictureBox;
class ScreenCursor;

/// The chart: the latest scan as a trace with held peaks, over a waterfall of the past.
///
/// Frequencies are hertz, levels whole dB or raw bytes (dB = raw + dBOffset), times seconds since
/// midnight, pixels those of the control. Values out of their range are dropped without a word;
/// a dBSpan of 0 and a colour scale above 128 dB are UntrappedErrors. What is drawn appears at
/// Refresh.
///
/// The control is thin: state lives in the value classes that it owns, and an event is a call of
/// one of them and a redraw.
///
/// Order of calls for a scan: SetData, then Refresh; in playback SetPlaybackTime before both. For a
/// new scale: DataResolution, ScanStart, ScanStop, then RXFreq, which needs the bins.
class ctlChartSpectrum : public QWidget {
    Q_OBJECT

public:
    /// \a guard receives an UntrappedError out of the control's own events: its timer, repaints,
    /// changes of size, the scroll bar and the pointer. Calls from code throw to their caller
    /// instead. \a clock, \a texts and \a cursor outlive the control. The row clock starts here.
    ctlChartSpectrum(ErrorGuard guard, Clock &clock, const DateTimeText &texts,
                     ScreenCursor &cursor, QWidget *parent = nullptr);
    ~ctlChartSpectrum() override;

    /// True while scans come from a history file. A write in either direction empties the history
    /// and stops or starts the row clock.
    [[nodiscard]] bool Playback() const { return m_waterfall.playback(); }
    void setPlayback(bool on);
    /// Row spacing in playback and patience with a silent link, in milliseconds.
    [[nodiscard]] qint16 Poll() const { return m_waterfall.poll(); }
    void setPoll(qint16 milliseconds) { m_waterfall.setPoll(milliseconds); }
    /// Gate of Changed, a plain flag: hides the toolkit's enable state on purpose, so that the
    /// pointer goes on reading the picture while the panels are locked.
    [[nodiscard]] bool Enabled() const { return m_Enabled; }
    void setEnabled(bool enabled) { m_Enabled = enabled; }
    /// True while a button is held down on the picture.
    [[nodiscard]] bool Active() const { return m_marker.isActive(); }

    /// 0 is the trace alone, 1 trace and waterfall.
    [[nodiscard]] DisplayTypeCode DisplayType() const { return m_DisplayType; }
    void setDisplayType(DisplayTypeCode type);
    /// Frequency of bin 0. A write that changes it, from -5 MHz to 3.5 GHz, empties the history;
    /// ScanStop follows where it must.
    [[nodiscard]] Hertz ScanStart() const { return m_grid.scanStart(); }
    void setScanStart(Hertz start);
    /// Frequency of the last bin; the mirror of ScanStart.
    [[nodiscard]] Hertz ScanStop() const { return m_grid.scanStop(); }
    void setScanStop(Hertz stop);
    /// Life of a held peak in seconds; 0 or negative is for ever.
    [[nodiscard]] qint32 Timespan() const { return m_Timespan; }
    void setTimespan(qint32 seconds) { m_Timespan = seconds; }
    /// Seconds between rows of the waterfall, live. 0 and less are dropped; the rows that are
    /// there are stretched so that their times stay true.
    [[nodiscard]] qint32 Update() const { return m_waterfall.update(); }
    void setUpdate(qint32 seconds);
    /// Hertz a bin; under 500 is dropped. The history stays.
    [[nodiscard]] Hertz DataResolution() const { return m_grid.dataResolution(); }
    void setDataResolution(Hertz resolution);
    /// Hertz a pixel of the plot; 0 when the plot has no width.
    [[nodiscard]] Hertz ScreenResolution() const { return m_ScreenResolution; }

    /// Takes a scan: it becomes the current one and goes into the newest row of the history. One
    /// with more than two values beyond the grid is dropped; bins behind the end of a shorter one
    /// keep their values. Draws nothing.
    void SetData(const LevelScan &levels);

    /// Held peaks shown; each start begins from nothing.
    [[nodiscard]] bool Peak() const { return m_Peak; }
    void setPeak(bool on);
    /// Height of the scale, its lower end, and the level of raw value 0, in dB. Writes redraw
    /// nothing.
    [[nodiscard]] qint16 dBSpan() const { return m_scale.span; }
    void setdBSpan(qint16 span) { m_scale.span = span; }
    [[nodiscard]] qint16 dBStart() const { return m_scale.start; }
    void setdBStart(qint16 start) { m_scale.start = start; }
    [[nodiscard]] qint16 dBOffset() const { return m_scale.offset; }
    void setdBOffset(qint16 offset) { m_scale.offset = offset; }
    /// Colour scheme of the waterfall. A write builds the colours from the scale as it stands.
    [[nodiscard]] qint16 Palette() const { return m_Palette; }
    void setPalette(qint16 scheme);
    /// Marker shown; a write puts it back on the receive frequency.
    [[nodiscard]] bool MarkerEn() const { return m_marker.isEnabled(); }
    void setMarkerEn(bool on);
    [[nodiscard]] Hertz MarkerFreq() const { return m_marker.frequency(); }
    /// Receive frequency; a write pulls the marker onto it.
    [[nodiscard]] Hertz RXFreq() const { return m_marker.receiveFrequency(); }
    void setRXFreq(Hertz frequency);
    /// Height of the split as a fraction of the picture's; limited only when it is dragged.
    [[nodiscard]] float SplitFraction() const { return m_SplitFraction; }
    void setSplitFraction(float fraction);

    /// Wipes the picture and draws frames, ticks and labels, all of which appears at Refresh.
    void DrawAxes();
    /// Ages the peaks, paints trace and waterfall, and shows the picture.
    void Refresh();
    /// Sets the time of the scans to come, in playback, and closes the rows that are due by then.
    /// \a text is what the status bar shows, \a time what it tells.
    void SetPlaybackTime(const QString &text, QTime time);
    /// Steps through the stored rows by \a rows, to newer ones if positive. False when a limit
    /// stopped the step; the limits are looked at only before it.
    bool Rewind(qint16 rows);

Q_SIGNALS:
    /// The user chose MarkerFreq by a double click; \a What is always 0.
    void Changed(qint32 What);

public Q_SLOTS:
    /// One tick of the row clock, live: closes the rows that are due.
    void onTimer1();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeControls();
    void wireControls();
    void makePicture();
    /// Lays the axes out anew and refreshes; for changes of what the axes show.
    void redraw();
    /// Everything that depends on the size of the picture.
    void resizeSteps();

    // Bins and scale.
    /// After a write that moved the scan: the rows of the history are of other frequencies now.
    void gridChanged();
    /// Empty arrays and new axes for the bins of the grid.
    void RecalculateBins();
    void recalculateScreenResolution();
    [[nodiscard]] int ScaleWidth() const;
    [[nodiscard]] int ScaleHeight() const;
    [[nodiscard]] ChartLayout chartLayout() const;
    [[nodiscard]] PeakLife peakLife();

    // Rows.
    void AdvanceRows(float time);
    /// Shows a row that was closed, and what changes with it.
    void rowClosed(bool scrollBarIsDue);
    void ConfigureScrollBar();
    void onScrollBarMoved(int value);
    void onScrollKey(Qt::Key key);

    // Picture.
    [[nodiscard]] AxisInput axisInput(const ChartLayout &layout) const;
    void placeReceiveLine(const ChartLayout &layout);
    void placeMarker(const ChartLayout &layout);
    /// Plans the axes for the next paintPicture(), and places the lines that follow them.
    void layOutAxes(const ChartLayout &layout);
    /// Paints the surface and brings what changed to the window.
    void paintPicture(const ChartLayout &layout);
    void placePlayLine(const ChartLayout &layout);

    // Marker and pointer.
    void UpdateMarkerLabel();
    void placeReadOut(int x);
    void applyMove(const PointerMove &move, QPoint at);
    [[nodiscard]] PointerView pointerView(const ChartLayout &layout) const;
    void onPress(QPoint at, Qt::MouseButton button);
    void onMove(QPoint at, Qt::MouseButtons buttons);
    void onRelease();
    void onDoubleClick();
    void onPointerLeft();
    void onFocusLost();
    void renewTip();
    void showTip(const QString &text);

    ErrorGuard m_guard;
    Clock &m_clock;
    const DateTimeText &m_texts;
    ScreenCursor &m_cursor;

    BinGrid m_grid;
    ScanStore m_scans;
    WaterfallStore m_waterfall;
    MarkerDrag m_marker;
    LevelScale m_scale;
    ChartPainter m_painter;

    Hertz m_ScreenResolution;
    DisplayTypeCode m_DisplayType = DisplayTypeCode::Trace;
    qint32 m_Timespan = 0;
    bool m_Peak = false;
    qint16 m_Palette = 0;
    float m_SplitFraction = 0.5F;
    bool m_Enabled = true;

    PictureBox *Picture1 = nullptr;
    QScrollBar *VScroll1 = nullptr;
    QTimer *Timer1 = nullptr;
    QStatusBar *StatusBar1 = nullptr;
    QLabel *lblMarker = nullptr;
    OverlayLine *Line1 = nullptr;
    OverlayLine *Line2 = nullptr;
    OverlayLine *Line3 = nullptr;
};

} // namespace veldron
