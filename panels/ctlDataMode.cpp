// SPDX-License-Identifier: MIT
#include "panels/ctlDataMode.h"

#include "common/Numbers.h"
#include "panels/Accessibility.h"
#include "panels/DropDownList.h"
#include "panels/EntryBox.h"
#include "panels/PanelGrid.h"
#include "panels/UpDownButtons.h"
#include "panels/UpdatingScope.h"
#include "utilities/FrequencyEntry.h"
#include "utilities/NumberTexts.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace veldron {

namespace {

constexpr qint16 kLowestAmp = -30;

DataModeCode modeOfRow(int row) {
    return static_cast<DataModeCode>(row + 1);
}

int rowOfMode(DataModeCode mode) {
    return static_cast<int>(mode) - 1;
}

} // namespace

ctlDataMode::ctlDataMode(ErrorGuard guard, QWidget *parent)
    : QFrame(parent), m_guard(std::move(guard)), m_fields(m_guard, *this) {
    Accessibility::describePanel(*this, QStringLiteral("Data panel"));
    PanelGrid grid(*this);
    makeInputRow(grid);
    makeDataRow(grid);
    // Nobody listens yet to the events that these raise.
    reactToRBW();
    reactToAmp();
    reactToDataMode();
    wireControls();
    wireFields();
}

