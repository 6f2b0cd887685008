// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "common/ErrorGuard.h"

#include <QIcon>
#include <QString>

#include <array>

class QHBoxLayout;
class QLabel;
class QSlider;
class QTimer;
class QToolButton;

namespace veldron {

class StepButton;
enum class PlaybackShape;

/// The transport of a playback: buttons, a speed slider and a timer, turned into steps.
///
/// It knows neither files nor charts. It repeats in two ways: continuous play at the slider's
/// interval (from 4 s at 0 down to 16 ms at 8), and a held step button, which repeats after 700 ms
/// and then after half of the last interval each time, down to 15 ms. One control serves the whole
/// run of the program: the slider keeps its place from one playback to the next.
///
/// The slot of Step runs to its end inside the signal, so a slow one only delays the next.
class ctlPlayback : public QWidget {
    Q_OBJECT

public:
    /// \a guard receives what the slots of Step and Quit throw.
    explicit ctlPlayback(ErrorGuard guard, QWidget *parent = nullptr);
    ctlPlayback(const ctlPlayback &) = delete;
    ctlPlayback &operator=(const ctlPlayback &) = delete;
    ~ctlPlayback() override;

    /// Ends continuous play, just as a click on cmdPause does.
    void StopPlay();

Q_SIGNALS:
    /// One step of the playback: 1 forward, -1 back.
    void Step(qint16 Direction);
    /// The user closed the playback; continuous play is off by then.
    void Quit();

private:
    void makeControls();
    QToolButton *setUpButton(QToolButton *button, const char *name, const QString &tip,
                             PlaybackShape shape);
    void makeSpeedControls();
    void layOut();
    void wireControls();
    // What the controls' events do.
    void startPlay();
    void closePlayback();
    /// The first step comes at the press, the repeats by the timer.
    void stepButtonDown(qint16 Direction);
    void stepForwardUp();
    void stepBackUp();
    void finishSpeedChange();
    void speedValueChanged();
    /// One Step, and the timer's next interval: the slider's in continuous play, otherwise half of
    /// the last one.
    void tick();
    /// Takes the timer's interval from the slider, and writes the slider's tip; the speed as text.
    QString SetSpeed();
    void setTimerEnabled(bool on);

    ErrorGuard m_guard;
    bool m_Playing = false;     ///< continuous play is on; a held step button is not playing
    qint16 m_StepDirection = 1; ///< what the next Step carries: 1 or -1
    /// The pictures of cmdPlay: while paused, while playing.
    std::array<QIcon, 2> ImageList1;
    /// Paces the repeats of both ways.
    QTimer *Timer1 = nullptr;
    QToolButton *cmdPlay = nullptr;
    QToolButton *cmdPause = nullptr;
    StepButton *cmdStepForward = nullptr;
    StepButton *cmdStepBack = nullptr;
    QToolButton *cmdClose = nullptr;
    QSlider *Slider1 = nullptr;
    QLabel *Label1 = nullptr;
    QLabel *Label2 = nullptr;
};

} // namespace veldron
