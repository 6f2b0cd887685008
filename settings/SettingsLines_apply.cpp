// SPDX-License-Identifier: MIT
// What each line of a settings block does when it is loaded: first the unit, then the panels; a
// dialog before the chart. In playback the unit and the dialogs are left alone.
#include "settings/SettingsLines.h"

#include "chart/ctlChartSpectrum.h"
#include "common/Numbers.h"
#include "common/ReportText.h"
#include "common/UntrappedError.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"
#include "utilities/GeneralUtilities.h"

#include <limits>

namespace veldron {

namespace {

using GeneralUtilities::LeadingNumber;

/// How long a receiver is given before the settings that it needs time for, in seconds.
constexpr float kReceiverPause = 1.0F;
/// The longest interval that a poll timer takes, in milliseconds.
constexpr qint32 kLongestInterval = 65535;

bool flag(const QString &value) {
    return value == QLatin1String("True");
}

[[noreturn]] void failOutOfRange(const QString &value) {
    throw UntrappedError(
        UntrappedError::Kind::Overflow,
        QStringLiteral("the number %1 is out of range").arg(quotedForReport(value)));
}

Hertz leadingHertz(const QString &value) {
    const double hertz = LeadingNumber(value);
    if (!Numbers::roundToExact<qint64>(hertz * static_cast<double>(Hertz::kUnitsPerHertz))) {
        failOutOfRange(value);
    }
    return Hertz::fromDouble(hertz);
}

template <typename T>
T whole(const QString &value) {
    const auto number = Numbers::roundToExact<T>(LeadingNumber(value));
    if (!number) {
        failOutOfRange(value);
    }
    return *number;
}

} // namespace

void SettingsLines::wait() {
    GeneralUtilities::WaitSeconds(m_clock, kReceiverPause);
}

Hertz SettingsLines::decimal(const QString &value) const {
    const auto number = Hertz::fromText(value, m_texts.decimalMark());
    if (!number) {
        throw UntrappedError(
            UntrappedError::Kind::BadValue,
            QStringLiteral("%1 is not a frequency in hertz").arg(quotedForReport(value)));
    }
    return *number;
}

void SettingsLines::applyStartSettings(const QString &value) {
    m_session.ScanDate = value;
    m_ChannelStart = m_ChannelStep = m_ChannelEnd = Hertz();
    m_ChannelCount = 0;
}

void SettingsLines::applyPersistenceOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_holders.displaySettings.setPersistenceEnable(flag(value));
    }
    m_holders.ctlChartSpectrum1.setPeak(flag(value));
}

void SettingsLines::applyPersistence(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto seconds = whole<qint32>(value);
    m_holders.displaySettings.setPersistence(seconds);
    m_holders.ctlChartSpectrum1.setTimespan(seconds);
}

void SettingsLines::applyWaterfallOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_holders.displaySettings.setWaterfallEnable(flag(value));
    }
    m_holders.ctlChartSpectrum1.setDisplayType(displayTypeWith(flag(value)));
}

void SettingsLines::applyPalette(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto index = whole<qint16>(value);
    m_holders.displaySettings.setPaletteIndex(index);
    m_holders.ctlChartSpectrum1.setPalette(index);
}

void SettingsLines::applyUpdate(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto seconds = whole<qint32>(value);
    m_holders.displaySettings.setUpdate(seconds);
    m_holders.ctlChartSpectrum1.setUpdate(seconds);
}

void SettingsLines::applyMarkerOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_holders.displaySettings.setMarkerEnable(flag(value));
    }
    m_holders.ctlChartSpectrum1.setMarkerEn(flag(value));
}

void SettingsLines::applyPoll(const QString &value) {
    if (!m_session.InPlayback) {
        const auto milliseconds = whole<qint32>(value);
        m_holders.commSettings.setPoll(milliseconds);
        if (milliseconds < 0 || milliseconds > kLongestInterval) {
            throw UntrappedError(
                UntrappedError::Kind::OutOfRange,
                QStringLiteral("%1 is no poll rate in milliseconds").arg(quotedForReport(value)));
        }
        m_host.setPollInterval(milliseconds);
    }
    m_holders.ctlChartSpectrum1.setPoll(whole<qint16>(value));
}

