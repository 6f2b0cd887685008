// SPDX-License-Identifier: MIT
#include "tests/fuzz/LinkEntry.h"

#include "link/Wire.h"
#include "link/frmVDR.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/FuzzedLine.h"
#include "tests/fuzz/PlainText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <type_traits>

namespace veldron {

namespace {

using Delivery = FuzzedLine::Delivery;

constexpr char kNextAct = 0x1E;
constexpr char kNextTurn = 0x1D;
constexpr qsizetype kMostActs = 6;
/// Acts that there are; those from kFirstWrite on have a value.
constexpr std::size_t kActCount = 31;
constexpr std::size_t kFirstWrite = 16;
constexpr qsizetype kValueLength = 4;

constexpr double kMorning = 36000.0;
constexpr double kBeforeMidnight = 86399.5;

/// Seconds that a command may take: its limit, the bytes that it waits for ahead of that, and what
/// the line oversleeps.
constexpr double kLongestExchange = 1.0 + 0.05 + 3 * FuzzedLine::kOversleep;
/// The same over midnight, and for what a download waits.
constexpr double kLongestWait = 62.0;

class QuietHost : public LinkHost {
public:
    void setHourglass(bool /*on*/) override {}
    void showMessage(const QString & /*title*/, const QString & /*text*/) override {}
};

/// The link with what its tests see.
class OpenedVDR : public frmVDR {
public:
    using frmVDR::frmVDR;
    using frmVDR::LastReply;
    using frmVDR::settings;
};

/// An act of the talk, taken out of the fuzzer's bytes.
struct Act {
    std::size_t what = 0; ///< its place in the table of acts
    qint32 value = 0;
    QList<QByteArray> turns;
};

/// What an act's first command is answered with; nothing where no plain reading can tell how much
/// of it is in time.
using Answer = std::optional<QByteArray>;

class Talk {
public:
    Talk(double secondsOfDay, Delivery delivery)
        : m_clock(secondsOfDay), m_line(m_clock, delivery), m_vdr(m_line, m_clock, m_host) {
        m_vdr.setCommPort(FuzzedLine::kPort);
    }

    /// Takes \a act, and writes the transcript of it.
    void take(const Act &act) {
        m_transcript.clear();
        m_line.setTurns(act.turns);
        m_turns = &act.turns;
        const double start = m_clock.steadySeconds();
        const bool overMidnight = m_clock.seconds() > kBeforeMidnight - kLongestExchange;
        const qsizetype before = m_line.commands().size();
        m_allowance = 0.0;
        m_answer = m_lost || act.turns.isEmpty() ? std::nullopt
                                                 : FuzzedLine::withoutPauses(act.turns.front());
        m_mayTalk = m_vdr.Connected();
        // Late bytes of an act before may stand in front of the answer.
        m_answer = m_mayBeLate ? std::nullopt : m_answer;
        for (const QByteArray &turn : act.turns) {
            m_mayBeLate = m_mayBeLate || !FuzzedLine::withoutPauses(turn);
        }
        kActs.at(act.what)(*this, act.value);
        const qsizetype count = m_line.commands().size() - before;
        demand(m_clock.steadySeconds() - start <=
               m_allowance +
                   static_cast<double>(count) * (overMidnight ? kLongestWait : kLongestExchange));
        demand(!m_vdr.Active() && m_line.inputLength() == 0);
        if (count == 1 && isPlain() && !opensAnew(act.what)) {
            demand(m_vdr.Connected() == !replyLine(*m_answer).isEmpty());
            demand(m_vdr.Connected() || m_vdr.LastReply().isEmpty());
        }
        note(m_vdr.Status());
        note(m_vdr.LastReply());
        note(m_vdr.Version());
        note(m_vdr.Connected());
    }
    /// Whether nothing in the talk so far came late.
    [[nodiscard]] bool isTimeless() const { return !m_mayBeLate; }
    [[nodiscard]] const QByteArray &transcript() const { return m_transcript; }
    [[nodiscard]] const QByteArrayList &commands() const { return m_line.commands(); }

private:
    using Step = void (*)(Talk &talk, qint32 value);

    void note(const QString &text) { m_transcript += text.toLatin1() + '\n'; }
    void note(qint64 number) { m_transcript += QByteArray::number(number) + '\n'; }
    void note(bool flag) { m_transcript += flag ? "yes\n" : "no\n"; }

    /// Whether an act says by itself whether the link is up.
    [[nodiscard]] static bool opensAnew(std::size_t what) {
        return kActs.at(what) == connect || kActs.at(what) == look;
    }

    // ---- the plain reading of an answer

