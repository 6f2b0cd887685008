// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

namespace veldron {

class EntryBox;
class FixedList;
class PanelGrid;
class UpDownButtons;

/// The panel that says how the unit measures: resolution bandwidth, amplifier, data mode and the
/// number of samples that the data mode works on.
///
/// It holds the values, shows them and raises Changed for what the user does; it speaks to no
/// unit. Writing a property raises nothing. Values out of range are dropped without a message.
class ctlDataMode : public QFrame {
    Q_OBJECT

public:
    explicit ctlDataMode(QWidget *parent = nullptr);

    /// The panel's own property, not the widget's state: it switches the controls, but never
    /// cmdReset, which stays usable. Hides the widget's setter on purpose.
    [[nodiscard]] bool Enabled() const { return m_Enabled; }
    void setEnabled(bool value);
    /// Row of the list counted from 1: 4, 32, 64, 128 kHz. A write takes 0 (no row) to 4.
    [[nodiscard]] qint16 RBW() const { return m_RBW; }
    void setRBW(qint16 value);
    /// Decibels. A write takes -30 to 0 and keeps the value itself; the nearest row shows it.
    [[nodiscard]] qint16 Amp() const { return m_Amp; }
    void setAmp(qint16 value);
    /// 1 Normal, 2 Avg, 3 Max, 4 Med. A write of anything else writes 1, and sets \a Value to it.
    /// The number of samples follows into the limits of the mode.
    [[nodiscard]] qint16 DataMode() const { return m_DataMode; }
    void setDataMode(qint16 &Value);
    /// No limit applies to a write.
    [[nodiscard]] qint16 Samples() const { return m_Samples; }
    void setSamples(qint16 value);

Q_SIGNALS:
    /// The user has changed something: 1 RBW, 2 Amp, 4 DataMode, 8 Samples, 16 cmdReset pressed;
    /// always exactly one of them.
    void Changed(qint32 What);

private:
    void makeInputRow(PanelGrid &grid);
    void makeDataRow(PanelGrid &grid);
    QWidget *makeSamplesPair();
    void wireControls();

    void reactToRBW();
    void reactToAmp();
    void reactToDataMode();
    void ShowSamplesControls();
    void CheckSamples();
    bool lookAtKey(char16_t key);
    void endEntry();
    void leaveSamples();
    void noteSamplesText();
    [[nodiscard]] qint16 samplesInText() const;
    void raiseChange(qint32 what);

    qint16 m_DataMode = 0;
    qint16 m_Samples = 0;
    bool m_Editing = false;
    qint16 m_RBW = 0;
    qint16 m_Amp = 0;
    bool m_Enabled = true;
    bool m_Updating = false;

    FixedList *cboRBW = nullptr;
    FixedList *cboAmp = nullptr;
    FixedList *cboDataMode = nullptr;
    QLabel *lblSamples = nullptr;
    EntryBox *txtSamples = nullptr;
    UpDownButtons *udSamples = nullptr;
    QPushButton *cmdReset = nullptr;
};

} // namespace veldron
