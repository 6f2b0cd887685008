// SPDX-License-Identifier: MIT
// The window: its menus, its controls, their layout, and what the history switches in it.
#include "app/frmDisplay.h"

#include "app/FormLayout.h"
#include "app/StatusPanels.h"
#include "app/frmDisplay_parts.h"
#include "app/frmSplash.h"
#include "chart/ctlChartSpectrum.h"
#include "history/ctlPlayback.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace veldron {

namespace {

/// How long the close of an ending session may be in coming, in milliseconds.
constexpr int kSessionEndPatience = 60000;
constexpr int kMargin = 10;
constexpr int kStripTop = 6;
constexpr int kLeastChartHeight = 120;

QHBoxLayout *rowIn(QWidget *strip) {
    auto *row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    return row;
}

} // namespace

frmDisplay::frmDisplay(const Dependencies &dependencies)
    : m_dependencies(dependencies),
      m_guard([this](const UntrappedError &error) { endWithError(error); }) {
    setObjectName(QStringLiteral("frmDisplay"));
    setWindowTitle(QStringLiteral("VELDRON"));
    m_sessionEnd.setObjectName(QStringLiteral("SessionEnd"));
    m_sessionEnd.setSingleShot(true);
    m_sessionEnd.setInterval(kSessionEndPatience);
    makeMenus();
    makeStrips();
}

frmDisplay::~frmDisplay() {
    // The controls go first: the chart holds the pointer's shape, and a control that loses the
    // focus may still raise its event.
    delete takeCentralWidget();
}

QAction *frmDisplay::addEntry(QMenu *menu, const char *name, const QString &text) {
    QAction *entry = menu->addAction(text);
    entry->setObjectName(QLatin1String(name));
    return entry;
}

void frmDisplay::makeMenus() {
    QMenu *file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    mnuFileLoadSettings = addEntry(file, "mnuFileLoadSettings", QStringLiteral("&Load Settings"));
    mnuFileSaveSettings = addEntry(file, "mnuFileSaveSettings", QStringLiteral("&Save Settings"));
    file->addSeparator()->setObjectName(QStringLiteral("mnuFileSeparator1"));
    mnuFileRecord = addEntry(file, "mnuFileRecord", QStringLiteral("Record"));
    mnuFilePlayback = addEntry(file, "mnuFilePlayback", QStringLiteral("&Playback"));
    file->addSeparator()->setObjectName(QStringLiteral("mnuFileSeparator2"));
    mnuFileExit = addEntry(file, "mnuFileExit", QStringLiteral("E&xit"));
    QMenu *settings = menuBar()->addMenu(QStringLiteral("&Settings"));
    settings->setObjectName(QStringLiteral("mnuSettings"));
    mnuSettingsDisplay = addEntry(settings, "mnuSettingsDisplay", QStringLiteral("&Display..."));
    mnuSettingsComms = addEntry(settings, "mnuSettingsComms", QStringLiteral("&Communications..."));
    QMenu *help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    mnuAbout = addEntry(help, "mnuAbout", QStringLiteral("&About"));
}

void frmDisplay::makeStrips() {
    m_inside = new QWidget(this);
    m_inside->setObjectName(QStringLiteral("Inside"));
    setCentralWidget(m_inside);
    makePanels();
    makeTransport();
    ctlChartSpectrum1 = new ctlChartSpectrum(m_guard, m_dependencies.clock, m_dependencies.texts,
                                             m_cursor, m_inside);
    ctlChartSpectrum1->setObjectName(QStringLiteral("ctlChartSpectrum1"));
    // The chart sets the pointer's shape itself; its moves are none over the bare form.
    ctlChartSpectrum1->setAttribute(Qt::WA_NoMousePropagation);
    StatusBar1 = new StatusPanels(m_guard, m_dependencies.clock, m_inside);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    Command1 = new QPushButton(QStringLiteral("Command1"), m_inside);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setVisible(false);
    for (QWidget *bare : {m_inside, Picture1, Picture2}) {
        bare->setMouseTracking(true);
        bare->installEventFilter(this);
    }
    m_inside->setMinimumWidth(Picture2->minimumSizeHint().width() + 2 * kMargin);
    m_inside->setMinimumHeight(kStripTop + Picture1->minimumSizeHint().height() +
                               m_strip->horizontalScrollBar()->sizeHint().height() +
                               kLeastChartHeight);
}

