// SPDX-License-Identifier: MIT
#include "panels/ctlFrequency.h"

#include "common/Numbers.h"
#include "panels/Accessibility.h"
#include "panels/DropDownList.h"
#include "panels/EditableList.h"
#include "panels/EntryBox.h"
#include "panels/PanelGrid.h"
#include "panels/UpdatingScope.h"
#include "utilities/NumberTexts.h"
#include "utilities/Receivers.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace veldron {

namespace {

/// Steps that are typed stay below it.
constexpr Hertz kTuningStepLimit = Hertz::fromWhole(2'000'000'000);

QString noReceiverText() {
    return QStringLiteral("None");
}

} // namespace

ctlFrequency::ctlFrequency(ErrorGuard guard, QWidget *parent)
    : QFrame(parent), m_guard(std::move(guard)), m_fields(m_guard, *this) {
    Accessibility::describePanel(*this, QStringLiteral("Receiver panel"));
    // The Tab key visits the controls in the order in which they are made.
    makeFocusHolder();
    PanelGrid grid(*this);
    makeReceiverRow(grid);
    makeSettingsRow(grid);
    makeMenu();
    Timer1 = new QTimer(this);
    Timer1->setObjectName(QStringLiteral("Timer1"));
    FillReceiverControls();
    wireControls();
    wireFields();
}

void ctlFrequency::makeFocusHolder() {
    Picture1 = new QWidget(this);
    // Before the name: setting it makes the toolkit describe the widget, for good.
    Accessibility::describeAsInvisible(*Picture1);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setAccessibleName(QStringLiteral("Receiver panel"));
    // By SetFocus alone: nobody sees where the focus is.
    Picture1->setFocusPolicy(Qt::NoFocus);
    Picture1->setFixedSize(1, 1);
    lblFreq = new QLabel(QStringLiteral("0123.456.789"), Picture1);
    lblFreq->setObjectName(QStringLiteral("lblFreq"));
}

void ctlFrequency::makeReceiverRow(PanelGrid &grid) {
    cboRX = new EditableList(this);
    for (qint16 code = 1;; ++code) {
        const QString name = GeneralUtilities::ReceiverTable(code).constFirst().toString();
        if (name == QLatin1String("ERR")) {
            break;
        }
        cboRX->addItem(name);
    }
    cboRX->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    showReceiver();
    grid.add({0, 0}, QStringLiteral("Label2"), QStringLiteral("Receiver"), QStringLiteral("cboRX"),
             cboRX);
    txtFreq = new EntryBox(m_guard, this);
    txtFreq->setText(QStringLiteral("0123.45678"));
    PanelGrid::fitBox(*txtFreq, QStringLiteral("-1000.00000"));
    grid.add({0, 1, 2}, QStringLiteral("Label1"), QStringLiteral("RX Frequency"),
             QStringLiteral("txtFreq"), txtFreq);
}

void ctlFrequency::makeSettingsRow(PanelGrid &grid) {
    constexpr int longestMode = 5;
    cboStep = new EditableList(this);
    cboStep->addItems({QStringLiteral("1.000"), QStringLiteral("2.500"), QStringLiteral("5.000"),
                       QStringLiteral("9.000"), QStringLiteral("10.000"), QStringLiteral("25.000"),
                       QStringLiteral("50.000"), QStringLiteral("100.000")});
    cboStep->showValue(QStringLiteral("10.000"), Hertz::fromWhole(10'000));
    lblStep = grid.add({1, 0}, QStringLiteral("lblStep"), QStringLiteral("RX Step"),
                       QStringLiteral("cboStep"), cboStep);
    cboMode = new DropDownList(this);
    cboMode->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboMode->setMinimumContentsLength(longestMode);
    lblMode = grid.add({1, 1}, QStringLiteral("lblMode"), QStringLiteral("RX Mode"),
                       QStringLiteral("cboMode"), cboMode);
    chkAtten = new QCheckBox(this);
    lblAtten = grid.add({1, 2}, QStringLiteral("lblAtten"), QStringLiteral("RX Atten"),
                        QStringLiteral("chkAtten"), chkAtten);
    grid.levelWideColumns(2);
}

void ctlFrequency::makeMenu() {
    // A part of the panel that nothing opens: frequencies are never rounded to a step.
    auto *menu = new QMenu(QStringLiteral("Rounding"), this);
    menu->setObjectName(QStringLiteral("mnuRounding"));
    menu->addAction(QStringLiteral("No rounding"))->setObjectName(QStringLiteral("mnuNoRound"));
    menu->addAction(QStringLiteral("Round to Channel step"))
        ->setObjectName(QStringLiteral("mnuRound"));
    menu->addAction(QStringLiteral("Round to half Channel Step"))
        ->setObjectName(QStringLiteral("mnuRoundHalf"));
}

void ctlFrequency::wireControls() {
    connectGuarded(m_guard, cboRX, &QComboBox::activated, this, &ctlFrequency::pickReceiver);
    connectGuarded(m_guard, cboStep, &QComboBox::activated, this, &ctlFrequency::pickStep);
    connectGuarded(m_guard, cboMode, &QComboBox::activated, this, &ctlFrequency::pickMode);
    connectGuarded(m_guard, chkAtten, &QCheckBox::clicked, this, &ctlFrequency::clickAtten);
    connectGuarded(m_guard, Timer1, &QTimer::timeout, this, &ctlFrequency::tune);
}

void ctlFrequency::wireFields() {
    m_fields.add(*txtFreq, {
                               .defaultUnit = [] { return FrequencyEntry::Unit::M; },
                               .store = [this](Hertz value) { m_Frequency = value; },
                               .apply = [this] { ApplyFrequency(); },
                               .show = [this] { showFrequency(); },
                           });
    m_fields.add(*cboStep, {
                               .defaultUnit = [] { return FrequencyEntry::Unit::K; },
                               .store = [this](Hertz value) { storeStep(value); },
                               .apply = [this] { ApplyStepText(); },
                               .show = [this] { showStep(); },
                           });
    // What was typed over the receiver picks none; it goes back when the list is left.
    PanelFields::Field receiver;
    receiver.leave = [this] {
        showReceiver();
    };
    receiver.disable = receiver.leave;
    m_fields.fields().add(*cboRX, *cboRX->lineEdit(), std::move(receiver));
    m_fields.fields().setPanelLeft([this] { endTuning(); });
}

void ctlFrequency::setEnabled(bool value) {
    m_Enabled = value;
    cboRX->setEnabled(value);
    cboStep->setEnabled(value);
    cboMode->setEnabled(value);
    chkAtten->setEnabled(value);
    txtFreq->setEnabled(value);
}

bool ctlFrequency::Atten() const {
    return chkAtten->isChecked();
}

void ctlFrequency::setAtten(bool value) {
    const UpdatingScope updating(m_Updating);
    chkAtten->setChecked(value);
}

void ctlFrequency::setAttenEn(bool value) {
    chkAtten->setEnabled(value);
}

void ctlFrequency::setFrequency(Hertz value) {
    const UpdatingScope updating(m_Updating);
    m_Frequency = value;
    ApplyFrequency();
}

void ctlFrequency::setRX(qint16 value) {
    // One short of the list on purpose: the highest code can be picked, but is not taken here.
    if (value < 0 || value >= cboRX->count()) {
        return;
    }
    const UpdatingScope updating(m_Updating);
    m_RX = value;
    showReceiver();
    FillReceiverControls();
}

void ctlFrequency::setStep(qint32 value) {
    const UpdatingScope updating(m_Updating);
    m_Step = value;
    showStep();
}

void ctlFrequency::setStepEn(bool value) {
    cboStep->setEnabled(value);
}

void ctlFrequency::setMode(qint16 value) {
    const QVariantList table = GeneralUtilities::ReceiverTable(m_RX);
    for (int i = 1; i < table.size(); ++i) {
        if (table[i].toInt() != value) {
            continue;
        }
        const UpdatingScope updating(m_Updating);
        // A receiver that was picked but not taken has a longer table than the list has rows.
        if (i <= cboMode->count()) {
            cboMode->setCurrentIndex(i - 1);
        }
        // Each write of the receiver clears the row, so a new row alone is no new mode.
        if (value != m_Mode) {
            Accessibility::announceValue(*cboMode, GeneralUtilities::ModeName(value));
        }
        m_Mode = value;
    }
}

void ctlFrequency::setModeEn(bool value) {
    cboMode->setEnabled(value);
}

void ctlFrequency::SetFocus() {
    Picture1->setFocus();
}

void ctlFrequency::showUnconfigured() {
    constexpr int firstRow = 10;
    constexpr qint32 firstStep = 25'000;
    const UpdatingScope updating(m_Updating);
    cboMode->clear();
    QString name = GeneralUtilities::ModeName(1);
    for (qint16 code = 1; name != QLatin1String("ERR");) {
        cboMode->addItem(name);
        name = GeneralUtilities::ModeName(++code);
    }
    cboMode->setCurrentIndex(firstRow);
    m_Mode = GeneralUtilities::ModeCode(cboMode->currentText());
    setStep(firstStep);
}

void ctlFrequency::focusInEvent(QFocusEvent *event) {
    QFrame::focusInEvent(event);
    SetFocus();
}

void ctlFrequency::resizeEvent(QResizeEvent *event) {
    QFrame::resizeEvent(event);
    Picture1->move(0, height() - Picture1->height());
}

void ctlFrequency::ApplyFrequency() {
    showFrequency();
    raiseEntry(ReceiverChangeCode::Frequency);
}

void ctlFrequency::ApplyStepText() {
    showStep();
    raiseEntry(ReceiverChangeCode::Step);
}

void ctlFrequency::showReceiver() {
    cboRX->showRowText(m_RX - 1, noReceiverText());
}

void ctlFrequency::showFrequency() {
    txtFreq->showText(GeneralUtilities::FormatMHz(m_Frequency));
}

void ctlFrequency::showStep() {
    const Hertz step = Hertz::fromWhole(m_Step);
    cboStep->showValue(GeneralUtilities::FormatKHz(step), step);
}

void ctlFrequency::FillReceiverControls() {
    cboMode->clear();
    const QVariantList table = GeneralUtilities::ReceiverTable(m_RX);
    for (int i = 1; i < table.size(); ++i) {
        cboMode->addItem(GeneralUtilities::ModeName(table[i].value<qint16>()));
    }
    // The list picks its first row by itself; the next write of the mode has to.
    cboMode->setCurrentIndex(-1);
    const bool tunable = GeneralUtilities::isTunable(m_RX);
    cboMode->setVisible(tunable);
    cboStep->setVisible(tunable);
    lblMode->setVisible(tunable);
    lblStep->setVisible(tunable);
    chkAtten->setVisible(GeneralUtilities::HasAttenuator(m_RX));
    lblAtten->setVisible(GeneralUtilities::HasAttenuator(m_RX));
}

void ctlFrequency::storeStep(Hertz value) {
    // The event comes in either case, with the old step where the new one is too large.
    if (value < kTuningStepLimit) {
        m_Step = value.roundedTo32();
    }
}

void ctlFrequency::pickReceiver(int row) {
    const auto code = static_cast<qint16>(row + 1);
    if (code == m_RX) {
        return;
    }
    // The controls are refilled only when the confirmed receiver is written back.
    m_RX = code;
    raiseChange(ReceiverChangeCode::RX);
}

void ctlFrequency::pickStep(int row) {
    const qint32 step = cboStep->rowHertz(row).roundedTo32();
    // The row takes the place of what has been typed.
    m_fields.cancel();
    // The step in force raises nothing, unlike the span and the step of the monitor panel.
    const bool isNew = std::exchange(m_Step, step) != step;
    showStep();
    if (isNew) {
        raiseChange(ReceiverChangeCode::Step);
    }
}

void ctlFrequency::pickMode() {
    m_Mode = GeneralUtilities::ModeCode(cboMode->currentText());
    raiseChange(ReceiverChangeCode::Mode);
}

void ctlFrequency::clickAtten() {
    raiseChange(ReceiverChangeCode::Atten);
}

void ctlFrequency::tune() {
    constexpr double speedUp = 0.75;
    constexpr int shortest = 10;
    m_Frequency += Hertz::fromWhole(m_TuneStep);
    lblFreq->setText(GeneralUtilities::FrequencyText(m_Frequency));
    Q_EMIT Changed(ReceiverChangeCode::Frequency);
    Timer1->setInterval(std::max(shortest, Numbers::roundTo<int>(Timer1->interval() * speedUp)));
}

void ctlFrequency::endTuning() {
    m_TuneStep = 0;
    m_fields.cancel();
}

void ctlFrequency::raiseChange(ReceiverChangeCode what) {
    if (!m_Updating) {
        Q_EMIT Changed(what);
    }
}

void ctlFrequency::raiseEntry(ReceiverChangeCode what) {
    if (!m_Updating) {
        m_fields.raiseOutOfEntry([this, what] { Q_EMIT Changed(what); });
    }
}

} // namespace veldron