    /// The reply line with its end, empty where there is none.
    [[nodiscard]] static QByteArray replyLine(const QByteArray &answer) {
        return answer.left(answer.indexOf("\r\n") + 2 * (answer.contains("\r\n") ? 1 : 0));
    }
    /// The value behind the echo of a read whose command ends in \a echo; nothing where the reply
    /// isn't one to it.
    [[nodiscard]] Answer payload(const char *echo) const {
        const QByteArray line = replyLine(*m_answer);
        if (line.isEmpty() || line.left(3) != echo) {
            return std::nullopt;
        }
        const QByteArray behind = line.mid(3);
        return behind.left(qMax<qsizetype>(0, behind.size() - 3));
    }
    /// Whether the plain reading can be held against what the link made of the answer.
    [[nodiscard]] bool isPlain() const { return m_mayTalk && m_answer; }
    /// A whole number of 16 bits where the number that \a text begins with is taken.
    [[nodiscard]] static qint64 leading(const QByteArray &text) {
        const double number = std::nearbyint(PlainText::leadingNumber(text));
        return static_cast<qint64>(std::clamp(number, -32768.0, 32767.0));
    }
    /// The same where the whole text must be a number.
    [[nodiscard]] static std::optional<qint64> strict(QByteArrayView text) {
        while (text.startsWith(' ')) {
            text = text.sliced(1);
        }
        while (text.endsWith(' ')) {
            text.chop(1);
        }
        if (PlainText::strictDecimal(text, '.').kind == PlainText::Decimal::Kind::None) {
            return std::nullopt;
        }
        const double number = std::nearbyint(PlainText::leadingNumber(text));
        return number >= -32768.0 && number <= 32767.0 ? std::optional(static_cast<qint64>(number))
                                                       : std::nullopt;
    }

    void expectStrict(qint64 got, const char *echo) {
        if (isPlain()) {
            const Answer text = payload(echo);
            const std::optional<qint64> plain = text ? strict(*text) : std::nullopt;
            demand(got == plain.value_or(-1) && m_vdr.readFailed() != plain.has_value());
        }
        note(got);
    }
    void expectLeading(qint64 got, const char *echo) {
        if (isPlain()) {
            const Answer text = payload(echo);
            demand(got == (text ? leading(*text) : -1) && m_vdr.readFailed() != text.has_value());
        }
        note(got);
    }
    void expectMegahertz(Hertz got, const Answer &text) {
        if (isPlain()) {
            const double plain = PlainText::leadingNumber(text.value_or("")) * 1e6;
            const double units = std::clamp(std::nearbyint(plain * 1e4), -9223372036854775808.0,
                                            9223372036854775808.0);
            demand(text ? static_cast<double>(got.units()) == units : got == Hertz::fromWhole(-1));
        }
        note(got.units());
    }
    void expectScan(const LevelScan &got) {
        demand(!got.empty() && got.size() <= 325);
        if (isPlain()) {
            const QByteArray line = replyLine(*m_answer);
            const bool positive = line.left(3) == "IFD";
            demand(got == (positive ? plainScan(m_answer->mid(line.size())) : LevelScan(1)));
        }
        m_transcript.append(reinterpret_cast<const char *>(got.data()),
                            static_cast<qsizetype>(got.size()));
    }
    [[nodiscard]] static LevelScan plainScan(const QByteArray &behind) {
        qsizetype count = 0;
        while (count < behind.size() && count < 324 &&
               !(count > 3 && behind.first(count).endsWith(" \r\n"))) {
            ++count;
        }
        LevelScan scan(behind.begin(), behind.begin() + count);
        scan.resize(count > 4 ? scan.size() - 3 : 325);
        return scan;
    }

    // ---- writing

    /// Whether the unit took the command that was just sent.
    [[nodiscard]] bool isAccepted(qsizetype commandsBefore) const {
        return m_line.commands().size() == commandsBefore + 1 && m_vdr.Connected() &&
               m_vdr.LastReply() == QStringLiteral(" ");
    }
    /// Writes by \a set, and where the unit takes that, answers the read by \a get with what was
    /// written.
    template <typename Set, typename Get, typename Value>
    void write(const Set &set, const Get &get, const Value &value, bool isExact) {
        const qsizetype before = m_line.commands().size();
        (m_vdr.*set)(value);
        note(isAccepted(before));
        if (!isAccepted(before) || !isExact || m_mayBeLate) {
            return;
        }
        const QByteArray command = m_line.commands().last();
        m_line.setTurns({command.mid(1, 3) + command.mid(4).trimmed() + " \r\n"});
        demand((m_vdr.*get)() == value && !m_vdr.readFailed());
    }

    // ---- the acts

