// SPDX-License-Identifier: MIT
#include "panels/UpDownButtons.h"

#include "common/Numbers.h"
#include "panels/EntryBox.h"
#include "utilities/NumberTexts.h"

#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace veldron {

UpDownButtons::UpDownButtons(const ErrorGuard &guard, EntryBox &partner, const QString &name,
                             QWidget *parent)
    : QWidget(parent), m_partner(partner) {
    setAccessibleName(name);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(addButton(guard, Qt::UpArrow, name + QStringLiteral(" up"), kIncrement));
    column->addWidget(addButton(guard, Qt::DownArrow, name + QStringLiteral(" down"), -kIncrement));
}

QToolButton *UpDownButtons::addButton(const ErrorGuard &guard, Qt::ArrowType arrow,
                                      const QString &name, int change) {
    constexpr int width = 18;
    auto *button = new QToolButton(this);
    button->setObjectName(arrow == Qt::UpArrow ? QStringLiteral("udSamplesUp")
                                               : QStringLiteral("udSamplesDown"));
    button->setArrowType(arrow);
    button->setAccessibleName(name);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setFixedWidth(width);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    connectGuarded(guard, button, &QToolButton::clicked, this, [this, change] { step(change); });
    return button;
}

void UpDownButtons::step(int change) {
    const int present = Numbers::roundTo<qint16>(GeneralUtilities::LeadingNumber(m_partner.text()));
    // Limited behind the step, so that a number out of the limits comes back into them by a press
    // either way.
    m_partner.showText(QString::number(std::clamp(present + change, kLower, m_upper)));
}

} // namespace veldron
