// SPDX-License-Identifier: MIT
#include "settings/frmDelay.h"

#include "utilities/NumberTexts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace veldron {

namespace {

constexpr double kShortest = 0.0; ///< milliseconds
constexpr double kLongest = 1000.0;

} // namespace

frmDelay::frmDelay(ErrorGuard guard, QWidget *parent) : SettingsDialog(std::move(guard), parent) {
    setWindowTitle("LoadSettings delay");
    Label1 = new QLabel("Delay in ms (0 - 1000)", this);
    Label1->setObjectName("Label1");
    Text1 = new QLineEdit("500", this);
    Text1->setObjectName("Text1");
    Text1->setAccessibleName(Label1->text());
    Label1->setBuddy(Text1);
    cmdOK = new QPushButton("OK", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    setFirstControl(Text1);
    layOut();
    wireControls();
}

void frmDelay::layOut() {
    auto *const column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    auto *const row = new QHBoxLayout;
    row->addWidget(Label1);
    row->addWidget(Text1);
    column->addLayout(row);
    column->addWidget(cmdOK, 0, Qt::AlignRight);
}

void frmDelay::wireControls() {
    connectGuarded(guard(), Text1, &QLineEdit::textChanged, this, &frmDelay::keepInRange);
    connectGuarded(guard(), cmdOK, &QPushButton::clicked, this, &QDialog::accept);
}

void frmDelay::keepInRange(const QString &text) {
    const double delay = GeneralUtilities::LeadingNumber(text);
    if (delay < kShortest) {
        Text1->setText("0");
    } else if (delay > kLongest) {
        Text1->setText("1000");
    }
}

} // namespace veldron