void ctlDataMode::makeInputRow(PanelGrid &grid) {
    cboRBW = new DropDownList(this);
    // The item values are the bandwidths in hertz; RBW itself is the row.
    cboRBW->addItem(QStringLiteral("4 kHz"), 4'000);
    cboRBW->addItem(QStringLiteral("32 kHz"), 32'000);
    cboRBW->addItem(QStringLiteral("64 kHz"), 64'000);
    cboRBW->addItem(QStringLiteral("128 kHz"), 128'000);
    grid.add({0, 0}, QStringLiteral("Label1"), QStringLiteral("RBW"), QStringLiteral("cboRBW"),
             cboRBW);
    cboAmp = new DropDownList(this);
    cboAmp->addItem(QStringLiteral("0 dB"), 0);
    cboAmp->addItem(QStringLiteral("-10 dB"), -10);
    cboAmp->addItem(QStringLiteral("-20 dB"), -20);
    cboAmp->addItem(QStringLiteral("-30 dB"), -30);
    grid.add({0, 1}, QStringLiteral("Label2"), QStringLiteral("Amp"), QStringLiteral("cboAmp"),
             cboAmp);
}

void ctlDataMode::makeDataRow(PanelGrid &grid) {
    cboDataMode = new DropDownList(this);
    cboDataMode->addItems({QStringLiteral("Normal"), QStringLiteral("Avg"), QStringLiteral("Max"),
                           QStringLiteral("Med")});
    grid.add({1, 0}, QStringLiteral("Label3"), QStringLiteral("Data mode"),
             QStringLiteral("cboDataMode"), cboDataMode);
    grid.addControl({1, 1}, QStringLiteral("samplesPair"), makeSamplesPair());
    lblSamples =
        grid.addLabel({1, 1}, QStringLiteral("lblSamples"), QStringLiteral("Samples"), txtSamples);
    // In the same place, and made later so that it lies above the pair.
    cmdReset = new QPushButton(QStringLiteral("Reset"), this);
    cmdReset->setToolTip(QStringLiteral("Reset levels to zero"));
    Accessibility::setName(*cmdReset, QStringLiteral("Reset"));
    grid.addControl({1, 1}, QStringLiteral("cmdReset"), cmdReset);
    cmdReset->hide();
    grid.levelColumns(2);
}

QWidget *ctlDataMode::makeSamplesPair() {
    auto *pair = new QWidget(this);
    Accessibility::setName(*pair, QStringLiteral("Samples"));
    auto *line = new QHBoxLayout(pair);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(1);
    txtSamples = new EntryBox(m_guard, pair);
    txtSamples->setObjectName(QStringLiteral("txtSamples"));
    txtSamples->setText(QStringLiteral("3"));
    txtSamples->setTypingLimit(1);
    txtSamples->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    PanelGrid::fitBox(*txtSamples, QStringLiteral("-9999"));
    udSamples = new UpDownButtons(m_guard, *txtSamples, QStringLiteral("Samples"), pair);
    udSamples->setObjectName(QStringLiteral("udSamples"));
    PanelGrid::keepPlaceWhenHidden(*txtSamples);
    PanelGrid::keepPlaceWhenHidden(*udSamples);
    line->addWidget(txtSamples, 1);
    line->addWidget(udSamples);
    return pair;
}

void ctlDataMode::wireControls() {
    connectGuarded(m_guard, cboRBW, &QComboBox::activated, this, &ctlDataMode::reactToRBW);
    connectGuarded(m_guard, cboAmp, &QComboBox::activated, this, &ctlDataMode::reactToAmp);
    connectGuarded(m_guard, cboDataMode, &QComboBox::activated, this,
                   &ctlDataMode::reactToDataMode);
    connectGuarded(m_guard, txtSamples, &EntryBox::textChanged, this,
                   &ctlDataMode::noteSamplesText);
    // Raised whatever Updating says: it asks the unit for something and holds no value.
    connectGuarded(m_guard, cmdReset, &QPushButton::clicked, this,
                   [this] { Q_EMIT Changed(DataChangeCode::Reset); });
}

void ctlDataMode::wireFields() {
    PanelFields::Field samples;
    samples.takeKey = [this](char16_t key) {
        return lookAtKey(key);
    };
    samples.leave = [this] {
        leaveSamples();
    };
    samples.disable = [this] {
        // Closed first: the box shows the stored number again in silence, as after a write.
        m_fields.close();
        setSamples(m_Samples);
    };
    m_fields.add(*txtSamples, *txtSamples, std::move(samples));
}

bool ctlDataMode::isEditing() const {
    return m_fields.isOpenIn(*txtSamples);
}

void ctlDataMode::setEnabled(bool value) {
    m_Enabled = value;
    cboRBW->setEnabled(value);
    cboAmp->setEnabled(value);
    cboDataMode->setEnabled(value);
    txtSamples->setEnabled(value);
    udSamples->setEnabled(value);
}

void ctlDataMode::setRBW(qint16 value) {
    if (value < 0 || value > cboRBW->count()) {
        return;
    }
    const UpdatingScope updating(m_Updating);
    cboRBW->showRow(value - 1);
    m_RBW = value;
}

void ctlDataMode::setAmp(qint16 value) {
    constexpr double rowDistance = 10.0;
    if (value < kLowestAmp || value > 0) {
        return;
    }
    const UpdatingScope updating(m_Updating);
    cboAmp->showRow(Numbers::roundTo<int>(-value / rowDistance));
    m_Amp = value;
}

void ctlDataMode::setDataMode(DataModeCode &Value) {
    if (rowOfMode(Value) < 0 || rowOfMode(Value) >= cboDataMode->count()) {
        Value = DataModeCode::Normal;
    }
    const UpdatingScope updating(m_Updating);
    if (cboDataMode->currentIndex() != rowOfMode(Value)) {
        cboDataMode->showRow(rowOfMode(Value));
        reactToDataMode();
    }
    // Also where the mode is the same: a number written since may be out of its limits.
    ShowSamplesControls();
    m_Samples = samplesInText();
}

void ctlDataMode::setSamples(qint16 value) {
    const UpdatingScope updating(m_Updating);
    txtSamples->showText(QString::number(value));
    m_Samples = value;
}

void ctlDataMode::reactToRBW() {
    m_RBW = static_cast<qint16>(cboRBW->currentIndex() + 1);
    raiseChange(DataChangeCode::RBW);
}

void ctlDataMode::reactToAmp() {
    m_Amp = static_cast<qint16>(cboAmp->currentData().toInt());
    raiseChange(DataChangeCode::Amp);
}

void ctlDataMode::reactToDataMode() {
    m_DataMode = modeOfRow(cboDataMode->currentIndex());
    // First of all: whoever listens still sees the old number of samples and its old limits.
    raiseChange(DataChangeCode::DataMode);
    ShowSamplesControls();
    m_Samples = samplesInText();
}

void ctlDataMode::ShowSamplesControls() {
    constexpr int averageUpper = 31;
    constexpr int medianUpper = 4;
    const bool sampled = hasSamples(m_DataMode);
    txtSamples->setVisible(sampled);
    udSamples->setVisible(sampled);
    lblSamples->setVisible(sampled);
    cmdReset->setVisible(m_DataMode == DataModeCode::Max);
    if (!sampled) {
        return;
    }
    const bool isAverage = m_DataMode == DataModeCode::Average;
    udSamples->setUpper(isAverage ? averageUpper : medianUpper);
    txtSamples->setTypingLimit(isAverage ? 2 : 1);
    CheckSamples();
}

void ctlDataMode::CheckSamples() {
    const double number = GeneralUtilities::LeadingNumber(txtSamples->text());
    if (number < UpDownButtons::kLower) {
        txtSamples->showText(QString::number(UpDownButtons::kLower));
    }
    if (number > udSamples->upper()) {
        txtSamples->showText(QString::number(udSamples->upper()));
    }
}

bool ctlDataMode::lookAtKey(char16_t key) {
    if ((key >= u'0' && key <= u'9') || key == FrequencyEntry::kBackspace) {
        if (!isEditing()) {
            // Opened before the box is cleared, which is no change of the samples.
            m_fields.open(*txtSamples);
            txtSamples->clear();
        }
    } else {
        endEntry();
    }
    return false;
}

void ctlDataMode::endEntry() {
    // The entry is closed after the check, which may change the text: a change of the text outside
    // an entry raises an event of its own.
    CheckSamples();
    m_Samples = samplesInText();
    m_fields.close();
    raiseChange(DataChangeCode::Samples);
}

void ctlDataMode::leaveSamples() {
    if (isEditing()) {
        endEntry();
    }
}

void ctlDataMode::noteSamplesText() {
    // Single digits of an entry go unnoticed until it ends.
    if (isEditing()) {
        return;
    }
    m_Samples = samplesInText();
    raiseChange(DataChangeCode::Samples);
}

qint16 ctlDataMode::samplesInText() const {
    return Numbers::roundTo<qint16>(GeneralUtilities::LeadingNumber(txtSamples->text()));
}

void ctlDataMode::raiseChange(DataChangeCode what) {
    if (!m_Updating) {
        Q_EMIT Changed(what);
    }
}

} // namespace veldron