    static void connect(Talk &talk, qint32 /*value*/) {
        talk.m_mayTalk = true;
        talk.note(talk.m_vdr.Connect());
        if (talk.isPlain()) {
            const Answer text = talk.payload("IVE");
            demand(talk.m_vdr.Version() == QString::fromLatin1(text.value_or("").mid(1)));
        }
    }
    static void look(Talk &talk, qint32 /*value*/) {
        talk.m_vdr.setCommPort(0);
        for (const QString &port : talk.m_vdr.GetCommPorts()) {
            talk.note(port);
        }
        demand(talk.m_vdr.ComDefault() <= 1);
        talk.note(qint64{talk.m_vdr.ComDefault()});
        talk.m_vdr.setCommPort(FuzzedLine::kPort);
    }
    static void lose(Talk &talk, qint32 value) {
        talk.m_lost = value % 2 != 0;
        talk.m_line.setLost(talk.m_lost);
    }
    static void image(Talk &talk, qint32 /*value*/) {
        static const QByteArray kNothing(168041, '\0');
        if (talk.m_hasImage) {
            return; // the block takes long to compare
        }
        talk.m_hasImage = true;
        talk.m_allowance = kLongestWait;
        // What the unit sends before the line is opened anew is lost.
        const QByteArray turn = talk.m_turns->value(1);
        talk.m_line.sendAtOpening(turn);
        const QByteArray block = talk.m_vdr.GetGraphic();
        demand(block.size() == kNothing.size());
        if (const Answer bytes = FuzzedLine::withoutPauses(turn); bytes && !talk.m_lost) {
            demand(block.startsWith(*bytes));
            demand(QByteArrayView(block).sliced(bytes->size()) ==
                   QByteArrayView(kNothing).sliced(bytes->size()));
        }
        talk.m_answer.reset();
    }
    static void scan(Talk &talk, qint32 /*value*/) {
        talk.m_allowance = kLongestWait;
        talk.expectScan(talk.m_vdr.GetData());
    }
    static void marker(Talk &talk, qint32 /*value*/) {
        const Hertz got = talk.m_vdr.VDRMarkerFreq();
        Answer text;
        if (talk.isPlain()) {
            const QByteArray line = replyLine(*talk.m_answer);
            text = line.startsWith('f') ? Answer(line.mid(1)) : std::nullopt;
        }
        talk.expectMegahertz(got, text);
    }
    static void moveMarker(Talk &talk, qint32 value) {
        const qsizetype before = talk.m_line.commands().size();
        // A few steps of the present span; any frequency now and then, which may be hundreds.
        const qint64 step = talk.m_vdr.settings().VDRSpan.cached / kScanSteps;
        const Hertz cached = talk.m_vdr.settings().VDRMarkerFreq.cached;
        const Hertz wanted = value % 4096 == 4095 ? Hertz::fromWhole(value)
                                                  : cached + Hertz::fromWhole(step * (value % 4));
        talk.m_vdr.setVDRMarkerFreq(wanted);
        demand(talk.m_line.commands().size() - before <= kScanSteps + 1);
    }
    static void channels(Talk &talk, qint32 /*value*/) {
        for (const Hertz value : talk.m_vdr.VDRChData()) {
            talk.note(value.units());
        }
    }
    static void setChannels(Talk &talk, qint32 value) {
        const Hertz start = Hertz::fromWhole(value);
        talk.write(&frmVDR::setVDRChData, &frmVDR::VDRChData,
                   ChannelData{start, Hertz::fromWhole(value / 7), start + start}, true);
    }
    static void centre(Talk &talk, qint32 /*value*/) {
        const Hertz got = talk.m_vdr.VDRCentre();
        talk.expectMegahertz(got, talk.isPlain() ? talk.payload("SCF") : std::nullopt);
    }
    static void samples(Talk &talk, qint32 /*value*/) {
        talk.note(qint64{talk.m_vdr.VDRSamples()});
    }
    static void setSamples(Talk &talk, qint32 value) {
        const qint16 count = static_cast<qint16>(value);
        const qsizetype before = talk.m_line.commands().size();
        talk.m_vdr.setVDRSamples(count);
        talk.note(talk.isAccepted(before));
    }
    static void step(Talk &talk, qint32 /*value*/) { talk.note(qint64{talk.m_vdr.RXStep()}); }
    static void setStep(Talk &talk, qint32 value) {
        // Single precision keeps six digits.
        talk.write(&frmVDR::setRXStep, &frmVDR::RXStep, value, std::abs(value / 2) < 500000);
    }
    static void span(Talk &talk, qint32 /*value*/) { talk.note(qint64{talk.m_vdr.VDRSpan()}); }
    static void attenuator(Talk &talk, qint32 /*value*/) {
        const bool on = talk.m_vdr.RXAtten();
        if (talk.isPlain()) {
            const Answer text = talk.payload("UAT");
            demand(on == (text && strict(*text) == 1));
        }
        talk.note(on);
    }

