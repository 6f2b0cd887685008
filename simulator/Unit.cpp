// SPDX-License-Identifier: MIT
#include "simulator/Unit.h"

#include "simulator/UnitText.h"

#include <QList>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace veldron {

namespace {

constexpr int kMHzDecimals = 6;
constexpr int kKHzDecimals = 3;
constexpr auto kCommandLength = 4;

QByteArray whole(int value) {
    return QByteArray::number(value);
}
QByteArray kHz(qint64 hertz) {
    return UnitText::writeShort(hertz, kKHzDecimals);
}
QByteArray MHz(qint64 hertz) {
    return UnitText::writeShort(hertz, kMHzDecimals);
}
QByteArray allMHz(qint64 hertz) {
    return UnitText::writeFixed(hertz, kMHzDecimals);
}

/// Hands a whole-numbered argument to a setter.
template <bool (UnitSettings::*Setter)(int)>
bool writeWhole(UnitSettings &settings, const QByteArray &text) {
    const std::optional<int> value = UnitText::readWhole(text);
    return value && (settings.*Setter)(*value);
}

/// Hands an argument with \a Decimals decimals to a setter of whole hertz.
template <bool (UnitSettings::*Setter)(qint64), int Decimals>
bool writeHertz(UnitSettings &settings, const QByteArray &text) {
    const std::optional<qint64> value = UnitText::readScaled(text, Decimals);
    return value && (settings.*Setter)(*value);
}

bool writeAttenuator(UnitSettings &settings, const QByteArray &text) {
    return (text == "1" || text == "2") && settings.setAttenuator(text == "1");
}

/// " 144 25 146": start in MHz, step in kHz, end in MHz.
bool writeChannels(UnitSettings &settings, const QByteArray &text) {
    const QList<QByteArray> parts = text.split(' ');
    if (parts.size() != 4 || !parts.at(0).isEmpty()) {
        return false;
    }
    const auto start = UnitText::readScaled(parts.at(1), kMHzDecimals);
    const auto step = UnitText::readScaled(parts.at(2), kKHzDecimals);
    const auto end = UnitText::readScaled(parts.at(3), kMHzDecimals);
    return start && step && end && settings.setChannels(*start, *step, *end);
}

bool moveMarker(UnitSettings &settings, const QByteArray &text) {
    return (text == "1" || text == "2") && settings.moveMarker(text == "1");
}

/// Each step moves the marker at once, so the end of a run of steps changes nothing.
bool endMarkerSteps(UnitSettings & /*settings*/, const QByteArray &text) {
    return text.isEmpty();
}

struct Write {
    std::string_view letters; ///< after the "W"
    bool (*apply)(UnitSettings &, const QByteArray &);
    /// The scans before the change are forgotten.
    bool restartsMeasurement;
};

constexpr std::array kWrites = {
    Write{"UMD", writeWhole<&UnitSettings::setReceiverMode>, false},
    Write{"URX", writeWhole<&UnitSettings::setReceiver>, false},
    Write{"UST", writeHertz<&UnitSettings::setReceiverStepHz, kKHzDecimals>, false},
    Write{"UAT", writeAttenuator, true},
    Write{"SGN", writeWhole<&UnitSettings::setAmplitude>, true},
    Write{"SBW", writeWhole<&UnitSettings::setBandwidth>, true},
    Write{"SDM", writeWhole<&UnitSettings::setDataMode>, false},
    Write{"SAV", writeWhole<&UnitSettings::setAverageCount>, false},
    Write{"SME", writeWhole<&UnitSettings::setMedianCount>, false},
    Write{"UOM", writeWhole<&UnitSettings::setMonitorMode>, true},
    Write{"SCF", writeHertz<&UnitSettings::setCentreHz, kMHzDecimals>, true},
    Write{"SSP", writeHertz<&UnitSettings::setSpanHz, kMHzDecimals>, true},
    Write{"UCS", writeChannels, true},
    Write{"UDS", moveMarker, false},
    Write{"UMC", endMarkerSteps, false},
};

struct Read {
    std::string_view letters; ///< after the "R"
    QByteArray (*value)(const UnitSettings &);
};

constexpr std::array kReads = {
    Read{"UMD",
         [](const UnitSettings &s) {
             return whole(s.receiverMode());
         }},
    Read{"URX",
         [](const UnitSettings &s) {
             return whole(s.receiver());
         }},
    Read{"UST",
         [](const UnitSettings &s) {
             return kHz(s.receiverStepHz());
         }},
    Read{"UAT",
         [](const UnitSettings &s) {
             return whole(s.attenuator() ? 1 : 2);
         }},
    Read{"SGN",
         [](const UnitSettings &s) {
             return whole(s.amplitude());
         }},
    Read{"SBW",
         [](const UnitSettings &s) {
             return whole(s.bandwidth());
         }},
    Read{"SDM",
         [](const UnitSettings &s) {
             return whole(s.dataMode());
         }},
    Read{"SAV",
         [](const UnitSettings &s) {
             return whole(s.averageCount());
         }},
    Read{"SME",
         [](const UnitSettings &s) {
             return whole(s.medianCount());
         }},
    Read{"UOM",
         [](const UnitSettings &s) {
             return whole(s.monitorMode());
         }},
    Read{"SCF",
         [](const UnitSettings &s) {
             return allMHz(s.centreHz());
         }},
    Read{"SSP",
         [](const UnitSettings &s) {
             return allMHz(s.spanHz());
         }},
    Read{"UCS",
         [](const UnitSettings &s) {
             return QByteArray(MHz(s.channelStartHz()) + " " + kHz(s.channelStepHz()) + " " +
                               MHz(s.channelEndHz()));
         }},
    // The blank in front belongs to the value.
    Read{"IVE",
         [](const UnitSettings & /*s*/) {
             return QByteArray(" Ver 2.14 SIM");
         }},
};

template <typename Table>
auto findRow(const Table &table, const QByteArray &letters) {
    return std::find_if(table.begin(), table.end(), [&letters](const auto &row) {
        return row.letters ==
               std::string_view(letters.constData(), static_cast<std::size_t>(letters.size()));
    });
}

QByteArray toBytes(const LevelScan &scan) {
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(scan.size()));
    for (const auto level : scan) {
        bytes.append(static_cast<char>(level));
    }
    return bytes;
}

