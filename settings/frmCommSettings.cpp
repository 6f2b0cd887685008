// SPDX-License-Identifier: MIT
#include "settings/frmCommSettings.h"

#include "common/Numbers.h"
#include "link/frmVDR.h"
#include "settings/DialogList.h"
#include "settings/PlainTip.h"
#include "utilities/NumberTexts.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

#include <array>
#include <utility>

namespace veldron {

namespace {

constexpr int kPrefixLength = 4; ///< of "COM " in front of the port's number

struct PollRow {
    const char *text;
    qint32 milliseconds;
};

constexpr std::array kPollRows{PollRow{"0.25s", 250}, PollRow{"0.5s", 500}, PollRow{"1s", 1000},
                               PollRow{"2s", 2000},   PollRow{"5s", 5000},  PollRow{"10s", 10000}};

/// The port's number in a row's text; "None" has nothing behind its first four characters: 0.
qint16 portOfText(const QString &text) {
    return Numbers::roundTo<qint16>(GeneralUtilities::LeadingNumber(text.mid(kPrefixLength)));
}

} // namespace

frmCommSettings::frmCommSettings(ErrorGuard guard, frmVDR &vdr, QWidget *parent)
    : SettingsDialog(std::move(guard), parent), m_vdr(vdr) {
    setWindowTitle("Communication Settings");
    makeControls();
    layOut();
    wireControls();
}

void frmCommSettings::makeControls() {
    Label2 = new QLabel("Serial Port", this);
    Label2->setObjectName("Label2");
    cboComPort = new DialogList(this);
    cboComPort->setObjectName("cboComPort");
    cboComPort->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Label3 = new QLabel("VDR poll rate", this);
    Label3->setObjectName("Label3");
    cboPoll = new DialogList(this);
    cboPoll->setObjectName("cboPoll");
    cboPoll->setToolTip("How often the VELDRON is asked for fresh frequency scans");
    for (const PollRow &row : kPollRows) {
        cboPoll->addRow(QLatin1String(row.text), row.milliseconds);
    }
    OKButton = new QPushButton("OK", this);
    OKButton->setObjectName("OKButton");
    OKButton->setDefault(true);
}

void frmCommSettings::layOut() {
    auto *const grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setHorizontalSpacing(12);
    grid->setColumnMinimumWidth(1, 120);
    addList(grid, 0, Label2, cboComPort);
    addList(grid, 1, Label3, cboPoll);
    grid->setRowMinimumHeight(2, 12);
    grid->addWidget(OKButton, 3, 0, 1, 2, Qt::AlignRight);
    setFirstControl(cboComPort);
}

void frmCommSettings::addList(QGridLayout *grid, int row, QLabel *label, DialogList *list) {
    label->setBuddy(list);
    list->setAccessibleName(label->text());
    grid->addWidget(label, row, 0);
    grid->addWidget(list, row, 1);
}

void frmCommSettings::wireControls() {
    connectGuarded(guard(), cboComPort, &QComboBox::activated, this,
                   &frmCommSettings::reactToComPort);
    connectGuarded(guard(), cboPoll, &QComboBox::activated, this, &frmCommSettings::reactToPoll);
    connectGuarded(guard(), OKButton, &QPushButton::clicked, this, &QDialog::accept);
}

void frmCommSettings::setPoll(qint32 value) {
    const int row = cboPoll->rowOfValue(value);
    if (row >= 0) {
        const QScopedValueRollback<bool> updating(m_Updating, true);
        cboPoll->setCurrentIndex(row);
        reactToPoll();
    }
}

CommChanges frmCommSettings::Change() {
    return std::exchange(m_Change, {});
}

void frmCommSettings::fillComPorts(const QStringList &ports) {
    cboComPort->clear();
    addComPort("None");
    for (const QString &port : ports) {
        addComPort(port);
    }
}

void frmCommSettings::addComPort(const QString &text) {
    const qint16 port = portOfText(text);
    cboComPort->addRow(text, port);
    showPortTip(cboComPort->count() - 1);
}

void frmCommSettings::showEvent(QShowEvent *event) {
    // The link may have found another reason since the dialog was last up.
    for (int row = 0; row < cboComPort->count(); ++row) {
        showPortTip(row);
    }
    SettingsDialog::showEvent(event);
}

/// The device behind the port of \a row, and why it could not be opened.
void frmCommSettings::showPortTip(int row) {
    const qint16 port = portOfText(cboComPort->itemText(row));
    if (port > 0) {
        const QString problem = m_vdr.portProblem(port);
        cboComPort->setItemData(row,
                                plainTip(problem.isEmpty()
                                             ? m_vdr.deviceName(port)
                                             : m_vdr.deviceName(port) + '\n' + problem),
                                Qt::ToolTipRole);
    }
}

void frmCommSettings::selectComPort(int row) {
    if (row < 0 || row >= cboComPort->count()) {
        throw UntrappedError(UntrappedError::Kind::OutOfRange,
                             QString("The list of serial ports has no row %1.").arg(row));
    }
    cboComPort->setCurrentIndex(row);
    reactToComPort();
}

void frmCommSettings::reactToComPort() {
    const qint16 port = portOfText(cboComPort->currentText());
    const int row = cboComPort->currentIndex();
    m_vdr.setCommPort(row == 0 ? qint16{0} : port);
    if (m_vdr.isUnloaded()) {
        return; // the program was ended under the message that the port can't be opened
    }
    // Whether or not it opened: the reason why it did not is known now.
    showPortTip(row);
    if (m_vdr.CommPort() == port) {
        m_vdr.Connect();
    } else {
        selectPortInForce();
    }
    noteChange(CommChange::SerialPort);
}

void frmCommSettings::selectPortInForce() {
    // Without an open port this looks for "COM 0", which no list has: the program ends there.
    const QString wanted = QString("COM %1").arg(m_vdr.CommPort());
    const int row = cboComPort->findText(wanted);
    if (row < 0) {
        throw UntrappedError(
            UntrappedError::Kind::Overflow,
            "The serial port could not be opened, and there is no earlier port to go back to.");
    }
    selectComPort(row);
}

void frmCommSettings::reactToPoll() {
    m_Poll = cboPoll->itemValue();
    if (!m_Updating) {
        noteChange(CommChange::Poll);
    }
}

void frmCommSettings::noteChange(CommChange change) {
    m_Change |= change;
    Q_EMIT Changed(change);
}

} // namespace veldron
