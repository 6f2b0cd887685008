// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>

namespace veldron {

/// What recorder and playback ask of the window: its menus, strips and status bar, and the poll
/// timer.
class HistoryHost {
public:
    HistoryHost() = default;
    HistoryHost(const HistoryHost &) = delete;
    HistoryHost &operator=(const HistoryHost &) = delete;
    virtual ~HistoryHost() = default;

    /// Enables or disables the menu entries, panels and chart that a recording and a playback can't
    /// share with the user.
    virtual void SetControlsEnabled(bool enable) = 0;
    /// Caption of the menu entry that starts and stops a recording.
    virtual void setRecordCaption(const QString &caption) = 0;
    virtual void setRecordEnabled(bool enable) = 0;
    /// Shows or hides the strip of the transport and lays the window out again. The window repaints
    /// at once, in which slots may run: an error in one ends the program before this returns.
    virtual void showTransport(bool visible) = 0;
    virtual void setPollTimerEnabled(bool enable) = 0;
    /// The poll period of the running program, in milliseconds.
    [[nodiscard]] virtual qint16 PollPeriod() const = 0;
    /// Text of panel 1 of the status bar.
    virtual void showStatus(const QString &text) = 0;
    /// Takes clock and activity picture away from panels 2 and 3, which show texts from then on.
    virtual void hideClockAndActivity() = 0;
    /// Texts of panels 2 and 3: the time of the scan shown, and how far the file is read. Call
    /// hideClockAndActivity first. Without that (as in a stranded playback) panel 2 goes on showing
    /// the clock, and panel 3 has the text beside its picture.
    virtual void showPlaybackPlace(const QString &time, const QString &percent) = 0;
    /// Panels 2 and 3 show the clock and the first activity picture again.
    virtual void showClockAndActivity() = 0;
};

} // namespace veldron
