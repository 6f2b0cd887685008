// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

#include "common/ErrorGuard.h"
#include "panels/FrequencyFields.h"
#include "utilities/Codes.h"

class QLabel;

namespace veldron {

class DropDownList;
class EditableList;
class EntryBox;
class PanelGrid;

/// What the user has changed on the monitor panel. Centre stands for the start and the end too,
/// outside Channel mode; in Channel mode all three are Channel.
enum class MonitorChangeCode : qint32 {
    MonitorMode = 0,
    Centre = 1,
    Step = 2,
    Span = 3,
    Channel = 4
};

/// The panel that says what the unit scans: its monitor mode and the five numbers of the scan.
///
/// In the modes Spectrum and Step it keeps the numbers consistent: the step times 320 is the
/// span, start and end lie half a span below and above the centre. Editing start, centre or end
/// moves the whole window, editing span or step keeps the centre. In the mode Channel every number
/// stands alone, and fCentre is the channel step. Nothing is held within limits: what the unit
/// confirms corrects the numbers. All frequencies are in hertz.
class ctlMonitorMode : public QFrame {
    Q_OBJECT

public:
    /// What the user's acts throw goes to \a guard; what a write from code throws goes to its
    /// caller.
    explicit ctlMonitorMode(ErrorGuard guard, QWidget *parent = nullptr);

    /// The panel's own property, not the widget's state: it switches the controls, in Channel mode
    /// too. Hides the widget's setter on purpose.
    [[nodiscard]] bool Enabled() const { return m_Enabled; }
    void setEnabled(bool value);
    /// None with no row selected. A write of a number that is no mode changes nothing; any other
    /// sets labels and lists for the mode, also when it is the same.
    [[nodiscard]] MonitorModeCode MonitorMode() const { return m_MonitorMode; }
    void setMonitorMode(MonitorModeCode value);
    /// A write of the present span does nothing at all, except for the first write after the mode
    /// has changed: step, start and end may still be those of the channels.
    [[nodiscard]] Hertz fSpan() const { return m_fSpan; }
    /// Outside Channel mode step, start and end follow, and the centre stays.
    void setfSpan(Hertz value);
    /// Whole hertz inside. Outside Channel mode a write of 6710887 Hz or more throws an
    /// UntrappedError: the span would not fit into 32 bits.
    [[nodiscard]] Hertz fStep() const { return Hertz::fromWhole(m_fStep); }
    /// Outside Channel mode span, start and end follow, and the centre stays.
    void setfStep(Hertz value);
    /// Lower end of the scan. A write outside Channel mode moves centre and end along, and keeps
    /// the span; so do those of the centre and the end with the other two.
    [[nodiscard]] Hertz fStart() const { return m_fStart; }
    void setfStart(Hertz value);
    [[nodiscard]] Hertz fCentre() const { return m_fCentre; }
    void setfCentre(Hertz value);
    [[nodiscard]] Hertz fEnd() const { return m_fEnd; }
    void setfEnd(Hertz value);

Q_SIGNALS:
    /// The user has changed something. An entry that is abandoned or refused for its size raises it
    /// with the old value.
    void Changed(MonitorChangeCode What);

private:
    void makeScanRow(PanelGrid &grid);
    void makeWindowRow(PanelGrid &grid);
    void wireControls();
    void wireFields();
    EntryBox *makeBox();

    /// One for each number that has changed: works out the numbers that depend on it, shows them,
    /// and ends in finishApply().
    void ApplySpan();
    void ApplyStep();
    void ApplyCentre();
    void ApplyStart();
    void ApplyEnd();
    /// The end of each apply routine: sets Updating back and raises the event where the user, and
    /// no write from code, was the cause.
    void finishApply(bool wasUpdating, MonitorChangeCode what);
    /// Takes the mode from the list, with the labels and lists that it has.
    void reactToMode();
    void pickSpan(int row);
    void pickStep(int row);
    /// Too large a number leaves the old one.
    void storeSpan(Hertz value);
    void storeStep(Hertz value);
    void showSpanText();
    void showStepText(Hertz value);
    void showStart();
    void showCentre();
    void showEnd();
    void showWindow();
    [[nodiscard]] bool isChannelMode() const;
    /// Which event a change of start, centre or end is.
    [[nodiscard]] MonitorChangeCode windowChange() const;
    [[nodiscard]] Hertz halfSpan() const { return m_fSpan.dividedBy(2); }

    ErrorGuard m_guard;
    MonitorModeCode m_MonitorMode = MonitorModeCode::None;
    bool m_Updating = false;
    bool m_isModeNew = false; ///< no span has been written since the mode changed
    Hertz m_fSpan;
    qint32 m_fStep = 0;
    Hertz m_fStart;
    Hertz m_fCentre;
    Hertz m_fEnd;
    bool m_Enabled = true;
    FrequencyFields m_fields;

    DropDownList *cboMonitorMode = nullptr;
    EditableList *cboSpan = nullptr;
    EditableList *cboStep = nullptr;
    QLabel *lblStart = nullptr;
    EntryBox *txtStart = nullptr;
    QLabel *lblCentre = nullptr;
    EntryBox *txtCentre = nullptr;
    QLabel *lblEnd = nullptr;
    EntryBox *txtEnd = nullptr;
};

} // namespace veldron
