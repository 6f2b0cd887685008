// SPDX-License-Identifier: MIT
#pragma once

#include "common/ErrorGuard.h"

#include <QDialog>
#include <QString>
#include <QStringList>

class QGridLayout;
class QLabel;
class QPushButton;

namespace veldron {

class DialogList;
class frmVDR;

/// The dialog "Communication Settings", and the store of the poll rate.
///
/// It is made once, lives hidden for the whole run, and is read and written at any time, open or
/// not. A port acts at the moment it is chosen, by the user or by code; a poll rate is noted in the
/// mask Change, for the form to apply after the dialog has closed. OK, the close box and Escape all
/// hide the dialog and leave field and mask alone.
///
/// Bits of the mask: 1 serial port (also when code chose it), 32 poll rate. Order of calls at
/// start: fillComPorts, selectComPort(0), setPoll.
class frmCommSettings : public QDialog {
    Q_OBJECT

public:
    /// \a vdr outlives the dialog. \a guard receives what a user's pick of a port throws.
    frmCommSettings(frmVDR &vdr, ErrorGuard guard, QWidget *parent = nullptr);

    /// Milliseconds between scans: 250, 500, 1000, 2000, 5000 or 10000; 0 before the first write.
    [[nodiscard]] qint32 Poll() const { return m_Poll; }
    /// A value without a row in the list changes nothing.
    void setPoll(qint32 value);
    /// What changed since the last call; clears it.
    qint32 Change();

    /// The rows of cboComPort: "None", then \a ports ("COM 3") in their order. Selects nothing.
    void fillComPorts(const QStringList &ports);
    /// Selects row \a row of cboComPort, 0 being "None", and opens and connects its port, also when
    /// the row is selected already. UntrappedError(Overflow) when the port can't be taken and no
    /// other is open; UntrappedError(OutOfRange) when there is no such row.
    void selectComPort(int row);

Q_SIGNALS:
    /// A port was chosen or the user changed the poll rate; \a What is its bit in Change.
    void Changed(qint32 What);

public Q_SLOTS:
    void reject() override { accept(); }

private:
    void makeControls();
    void layOut();
    void addList(QGridLayout *grid, int row, QLabel *label, DialogList *list);
    void wireControls();
    void addComPort(const QString &text);
    void reactToComPort();
    void selectPortInForce();
    void reactToPoll();
    void noteChange(qint32 bit);

    frmVDR &m_vdr;
    ErrorGuard m_guard;
    qint32 m_Poll = 0;
    qint32 m_Change = 0;
    bool m_Updating = false;

    QLabel *Label2 = nullptr;
    DialogList *cboComPort = nullptr;
    QLabel *Label3 = nullptr;
    DialogList *cboPoll = nullptr;
    QPushButton *OKButton = nullptr;
};

} // namespace veldron
