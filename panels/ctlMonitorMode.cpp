// SPDX-License-Identifier: MIT
#include "panels/ctlMonitorMode.h"

#include "common/LevelScan.h"
#include "common/Numbers.h"
#include "panels/Accessibility.h"
#include "panels/DropDownList.h"
#include "panels/EditableList.h"
#include "panels/EntryBox.h"
#include "panels/PanelGrid.h"
#include "panels/UpdatingScope.h"
#include "utilities/NumberTexts.h"

#include <limits>

namespace veldron {

namespace {

/// Spans and steps that are typed stay below these.
constexpr Hertz kSpanLimit = Hertz::fromWhole(2'000'000'000);
constexpr Hertz kChannelStepLimit = Hertz::fromWhole(100'000);

qint32 stepOfSpan(Hertz span) {
    constexpr qint64 lowest = std::numeric_limits<qint32>::min();
    constexpr qint64 highest = std::numeric_limits<qint32>::max();
    const qint64 step = Numbers::divideHalfEven(span.units(), kScanSteps * Hertz::kUnitsPerHertz);
    return static_cast<qint32>(qBound(lowest, step, highest));
}

Hertz spanOfStep(qint32 step) {
    const qint64 span = qint64{step} * kScanSteps;
    if (span < std::numeric_limits<qint32>::min() || span > std::numeric_limits<qint32>::max()) {
        throw UntrappedError(UntrappedError::Kind::Overflow,
                             QStringLiteral("The span of a step of %1 Hz is too large.").arg(step));
    }
    return Hertz::fromWhole(span);
}

} // namespace

ctlMonitorMode::ctlMonitorMode(ErrorGuard guard, QWidget *parent)
    : QFrame(parent), m_guard(std::move(guard)), m_fields(m_guard, *this) {
    Accessibility::describePanel(*this, QStringLiteral("Monitor panel"));
    PanelGrid grid(*this);
    makeScanRow(grid);
    makeWindowRow(grid);
    reactToMode();
    // Shows the numbers, all of which are 0. Reacting to the first row has noted a change of the
    // mode; nobody has made one.
    {
        const UpdatingScope updating(m_Updating);
        ApplySpan();
        m_isModeNew = false;
    }
    wireControls();
    wireFields();
}

void ctlMonitorMode::makeScanRow(PanelGrid &grid) {
    constexpr int longestStep = 9;
    cboMonitorMode = new DropDownList(this);
    cboMonitorMode->addItems(
        {QStringLiteral("Spectrum"), QStringLiteral("Step"), QStringLiteral("Channel")});
    grid.add({0, 0}, QStringLiteral("Label1"), QStringLiteral("Monitor mode"),
             QStringLiteral("cboMonitorMode"), cboMonitorMode);
    cboSpan = new EditableList(this);
    cboSpan->addItems({QStringLiteral("10.000.000"), QStringLiteral("5.000.000"),
                       QStringLiteral("2.000.000"), QStringLiteral("1.000.000"),
                       QStringLiteral("160.000")});
    cboSpan->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    grid.add({0, 1}, QStringLiteral("Label2"), QStringLiteral("Span"), QStringLiteral("cboSpan"),
             cboSpan);
    cboStep = new EditableList(this);
    cboStep->addItems({QStringLiteral("0.500"), QStringLiteral("5.000"), QStringLiteral("6.250"),
                       QStringLiteral("9.000"), QStringLiteral("10.000"), QStringLiteral("12.500"),
                       QStringLiteral("20.000"), QStringLiteral("25.000"),
                       QStringLiteral("31.250")});
    cboStep->setMinimumContentsLength(longestStep);
    grid.add({0, 2}, QStringLiteral("Label3"), QStringLiteral("Step"), QStringLiteral("cboStep"),
             cboStep);
}

EntryBox *ctlMonitorMode::makeBox() {
    auto *box = new EntryBox(m_guard, this);
    PanelGrid::fitBox(*box, QStringLiteral("-1000.00000"));
    return box;
}

void ctlMonitorMode::makeWindowRow(PanelGrid &grid) {
    txtStart = makeBox();
    lblStart = grid.add({1, 0}, QStringLiteral("lblStart"), QStringLiteral("Start"),
                        QStringLiteral("txtStart"), txtStart);
    txtCentre = makeBox();
    lblCentre = grid.add({1, 1}, QStringLiteral("lblCentre"), QStringLiteral("Centre"),
                         QStringLiteral("txtCentre"), txtCentre);
    txtEnd = makeBox();
    lblEnd = grid.add({1, 2}, QStringLiteral("lblEnd"), QStringLiteral("End"),
                      QStringLiteral("txtEnd"), txtEnd);
    grid.levelWideColumns(3);
}

void ctlMonitorMode::wireControls() {
    connectGuarded(m_guard, cboMonitorMode, &QComboBox::activated, this,
                   &ctlMonitorMode::reactToMode);
    connectGuarded(m_guard, cboSpan, &QComboBox::activated, this, &ctlMonitorMode::pickSpan);
    connectGuarded(m_guard, cboStep, &QComboBox::activated, this, &ctlMonitorMode::pickStep);
}

void ctlMonitorMode::wireFields() {
    using Unit = FrequencyEntry::Unit;
    const auto mega = [] {
        return Unit::M;
    };
    const auto kilo = [] {
        return Unit::K;
    };
    const auto byMode = [this] {
        return isChannelMode() ? Unit::K : Unit::M;
    };
    m_fields.add(*txtStart, {
                                .defaultUnit = mega,
                                .store = [this](Hertz value) { m_fStart = value; },
                                .apply = [this] { ApplyStart(); },
                                .show = [this] { showStart(); },
                            });
    m_fields.add(*txtEnd, {
                              .defaultUnit = mega,
                              .store = [this](Hertz value) { m_fEnd = value; },
                              .apply = [this] { ApplyEnd(); },
                              .show = [this] { showEnd(); },
                          });
    m_fields.add(*txtCentre, {
                                 .defaultUnit = byMode,
                                 .store = [this](Hertz value) { m_fCentre = value; },
                                 .apply = [this] { ApplyCentre(); },
                                 .show = [this] { showCentre(); },
                             });
    m_fields.add(*cboSpan, {
                               .defaultUnit = mega,
                               .store = [this](Hertz value) { storeSpan(value); },
                               .apply = [this] { ApplySpan(); },
                               .show = [this] { showSpanText(); },
                           });
    m_fields.add(*cboStep, {
                               .defaultUnit = kilo,
                               .store = [this](Hertz value) { storeStep(value); },
                               .apply = [this] { ApplyStep(); },
                               .show = [this] { showStepText(fStep()); },
                           });
}

void ctlMonitorMode::setEnabled(bool value) {
    m_Enabled = value;
    cboMonitorMode->setEnabled(value);
    cboSpan->setEnabled(value);
    cboStep->setEnabled(value);
    txtStart->setEnabled(value);
    txtCentre->setEnabled(value);
    txtEnd->setEnabled(value);
}

void ctlMonitorMode::setMonitorMode(MonitorModeCode value) {
    const int row = static_cast<int>(value) - 1;
    if (row < -1 || row >= cboMonitorMode->count()) {
        return;
    }
    const UpdatingScope updating(m_Updating);
    cboMonitorMode->showRow(row);
    reactToMode();
}

void ctlMonitorMode::setfSpan(Hertz value) {
    if (value == m_fSpan && !m_isModeNew) {
        return;
    }
    m_isModeNew = false;
    const UpdatingScope updating(m_Updating);
    m_fSpan = value;
    if (isChannelMode()) {
        showSpanText();
    } else {
        ApplySpan();
    }
}

void ctlMonitorMode::setfStep(Hertz value) {
    const UpdatingScope updating(m_Updating);
    m_fStep = value.roundedTo32();
    if (isChannelMode()) {
        showStepText(value);
    } else {
        ApplyStep();
    }
}

void ctlMonitorMode::setfStart(Hertz value) {
    const UpdatingScope updating(m_Updating);
    m_fStart = value;
    ApplyStart();
}

void ctlMonitorMode::setfCentre(Hertz value) {
    const UpdatingScope updating(m_Updating);
    m_fCentre = value;
    ApplyCentre();
}

void ctlMonitorMode::setfEnd(Hertz value) {
    const UpdatingScope updating(m_Updating);
    m_fEnd = value;
    ApplyEnd();
}

// The apply routines. Each shows the number that has changed, moves and shows those that depend on
// it, and raises the event last, so that whoever hears it finds all numbers in agreement. Updating
// is restored and not cleared: within a write from code the event stays away.

void ctlMonitorMode::ApplySpan() {
    const bool wasUpdating = m_Updating;
    showSpanText();
    m_Updating = true;
    m_fStep = stepOfSpan(m_fSpan);
    showStepText(fStep());
    m_fStart = m_fCentre - halfSpan();
    m_fEnd = m_fCentre + halfSpan();
    showWindow();
    finishApply(wasUpdating, MonitorChangeCode::Span);
}

void ctlMonitorMode::ApplyStep() {
    const bool wasUpdating = m_Updating;
    showStepText(fStep());
    // May throw, and does so before Updating is set.
    m_fSpan = spanOfStep(m_fStep);
    m_Updating = true;
    showSpanText();
    m_fStart = m_fCentre - halfSpan();
    m_fEnd = m_fCentre + halfSpan();
    // txtCentre is left alone: the centre has not moved.
    showStart();
    showEnd();
    finishApply(wasUpdating, MonitorChangeCode::Step);
}

void ctlMonitorMode::ApplyCentre() {
    const bool wasUpdating = m_Updating;
    if (isChannelMode()) {
        showCentre();
    } else {
        m_Updating = true;
        m_fStart = m_fCentre - halfSpan();
        m_fEnd = m_fCentre + halfSpan();
        showWindow();
    }
    finishApply(wasUpdating, windowChange());
}

void ctlMonitorMode::ApplyStart() {
    const bool wasUpdating = m_Updating;
    if (isChannelMode()) {
        showStart();
    } else {
        m_Updating = true;
        m_fCentre = m_fStart + halfSpan();
        m_fEnd = m_fStart + m_fSpan;
        showWindow();
    }
    finishApply(wasUpdating, windowChange());
}

void ctlMonitorMode::ApplyEnd() {
    const bool wasUpdating = m_Updating;
    if (isChannelMode()) {
        showEnd();
    } else {
        m_Updating = true;
        m_fCentre = m_fEnd - halfSpan();
        m_fStart = m_fEnd - m_fSpan;
        showWindow();
    }
    finishApply(wasUpdating, windowChange());
}

void ctlMonitorMode::finishApply(bool wasUpdating, MonitorChangeCode what) {
    m_Updating = wasUpdating;
    if (!m_Updating) {
        m_fields.raiseOutOfEntry([this, what] { Q_EMIT Changed(what); });
    }
}

void ctlMonitorMode::reactToMode() {
    const auto mode = static_cast<MonitorModeCode>(cboMonitorMode->currentIndex() + 1);
    // Remembered until a span is written, also if the same mode is written again before that.
    m_isModeNew = m_isModeNew || mode != m_MonitorMode;
    m_MonitorMode = mode;
    const bool channel = isChannelMode();
    cboSpan->setEnabled(!channel && m_Enabled);
    cboStep->setEnabled(!channel && m_Enabled);
    PanelGrid::rename(*lblStart, channel ? QStringLiteral("Ch. Start") : QStringLiteral("Start"));
    PanelGrid::rename(*lblCentre, channel ? QStringLiteral("Ch. Step") : QStringLiteral("Centre"));
    PanelGrid::rename(*lblEnd, channel ? QStringLiteral("Ch. End") : QStringLiteral("End"));
    if (!m_Updating) {
        Q_EMIT Changed(MonitorChangeCode::MonitorMode);
    }
}

void ctlMonitorMode::pickSpan(int row) {
    m_fSpan = cboSpan->rowHertz(row);
    // The event comes also for the row that equals the span.
    m_fields.takePick();
    ApplySpan();
}

void ctlMonitorMode::pickStep(int row) {
    m_fStep = cboStep->rowHertz(row).roundedTo32();
    // An entry has to be open for ApplyStep() to raise the event.
    m_fields.takePick();
    ApplyStep();
}

// Too large a span or step is dropped; the old one is shown and raised all the same.
void ctlMonitorMode::storeSpan(Hertz value) {
    m_fSpan = value < kSpanLimit ? value : m_fSpan;
}

void ctlMonitorMode::storeStep(Hertz value) {
    m_fStep = value < kChannelStepLimit ? value.roundedTo32() : m_fStep;
}

void ctlMonitorMode::showSpanText() {
    cboSpan->showValue(GeneralUtilities::FormatMHz(m_fSpan), m_fSpan);
}

void ctlMonitorMode::showStepText(Hertz value) {
    cboStep->showValue(GeneralUtilities::FormatKHz(value), value);
}

void ctlMonitorMode::showStart() {
    txtStart->showText(GeneralUtilities::FormatMHz(m_fStart));
}

void ctlMonitorMode::showCentre() {
    txtCentre->showText(isChannelMode() ? GeneralUtilities::FormatKHz(m_fCentre)
                                        : GeneralUtilities::FormatMHz(m_fCentre));
}

void ctlMonitorMode::showEnd() {
    txtEnd->showText(GeneralUtilities::FormatMHz(m_fEnd));
}

void ctlMonitorMode::showWindow() {
    showStart();
    showCentre();
    showEnd();
}

bool ctlMonitorMode::isChannelMode() const {
    return m_MonitorMode == MonitorModeCode::Channel;
}

MonitorChangeCode ctlMonitorMode::windowChange() const {
    return isChannelMode() ? MonitorChangeCode::Channel : MonitorChangeCode::Centre;
}

} // namespace veldron
