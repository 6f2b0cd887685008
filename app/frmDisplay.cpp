// SPDX-License-Identifier: MIT
// The form's controls, its layout, and the one way out on an error.
#include "app/frmDisplay.h"

#include "app/FormLayout.h"
#include "app/StatusPanels.h"
#include "app/frmSplash.h"
#include "chart/ctlChartSpectrum.h"
#include "history/ctlPlayback.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>

#include <cstdio>

namespace veldron {

namespace {

/// What the poll timer ticks at until the settings are made, in milliseconds.
constexpr int kFirstInterval = 250;
/// How long the close of an ending session may be in coming, in milliseconds.
constexpr int kSessionEndPatience = 60000;
constexpr int kMargin = 10;
constexpr int kStripTop = 6;
constexpr int kLeastChartHeight = 120;

} // namespace

frmDisplay::frmDisplay(const World &world)
    : m_world(world), m_guard([this](const UntrappedError &error) { endWithError(error); }) {
    setObjectName(QStringLiteral("frmDisplay"));
    setWindowTitle(QStringLiteral("VELDRON"));
    makeMenus();
    makeStrips();
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    Timer1->setTimerType(Qt::PreciseTimer);
    Timer1->setInterval(kFirstInterval);
    m_sessionEnd = new QTimer(this);
    m_sessionEnd->setObjectName(QStringLiteral("SessionEnd"));
    m_sessionEnd->setSingleShot(true);
    m_sessionEnd->setInterval(kSessionEndPatience);
    connect(m_sessionEnd, &QTimer::timeout, this, [this] { m_asksOnClose = true; });
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
    Picture1 = new QWidget(m_inside);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    ctlFrequency1 = new ctlFrequency(Picture1);
    ctlMonitorMode1 = new ctlMonitorMode(Picture1);
    ctlDataMode1 = new ctlDataMode(Picture1);
    ctlFrequency1->setObjectName(QStringLiteral("ctlFrequency1"));
    ctlMonitorMode1->setObjectName(QStringLiteral("ctlMonitorMode1"));
    ctlDataMode1->setObjectName(QStringLiteral("ctlDataMode1"));
    ctlMonitorMode1->setGuard(m_guard);
    auto *panels = new QHBoxLayout(Picture1);
    panels->setContentsMargins(0, 0, 0, 0);
    panels->addWidget(ctlFrequency1);
    panels->addWidget(ctlMonitorMode1);
    panels->addWidget(ctlDataMode1);
    panels->addStretch(1);

    Picture2 = new QWidget(m_inside);
    Picture2->setObjectName(QStringLiteral("Picture2"));
    ctlPlayback1 = new ctlPlayback(Picture2);
    ctlPlayback1->setObjectName(QStringLiteral("ctlPlayback1"));
    auto *transport = new QHBoxLayout(Picture2);
    transport->setContentsMargins(0, 0, 0, 0);
    transport->addWidget(ctlPlayback1);
    transport->addStretch(1);

    ctlChartSpectrum1 =
        new ctlChartSpectrum(m_guard, m_world.clock, m_world.texts, m_pointer, m_inside);
    ctlChartSpectrum1->setObjectName(QStringLiteral("ctlChartSpectrum1"));
    // The chart sets the pointer's shape itself; its moves are none over the bare form.
    ctlChartSpectrum1->setAttribute(Qt::WA_NoMousePropagation);
    StatusBar1 = new StatusPanels(m_world.clock, m_inside);
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    Command1 = new QPushButton(QStringLiteral("Command1"), m_inside);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setVisible(false);

    for (QWidget *bare : {m_inside, Picture1, Picture2}) {
        bare->setMouseTracking(true);
        bare->installEventFilter(this);
    }
    const QSize strip = Picture1->minimumSizeHint();
    m_inside->setMinimumWidth(strip.width() + 2 * kMargin);
    m_inside->setMinimumHeight(kStripTop + strip.height() + kLeastChartHeight);
}

SettingHolders frmDisplay::instruments() const {
    return {*m_vdr,         *ctlFrequency1,     *ctlMonitorMode1,
            *ctlDataMode1,  *ctlChartSpectrum1, *m_displaySettings,
            *m_commSettings};
}

bool frmDisplay::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::MouseMove) {
        // Undoes a shape that the chart has left behind.
        m_pointer.setShape(CursorShape::Default);
    } else if (watched == m_inside && event->type() == QEvent::Resize) {
        layOut();
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmDisplay::layOut() {
    ctlPlayback1->setVisible(Picture2->isVisibleTo(m_inside));
    const QSize inside = m_inside->size();
    const int strip = Picture1->sizeHint().height();
    Picture1->setGeometry(kMargin, kStripTop, qMax(0, inside.width() - 2 * kMargin), strip);
    const int bar = StatusBar1->sizeHint().height();
    StatusBar1->setGeometry(0, inside.height() - bar, inside.width(), bar);
    const int transport = Picture2->sizeHint().height();
    const FormLayout layout =
        FormLayout::of({inside, Picture1->y() + Picture1->height(), transport,
                        Picture2->isVisibleTo(m_inside), bar, ctlChartSpectrum1->size()});
    Picture2->setGeometry(kMargin, layout.picture2Top, qMax(0, inside.width() - 2 * kMargin),
                          transport);
    ctlChartSpectrum1->setGeometry(layout.chart);
}

void frmDisplay::stopTimers() {
    m_Timer1Enabled = false;
    for (QTimer *timer : findChildren<QTimer *>()) {
        timer->stop();
    }
}

void frmDisplay::endWithError(const UntrappedError &error) {
    if (m_unloaded) {
        return; // what a routine meets under which the program was ended is no error any more
    }
    m_failed = true;
    m_unloaded = true;
    stopTimers();
    m_splash.reset();
    if (m_recorder) {
        m_recorder->closeStream();
    }
    if (m_playback) {
        m_playback->closeStream();
    }
    if (m_vdr) {
        m_vdr->unload();
    }
    m_pointer.setShape(CursorShape::Default);
    const QByteArray line = error.message().simplified().toUtf8();
    std::fprintf(stderr, "veldron: %s\n", line.constData());
    m_world.dialogs.showError(
        error.message() +
        QStringLiteral("\n\nVELDRON can't go on after this error and has to end. The serial port "
                       "and any recording have been closed; what was recorded so far is kept."));
    QCoreApplication::exit(1);
}

// ---- what the helpers ask of the form

void frmDisplay::setHourglass(bool on) {
    m_pointer.setShape(on ? CursorShape::Hourglass : CursorShape::Default);
}

void frmDisplay::showMessage(const QString &title, const QString &text) {
    m_world.dialogs.showMessage(title, text);
}

void frmDisplay::ReadBackSettings() {
    m_mediation->ReadBackSettings();
}

void frmDisplay::UpdateChartSettings() {
    m_mediation->UpdateChartSettings();
}

void frmDisplay::setPollInterval(qint32 milliseconds) {
    // A new interval starts a running countdown anew.
    Timer1->setInterval(qMax(milliseconds, 0));
    runPollTimer();
}

void frmDisplay::startPollTimer(int milliseconds) {
    m_Timer1Enabled = true;
    setPollInterval(milliseconds);
}

void frmDisplay::setPollTimerEnabled(bool enable) {
    m_Timer1Enabled = enable;
    runPollTimer();
}

void frmDisplay::runPollTimer() {
    if (!m_Timer1Enabled || Timer1->interval() <= 0) {
        Timer1->stop();
    } else if (!Timer1->isActive()) {
        Timer1->start();
    }
}

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

void frmDisplay::showTransport(bool visible) {
    Picture2->setVisible(visible);
    layOut();
    m_inside->repaint();
}

qint16 frmDisplay::PollPeriod() const {
    return m_pollLoop->PollPeriod();
}

void frmDisplay::showStatus(const QString &text) {
    StatusBar1->setStatusText(text);
}

void frmDisplay::showLinkStatus() {
    showStatus(m_vdr->Status());
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

void frmDisplay::stopTransport() {
    ctlPlayback1->StopPlay();
}

void frmDisplay::showActivity(ActivityImage image) {
    StatusBar1->showActivity(image);
}

void frmDisplay::TakeScan() {
    const LevelScan scan = m_vdr->GetData();
    ctlChartSpectrum1->SetData(scan);
    ctlChartSpectrum1->Refresh();
    if (m_session.Recording) {
        m_recorder->writeScan(scan);
    } else {
        showLinkStatus();
    }
}

void frmDisplay::checkNextSetting() {
    m_roundRobin->step();
}

void frmDisplay::readBackAtMidnight() {
    ReadBackSettings();
}

void frmDisplay::recordSettings() {
    m_recorder->writeSettings();
}

} // namespace veldron
