// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

#include "common/ErrorGuard.h"
#include "panels/FrequencyFields.h"

class QCheckBox;
class QLabel;
class QTimer;

namespace veldron {

class DropDownList;
class EditableList;
class EntryBox;
class PanelGrid;

/// What the user has changed on the receiver panel. Each event names exactly one.
enum class ReceiverChangeCode : qint32 { Frequency = 1, RX = 2, Step = 4, Mode = 8, Atten = 16 };

/// The panel of the radio receiver: its type, frequency, step, mode and attenuator.
///
/// It holds the values, shows them and raises Changed for what the user does; it speaks to no
/// unit. Writing a property raises nothing. No value is checked against the receiver's range, and
/// what a write can't take leaves the panel as it was, without a message.
class ctlFrequency : public QFrame {
    Q_OBJECT

public:
    /// What the user's acts throw goes to \a guard; what a write from code throws goes to its
    /// caller.
    explicit ctlFrequency(ErrorGuard guard, QWidget *parent = nullptr);

    /// The panel's own property, not the widget's state: it switches the controls, never the panel
    /// as a whole. Hides the widget's setter on purpose.
    [[nodiscard]] bool Enabled() const { return m_Enabled; }
    void setEnabled(bool value);
    /// The attenuator, as the box shows it.
    [[nodiscard]] bool Atten() const;
    void setAtten(bool value);
    /// The enabled states of single controls, until the next write of Enabled.
    void setAttenEn(bool value);
    /// The receiver's frequency; 0 until it is first written.
    [[nodiscard]] Hertz Frequency() const { return m_Frequency; }
    void setFrequency(Hertz value);
    /// Receiver code, 0 while none is chosen. A write takes 0 to 10: the highest code, 11, can be
    /// picked and read, but writing it changes nothing. A write refills the lists.
    [[nodiscard]] qint16 RX() const { return m_RX; }
    void setRX(qint16 value);
    /// Hertz; 0 until it is first written. It need not be a row of the list.
    [[nodiscard]] qint32 Step() const { return m_Step; }
    void setStep(qint32 value);
    void setStepEn(bool value);
    /// Mode code, 0 while none is chosen. A mode that the receiver hasn't got is not taken; the
    /// mode stays the old one when the receiver changes, until it is written again.
    [[nodiscard]] qint16 Mode() const { return m_Mode; }
    void setMode(qint16 value);
    void setModeEn(bool value);
    /// Gives the keyboard focus to Picture1, where keys do nothing. The Tab key doesn't come there.
    void SetFocus();

    /// What a panel shows that has never been set up: all modes, "AMW" chosen, a step of 25 kHz.
    void showUnconfigured();
    /// Hertz that each tick of Timer1 adds. Nothing starts that timer; leaving the panel sets the
    /// step back to 0.
    [[nodiscard]] qint32 TuneStep() const { return m_TuneStep; }
    void setTuneStep(qint32 hertz) { m_TuneStep = hertz; }

Q_SIGNALS:
    /// The user has changed something. An entry that is abandoned or refused for its size raises it
    /// with the old value.
    void Changed(ReceiverChangeCode What);

protected:
    void focusInEvent(QFocusEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeFocusHolder();
    void makeReceiverRow(PanelGrid &grid);
    void makeSettingsRow(PanelGrid &grid);
    void makeMenu();
    void wireControls();
    void wireFields();

    /// Show the stored value; out of an entry they raise its event and end the entry.
    void ApplyFrequency();
    void ApplyStepText();
    void showReceiver();
    void showFrequency();
    void showStep();
    /// The modes of the receiver, with none chosen, and which of its controls there are.
    void FillReceiverControls();
    void storeStep(Hertz value);
    /// What the user does at each control: stores the value and raises the event.
    void pickReceiver(int row);
    void pickStep(int row);
    void pickMode();
    void clickAtten();
    void tune();
    void endTuning();
    /// Raises Changed unless a write from code is under way.
    void raiseChange(ReceiverChangeCode what);
    /// The same for a value that was typed, and only out of an entry.
    void raiseEntry(ReceiverChangeCode what);

    ErrorGuard m_guard;
    Hertz m_Frequency;
    qint32 m_reserved = 1; ///< read by nothing
    qint32 m_Step = 0;
    qint16 m_RX = 0;
    qint16 m_Mode = 0;
    qint32 m_TuneStep = 0;
    bool m_Enabled = true;
    bool m_Updating = false;
    FrequencyFields m_fields;

    QWidget *Picture1 = nullptr;
    QLabel *lblFreq = nullptr;
    EditableList *cboRX = nullptr;
    EntryBox *txtFreq = nullptr;
    QLabel *lblStep = nullptr;
    EditableList *cboStep = nullptr;
    QLabel *lblMode = nullptr;
    DropDownList *cboMode = nullptr;
    QLabel *lblAtten = nullptr;
    QCheckBox *chkAtten = nullptr;
    QTimer *Timer1 = nullptr;
};

} // namespace veldron
