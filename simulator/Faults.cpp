// SPDX-License-Identifier: MIT
#include "simulator/Faults.h"

#include <algorithm>
#include <array>

namespace veldron {

namespace {

constexpr qsizetype kEcho = 3;

struct KindName {
    Fault::Kind kind;
    const char *name;
};

constexpr std::array kKindNames = {
    KindName{Fault::Kind::Lose, "lose"},
    KindName{Fault::Kind::Delay, "delay"},
    KindName{Fault::Kind::Split, "split"},
    KindName{Fault::Kind::RubbishBefore, "before"},
    KindName{Fault::Kind::RubbishBehind, "behind"},
    KindName{Fault::Kind::Garble, "garble"},
    KindName{Fault::Kind::Refuse, "refuse"},
    KindName{Fault::Kind::WrongEcho, "echo"},
    KindName{Fault::Kind::FlipBit, "bit"},
    KindName{Fault::Kind::NoLineFeed, "no-lf"},
    KindName{Fault::Kind::Previous, "previous"},
    KindName{Fault::Kind::LocalEcho, "local-echo"},
    KindName{Fault::Kind::Hold, "hold"},
    KindName{Fault::Kind::Endless, "endless"},
    KindName{Fault::Kind::ScanCut, "scan-cut"},
    KindName{Fault::Kind::ScanShort, "scan-short"},
    KindName{Fault::Kind::ScanUnended, "scan-unended"},
    KindName{Fault::Kind::ScanEarlyEnd, "scan-early"},
};

/// Each byte with its top bit set, so that none can end a line.
QByteArray garbled(const QByteArray &line) {
    QByteArray text = line;
    for (qsizetype i = 0; i + 2 < text.size(); ++i) {
        text[i] = static_cast<char>(0x80 | (text.at(i) & 0x7F));
    }
    return text;
}

/// What a line without parity lets through when one wire is bad.
QByteArray withBitFlipped(const QByteArray &line, int bit) {
    QByteArray text = line;
    for (qsizetype i = 0; i + 2 < text.size(); ++i) {
        text[i] = static_cast<char>(text.at(i) ^ (1 << bit));
    }
    return text;
}

/// The echo replaced by as many other letters.
QByteArray wronglyEchoed(const QByteArray &line) {
    QByteArray text = line;
    for (qsizetype i = 0; i < std::min(kEcho, text.size() - 2); ++i) {
        text[i] = 'X';
    }
    return text;
}

QByteArray earlyEnd(const QByteArray &samples, qsizetype place) {
    QByteArray spoilt = samples;
    const QByteArray end = " \r\n";
    return spoilt.replace(std::min(place, samples.size()), end.size(), end);
}

std::vector<Portion> byteByByte(const QByteArray &bytes, double pause) {
    std::vector<Portion> single;
    for (const char c : bytes) {
        single.push_back({QByteArray(1, c), single.empty() ? 0.0 : pause, false});
    }
    return single;
}

} // namespace

void Faults::arm(const Fault &fault) {
    m_armed.push_back(fault);
}

void Faults::clear() {
    m_armed.clear();
    endSilence();
}

std::optional<Fault> Faults::take(const QByteArray &command) {
    const auto fits = [&command](const Fault &fault) {
        return command.startsWith(fault.command) && (!fault.isOfScan() || command == "RIFD");
    };
    const auto found = std::find_if(m_armed.begin(), m_armed.end(), fits);
    if (found == m_armed.end()) {
        return std::nullopt;
    }
    const Fault fault = *found;
    if (--found->times <= 0) {
        m_armed.erase(found);
    }
    return fault;
}

void Faults::silenceForGood() {
    m_silentUntil = std::numeric_limits<double>::infinity();
}

void Faults::endSilence() {
    m_silentUntil = -std::numeric_limits<double>::infinity();
}

QByteArray Faults::name(Fault::Kind kind) {
    const auto *row = std::find_if(kKindNames.begin(), kKindNames.end(),
                                   [kind](const KindName &item) { return item.kind == kind; });
    return row == kKindNames.end() ? QByteArray() : QByteArray(row->name);
}

std::optional<Fault::Kind> Faults::kindOf(const QByteArray &name) {
    const auto *row = std::find_if(kKindNames.begin(), kKindNames.end(),
                                   [&name](const KindName &item) { return name == item.name; });
    if (row == kKindNames.end()) {
        return std::nullopt;
    }
    return row->kind;
}

UnitReply Faults::spoil(UnitReply reply, const Fault &fault) {
    switch (fault.kind) {
    case Fault::Kind::Lose:
        return {};
    case Fault::Kind::Garble:
        reply.text = garbled(reply.text);
        break;
    case Fault::Kind::WrongEcho:
        reply.text = wronglyEchoed(reply.text);
        break;
    case Fault::Kind::FlipBit:
        reply.text = withBitFlipped(reply.text, fault.count);
        break;
    case Fault::Kind::NoLineFeed:
        reply.text.chop(1);
        break;
    case Fault::Kind::RubbishBefore:
        reply.text.prepend(fault.bytes);
        break;
    case Fault::Kind::ScanCut:
        reply.samples.truncate(fault.count);
        reply.terminator.clear();
        break;
    case Fault::Kind::ScanShort:
        reply.samples.truncate(fault.count);
        break;
    case Fault::Kind::ScanUnended:
        reply.terminator.clear();
        break;
    case Fault::Kind::ScanEarlyEnd:
        reply.samples = earlyEnd(reply.samples, fault.count);
        break;
    default:
        break;
    }
    return reply;
}

std::vector<Portion> Faults::portions(const UnitReply &reply, const std::optional<Fault> &fault) {
    // The image stands apart: it leaves at another speed, behind a pause of its own.
    const QByteArray line = reply.text + reply.samples + reply.terminator;
    std::vector<Portion> portions;
    if (fault && fault->kind == Fault::Kind::Split) {
        portions = byteByByte(line, fault->seconds);
    } else if (!line.isEmpty()) {
        portions.push_back({line, 0.0, false});
    }
    if (fault && fault->kind == Fault::Kind::Delay && !portions.empty()) {
        portions.front().pause += fault->seconds;
    }
    if (fault && fault->kind == Fault::Kind::RubbishBehind) {
        portions.push_back({fault->bytes, 0.0, false});
    }
    if (fault && fault->kind == Fault::Kind::Endless) {
        portions.push_back({QByteArray(fault->count, 'U'), 0.0, false});
    }
    if (!reply.image.isEmpty()) {
        portions.push_back({reply.image, kImagePause, true});
    }
    return portions;
}

} // namespace veldron
