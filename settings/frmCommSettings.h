// SPDX-License-Identifier: MIT
#pragma once

#include <QFlags>

#include "settings/SettingsDialog.h"

#include <QString>
#include <QStringList>

class QGridLayout;
class QLabel;
class QPushButton;

namespace veldron {

class DialogList;
class frmVDR;

/// What was changed; the bits of the mask Change of frmCommSettings.
enum class CommChange : qint32 {
    SerialPort = 1, ///< chosen, by the user or by code
    Poll = 32,      ///< by the user
};
Q_DECLARE_FLAGS(CommChanges, CommChange)
Q_DECLARE_OPERATORS_FOR_FLAGS(CommChanges)

/// The dialog "Communication Settings", and the holder of the poll rate, open or not.
///
/// A port acts at the moment it is chosen, by the user or by code; a poll rate is noted in the mask
/// Change, for the form to apply after the dialog has closed.
///
/// Order of calls at start: fillComPorts; selectComPort(0), which ends whatever state the search of
/// the ports has left; setPoll.
class frmCommSettings : public SettingsDialog {
    Q_OBJECT

public:
    /// \a vdr outlives the dialog.
    frmCommSettings(ErrorGuard guard, frmVDR &vdr, QWidget *parent = nullptr);

    /// Milliseconds between scans: 250, 500, 1000, 2000, 5000 or 10000; 0 before the first write.
    [[nodiscard]] qint32 Poll() const { return m_Poll; }
    /// A value without a row in the list changes nothing.
    void setPoll(qint32 value);
    /// What changed since the last call; clears it. A port that code has chosen is in it too, so
    /// the first call after the start has that bit set.
    CommChanges Change();

    /// The rows of cboComPort: "None", then \a ports ("COM 3") in their order. Selects nothing.
    void fillComPorts(const QStringList &ports);
    /// Selects row \a row of cboComPort, 0 being "None", and opens and connects its port, also when
    /// the row is selected already. UntrappedError(Overflow) when the port can't be taken and no
    /// other is open; UntrappedError(OutOfRange) when there is no such row.
    void selectComPort(int row);

Q_SIGNALS:
    /// A port was chosen or the user changed the poll rate; \a What is its bit in Change.
    void Changed(veldron::CommChange What);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void makeControls();
    void layOut();
    void addList(QGridLayout *grid, int row, QLabel *label, DialogList *list);
    void wireControls();
    void addComPort(const QString &text);
    void showPortTip(int row);
    /// Opens the port of the row, or goes back to the one that is in force.
    void reactToComPort();
    /// Shows the open port in the list, after one that could not be opened.
    void selectPortInForce();
    void reactToPoll();
    void noteChange(CommChange change);

    frmVDR &m_vdr;
    qint32 m_Poll = 0;
    CommChanges m_Change;
    /// The poll rate is being written by code, which is no change.
    bool m_Updating = false;

    QLabel *Label2 = nullptr;
    DialogList *cboComPort = nullptr;
    QLabel *Label3 = nullptr;
    DialogList *cboPoll = nullptr;
    QPushButton *OKButton = nullptr;
};

} // namespace veldron
