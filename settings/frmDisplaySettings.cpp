// SPDX-License-Identifier: MIT
#include "settings/frmDisplaySettings.h"

#include "settings/DialogList.h"
#include "settings/PalettePreview.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

#include <array>
#include <utility>

namespace veldron {

namespace {

constexpr qint32 kWaterfallBit = 4;
constexpr qint32 kPersistenceBit = 8;
constexpr qint32 kPaletteBit = 16;
constexpr qint32 kMarkerBit = 64;

struct Row {
    const char *text;
    qint32 itemValue;
};

constexpr std::array kPersistenceRows{Row{"5s", 5},     Row{"10s", 10},  Row{"30s", 30},
                                      Row{"1m", 60},    Row{"5m", 300},  Row{"10m", 600},
                                      Row{"30m", 1800}, Row{"1h", 3600}, Row{"life", -1}};
constexpr std::array kUpdateRows{Row{"1s", 1},   Row{"2s", 2},   Row{"5s", 5},
                                 Row{"10s", 10}, Row{"30s", 30}, Row{"1m", 60}};
/// The position in the list is the palette's index; the item values say nothing.
constexpr std::array kPaletteRows{Row{"black to white", 0}, Row{"white to black", 0},
                                  Row{"hot metal", 0},      Row{"rainbow", 0},
                                  Row{"spectrum 5", 0},     Row{"spectrum 6", 0}};

template <typename Control, typename... Text>
Control *made(const char *name, QWidget *parent, Text... text) {
    auto *const control = new Control(QString(text)..., parent);
    control->setObjectName(QLatin1String(name));
    return control;
}

template <typename Rows>
DialogList *madeList(const char *name, QWidget *parent, const Rows &rows) {
    auto *const list = made<DialogList>(name, parent);
    for (const Row &row : rows) {
        list->addRow(QLatin1String(row.text), row.itemValue);
    }
    return list;
}

} // namespace

frmDisplaySettings::frmDisplaySettings(QWidget *parent) : QDialog(parent) {
    setWindowTitle("Display Settings");
    makeCheckBoxes();
    makeLists();
    layOut();
    orderTabs();
    wireControls();
}

void frmDisplaySettings::makeCheckBoxes() {
    chkPersistence = made<QCheckBox>("chkPersistence", this, "Peak following");
    chkWaterfall = made<QCheckBox>("chkWaterfall", this, "Show waterfall");
    chkMarker = made<QCheckBox>("chkMarker", this, "Show marker");
    chkMarker->setToolTip("Show the Frequency marker on the spectrum display");
    OKButton = made<QPushButton>("OKButton", this, "OK");
    OKButton->setDefault(true);
}

void frmDisplaySettings::makeLists() {
    Label5 = made<QLabel>("Label5", this, "Persistence time");
    cboPersistence = madeList("cboPersistence", this, kPersistenceRows);
    cboPersistence->setToolTip("How long the peak values persist on the spectrum display");
    Label4 = made<QLabel>("Label4", this, "Waterfall update rate");
    cboUpdate = madeList("cboUpdate", this, kUpdateRows);
    cboUpdate->setToolTip("How fast the waterfall display moves downwards");
    Label6 = made<QLabel>("Label6", this, "Waterfall colours");
    cboPalette = madeList("cboPalette", this, kPaletteRows);
    cboPalette->setToolTip("Colour scheme for the waterfall display");
    Picture1 = made<PalettePreview>("Picture1", this);
    Picture1->setAccessibleName("Preview of the waterfall colours, low to high");
    Label8 = made<QLabel>("Label8", this, "low");
    Label9 = made<QLabel>("Label9", this, "high");
}

void frmDisplaySettings::layOut() {
    auto *const grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setHorizontalSpacing(12);
    grid->addWidget(chkPersistence, 0, 0, 1, 3);
    addList(grid, 1, Label5, cboPersistence);
    grid->setRowMinimumHeight(2, 8);
    grid->addWidget(chkWaterfall, 3, 0, 1, 3);
    addList(grid, 4, Label4, cboUpdate);
    addList(grid, 5, Label6, cboPalette);
    grid->addWidget(Picture1, 6, 1, 1, 2);
    grid->addWidget(Label8, 7, 1, Qt::AlignLeft);
    grid->addWidget(Label9, 7, 2, Qt::AlignRight);
    grid->setRowMinimumHeight(8, 8);
    grid->addWidget(chkMarker, 9, 0, 1, 3);
    grid->setRowMinimumHeight(10, 12);
    grid->addWidget(OKButton, 11, 0, 1, 3, Qt::AlignRight);
}

void frmDisplaySettings::addList(QGridLayout *grid, int row, QLabel *label, DialogList *list) {
    label->setBuddy(list);
    list->setAccessibleName(label->text());
    grid->addWidget(label, row, 0);
    grid->addWidget(list, row, 1, 1, 2);
}

void frmDisplaySettings::orderTabs() {
    const std::array<QWidget *, 7> order{chkPersistence, cboPersistence, chkWaterfall, cboUpdate,
                                         cboPalette,     chkMarker,      OKButton};
    for (std::size_t i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
    chkPersistence->setFocus();
}

void frmDisplaySettings::wireControls() {
    connect(chkPersistence, &QCheckBox::clicked, this, [this](bool checked) {
        reactToCheckBox(m_PersistenceEnable, checked, kPersistenceBit);
    });
    connect(chkWaterfall, &QCheckBox::clicked, this,
            [this](bool checked) { reactToCheckBox(m_WaterfallEnable, checked, kWaterfallBit); });
    connect(chkMarker, &QCheckBox::clicked, this,
            [this](bool checked) { reactToCheckBox(m_MarkerEnable, checked, kMarkerBit); });
    connect(cboPersistence, &QComboBox::activated, this, [this] { reactToPersistence(); });
    connect(cboUpdate, &QComboBox::activated, this, [this] { reactToUpdate(); });
    connect(cboPalette, &QComboBox::activated, this, [this] { reactToPalette(); });
    connect(OKButton, &QPushButton::clicked, this, &QDialog::accept);
}

void frmDisplaySettings::setPersistenceEnable(bool value) {
    writeCheckBox(chkPersistence, m_PersistenceEnable, value);
}

void frmDisplaySettings::setWaterfallEnable(bool value) {
    writeCheckBox(chkWaterfall, m_WaterfallEnable, value);
}

void frmDisplaySettings::setMarkerEnable(bool value) {
    writeCheckBox(chkMarker, m_MarkerEnable, value);
}

void frmDisplaySettings::setUpdate(qint32 value) {
    const int row = cboUpdate->rowOfValue(value);
    if (row >= 0) {
        const QScopedValueRollback<bool> updating(m_Updating, true);
        cboUpdate->setCurrentIndex(row);
        reactToUpdate();
    }
}

void frmDisplaySettings::setPersistence(qint32 value) {
    const int row = cboPersistence->rowOfValue(value);
    if (row >= 0) {
        const QScopedValueRollback<bool> updating(m_Updating, true);
        cboPersistence->setCurrentIndex(row);
        reactToPersistence();
    }
}

void frmDisplaySettings::setPaletteIndex(qint16 value) {
    if (value >= 0 && value < cboPalette->count()) {
        const QScopedValueRollback<bool> updating(m_Updating, true);
        cboPalette->setCurrentIndex(value);
        reactToPalette();
    }
}

qint32 frmDisplaySettings::Change() {
    return std::exchange(m_Change, 0);
}

void frmDisplaySettings::writeCheckBox(QCheckBox *box, bool &field, bool value) {
    const QScopedValueRollback<bool> updating(m_Updating, true);
    field = value;
    box->setChecked(value);
}

void frmDisplaySettings::reactToCheckBox(bool &field, bool checked, qint32 bit) {
    if (!m_Updating) {
        field = checked;
        noteChange(bit);
    }
}

void frmDisplaySettings::reactToPersistence() {
    m_Persistence = cboPersistence->itemValue();
    noteChange(kPersistenceBit);
}

void frmDisplaySettings::reactToUpdate() {
    m_Update = cboUpdate->itemValue();
    noteChange(kWaterfallBit);
}

void frmDisplaySettings::reactToPalette() {
    m_PaletteIndex = static_cast<qint16>(cboPalette->currentIndex());
    Picture1->setScheme(m_PaletteIndex);
    noteChange(kPaletteBit);
}

void frmDisplaySettings::noteChange(qint32 bit) {
    if (!m_Updating) {
        m_Change |= bit;
        Q_EMIT Changed(bit);
    }
}

} // namespace veldron