UnitReply line(const QByteArray &text) {
    return {text, {}, {}, {}};
}

} // namespace

Unit::Unit(quint64 seed) : m_scene(seed) {}

UnitReply Unit::reply(const QByteArray &received) {
    const QByteArray text = received.endsWith("\r\n") ? received.chopped(2) : received;
    const QByteArray letters = text.mid(1, kCommandLength - 1);
    const QByteArray argument = text.mid(kCommandLength);
    if (text.startsWith('W')) {
        return line(write(letters, argument) ? QByteArray(" \r\n") : refusal());
    }
    if (text == "RIFD") {
        return scanReply();
    }
    if (text == "RVIM") {
        return imageReply();
    }
    if (text == "RICD") {
        return line("f" + MHz(m_settings.markerHz()) + "\r\n");
    }
    const auto read = findRow(kReads, letters);
    if (!text.startsWith('R') || !argument.isEmpty() || read == kReads.end()) {
        return line(refusal());
    }
    return line(letters + read->value(m_settings) + " \r\n");
}

bool Unit::write(const QByteArray &name, const QByteArray &argument) {
    const auto row = findRow(kWrites, name);
    // As it was before the write, to tell a change from a repetition.
    const int dataMode = m_settings.dataMode();
    if (row == kWrites.end() || !row->apply(m_settings, argument)) {
        return false;
    }
    // Writing the data mode that is in force keeps the held levels; only another mode drops them.
    if (row->restartsMeasurement || m_settings.dataMode() != dataMode) {
        m_measurement.restart();
    }
    return true;
}

UnitReply Unit::scanReply() {
    const QByteArray samples = toBytes(measure());
    return {"IFD" + whole(static_cast<int>(samples.size())) + " \r\n", samples, " \r\n", {}};
}

/// The screen as a picture: a head of 36 bytes, then 525 rows of 320 levels, the newest first.
UnitReply Unit::imageReply() {
    constexpr int kRows = 525;
    constexpr double kSecondsPerRow = 0.1;
    QByteArray image = QByteArray("VELDRON screen 320 x 525, levels").leftJustified(36, ' ');
    ScanPlan plan = m_settings.plan();
    plan.count = UnitSettings::kSteps;
    for (int row = 0; row < kRows; ++row) {
        image += toBytes(m_scene.scan(plan, way(), m_seconds - row * kSecondsPerRow, 0));
    }
    return {"VIM \r\n", {}, {}, image};
}

LevelScan Unit::measure() {
    const int mode = m_settings.dataMode();
    const int count =
        mode == UnitSettings::Median ? m_settings.medianCount() : m_settings.averageCount();
    ++m_scans;
    return m_measurement.take(m_scene.scan(m_settings.plan(), way(), m_seconds, m_scans), mode,
                              count);
}

ScanWay Unit::way() const {
    return {m_settings.bandwidthHz(), m_settings.amplitude(), m_settings.attenuator()};
}

} // namespace veldron
