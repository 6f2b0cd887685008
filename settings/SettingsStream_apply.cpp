// SPDX-License-Identifier: MIT
// What each line of a settings block does when it is loaded: first the unit, then the panels; a
// dialog before the chart. In playback the unit and the dialogs are left alone.
#include "settings/SettingsStream.h"

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

void SettingsStream::wait() {
    GeneralUtilities::WaitSeconds(m_clock, kReceiverPause);
}

Hertz SettingsStream::decimal(const QString &value) const {
    const auto number = Hertz::fromText(value, m_texts.decimalMark());
    if (!number) {
        throw UntrappedError(
            UntrappedError::Kind::BadValue,
            QStringLiteral("%1 is not a frequency in hertz").arg(quotedForReport(value)));
    }
    return *number;
}

void SettingsStream::applyStartSettings(const QString &value) {
    m_session.ScanDate = value;
    m_ChannelStart = m_ChannelStep = m_ChannelEnd = Hertz();
    m_ChannelCount = 0;
}

void SettingsStream::applyPersistenceOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_instruments.displaySettings.setPersistenceEnable(flag(value));
    }
    m_instruments.ctlChartSpectrum1.setPeak(flag(value));
}

void SettingsStream::applyPersistence(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto seconds = whole<qint32>(value);
    m_instruments.displaySettings.setPersistence(seconds);
    m_instruments.ctlChartSpectrum1.setTimespan(seconds);
}

void SettingsStream::applyWaterfallOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_instruments.displaySettings.setWaterfallEnable(flag(value));
    }
    m_instruments.ctlChartSpectrum1.setDisplayType(displayTypeWith(flag(value)));
}

void SettingsStream::applyPalette(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto index = whole<qint16>(value);
    m_instruments.displaySettings.setPaletteIndex(index);
    m_instruments.ctlChartSpectrum1.setPalette(index);
}

void SettingsStream::applyUpdate(const QString &value) {
    if (m_session.InPlayback) {
        return;
    }
    const auto seconds = whole<qint32>(value);
    m_instruments.displaySettings.setUpdate(seconds);
    m_instruments.ctlChartSpectrum1.setUpdate(seconds);
}

void SettingsStream::applyMarkerOn(const QString &value) {
    if (!m_session.InPlayback) {
        m_instruments.displaySettings.setMarkerEnable(flag(value));
    }
    m_instruments.ctlChartSpectrum1.setMarkerEn(flag(value));
}

void SettingsStream::applyPoll(const QString &value) {
    if (!m_session.InPlayback) {
        const auto milliseconds = whole<qint32>(value);
        m_instruments.commSettings.setPoll(milliseconds);
        if (milliseconds < 0 || milliseconds > kLongestInterval) {
            throw UntrappedError(
                UntrappedError::Kind::OutOfRange,
                QStringLiteral("%1 is no poll rate in milliseconds").arg(quotedForReport(value)));
        }
        m_host.setPollInterval(milliseconds);
    }
    m_instruments.ctlChartSpectrum1.setPoll(whole<qint16>(value));
}

void SettingsStream::applyMonitorMode(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_instruments.vdr.setVDRMonitorMode(whole<qint16>(value));
    }
    m_instruments.ctlMonitorMode1.setMonitorMode(whole<qint16>(value));
}

void SettingsStream::applySpan(const QString &value) {
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRSpan(whole<qint32>(value));
    }
    m_instruments.ctlMonitorMode1.setfSpan(leadingHertz(value));
}

void SettingsStream::applyCentre(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_instruments.vdr.setVDRCentre(decimal(value));
    }
    m_instruments.ctlMonitorMode1.setfCentre(decimal(value));
    m_instruments.ctlFrequency1.setFrequency(decimal(value));
}

void SettingsStream::countChannelLine() {
    if (m_ChannelCount == std::numeric_limits<qint16>::max()) {
        throw UntrappedError(UntrappedError::Kind::Overflow,
                             QStringLiteral("there are too many channel lines in one block"));
    }
    ++m_ChannelCount;
}

void SettingsStream::applyStart(const QString &value) {
    m_ChannelStart = decimal(value);
    countChannelLine();
}

// The one channel line that takes the point as its decimal mark whatever the locale.
void SettingsStream::applyStep(const QString &value) {
    m_ChannelStep = leadingHertz(value);
    countChannelLine();
}

void SettingsStream::applyEnd(const QString &value) {
    m_ChannelEnd = decimal(value);
    countChannelLine();
}

void SettingsStream::applyMarkerFrequency(const QString &value) {
    m_instruments.ctlChartSpectrum1.setRXFreq(leadingHertz(value));
    m_instruments.ctlFrequency1.setFrequency(leadingHertz(value));
}

void SettingsStream::applyReceiver(const QString &value) {
    const qint16 code = GeneralUtilities::ReceiverCode(value);
    if (!m_session.InPlayback) {
        m_instruments.vdr.setRXType(code);
    }
    m_instruments.ctlFrequency1.setRX(code);
}

void SettingsStream::applyRXMode(const QString &value) {
    const qint16 code = GeneralUtilities::ModeCode(value);
    if (!m_session.InPlayback) {
        wait();
        m_instruments.vdr.setRXMode(code);
    }
    m_instruments.ctlFrequency1.setMode(code);
}

void SettingsStream::applyRXStep(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_instruments.vdr.setRXStep(whole<qint32>(value));
    }
    m_instruments.ctlFrequency1.setStep(whole<qint32>(value));
}

void SettingsStream::applyRXAtten(const QString &value) {
    if (!m_session.InPlayback) {
        wait();
        m_instruments.vdr.setRXAtten(flag(value));
    }
    m_instruments.ctlFrequency1.setAtten(flag(value));
}

void SettingsStream::applyRBW(const QString &value) {
    const auto code = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRRBW(code);
    }
    m_instruments.ctlDataMode1.setRBW(code);
}

void SettingsStream::applyAmp(const QString &value) {
    const auto decibels = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRAmp(decibels);
    }
    m_instruments.ctlDataMode1.setAmp(decibels);
}

void SettingsStream::applyDataMode(const QString &value) {
    auto mode = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRDataMode(mode);
    }
    m_instruments.ctlDataMode1.setDataMode(mode);
}

void SettingsStream::applySamples(const QString &value) {
    const auto samples = whole<qint16>(value);
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRSamples(samples);
    }
    m_instruments.ctlDataMode1.setSamples(samples);
}

void SettingsStream::applyChannels() {
    const ChannelData channels{m_ChannelStart, m_ChannelStep, m_ChannelEnd};
    if (!m_session.InPlayback) {
        m_instruments.vdr.setVDRChData(channels);
        wait();
        m_instruments.vdr.setVDRMarkerFreq(m_instruments.ctlChartSpectrum1.RXFreq());
    }
    ctlMonitorMode &panel = m_instruments.ctlMonitorMode1;
    panel.setfStart(channels[0]);
    panel.setfCentre(channels[1]); // in channel mode this field holds the channel step
    panel.setfEnd(channels[2]);
    panel.setfSpan(channels[2] - channels[0]);
    panel.setfStep(channels[1]);
}

void SettingsStream::applyEndSettings(const QString & /*value*/) {
    if (m_ChannelCount == 3) {
        applyChannels();
    }
    if (m_instruments.vdr.Connected() && !m_session.InPlayback) {
        m_host.ReadBackSettings();
    } else {
        m_host.UpdateChartSettings();
    }
}

} // namespace veldron
