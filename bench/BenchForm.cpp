// SPDX-License-Identifier: MIT
#include "bench/BenchForm.h"

#include "app/PollTimer.h"
#include "chart/ctlChartSpectrum.h"
#include "history/ctlPlayback.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTimer>

namespace veldron {

namespace {
constexpr QSize kChart(1280, 800);
constexpr QSize kForm(1300, 1000);
} // namespace

BenchForm::BenchForm(UnitPresence presence)
    : m_control(presence == UnitPresence::OnCom1),
      m_dialogs(m_folder.filePath(QStringLiteral("bench.rec"))),
      form(frmDisplay::Dependencies{m_control, m_clock, m_dialogs, m_texts, m_folder.path(),
                                    QStringLiteral("1.0.0")}) {
    form.load();
    form.resize(kForm);
    QApplication::processEvents();
    chart = form.findChild<ctlChartSpectrum *>(QStringLiteral("ctlChartSpectrum1"));
    chart->findChild<QTimer *>(QStringLiteral("Timer1"))->stop();
    dressChart();
}

void BenchForm::dressChart() {
    chart->resize(kChart);
    chart->setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart->setPeak(true);
}

void BenchForm::pick(const char *entry) {
    form.findChild<QAction *>(QLatin1String(entry))->trigger();
    dressChart();
}

void BenchForm::passSecond() {
    m_clock.advance(1.0);
    auto *timer = form.findChild<PollTimer *>()->findChild<QTimer *>();
    QTimerEvent tick(timer->timerId());
    QApplication::sendEvent(timer, &tick);
    chart->onTimer1();
}

void BenchForm::takeScan() {
    form.findChild<QPushButton *>(QStringLiteral("Command1"))->click();
}

void BenchForm::playbackStep(qint16 direction) {
    Q_EMIT form.findChild<ctlPlayback *>(QStringLiteral("ctlPlayback1"))->Step(direction);
}

QString BenchForm::file() const {
    return m_folder.filePath(QStringLiteral("bench.rec"));
}

} // namespace veldron
