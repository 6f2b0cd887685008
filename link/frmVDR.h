// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"
#include "common/Hertz.h"
#include "common/LevelScan.h"
#include "link/LinkHost.h"
#include "link/SerialControl.h"
#include "link/UnitSetting.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QtGlobal>

namespace veldron {

/// The link to the unit: ports, exchanges, the unit's settings, scans.
///
/// No other object uses the serial control while this one exists: the constructor sets the line
/// up, the destructor closes the port. An exchange sends one command and reads one reply line; it
/// blocks the thread for up to a second and doesn't run the event loop. Nothing is thrown: errors
/// stand in Status and Connected, and a failed read gives the setting's failure value, mostly -1.
///
/// The settings are cached. A setter sends one command and changes the cache only if the unit
/// accepts it; a getter asks the unit and is therefore not const. The unit's refusal "?" is not
/// reported; any other failure of a setter shows in Status. The order of calls: setCommPort,
/// Connect, then any property; while Connected is false, nothing but Connect sends.
class frmVDR {
public:
    frmVDR(SerialControl &control, Clock &clock, LinkHost &host);
    frmVDR(const frmVDR &) = delete;
    frmVDR &operator=(const frmVDR &) = delete;
    ~frmVDR();

    /// Closes the port for good: no later call opens one. That holds for a setCommPort too that is
    /// still running, because it shows its message box while this is called.
    void unload();
    [[nodiscard]] bool isUnloaded() const { return m_unloaded; }

    /// The ports that exist, as "COM 3". The first call tries COM 1 to COM 16, up to a second each,
    /// looks for the unit on those that open, and leaves all ports closed; later calls return the
    /// same list.
    QStringList GetCommPorts();
    [[nodiscard]] SerialControl &Comm() { return m_control; }
    /// The open port's number, 0 when none is open.
    [[nodiscard]] qint16 CommPort() const;
    /// Closes the open port and opens \a port (0 or less: none). If that fails the user is told and
    /// the earlier port is opened again. Connected is false afterwards in any case.
    void setCommPort(qint16 port);
    /// Path of the device behind COM \a port, empty when there is none.
    [[nodiscard]] QString deviceName(qint16 port) const { return m_control.deviceName(port); }
    /// Why COM \a port could not be opened when it was last tried, where the user can do something
    /// about it: which program holds it, or which right is missing. Empty otherwise. A port whose
    /// device has gone is tried again with each command.
    [[nodiscard]] QString portProblem(qint16 port) const { return m_portProblems.value(port); }
    /// Position from 1 in the list of ports of the one that the unit was found on, 0 for none.
    [[nodiscard]] qint16 ComDefault() const { return m_ComDefault; }
    /// True during an exchange.
    [[nodiscard]] bool Active() const { return m_Active; }
    /// The latest state of the link as a text for the user.
    [[nodiscard]] QString Status() const { return m_Status; }
    /// True when the latest exchange brought a complete line, and after Connect with an open port.
    [[nodiscard]] bool Connected() const { return m_Connected; }
    /// The unit's version text; empty while no unit is recognised.
    [[nodiscard]] QString Version() const { return m_Version; }
    /// Asks for the version. True with any open port: whether the unit answered shows in Status and
    /// Version only.
    bool Connect();

    /// Whether the latest getter below that asked the unit got no value, so that it gave the
    /// setting's failure value.
    [[nodiscard]] bool readFailed() const { return m_readFailed; }

    /// Code of the receiver's demodulation mode.
    qint16 RXMode();
    void setRXMode(qint16 value);
    /// Code of the receiver's model.
    qint16 RXType();
    void setRXType(qint16 value);
    /// Receiver tuning step in hertz.
    qint32 RXStep();
    void setRXStep(qint32 value);
    /// Receiver attenuator; a failed read looks like "off".
    bool RXAtten();
    void setRXAtten(bool value);
    /// Amplitude setting in dB: 0, -10, -20 or -30.
    qint16 VDRAmp();
    void setVDRAmp(qint16 value);
    /// Code of the resolution bandwidth, 1 to 4.
    qint16 VDRRBW();
    void setVDRRBW(qint16 value);
    DataModeCode VDRDataMode();
    void setVDRDataMode(DataModeCode value);
    /// Sample count of the cached data mode, Average or Median. In other modes nothing is sent: the
    /// getter gives the last value, the setter does nothing.
    qint16 VDRSamples();
    void setVDRSamples(qint16 value);
    MonitorModeCode VDRMonitorMode();
    void setVDRMonitorMode(MonitorModeCode value);
    Hertz VDRCentre();
    void setVDRCentre(Hertz value);
    /// Span in hertz.
    qint32 VDRSpan();
    void setVDRSpan(qint32 value);
    ChannelData VDRChData();
    void setVDRChData(const ChannelData &value);
    Hertz VDRMarkerFreq();
    /// Moves the marker there in single steps, one exchange each: the step of the channel data in
    /// Channel mode, otherwise a 320th of the span. A distance of more than 320 steps is ignored.
    void setVDRMarkerFreq(Hertz value);

    /// One scan, normally 321 levels. One level of 0 when the unit gave no scan; 325 when nothing
    /// useful came after the header.
    LevelScan GetData();
    /// The block of 168041 bytes that the unit sends at the high line speed, zeros where nothing
    /// arrived. The port is closed and opened twice meanwhile.
    QByteArray GetGraphic();

protected:
    // Protected for the tests of the exchange; the rest of the program uses the properties above.
    /// One exchange. True for a positive reply; its payload is in LastReply.
    bool SendCommand(const QString &command);
    void ReportCommsFailure(const QString &command);
    [[nodiscard]] const QString &LastReply() const { return m_LastReply; }
    /// The rows with the cached values, without asking the unit.
    [[nodiscard]] const UnitSettingRows &settings() const { return m_settings; }

private:
    void onComm();
    void park();
    [[nodiscard]] float elapsedSince(float start);
    void dropStaleBytes();
    [[nodiscard]] QByteArray exchangeLine(const QString &command);
    bool classifyReply(const QString &command, const QString &reply);
    bool classifyRead(const QString &command, const QString &reply);

    void probePort(qint16 port);
    [[nodiscard]] SerialControl::Result openPort(qint16 port);
    void noteOpening(qint16 port, const SerialControl::Result &failure);
    void noteReopening(const SerialControl::Result &failure);
    void restorePort(qint16 port);

    [[nodiscard]] bool sendWrite(const QString &command, const QString &report);
    template <typename T>
    void write(UnitSetting<T> &setting, const SettingLetters &letters, const T &value);
    template <typename T>
    void write(UnitSetting<T> &setting, const T &value);
    template <typename T>
    T read(UnitSetting<T> &setting, const SettingLetters &letters);
    template <typename T>
    T read(UnitSetting<T> &setting);
    [[nodiscard]] const SettingLetters *samplesLetters() const;
    [[nodiscard]] qint32 markerStep() const;
    void stepMarker(int direction, Hertz step);

    void readGraphic(QByteArray &block);

    SerialControl &m_control;
    Clock &m_clock;
    LinkHost &m_host;

    QString m_Status;
    QString m_LastReply;
    QString m_Version;
    QStringList m_PortList;
    QHash<qint16, QString> m_portProblems;
    qint16 m_ComDefault = 0;
    bool m_portsListed = false;
    bool m_unloaded = false;
    bool m_Connected = false;
    bool m_Active = false;
    bool m_readFailed = false;

    UnitSettingRows m_settings = unitSettingRows();
};

} // namespace veldron
