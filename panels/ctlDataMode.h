// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

#include "common/ErrorGuard.h"
#include "panels/PanelFields.h"
#include "utilities/Codes.h"

class QLabel;
class QPushButton;

namespace veldron {

class DropDownList;
class EntryBox;
class PanelGrid;
class UpDownButtons;

/// What the user has changed on the data panel, or Reset for a press of cmdReset. Each event names
/// exactly one.
enum class DataChangeCode : qint32 { RBW = 1, Amp = 2, DataMode = 4, Samples = 8, Reset = 16 };

/// The panel that says how the unit measures: resolution bandwidth, amplifier, data mode and the
/// number of samples that the data mode works on.
///
/// It holds the values, shows them and raises Changed for what the user does; it speaks to no
/// unit. Writing a property raises nothing. Values out of range are dropped without a message.
class ctlDataMode : public QFrame {
    Q_OBJECT

public:
    /// What the user's acts throw goes to \a guard; what a write from code throws goes to its
    /// caller.
    explicit ctlDataMode(ErrorGuard guard, QWidget *parent = nullptr);

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
    /// A write of anything but the four modes writes Normal, and sets \a Value to it.
    /// The number of samples follows into the limits of the mode.
    [[nodiscard]] DataModeCode DataMode() const { return m_DataMode; }
    void setDataMode(DataModeCode &Value);
    /// No limit applies to a write.
    [[nodiscard]] qint16 Samples() const { return m_Samples; }
    void setSamples(qint16 value);

Q_SIGNALS:
    /// The user has changed something.
    void Changed(DataChangeCode What);

private:
    void makeInputRow(PanelGrid &grid);
    void makeDataRow(PanelGrid &grid);
    QWidget *makeSamplesPair();
    void wireControls();

    /// What a pick from each list does: stores the value and raises the event.
    void reactToRBW();
    void reactToAmp();
    void reactToDataMode();
    /// Shows the number of samples in the data modes that have one, Average and Median.
    void ShowSamplesControls();
    /// Brings the number of samples into the limits of the data mode.
    void CheckSamples();
    /// Opens or ends the entry of the number of samples; swallows no key.
    bool lookAtKey(char16_t key);
    /// Takes over what was typed, within the limits, and raises the event.
    void endEntry();
    void leaveSamples();
    [[nodiscard]] bool isEditing() const;
    void wireFields();
    /// After each change of the text: outside an entry it is the new number, by the buttons or from
    /// code.
    void noteSamplesText();
    [[nodiscard]] qint16 samplesInText() const;
    /// Raises Changed unless a write from code is under way.
    void raiseChange(DataChangeCode what);

    ErrorGuard m_guard;
    DataModeCode m_DataMode = DataModeCode::None;
    qint16 m_Samples = 0;
    qint16 m_RBW = 0;
    qint16 m_Amp = 0;
    bool m_Enabled = true;
    bool m_Updating = false;
    PanelFields m_fields;

    DropDownList *cboRBW = nullptr;
    DropDownList *cboAmp = nullptr;
    DropDownList *cboDataMode = nullptr;
    QLabel *lblSamples = nullptr;
    EntryBox *txtSamples = nullptr;
    UpDownButtons *udSamples = nullptr;
    QPushButton *cmdReset = nullptr;
};

} // namespace veldron