    template <auto Get, const char *Echo>
    static void readStrict(Talk &talk, qint32 /*value*/) {
        talk.expectStrict((talk.m_vdr.*Get)(), Echo);
    }
    template <auto Get, const char *Echo>
    static void readLeading(Talk &talk, qint32 /*value*/) {
        talk.expectLeading(static_cast<qint64>((talk.m_vdr.*Get)()), Echo);
    }
    template <auto Set, auto Get, typename Value>
    static void writeValue(Talk &talk, qint32 value) {
        if constexpr (std::is_same_v<Value, Hertz>) {
            talk.write(Set, Get, Hertz::fromWhole(value), true);
        } else if constexpr (std::is_same_v<Value, bool>) {
            talk.write(Set, Get, value % 2 != 0, true);
        } else if constexpr (std::is_same_v<Value, qint32>) {
            talk.write(Set, Get, value, true);
        } else {
            talk.write(Set, Get, static_cast<Value>(static_cast<qint16>(value)), true);
        }
    }

    static constexpr char kMode[] = "UMD";
    static constexpr char kReceiver[] = "URX";
    static constexpr char kAmp[] = "SGN";
    static constexpr char kBandwidth[] = "SBW";
    static constexpr char kDataMode[] = "SDM";
    static constexpr char kMonitorMode[] = "UOM";

    static constexpr std::array<Step, kActCount> kActs{
        connect,
        scan,
        readStrict<&frmVDR::RXMode, kMode>,
        readStrict<&frmVDR::RXType, kReceiver>,
        step,
        attenuator,
        readLeading<&frmVDR::VDRAmp, kAmp>,
        readLeading<&frmVDR::VDRRBW, kBandwidth>,
        readLeading<&frmVDR::VDRDataMode, kDataMode>,
        samples,
        readLeading<&frmVDR::VDRMonitorMode, kMonitorMode>,
        centre,
        span,
        channels,
        marker,
        image,
        moveMarker,
        writeValue<&frmVDR::setRXMode, &frmVDR::RXMode, qint16>,
        writeValue<&frmVDR::setRXType, &frmVDR::RXType, qint16>,
        setStep,
        writeValue<&frmVDR::setRXAtten, &frmVDR::RXAtten, bool>,
        writeValue<&frmVDR::setVDRAmp, &frmVDR::VDRAmp, qint16>,
        writeValue<&frmVDR::setVDRRBW, &frmVDR::VDRRBW, qint16>,
        writeValue<&frmVDR::setVDRDataMode, &frmVDR::VDRDataMode, DataModeCode>,
        setSamples,
        writeValue<&frmVDR::setVDRMonitorMode, &frmVDR::VDRMonitorMode, MonitorModeCode>,
        writeValue<&frmVDR::setVDRCentre, &frmVDR::VDRCentre, Hertz>,
        writeValue<&frmVDR::setVDRSpan, &frmVDR::VDRSpan, qint32>,
        setChannels,
        lose,
        look,
    };

    ManualClock m_clock;
    FuzzedLine m_line;
    QuietHost m_host;
    OpenedVDR m_vdr;
    QByteArray m_transcript;
    Answer m_answer;
    double m_allowance = 0.0;
    bool m_mayTalk = false;
    bool m_mayBeLate = false;
    bool m_lost = false;
    bool m_hasImage = false;
    const QList<QByteArray> *m_turns = nullptr; ///< of the act in hand
};

Act actOf(const QByteArray &bytes) {
    Act act;
    if (bytes.isEmpty()) {
        return act;
    }
    act.what = static_cast<std::uint8_t>(bytes[0]) % kActCount;
    QByteArray rest = bytes.mid(1);
    if (act.what >= kFirstWrite) {
        for (const char byte : rest.first(qMin(kValueLength, rest.size()))) {
            act.value = static_cast<qint32>((static_cast<quint32>(act.value) << 8U) |
                                            static_cast<std::uint8_t>(byte));
        }
        rest = rest.mid(kValueLength);
    }
    act.turns = rest.split(kNextTurn);
    return act;
}

} // namespace

void talkToUnit(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray script(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const int how = script.isEmpty() ? 0 : script[0];
    const bool late = (how & 1) != 0;
    bool inSingles = (how & 2) == 0;
    Talk whole(late ? kBeforeMidnight : kMorning, Delivery::Whole);
    Talk single(late ? kBeforeMidnight : kMorning, Delivery::Single);
    qsizetype acts = 0;
    for (const QByteArray &part : script.mid(1).split(kNextAct)) {
        if (++acts > kMostActs) {
            break;
        }
        const Act act = actOf(part);
        whole.take(act);
        // Once something has come late, it depends on the moment where the next answer begins.
        inSingles = inSingles && whole.isTimeless();
        if (inSingles) {
            single.take(act);
            demand(whole.transcript() == single.transcript());
            demand(whole.commands() == single.commands());
        }
    }
}

} // namespace veldron
