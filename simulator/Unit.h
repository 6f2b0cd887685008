// SPDX-License-Identifier: MIT
#pragma once

#include "common/LevelScan.h"
#include "simulator/Measurement.h"
#include "simulator/Scene.h"
#include "simulator/UnitSettings.h"

#include <QByteArray>

namespace veldron {

/// The reply to one line, in parts: some faults and the log treat them differently.
struct UnitReply {
    QByteArray text;       ///< the reply line, CR LF included
    QByteArray samples;    ///< of a scan
    QByteArray terminator; ///< of a scan: blank, CR, LF
    QByteArray image;      ///< of an image download, at the higher line speed

    [[nodiscard]] QByteArray all() const { return text + samples + terminator + image; }
};

/// The unit itself: takes a command line and gives the bytes of the reply. The caller sets the
/// time.
///
/// Commands are four capital letters, the argument of a write directly behind them. A write that is
/// accepted is answered by a blank and CR LF, a read by the last three letters of the command, the
/// value, a blank and CR LF, the marker's read by "f", the value and CR LF. An unknown command or a
/// value out of range is answered by "?" and CR LF. One scan is measured at each "RIFD".
class Unit {
public:
    /// Bytes in the block after "RVIM".
    static constexpr qsizetype kImageSize = 168036;

    explicit Unit(quint64 seed = 1);

    /// Seconds since any moment; may stand still or go back.
    void setTime(double seconds) { m_seconds = seconds; }
    [[nodiscard]] double time() const { return m_seconds; }

    /// \a line with or without its CR LF.
    [[nodiscard]] UnitReply reply(const QByteArray &line);
    /// All bytes of reply() in one.
    [[nodiscard]] QByteArray answer(const QByteArray &line) { return reply(line).all(); }
    /// The reply to a line that the unit refuses.
    [[nodiscard]] static QByteArray refusal() { return "?\r\n"; }

    /// The settings as they are.
    [[nodiscard]] const UnitSettings &settings() const { return m_settings; }
    /// Does a write, such as "WSSP5", as if it were made at the unit's own controls; false if
    /// refused.
    bool setByHand(const QByteArray &write) { return answer(write).startsWith(' '); }

    void setAnyByte(bool on) { m_scene.setAnyByte(on); }

private:
    [[nodiscard]] bool write(const QByteArray &name, const QByteArray &argument);
    [[nodiscard]] UnitReply scanReply();
    [[nodiscard]] UnitReply imageReply();
    [[nodiscard]] LevelScan measure();
    [[nodiscard]] ScanWay way() const;

    UnitSettings m_settings;
    Scene m_scene;
    Measurement m_measurement;
    double m_seconds = 0.0;
    quint64 m_scans = 0;
};

} // namespace veldron
