// SPDX-License-Identifier: MIT
#pragma once

#include <QStatusBar>

#include "app/ActivityImage.h"
#include "common/Clock.h"
#include "common/ErrorGuard.h"

#include <QString>
#include <QTimer>

class QLabel;

namespace veldron {

class ActivityPicture;
class ElidedLabel;

/// The form's status bar: panel 1 is the status text and takes the spare width; panel 2 the clock,
/// or a text during playback; panel 3 the activity picture, or a text. Panels 2 and 3 come with
/// addPanels.
class StatusPanels : public QStatusBar {
    Q_OBJECT

public:
    /// \a clock outlives the bar.
    StatusPanels(const ErrorGuard &guard, Clock &clock, QWidget *parent = nullptr);

    /// Called once, at the end of the start; a second call does nothing. Before it, every call that
    /// is about panels 2 and 3 does nothing.
    void addPanels();
    /// Panel 1. A text that is too long is cut in its middle.
    void setStatusText(const QString &text);
    /// Shows \a image at once, without running the event loop.
    void showActivity(ActivityImage image);
    /// Panels 2 and 3 are for texts from now on: neither the clock nor a picture is there.
    void hideClockAndActivity();
    /// Texts of panels 2 and 3. While the clock is there panel 2 goes on showing it, and panel 3
    /// has its picture beside the text.
    void showTexts(const QString &second, const QString &third);
    /// The clock on panel 2 and the blank picture on panel 3.
    void showClockAndActivity();

private:
    /// Shows the time and waits for the next minute.
    void renewClock();

    Clock &m_clock;
    ElidedLabel *m_panel1 = nullptr;
    QLabel *m_panel2 = nullptr;
    QLabel *m_panel3Text = nullptr;
    ActivityPicture *m_panel3 = nullptr;
    QTimer m_clockTimer{this};
    /// Panel 2 is the clock, and not a text.
    bool m_showsClock = true;
};

} // namespace veldron