void SettingsLines::applyMonitorMode(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_holders.vdr.setVDRMonitorMode(MonitorModeCode(whole<qint16>(value)));
    }
    m_holders.ctlMonitorMode1.setMonitorMode(MonitorModeCode(whole<qint16>(value)));
}

void SettingsLines::applySpan(const QString &value) {
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRSpan(whole<qint32>(value));
    }
    m_holders.ctlMonitorMode1.setfSpan(leadingHertz(value));
}

void SettingsLines::applyCentre(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_holders.vdr.setVDRCentre(decimal(value));
    }
    m_holders.ctlMonitorMode1.setfCentre(decimal(value));
    m_holders.ctlFrequency1.setFrequency(decimal(value));
}

void SettingsLines::countChannelLine() {
    if (m_ChannelCount == std::numeric_limits<qint16>::max()) {
        throw UntrappedError(UntrappedError::Kind::Overflow,
                             QStringLiteral("there are too many channel lines in one block"));
    }
    ++m_ChannelCount;
}

void SettingsLines::applyStart(const QString &value) {
    m_ChannelStart = decimal(value);
    countChannelLine();
}

// The one channel line that takes the point as its decimal mark whatever the locale.
void SettingsLines::applyStep(const QString &value) {
    m_ChannelStep = leadingHertz(value);
    countChannelLine();
}

void SettingsLines::applyEnd(const QString &value) {
    m_ChannelEnd = decimal(value);
    countChannelLine();
}

void SettingsLines::applyMarkerFrequency(const QString &value) {
    m_holders.ctlChartSpectrum1.setRXFreq(leadingHertz(value));
    m_holders.ctlFrequency1.setFrequency(leadingHertz(value));
}

void SettingsLines::applyReceiver(const QString &value) {
    const qint16 code = GeneralUtilities::ReceiverCode(value);
    if (!m_session.InPlayback) {
        m_holders.vdr.setRXType(code);
    }
    m_holders.ctlFrequency1.setRX(code);
}

void SettingsLines::applyRXMode(const QString &value) {
    const qint16 code = GeneralUtilities::ModeCode(value);
    if (!m_session.InPlayback) {
        wait();
        m_holders.vdr.setRXMode(code);
    }
    m_holders.ctlFrequency1.setMode(code);
}

void SettingsLines::applyRXStep(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_holders.vdr.setRXStep(whole<qint32>(value));
    }
    m_holders.ctlFrequency1.setStep(whole<qint32>(value));
}

void SettingsLines::applyRXAtten(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_holders.vdr.setRXAtten(flag(value));
    }
    m_holders.ctlFrequency1.setAtten(flag(value));
}

void SettingsLines::applyRBW(const QString &value) {
    const auto code = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRRBW(code);
    }
    m_holders.ctlDataMode1.setRBW(code);
}

void SettingsLines::applyAmp(const QString &value) {
    const auto decibels = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRAmp(decibels);
    }
    m_holders.ctlDataMode1.setAmp(decibels);
}

void SettingsLines::applyDataMode(const QString &value) {
    auto mode = DataModeCode(whole<qint16>(value));
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRDataMode(mode);
    }
    m_holders.ctlDataMode1.setDataMode(mode);
}

void SettingsLines::applySamples(const QString &value) {
    const auto samples = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRSamples(samples);
    }
    m_holders.ctlDataMode1.setSamples(samples);
}

void SettingsLines::applyChannels() {
    const ChannelData channels{m_ChannelStart, m_ChannelStep, m_ChannelEnd};
    if (!m_session.InPlayback) {
        m_holders.vdr.setVDRChData(channels);
        wait();
        m_holders.vdr.setVDRMarkerFreq(m_holders.ctlChartSpectrum1.RXFreq());
    }
    ctlMonitorMode &panel = m_holders.ctlMonitorMode1;
    panel.setfStart(channels[0]);
    panel.setfCentre(channels[1]); // in channel mode this field holds the channel step
    panel.setfEnd(channels[2]);
    panel.setfSpan(channels[2] - channels[0]);
    panel.setfStep(channels[1]);
}

void SettingsLines::applyEndSettings(const QString & /*value*/) {
    if (m_ChannelCount == 3) {
        applyChannels();
    }
    if (m_holders.vdr.Connected() && !m_session.InPlayback) {
        m_host.ReadBackSettings();
    } else {
        m_host.UpdateChartSettings();
    }
}

} // namespace veldron
