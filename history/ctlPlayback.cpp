// SPDX-License-Identifier: MIT
#include "history/ctlPlayback.h"

#include "common/Numbers.h"
#include "history/PlaybackPicture.h"
#include "history/StepButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldron {

namespace {

constexpr int kHoldMilliseconds = 700; ///< from a button's way down to its first repeat
constexpr int kFloorMilliseconds = 15; ///< the fastest repeat of a held button
constexpr int kLongestInMillis = 500;  ///< longer intervals are told in seconds
constexpr int kSlowest = 0;            ///< the slider's ends
constexpr int kFastest = 8;
constexpr int kFirstSpeed = 2;

} // namespace

ctlPlayback::ctlPlayback(ErrorGuard guard, QWidget *parent)
    : QWidget(parent),
      m_guard(std::move(guard)), ImageList1{
                                     PlaybackPicture::icon(PlaybackShape::DoubleArrow),
                                     PlaybackPicture::icon(PlaybackShape::DoubleArrow, Qt::red)} {
    makeControls();
    makeSpeedControls();
    layOut();
    wireControls();
    SetSpeed();
}

ctlPlayback::~ctlPlayback() {
    // A step button that is still held emits wentUp when it is hidden, which happens in the
    // destructor of the base class. The connections would still call slots here, whose members are
    // gone by then.
    disconnect(cmdStepForward, nullptr, this, nullptr);
    disconnect(cmdStepBack, nullptr, this, nullptr);
}

void ctlPlayback::makeControls() {
    Timer1 = new QTimer(this);
    Timer1->setObjectName("Timer1");
    Timer1->setTimerType(Qt::PreciseTimer);
    cmdPlay = new QToolButton(this);
    cmdPause = new QToolButton(this);
    cmdStepBack = new StepButton(m_guard, this);
    cmdStepForward = new StepButton(m_guard, this);
    cmdClose = new QToolButton(this);
    setUpButton(cmdPlay, "cmdPlay", "Continuous playback", PlaybackShape::DoubleArrow);
    setUpButton(cmdPause, "cmdPause", "Pause", PlaybackShape::Bars);
    setUpButton(cmdStepBack, "cmdStepBack", "Step back", PlaybackShape::ArrowLeft);
    setUpButton(cmdStepForward, "cmdStepForward", "Step forward", PlaybackShape::ArrowRight);
    setUpButton(cmdClose, "cmdClose", "Stop playback", PlaybackShape::Cross);
    cmdPlay->setIcon(ImageList1.front());
}

