// SPDX-License-Identifier: MIT
#include "panels/PanelGrid.h"

#include "panels/Accessibility.h"
#include "utilities/MagicStatics.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QLayoutItem>

#include <algorithm>

namespace veldron {

namespace {

/// Beyond the font's height: frame and inner distances of an entry or a list.
constexpr int kControlPadding = 10;
constexpr int kLinesPerRow = 2;

} // namespace

PanelGrid::PanelGrid(QFrame &panel) : m_panel(panel), m_layout(new QGridLayout(&panel)) {
    constexpr int sideMargin = 8;
    constexpr int topMargin = 3;
    constexpr int bottomMargin = 5;
    constexpr int columnDistance = 8;
    constexpr int lineDistance = 1;
    panel.setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    panel.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_layout->setContentsMargins(sideMargin, topMargin, sideMargin, bottomMargin);
    m_layout->setHorizontalSpacing(columnDistance);
    m_layout->setVerticalSpacing(lineDistance);
}

QLabel *PanelGrid::add(Cell cell, const QString &labelName, const QString &labelText,
                       const QString &controlName, QWidget *control) {
    addControl(cell, controlName, control);
    return addLabel(cell, labelName, labelText, control);
}

QLabel *PanelGrid::addLabel(Cell cell, const QString &labelName, const QString &labelText,
                            QWidget *buddy) {
    auto *label = new QLabel(&m_panel);
    label->setObjectName(labelName);
    label->setBuddy(buddy);
    label->setFixedHeight(label->fontMetrics().height() + 2);
    label->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    keepPlaceWhenHidden(*label);
    m_layout->addWidget(label, cell.row * kLinesPerRow, cell.column, 1, cell.columns);
    rename(*label, labelText);
    return label;
}

void PanelGrid::addControl(Cell cell, const QString &controlName, QWidget *control) {
    control->setObjectName(controlName);
    control->setFixedHeight(controlHeight(*control));
    keepPlaceWhenHidden(*control);
    m_layout->addWidget(control, cell.row * kLinesPerRow + 1, cell.column, 1, cell.columns);
}

void PanelGrid::rename(QLabel &label, const QString &text) {
    label.setText(text);
    if (QWidget *control = label.buddy()) {
        Accessibility::setName(*control, text);
    }
}

void PanelGrid::keepPlaceWhenHidden(QWidget &widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

void PanelGrid::levelColumns(int count) {
    levelColumns(count, 0);
}

void PanelGrid::levelWideColumns(int count) {
    QComboBox widest;
    widest.setEditable(true);
    widest.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const MagicStatics::Receiver &receiver : MagicStatics::kReceivers) {
        widest.addItem(QString::fromUtf16(receiver.name));
    }
    levelColumns(count, widest.sizeHint().width());
}

void PanelGrid::levelColumns(int count, int leastWidth) {
    int width = leastWidth;
    for (int i = 0; i < m_layout->count(); ++i) {
        int line = 0;
        int column = 0;
        int lines = 0;
        int columns = 0;
        m_layout->getItemPosition(i, &line, &column, &lines, &columns);
        // A control across several columns says nothing about the width of one.
        if (column < count && columns == 1) {
            width = std::max(width, m_layout->itemAt(i)->sizeHint().width());
        }
    }
    for (int column = 0; column < count; ++column) {
        m_layout->setColumnMinimumWidth(column, width);
    }
}

void PanelGrid::fitBox(QWidget &box, const QString &text) {
    constexpr int padding = 16;
    box.setMinimumWidth(box.fontMetrics().horizontalAdvance(text) + padding);
    // The toolkit's size hint for a text box has room for 17 characters, too much for a panel.
    box.setSizePolicy(QSizePolicy::Ignored, box.sizePolicy().verticalPolicy());
}

int PanelGrid::controlHeight(const QWidget &control) {
    return control.fontMetrics().height() + kControlPadding;
}

} // namespace veldron
