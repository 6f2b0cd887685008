// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>

#include "common/ErrorGuard.h"
#include "utilities/FrequencyEntry.h"

class QLabel;

namespace veldron {

class EditableList;
class EntryBox;
class FixedList;
class PanelGrid;

/// The panel that says what the unit scans: its monitor mode and the five numbers of the scan.
///
/// In the modes 1 Spectrum and 2 Step it keeps the numbers consistent: the step times 320 is the
/// span, start and end lie half a span below and above the centre. Editing start, centre or end
/// moves the whole window, editing span or step keeps the centre. In mode 3 Channel every number
/// stands alone, and fCentre is the channel step. Nothing is held within limits: what the unit
/// confirms corrects the numbers. All frequencies are in hertz.
class ctlMonitorMode : public QFrame {
    Q_OBJECT

public:
    explicit ctlMonitorMode(QWidget *parent = nullptr);

    /// What the user's acts run under: a step that can't be multiplied goes to it. Without one
    /// such an error is fatal. Writes from code throw to their caller instead.
    void setGuard(ErrorGuard guard) { m_guard = std::move(guard); }

    /// The panel's own property, not the widget's state: it switches the controls, in Channel mode
    /// too. Hides the widget's setter on purpose.
    [[nodiscard]] bool Enabled() const { return m_Enabled; }
    void setEnabled(bool value);
    /// 1 Spectrum, 2 Step, 3 Channel, 0 with no row selected. A write of anything else changes
    /// nothing; any other sets labels and lists for the mode, also when it is the same.
    [[nodiscard]] qint16 MonitorMode() const { return m_MonitorMode; }
    void setMonitorMode(qint16 value);
    /// A write of the present span does nothing at all.
    [[nodiscard]] Hertz fSpan() const { return m_fSpan; }
    void setfSpan(Hertz value);
    /// Whole hertz inside. Outside Channel mode a write of 6710887 Hz or more throws an
    /// UntrappedError: the span would not fit into 32 bits.
    [[nodiscard]] Hertz fStep() const { return Hertz::fromWhole(m_fStep); }
    void setfStep(Hertz value);
    [[nodiscard]] Hertz fStart() const { return m_fStart; }
    void setfStart(Hertz value);
    [[nodiscard]] Hertz fCentre() const { return m_fCentre; }
    void setfCentre(Hertz value);
    [[nodiscard]] Hertz fEnd() const { return m_fEnd; }
    void setfEnd(Hertz value);

Q_SIGNALS:
    /// The user has changed something. A code, not a mask: 0 MonitorMode, 1 centre, start or end
    /// outside Channel mode, 2 step, 3 span, 4 a channel value. An entry that is abandoned or
    /// refused for its size raises it with the old value.
    void Changed(qint32 What);

private:
    void makeScanRow(PanelGrid &grid);
    void makeWindowRow(PanelGrid &grid);
    void wireControls();
    void wireFields();
    EntryBox *makeBox();

    void ApplySpan();
    void ApplyStep();
    void ApplyCentre();
    void ApplyStart();
    void ApplyEnd();
    void finishApply(bool wasUpdating, qint32 what);
    void reactToMode();
    void pickSpan(int row);
    void pickStep(int row);
    void applyStepByUser();
    void showSpanText();
    void showStepText(Hertz value);
    void showWindow();
    [[nodiscard]] bool isChannelMode() const;
    [[nodiscard]] qint32 windowChange() const;
    [[nodiscard]] Hertz halfSpan() const { return m_fSpan.dividedBy(2); }

    qint16 m_MonitorMode = 0;
    bool m_Updating = false;
    Hertz m_fSpan;
    qint32 m_fStep = 0;
    Hertz m_fStart;
    Hertz m_fCentre;
    Hertz m_fEnd;
    bool m_Enabled = true;
    FrequencyEntry m_entry;
    ErrorGuard m_guard;

    FixedList *cboMonitorMode = nullptr;
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
