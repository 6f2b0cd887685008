// SPDX-License-Identifier: MIT
// Members and the bin grid; the rows, the picture and the pointer have files of their own.
#include "chart/ctlChartSpectrum.h"

#include "chart/OverlayLine.h"
#include "chart/PictureBox.h"
#include "chart/RowScrollBar.h"
#include "chart/ScreenCursor.h"

#include <QLabel>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStatusBar>

#include <utility>

namespace veldron {

namespace {

// Until the row interval is written for the first time.
constexpr int kFirstTimerInterval = 200;

} // namespace

ctlChartSpectrum::ctlChartSpectrum(ErrorGuard guard, Clock &clock, const DateTimeText &texts,
                                   ScreenCursor &cursor, QWidget *parent)
    : QWidget(parent), m_guard(std::move(guard)), m_clock(clock), m_texts(texts), m_cursor(cursor),
      m_scans(m_grid.binCount()), m_waterfall(clock.timeOfDay()),
      m_painter({[this](const PlannedText &text) { return Picture1->textArea(text); },
                 [this](PixelSurface &surface, const std::vector<PlannedText> &labels) {
                     Picture1->Print(surface, labels);
                 }}) {

    setAccessibleName(QStringLiteral("Chart"));
    makeControls();
    wireControls();
    // Behind the controls, because it measures labels in the font of the picture.
    RecalculateBins();
    Timer1->start();
}

ctlChartSpectrum::~ctlChartSpectrum() {
    // The children go later, and a picture that loses the focus then still tells so.
    Picture1->disconnect(this);
    m_cursor.setShape(CursorShape::Default);
}

void ctlChartSpectrum::makeControls() {
    makePicture();
    VScroll1 = new RowScrollBar(Qt::Vertical, this);
    VScroll1->setObjectName(QStringLiteral("VScroll1"));
    VScroll1->setAccessibleName(QStringLiteral("Rows of the waterfall"));
    VScroll1->hide();
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setTimerType(Qt::PreciseTimer);
    Timer1->setInterval(kFirstTimerInterval);
    StatusBar1 = new QStatusBar(this);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->hide();
    StatusBar1->showMessage(QStringLiteral("Initialising"));
}

void ctlChartSpectrum::makePicture() {
    Picture1 = new PictureBox(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setAccessibleName(QStringLiteral("Spectrum and waterfall"));
    Picture1->setAccessibleDescription(
        QStringLiteral("Page Up, Page Down and Home look back in the waterfall. The split between "
                       "spectrum and waterfall is dragged with the mouse."));
    Line1 = new OverlayLine(QStringLiteral("Line1"), Picture1);
    Line2 = new OverlayLine(QStringLiteral("Line2"), Picture1);
    Line3 = new OverlayLine(QStringLiteral("Line3"), Picture1);
    Line1->setAccessibleName(QStringLiteral("Marker"));
    Line2->setAccessibleName(QStringLiteral("Receive frequency"));
    Line3->setAccessibleName(QStringLiteral("Playback position"));
    lblMarker = new QLabel(Picture1);
    lblMarker->setObjectName(QStringLiteral("lblMarker"));
    lblMarker->setAccessibleName(QStringLiteral("Marker's frequency and level"));
    lblMarker->setAttribute(Qt::WA_TransparentForMouseEvents);
    lblMarker->setTextFormat(Qt::PlainText);
    lblMarker->setFont(PictureBox::labelFont());
    QPalette colours;
    colours.setColor(QPalette::Window, Qt::black);
    colours.setColor(QPalette::WindowText, Qt::white);
    lblMarker->setPalette(colours);
    lblMarker->setAutoFillBackground(true);
    lblMarker->move(0, ChartMargins::kTop);
    lblMarker->hide();
}

void ctlChartSpectrum::wireControls() {
    const auto wire = [this](const auto *sender, auto signal, auto slot) {
        connectGuarded(m_guard, sender, signal, this, slot);
    };
    wire(Timer1, &QTimer::timeout, &ctlChartSpectrum::onTimer1);
    wire(VScroll1, &QScrollBar::valueChanged, &ctlChartSpectrum::onScrollBarMoved);
    wire(Picture1, &PictureBox::exposed, &ctlChartSpectrum::redraw);
    wire(Picture1, &PictureBox::pressed, &ctlChartSpectrum::onPress);
    wire(Picture1, &PictureBox::moved, &ctlChartSpectrum::onMove);
    wire(Picture1, &PictureBox::released, &ctlChartSpectrum::onRelease);
    wire(Picture1, &PictureBox::doubleClicked, &ctlChartSpectrum::onDoubleClick);
    wire(Picture1, &PictureBox::pointerLeft, &ctlChartSpectrum::onPointerLeft);
    wire(Picture1, &PictureBox::focusLost, &ctlChartSpectrum::onFocusLost);
    wire(Picture1, &PictureBox::scrollKeyPressed, &ctlChartSpectrum::onScrollKey);
}

int ctlChartSpectrum::ScaleWidth() const {
    return Picture1->ScaleWidth();
}

int ctlChartSpectrum::ScaleHeight() const {
    return Picture1->ScaleHeight();
}

ChartLayout ctlChartSpectrum::chartLayout() const {
    return ChartLayout::of(ScaleWidth(), ScaleHeight(), m_DisplayType, m_SplitFraction);
}

void ctlChartSpectrum::setDisplayType(DisplayTypeCode type) {
    if (type != m_DisplayType) {
        m_DisplayType = type;
        redraw();
    }
}

void ctlChartSpectrum::setScanStart(Hertz start) {
    if (m_grid.setScanStart(start)) {
        gridChanged();
    }
}

void ctlChartSpectrum::setScanStop(Hertz stop) {
    if (m_grid.setScanStop(stop)) {
        gridChanged();
    }
}

void ctlChartSpectrum::setDataResolution(Hertz resolution) {
    if (m_grid.setDataResolution(resolution)) {
        RecalculateBins();
    }
}

void ctlChartSpectrum::gridChanged() {
    RecalculateBins();
    m_waterfall.clearRows();
    ConfigureScrollBar();
}

void ctlChartSpectrum::RecalculateBins() {
    m_scans.reset(m_grid.binCount());
    recalculateScreenResolution();
    m_marker.forgetBin();
    DrawAxes();
}

void ctlChartSpectrum::recalculateScreenResolution() {
    m_ScreenResolution =
        m_grid.screenResolution(ScaleWidth() - ChartMargins::kRight - ChartMargins::kLeft);
}

void ctlChartSpectrum::setPeak(bool on) {
    if (on && !m_Peak) {
        // Nobody has aged the peaks since they were last shown.
        m_scans.zeroPeaks();
    }
    m_Peak = on;
}

void ctlChartSpectrum::setPalette(qint16 scheme) {
    m_Palette = scheme;
    m_waterfall.buildPalette(scheme, m_scale);
    Refresh();
}

void ctlChartSpectrum::setSplitFraction(float fraction) {
    m_SplitFraction = fraction;
    redraw();
    // Behind the painting, which limits the first row that the bar shows.
    ConfigureScrollBar();
}

void ctlChartSpectrum::SetData(const LevelScan &levels) {
    if (!m_scans.accepts(levels)) {
        return;
    }
    m_waterfall.addScan(levels, m_clock.timeOfDay());
    m_scans.take(levels);
}

void ctlChartSpectrum::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    m_guard.run([this] { resizeSteps(); });
}

void ctlChartSpectrum::resizeSteps() {
    // The size first: resolution, view, axes and scroll bar are worked out from it.
    Picture1->setGeometry(0, 0, width(), height() > 0 ? height() : Picture1->height());
    recalculateScreenResolution();
    m_waterfall.fitViewTo(ScaleHeight() - ChartMargins::kTop - ChartMargins::kBottom);
    redraw();
    ConfigureScrollBar();
}

} // namespace veldron
