// SPDX-License-Identifier: MIT
#pragma once

#include "history/HistoryHost.h"
#include "history/PlaybackEngine.h"
#include "history/Recorder.h"
#include "history/ctlPlayback.h"
#include "tests/support/SettingsFixture.h"

#include <QToolButton>

namespace veldron {

/// A disk that counts its flushes, doesn't wait and fails on demand.
class CountingDisk : public Disk {
public:
    QString force(QFileDevice & /*file*/) override {
        ++forced;
        return error;
    }
    QString forceName(const QString & /*path*/) override {
        ++namesForced;
        return nameError;
    }
    int forced = 0;
    int namesForced = 0;
    QString error;
    QString nameError;
};

/// Adds recorder and playback engine, and notes in the log what they ask of the window.
class HistoryFixture : public SettingsFixture, public HistoryHost {
public:
    using SettingsFixture::SettingsFixture;

    void SetControlsEnabled(bool enable) override { note("SetControlsEnabled", enable); }
    void setRecordCaption(const QString &caption) override {
        SettingsFixture::note(QStringLiteral("caption ") + caption);
    }
    void setRecordEnabled(bool enable) override { note("record enabled", enable); }
    void showTransport(bool visible) override { note("transport visible", visible); }
    void setPollTimerEnabled(bool enable) override { note("poll timer", enable); }
    [[nodiscard]] qint16 PollPeriod() const override { return pollPeriod; }
    void showStatus(const QString &text) override {
        status = text;
        SettingsFixture::note(QStringLiteral("panel 1: ") + text);
    }
    void hideClockAndActivity() override {
        SettingsFixture::note(QStringLiteral("no clock and activity"));
    }
    void showPlaybackPlace(const QString &time, const QString &percent) override {
        place = time + QStringLiteral(" / ") + percent;
        SettingsFixture::note(QStringLiteral("place: ") + place);
    }
    void showClockAndActivity() override {
        SettingsFixture::note(QStringLiteral("clock and activity"));
    }
    /// A step while the transport plays; the log notes if the step has stopped it.
    void step(qint16 Direction) {
        auto *const play = transport.findChild<QToolButton *>(QStringLiteral("cmdPlay"));
        auto *const forward = transport.findChild<QToolButton *>(QStringLiteral("cmdStepForward"));
        play->click();
        playback.Step(Direction);
        if (forward->isEnabled()) {
            SettingsFixture::note(QStringLiteral("StopPlay"));
        }
    }
    /// As in the program, reading back ends with a block in a running recording.
    void ReadBackSettings() override {
        SettingsFixture::ReadBackSettings();
        if (session.Recording) {
            recorder.writeSettings();
        }
    }

    ScriptedFileDialogs dialogs;
    qint16 pollPeriod = 1000;
    QString status;
    QString place;
    CountingDisk disk;
    Recorder recorder{
        {session, lines, *this, dialogs, clock, texts, QStringLiteral("the/program/folder"), disk}};
    ctlPlayback transport{guard};
    PlaybackEngine playback{{holders, session, lines, *this, *this, transport, dialogs, texts,
                             QStringLiteral("the/program/folder")}};

private:
    using SettingsFixture::note;
    void note(const char *what, bool on) {
        SettingsFixture::note(QLatin1String(what) + QLatin1String(on ? " on" : " off"));
    }
};

} // namespace veldron
