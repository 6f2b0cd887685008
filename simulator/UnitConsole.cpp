// SPDX-License-Identifier: MIT
#include "simulator/UnitConsole.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veldron {

namespace {

/// The console's name of a setting, and the letters of its commands without "W" and "R".
struct SettingName {
    const char *name;
    const char *letters;
};

constexpr std::array kSettings = {
    SettingName{"receiver", "URX"},  SettingName{"mode", "UMD"},
    SettingName{"step", "UST"},      SettingName{"attenuator", "UAT"},
    SettingName{"amplitude", "SGN"}, SettingName{"bandwidth", "SBW"},
    SettingName{"datamode", "SDM"},  SettingName{"average", "SAV"},
    SettingName{"median", "SME"},    SettingName{"monitor", "UOM"},
    SettingName{"centre", "SCF"},    SettingName{"span", "SSP"},
    SettingName{"channels", "UCS"},  SettingName{"marker", "UDS"},
};

const SettingName *findSetting(const QByteArray &name) {
    const auto *found = std::find_if(kSettings.begin(), kSettings.end(),
                                     [&name](const SettingName &row) { return name == row.name; });
    return found == kSettings.end() ? nullptr : found;
}

QByteArray error(const QByteArray &reason) {
    return "error: " + reason;
}

std::optional<double> readSeconds(const QByteArray &text) {
    bool good = false;
    const double seconds = text.toDouble(&good);
    if (!good || !std::isfinite(seconds) || seconds < 0.0) {
        return std::nullopt;
    }
    return seconds;
}

std::optional<int> readCount(const QByteArray &text) {
    bool good = false;
    const int count = text.toInt(&good);
    if (!good || count < 0) {
        return std::nullopt;
    }
    return count;
}

/// Text with \r, \n, \\ and \xNN in it; nothing if such a sequence is broken.
std::optional<QByteArray> readBytes(const QByteArray &text) {
    QByteArray bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != '\\') {
            bytes += text.at(i);
            continue;
        }
        const char kind = i + 1 < text.size() ? text.at(i + 1) : '\0';
        if (kind == 'r' || kind == 'n' || kind == '\\') {
            bytes += kind == 'r' ? '\r' : (kind == 'n' ? '\n' : '\\');
            i += 1;
            continue;
        }
        bool good = false;
        const int value = text.mid(i + 2, 2).toInt(&good, 16);
        if (kind != 'x' || !good || text.size() < i + 4) {
            return std::nullopt;
        }
        bytes += static_cast<char>(value);
        i += 3;
    }
    return bytes;
}

/// Reads the argument of a fault into it; false if it is none of that kind.
bool readArgument(Fault &fault, const QByteArray &text) {
    const bool given = !text.isEmpty();
    std::optional<double> seconds = 0.02;
    const bool isBit = fault.kind == Fault::Kind::FlipBit;
    std::optional<int> count = isBit ? 0 : 100;
    std::optional<QByteArray> bytes = QByteArray("#~#");
    switch (fault.kind) {
    case Fault::Kind::Delay:
    case Fault::Kind::Split:
        seconds = given ? readSeconds(text) : seconds;
        break;
    case Fault::Kind::RubbishBefore:
    case Fault::Kind::RubbishBehind:
        bytes = given ? readBytes(text) : bytes;
        break;
    case Fault::Kind::FlipBit:
    case Fault::Kind::Endless:
    case Fault::Kind::ScanCut:
    case Fault::Kind::ScanShort:
    case Fault::Kind::ScanEarlyEnd:
        count = given ? readCount(text) : count;
        break;
    default:
        return !given;
    }
    if (!seconds || !count || !bytes || (isBit && *count > 7) ||
        (fault.kind == Fault::Kind::Delay && !given)) {
        return false;
    }
    fault.seconds = *seconds;
    fault.count = *count;
    fault.bytes = *bytes;
    return true;
}

} // namespace

UnitConsole::UnitConsole(Unit &unit, Faults &faults, UnitLine &line)
    : m_unit(unit), m_faults(faults), m_line(line) {}

QByteArray UnitConsole::execute(const QByteArray &line, double now) {
    const Words words = line.simplified().split(' ');
    const QByteArray &verb = words.first();
    if (verb.isEmpty()) {
        return {};
    }
    m_line.traffic().log().noted("by hand: " + line.simplified());
    if (verb == "help") {
        return helpText() + "ok";
    }
    if (verb == "quit") {
        m_quit = true;
        return "ok";
    }
    if (verb == "silence") {
        return silence(words, now);
    }
    if (verb == "speak") {
        m_faults.endSilence();
        return "ok";
    }
    if (verb == "clear") {
        m_faults.clear();
        return "ok";
    }
    if (verb == "armed") {
        return listArmed();
    }
    if (verb == "unplug") {
        m_line.unplug();
        return "ok";
    }
    if (verb == "plug") {
        return plug();
    }
    if (verb == "set") {
        return set(words);
    }
    return verb == "get" ? get(words) : arm(words);
}

QByteArray UnitConsole::silence(const Words &words, double now) {
    if (words.size() == 2 && words.at(1) == "forever") {
        m_faults.silenceForGood();
        return "ok";
    }
    const std::optional<double> seconds =
        words.size() == 2 ? readSeconds(words.at(1)) : std::nullopt;
    if (!seconds) {
        return error("silence needs seconds or \"forever\"");
    }
    m_faults.silenceUntil(now + *seconds);
    return "ok";
}