void frmDisplay::makePanels() {
    m_strip = new QScrollArea(m_inside);
    m_strip->setObjectName(QStringLiteral("Strip"));
    m_strip->setAccessibleName(QStringLiteral("Panels"));
    m_strip->setFrameShape(QFrame::NoFrame);
    m_strip->setFocusPolicy(Qt::NoFocus);
    m_strip->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_strip->setWidgetResizable(true);
    Picture1 = new QWidget;
    m_strip->setWidget(Picture1);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    ctlFrequency1 = new ctlFrequency(m_guard, Picture1);
    ctlFrequency1->setObjectName(QStringLiteral("ctlFrequency1"));
    ctlMonitorMode1 = new ctlMonitorMode(m_guard, Picture1);
    ctlMonitorMode1->setObjectName(QStringLiteral("ctlMonitorMode1"));
    ctlDataMode1 = new ctlDataMode(m_guard, Picture1);
    ctlDataMode1->setObjectName(QStringLiteral("ctlDataMode1"));
    QHBoxLayout *row = rowIn(Picture1);
    row->addWidget(ctlFrequency1);
    row->addWidget(ctlMonitorMode1);
    row->addWidget(ctlDataMode1);
    row->addStretch(1);
}

void frmDisplay::makeTransport() {
    Picture2 = new QWidget(m_inside);
    Picture2->setObjectName(QStringLiteral("Picture2"));
    ctlPlayback1 = new ctlPlayback(m_guard, Picture2);
    ctlPlayback1->setObjectName(QStringLiteral("ctlPlayback1"));
    QHBoxLayout *row = rowIn(Picture2);
    row->addWidget(ctlPlayback1);
    row->addStretch(1);
}

bool frmDisplay::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::MouseMove) {
        // Undoes a shape that the chart has left behind.
        m_cursor.setShape(CursorShape::Default);
    } else if (watched == m_inside && event->type() == QEvent::Resize) {
        layOut();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmDisplay::layOut() {
    ctlPlayback1->setVisible(Picture2->isVisibleTo(m_inside));
    const QSize inside = m_inside->size();
    const int width = qMax(0, inside.width() - 2 * kMargin);
    const bool scrolls = width < Picture1->minimumSizeHint().width();
    m_strip->setGeometry(kMargin, kStripTop, width,
                         Picture1->sizeHint().height() +
                             (scrolls ? m_strip->horizontalScrollBar()->sizeHint().height() : 0));
    const int bar = StatusBar1->sizeHint().height();
    StatusBar1->setGeometry(0, inside.height() - bar, inside.width(), bar);
    const int transport = Picture2->sizeHint().height();
    const FormLayout layout =
        FormLayout::of({inside, m_strip->y() + m_strip->height(), transport,
                        Picture2->isVisibleTo(m_inside), bar, ctlChartSpectrum1->size()});
    Picture2->setGeometry(kMargin, layout.picture2Top, width, transport);
    ctlChartSpectrum1->setGeometry(layout.chart);
}

// ---- what the history switches

void frmDisplay::SetControlsEnabled(bool enable) {
    for (QAction *entry : {mnuFileLoadSettings, mnuFileSaveSettings, mnuFilePlayback, mnuFileExit,
                           mnuSettingsComms}) {
        entry->setEnabled(enable);
    }
    ctlChartSpectrum1->setEnabled(enable);
    ctlDataMode1->setEnabled(enable);
    ctlFrequency1->setEnabled(enable);
    ctlMonitorMode1->setEnabled(enable);
}

void frmDisplay::setRecordCaption(const QString &caption) {
    mnuFileRecord->setText(caption);
}

void frmDisplay::setRecordEnabled(bool enable) {
    mnuFileRecord->setEnabled(enable);
}

/// Painted at once: the first scan of the file is read and drawn before the event loop runs again.
void frmDisplay::showTransport(bool visible) {
    Picture2->setVisible(visible);
    layOut();
    m_inside->repaint();
}

void frmDisplay::setPollTimerEnabled(bool enable) {
    m_pollTimer.setEnabled(enable);
}

qint16 frmDisplay::PollPeriod() const {
    return m_parts->pollLoop.PollPeriod();
}

void frmDisplay::showStatus(const QString &text) {
    StatusBar1->setStatusText(text);
}

void frmDisplay::hideClockAndActivity() {
    StatusBar1->hideClockAndActivity();
}

void frmDisplay::showPlaybackPlace(const QString &time, const QString &percent) {
    StatusBar1->showTexts(time, percent);
}

void frmDisplay::showClockAndActivity() {
    StatusBar1->showClockAndActivity();
}

} // namespace veldron
