// SPDX-License-Identifier: MIT
#include "settings/frmDisplaySettings.h"

#include "settings/DialogList.h"
#include "settings/PalettePreview.h"
#include "utilities/Palette.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <span>
#include <utility>

namespace veldron {

namespace {

constexpr int kGap = 8; ///< pixels between two groups of controls
constexpr int kGapAboveOk = 12;

constexpr DialogChoice kPersistenceRows[] = {{"5s", 5},     {"10s", 10},  {"30s", 30},
                                             {"1m", 60},    {"5m", 300},  {"10m", 600},
                                             {"30m", 1800}, {"1h", 3600}, {"life", -1}};
constexpr DialogChoice kUpdateRows[] = {{"1s", 1},   {"2s", 2},   {"5s", 5},
                                        {"10s", 10}, {"30s", 30}, {"1m", 60}};

constexpr DialogChoice palette(const char *text, PaletteCode code) {
    return {text, static_cast<qint32>(code)};
}
constexpr DialogChoice kPaletteRows[] = {palette("black to white", PaletteCode::BlackToWhite),
                                         palette("white to black", PaletteCode::WhiteToBlack),
                                         palette("hot metal", PaletteCode::HotMetal),
                                         palette("rainbow", PaletteCode::Rainbow),
                                         palette("spectrum 5", PaletteCode::Spectrum5),
                                         palette("spectrum 6", PaletteCode::Spectrum6)};

/// What a user changes by the control of \a field.
template <typename Field>
DisplayChange changeOf(Field field) {
    return std::find_if(kDisplaySettings.begin(), kDisplaySettings.end(),
                        [field](const DisplaySetting &setting) {
                            const auto *const stored = std::get_if<Field>(&setting.field);
                            return stored != nullptr && *stored == field;
                        })
        ->change;
}

template <typename Control, typename... Text>
Control *made(const char *name, QWidget *parent, Text... text) {
    auto *const control = new Control(QString(text)..., parent);
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

/// A check box.
struct frmDisplaySettings::BoxRow {
    const char *name;
    const char *caption;
    const char *tip;
    bool DisplaySettings::*field;
};

/// A fixed list with a label in front of it.
struct frmDisplaySettings::ListRow {
    const char *name;
    const char *labelName;
    const char *label;
    const char *tip;
    std::span<const DialogChoice> choices;
    std::variant<qint16 DisplaySettings::*, qint32 DisplaySettings::*> field;
};

frmDisplaySettings::frmDisplaySettings(ErrorGuard guard, QWidget *parent)
    : SettingsDialog(std::move(guard), parent) {
    setWindowTitle("Display Settings");
    auto *const grid = new QGridLayout(this);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    grid->setHorizontalSpacing(12);
    makeControls(grid);
}

/// From top to bottom, which is the order of the tab key too.
void frmDisplaySettings::makeControls(QGridLayout *grid) {
    addBox(grid, {"chkPersistence", "Peak following", "", &DisplaySettings::PersistenceEnable});
    addList(grid, {"cboPersistence", "Label5", "Persistence time",
                   "How long the peak values persist on the spectrum display", kPersistenceRows,
                   &DisplaySettings::Persistence});
    addGap(grid, kGap);
    addBox(grid, {"chkWaterfall", "Show waterfall", "", &DisplaySettings::WaterfallEnable});
    addList(grid, {"cboUpdate", "Label4", "Waterfall update rate",
                   "How fast the waterfall display moves downwards", kUpdateRows,
                   &DisplaySettings::Update});
    addList(grid,
            {"cboPalette", "Label6", "Waterfall colours", "Colour scheme for the waterfall display",
             kPaletteRows, &DisplaySettings::PaletteIndex});
    addPreview(grid);
    addGap(grid, kGap);
    addBox(grid, {"chkMarker", "Show marker", "Show the Frequency marker on the spectrum display",
                  &DisplaySettings::MarkerEnable});
    addOk(grid);
    setFirstControl(findChild<QCheckBox *>());
}

void frmDisplaySettings::addBox(QGridLayout *grid, const BoxRow &row) {
    auto *const box = made<QCheckBox>(row.name, this, row.caption);
    box->setToolTip(QLatin1String(row.tip));
    grid->addWidget(box, m_row++, 0, 1, 3);
    m_writers.emplace_back([this, box, field = row.field](const DisplaySettings &values) {
        m_values.*field = values.*field;
        box->setChecked(values.*field);
    });
    // A write from code raises no clicked.
    connectGuarded(guard(), box, &QCheckBox::clicked, this,
                   [this, field = row.field](bool checked) {
                       m_values.*field = checked;
                       noteChange(changeOf(field));
                   });
}

void frmDisplaySettings::addList(QGridLayout *grid, const ListRow &row) {
    auto *const label = made<QLabel>(row.labelName, this, row.label);
    auto *const list = made<DialogList>(row.name, this);
    for (const DialogChoice &choice : row.choices) {
        list->addRow(QLatin1String(choice.text), choice.value);
    }
    list->setToolTip(QLatin1String(row.tip));
    list->setAccessibleName(label->text());
    label->setBuddy(list);
    grid->addWidget(label, m_row, 0);
    grid->addWidget(list, m_row++, 1, 1, 2);
    std::visit(
        [this, list](auto field) {
            m_writers.emplace_back([this, list, field](const DisplaySettings &values) {
                if (const int place = list->rowOfValue(values.*field); place >= 0) {
                    m_values.*field = values.*field;
                    list->setCurrentIndex(place);
                }
            });
            // A write from code raises no activated.
            connectGuarded(guard(), list, &QComboBox::activated, this, [this, list, field] {
                m_values.*field =
                    static_cast<std::decay_t<decltype(m_values.*field)>>(list->itemValue());
                // Ahead of the event, so that whoever hears it finds the dialog as it will be.
                Picture1->setScheme(m_values.PaletteIndex);
                noteChange(changeOf(field));
            });
        },
        row.field);
}

void frmDisplaySettings::addPreview(QGridLayout *grid) {
    Picture1 = made<PalettePreview>("Picture1", this);
    Picture1->setAccessibleName("Preview of the waterfall colours, low to high");
    grid->addWidget(Picture1, m_row++, 1, 1, 2);
    grid->addWidget(made<QLabel>("Label8", this, "low"), m_row, 1, Qt::AlignLeft);
    grid->addWidget(made<QLabel>("Label9", this, "high"), m_row++, 2, Qt::AlignRight);
}

void frmDisplaySettings::addOk(QGridLayout *grid) {
    auto *const OKButton = made<QPushButton>("OKButton", this, "OK");
    OKButton->setDefault(true);
    addGap(grid, kGapAboveOk);
    grid->addWidget(OKButton, m_row++, 0, 1, 3, Qt::AlignRight);
    connectGuarded(guard(), OKButton, &QPushButton::clicked, this, &QDialog::accept);
}

void frmDisplaySettings::addGap(QGridLayout *grid, int height) {
    grid->setRowMinimumHeight(m_row++, height);
}

void frmDisplaySettings::setValues(const DisplaySettings &values) {
    for (const auto &write : m_writers) {
        write(values);
    }
    Picture1->setScheme(m_values.PaletteIndex);
}

DisplayChanges frmDisplaySettings::Change() {
    return std::exchange(m_Change, {});
}

void frmDisplaySettings::noteChange(DisplayChange change) {
    m_Change |= change;
    Q_EMIT Changed(change);
}

} // namespace veldron
