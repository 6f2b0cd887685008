// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/ReplyQueue.h"
#include "simulator/Unit.h"

#include <QByteArray>

#include <limits>
#include <optional>
#include <vector>

namespace veldron {

/// One fault of one reply.
struct Fault {
    enum class Kind {
        Lose,          ///< the command is carried out, and the reply is lost
        Delay,         ///< the reply comes after `seconds`
        Split,         ///< it comes byte by byte, `seconds` apart
        RubbishBefore, ///< `bytes` come right before it
        RubbishBehind, ///< `bytes` come right behind it
        Garble,        ///< its line is damaged in every byte but CR LF
        Refuse,        ///< the command is not carried out, and the reply is "?"
        WrongEcho,     ///< the line begins with other letters than it should
        FlipBit,       ///< bit `count` of every byte of its line but CR LF is another
        NoLineFeed,    ///< its line ends in CR alone
        Previous,      ///< the line of the reply before comes in its place
        LocalEcho,     ///< the command comes back in front of it
        Hold,          ///< it waits, and comes right before the next reply
        Endless,       ///< `count` bytes without a line end come right behind it
        ScanCut,       ///< a scan stops after `count` samples, nothing follows
        ScanShort,     ///< a scan ends properly after `count` samples
        ScanUnended,   ///< a scan comes without its terminator
        ScanEarlyEnd,  ///< blank, CR, LF stand in the place of sample `count` and the next two
    };

    Kind kind = Kind::Lose;
    /// What the comments of the kinds name; a kind takes no notice of the others.
    double seconds = 0.0;
    int count = 0;
    QByteArray bytes;
    /// Only commands that begin with these letters; empty takes any. The faults of scans wait for
    /// the next scan.
    QByteArray command;
    /// How many replies it damages.
    int times = 1;

    [[nodiscard]] bool isOfScan() const { return kind >= Kind::ScanCut; }
};

/// The list of armed faults, and silence.
///
/// Each reply uses up the oldest fault that fits its command, and no other. Time is in seconds from
/// outside. A command that comes in while the unit is silent uses up none.
///
/// Order of calls for a reply: take(), then spoil() on what the unit said, then portions().
class Faults {
public:
    /// Seconds of pause before the image block, in which the program changes its line speed.
    static constexpr double kImagePause = 0.25;

    /// Behind those that are armed already.
    void arm(const Fault &fault);
    /// Disarms everything and ends a silence.
    void clear();
    [[nodiscard]] const std::vector<Fault> &armed() const { return m_armed; }
    /// The fault for the reply to \a command, used up once.
    [[nodiscard]] std::optional<Fault> take(const QByteArray &command);

    /// The unit takes no command and sends nothing until \a until.
    void silenceUntil(double until) { m_silentUntil = until; }
    void silenceForGood();
    void endSilence();
    [[nodiscard]] bool isSilent(double now) const { return now < m_silentUntil; }

    /// The name of the fault, which is also the word that arms it on the console.
    [[nodiscard]] static QByteArray name(Fault::Kind kind);
    /// The kind called \a name; nothing if there is none.
    [[nodiscard]] static std::optional<Fault::Kind> kindOf(const QByteArray &name);
    /// \a reply with its bytes damaged as \a fault says.
    [[nodiscard]] static UnitReply spoil(UnitReply reply, const Fault &fault);
    /// The portions that \a reply, already spoilt, is sent in, with the pauses and the bytes that
    /// \a fault adds.
    [[nodiscard]] static std::vector<Portion> portions(const UnitReply &reply,
                                                       const std::optional<Fault> &fault);

private:
    std::vector<Fault> m_armed;
    double m_silentUntil = -std::numeric_limits<double>::infinity();
};

} // namespace veldron
