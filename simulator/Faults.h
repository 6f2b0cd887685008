// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ReplyQueue.h"
#include "simulator/Unit.h"

#include <QByteArray>

#include <limits>
#include <optional>
#include <vector>

namespace veldron {

/// One thing that goes wrong with one reply.
struct Fault {
    enum class Kind {
        Lose,          ///< the unit does as told, and the reply is lost
        Delay,         ///< the reply comes after `seconds`
        Split,         ///< it comes byte by byte, `seconds` apart
        RubbishBefore, ///< `bytes` come right before it
        RubbishBehind, ///< `bytes` come right behind it
        Garble,        ///< its line is damaged in every byte but CR LF
        Refuse,        ///< the unit does not do as told and answers "?"
        WrongEcho,     ///< the line begins with other letters than it should
        ScanCut,       ///< a scan stops for good after `count` samples
        ScanShort,     ///< a scan ends properly after `count` samples
        ScanUnended,   ///< a scan comes without its terminator
        ScanEarlyEnd,  ///< blank, CR, LF stand in the place of sample `count` and the next two
    };

    Kind kind = Kind::Lose;
    double seconds = 0.0;
    int count = 0;
    QByteArray bytes;
    /// Letters that the command begins with; empty takes any. The faults of scans wait for a scan.
    QByteArray command;
    /// How many replies it is for.
    int times = 1;

    [[nodiscard]] bool isOfScan() const { return kind >= Kind::ScanCut; }
};

/// What is going to go wrong: a list of armed faults, and silence.
///
/// Each reply uses up the oldest fault that fits its command, and no other. Time is in seconds
/// from outside.
class Faults {
public:
    /// Quiet before the image block, for the other side to change its line speed.
    static constexpr double kImagePause = 0.25;

    void arm(const Fault &fault);
    /// Disarms everything and ends a silence.
    void clear();
    [[nodiscard]] const std::vector<Fault> &armed() const { return m_armed; }
    /// The fault for the reply to \a command, used up once.
    [[nodiscard]] std::optional<Fault> take(const QByteArray &command);

    /// The unit neither hears nor speaks until \a until.
    void silenceUntil(double until) { m_silentUntil = until; }
    void silenceForGood();
    void endSilence();
    [[nodiscard]] bool isSilent(double now) const { return now < m_silentUntil; }

    /// How the fault is called: the word that arms it.
    [[nodiscard]] static QByteArray name(Fault::Kind kind);
    /// The kind called \a name; nothing if there is none.
    [[nodiscard]] static std::optional<Fault::Kind> kindOf(const QByteArray &name);
    /// \a reply with the damage of \a fault to its bytes.
    [[nodiscard]] static UnitReply spoil(UnitReply reply, const Fault &fault);
    /// How \a reply, already spoilt, goes out: with the pauses of \a fault and what follows it.
    [[nodiscard]] static std::vector<Portion> portions(const UnitReply &reply,
                                                       const std::optional<Fault> &fault);

private:
    std::vector<Fault> m_armed;
    double m_silentUntil = -std::numeric_limits<double>::infinity();
};

} // namespace veldron