QToolButton *ctlPlayback::setUpButton(QToolButton *button, const char *name, const QString &tip,
                                      PlaybackShape shape) {
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setIcon(PlaybackPicture::icon(shape));
    button->setIconSize(PlaybackPicture::sizeOf(shape));
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

void ctlPlayback::makeSpeedControls() {
    Label1 = new QLabel("slow", this);
    Label1->setObjectName("Label1");
    Label2 = new QLabel("fast", this);
    Label2->setObjectName("Label2");
    Slider1 = new QSlider(Qt::Horizontal, this);
    Slider1->setObjectName("Slider1");
    Slider1->setAccessibleName("Playback speed");
    Slider1->setRange(kSlowest, kFastest);
    Slider1->setSingleStep(1);
    Slider1->setPageStep(1);
    Slider1->setTickPosition(QSlider::TicksBelow);
    Slider1->setTickInterval(1);
    Slider1->setFixedWidth(160);
    Slider1->setValue(kFirstSpeed);
}

void ctlPlayback::layOut() {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    for (QWidget *button :
         {static_cast<QWidget *>(cmdPlay), static_cast<QWidget *>(cmdPause),
          static_cast<QWidget *>(cmdStepBack), static_cast<QWidget *>(cmdStepForward),
          static_cast<QWidget *>(cmdClose)}) {
        row->addWidget(button);
    }
    row->addSpacing(12);
    row->addWidget(Label1);
    row->addWidget(Slider1);
    row->addWidget(Label2);
    row->addStretch();
}

void ctlPlayback::wireControls() {
    connectGuarded(m_guard, cmdPlay, &QToolButton::clicked, this, &ctlPlayback::startPlay);
    connectGuarded(m_guard, cmdPause, &QToolButton::clicked, this, &ctlPlayback::StopPlay);
    connectGuarded(m_guard, cmdClose, &QToolButton::clicked, this, &ctlPlayback::closePlayback);
    connectGuarded(m_guard, cmdStepForward, &StepButton::wentDown, this,
                   [this] { stepButtonDown(1); });
    connectGuarded(m_guard, cmdStepBack, &StepButton::wentDown, this,
                   [this] { stepButtonDown(-1); });
    connectGuarded(m_guard, cmdStepForward, &StepButton::wentUp, this, &ctlPlayback::stepForwardUp);
    connectGuarded(m_guard, cmdStepBack, &StepButton::wentUp, this, &ctlPlayback::stepBackUp);
    connectGuarded(m_guard, Slider1, &QSlider::sliderReleased, this,
                   &ctlPlayback::finishSpeedChange);
    connectGuarded(m_guard, Slider1, &QSlider::valueChanged, this, &ctlPlayback::speedValueChanged);
    connectGuarded(m_guard, Timer1, &QTimer::timeout, this, &ctlPlayback::tick);
}

void ctlPlayback::startPlay() {
    // Disabling a held button lets it go, so play always starts forward at the slider's speed.
    cmdStepForward->setEnabled(false);
    cmdStepBack->setEnabled(false);
    cmdPlay->setIcon(ImageList1.back());
    setTimerEnabled(true);
    m_Playing = true;
}

void ctlPlayback::StopPlay() {
    setTimerEnabled(false);
    cmdStepForward->setEnabled(true);
    cmdStepBack->setEnabled(true);
    cmdPlay->setIcon(ImageList1.front());
    m_Playing = false;
}

void ctlPlayback::closePlayback() {
    // First, so that no step comes behind Quit.
    StopPlay();
    Q_EMIT Quit();
}

void ctlPlayback::stepButtonDown(qint16 Direction) {
    m_StepDirection = Direction;
    // The step before the timer: the countdown to the first repeat begins when the step is done.
    Q_EMIT Step(m_StepDirection);
    Timer1->setInterval(kHoldMilliseconds);
    setTimerEnabled(true);
}

void ctlPlayback::stepForwardUp() {
    setTimerEnabled(false);
    SetSpeed();
}

void ctlPlayback::stepBackUp() {
    setTimerEnabled(false);
    SetSpeed();
    m_StepDirection = 1;
}

void ctlPlayback::finishSpeedChange() {
    setTimerEnabled(false);
    SetSpeed();
    setTimerEnabled(m_Playing);
}

void ctlPlayback::speedValueChanged() {
    // A drag of the thumb ends with a signal of its own. Any other change, by a key or by a click
    // beside the thumb, is complete at once.
    if (Slider1->isSliderDown()) {
        SetSpeed();
    } else {
        finishSpeedChange();
    }
}

void ctlPlayback::tick() {
    if (!m_Playing) {
        const auto half = Numbers::divideHalfEven(Timer1->interval(), 2);
        Timer1->setInterval(std::max(kFloorMilliseconds, static_cast<int>(half)));
    }
    Q_EMIT Step(m_StepDirection);
}

QString ctlPlayback::SetSpeed() {
    const auto interval = Numbers::roundTo<int>(std::exp2(kFirstSpeed - Slider1->value()) * 1000.0);
    Timer1->setInterval(interval);
    const QString speed = interval > kLongestInMillis ? QString::number(interval / 1000.0) + "s"
                                                      : QString::number(interval) + "ms";
    Slider1->setToolTip("Playback speed " + speed);
    return speed;
}

void ctlPlayback::setTimerEnabled(bool on) {
    // Starting a timer that runs would begin its countdown anew.
    if (on && !Timer1->isActive()) {
        Timer1->start();
    } else if (!on) {
        Timer1->stop();
    }
}

} // namespace veldron