QByteArray UnitConsole::plug() {
    return m_line.plug() ? QByteArray("ok") : error(m_line.error().toLocal8Bit());
}

QByteArray UnitConsole::set(const Words &words) {
    const SettingName *setting = words.size() > 2 ? findSetting(words.at(1)) : nullptr;
    if (setting == nullptr) {
        return error("set needs the name of a setting and a value");
    }
    const QByteArray value = words.mid(2).join(' ');
    const bool hasBlank = QByteArray(setting->letters) == "UCS";
    return m_unit.setByHand("W" + QByteArray(setting->letters) + (hasBlank ? " " : "") + value)
               ? QByteArray("ok")
               : error("the unit refuses " + value);
}

QByteArray UnitConsole::get(const Words &words) {
    QByteArray text;
    for (const SettingName &setting : kSettings) {
        if (words.size() > 1 && words.at(1) != setting.name) {
            continue;
        }
        const bool isMarker = QByteArray(setting.letters) == "UDS";
        const QByteArray reply =
            isMarker ? m_unit.answer("RICD") : m_unit.answer("R" + QByteArray(setting.letters));
        text += QByteArray(setting.name) + " " +
                (isMarker ? reply.mid(1).chopped(2) : reply.mid(3).chopped(3)) + "\n";
    }
    return text.isEmpty() ? error("no such setting") : text + "ok";
}

QByteArray UnitConsole::arm(Words words) {
    Fault fault;
    while (words.size() > 2 && (words.first() == "on" || words.first() == "times")) {
        const std::optional<int> times =
            words.first() == "times" ? readCount(words.at(1)) : std::optional<int>(fault.times);
        if (!times || *times < 1) {
            return error("times needs a number above 0");
        }
        fault.times = *times;
        fault.command = words.first() == "on" ? words.at(1) : fault.command;
        words = words.mid(2);
    }
    const std::optional<Fault::Kind> kind = Faults::kindOf(words.first());
    if (!kind) {
        return error("unknown: " + words.first() + "; help lists what there is");
    }
    fault.kind = *kind;
    if (!readArgument(fault, words.mid(1).join(' '))) {
        return error("bad argument of " + words.first());
    }
    m_faults.arm(fault);
    return "ok";
}

QByteArray UnitConsole::listArmed() const {
    QByteArray text;
    for (const Fault &fault : m_faults.armed()) {
        const QByteArray command =
            fault.command.isEmpty() ? QByteArray() : "on " + fault.command + " ";
        text += command + "times " + QByteArray::number(fault.times) + " " +
                Faults::name(fault.kind) + "\n";
    }
    return text + "ok";
}

QByteArray UnitConsole::helpText() {
    return "Faults, each for one reply, the oldest that fits first:\n"
           "  lose                 the unit obeys, the reply is lost\n"
           "  delay SECONDS        the reply comes late\n"
           "  split [SECONDS]      it comes in single bytes, so far apart (0.02)\n"
           "  before [BYTES]       rubbish right before it (#~#)\n"
           "  behind [BYTES]       rubbish right behind it (#~#)\n"
           "  garble               every byte of its line is damaged but CR LF\n"
           "  refuse               the unit doesn't obey and answers \"?\"\n"
           "  echo                 its line begins with wrong letters\n"
           "  bit [N]              bit N of every byte of its line is flipped (0)\n"
           "  no-lf                its line ends in CR alone\n"
           "  previous             the line of the reply before comes in its place\n"
           "  local-echo           the command comes back in front of it\n"
           "  hold                 it waits, and comes right before the next reply\n"
           "  endless [N]          N bytes without a line end come behind it (100)\n"
           "  scan-cut [N]         a scan stops for good after N samples (100)\n"
           "  scan-short [N]       a scan ends properly after N samples (100)\n"
           "  scan-unended         a scan comes without its terminator\n"
           "  scan-early [N]       blank, CR, LF stand at sample N of a scan (100)\n"
           "  on LETTERS FAULT     the same for a command that begins so: on RIVE lose\n"
           "  times N FAULT        the same for N replies\n"
           "  BYTES may hold \\r, \\n, \\\\ and \\xNN.\n"
           "  armed                lists what is still to come\n"
           "  clear                disarms all and ends a silence\n"
           "The line:\n"
           "  silence SECONDS      the unit neither hears nor speaks; or: silence forever\n"
           "  speak                ends a silence\n"
           "  unplug               the terminal goes away\n"
           "  plug                 it comes back\n"
           "The unit, by hand:\n"
           "  set NAME VALUE       changes a setting; numbers as on the line\n"
           "  get [NAME]           shows one setting, or all\n"
           "  NAME is receiver, mode, step (kHz), attenuator (1 on, 2 off), amplitude (dB),\n"
           "  bandwidth (1 to 4), datamode (1 to 4), average, median, monitor (1 to 3),\n"
           "  centre (MHz), span (MHz), channels (MHz kHz MHz), marker (1 up, 2 down).\n"
           "Others:\n"
           "  help                 this text\n"
           "  quit                 ends the simulator\n";
}

} // namespace veldron
