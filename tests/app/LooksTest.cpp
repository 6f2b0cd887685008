// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionComboBox>

namespace veldron {
namespace {

/// The window and its dialogs under letters of some size.
class LooksTest : public FormFixture, public testing::WithParamInterface<int> {
protected:
    LooksTest() {
        QFont font = m_before;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
    }
    ~LooksTest() override {
        dropForm();
        QApplication::setFont(m_before);
    }
    static QString place(const QWidget &widget) {
        return widget.parentWidget()->objectName() + '/' + widget.objectName();
    }
    static int advance(const QWidget &widget, const QString &text) {
        return widget.fontMetrics().horizontalAdvance(text);
    }
    static void expectRoom(const QWidget &widget, int room, const QString &text) {
        EXPECT_GE(room, advance(widget, text))
            << qPrintable(place(widget)) << " cuts off \"" << qPrintable(text) << '"';
    }
    static void expectWhole(const QWidget &widget) {
        EXPECT_GE(widget.width(), widget.minimumSizeHint().width()) << qPrintable(place(widget));
        EXPECT_GE(widget.height(), widget.minimumSizeHint().height()) << qPrintable(place(widget));
    }
    static void expectRowsWhole(const QComboBox &list) {
        QStyleOptionComboBox option;
        option.initFrom(&list);
        option.editable = list.isEditable();
        const QRect field = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                         QStyle::SC_ComboBoxEditField, &list);
        for (int row = 0; row < list.count(); ++row) {
            expectRoom(list, field.width(), list.itemText(row));
        }
    }
    /// Nothing in \a window that has text of its own is smaller than the text.
    static void expectNothingCutOff(const QWidget &window) {
        for (const QWidget *widget : window.findChildren<QWidget *>()) {
            if (!widget->isVisible()) {
                continue;
            }
            if (const auto *list = qobject_cast<const QComboBox *>(widget)) {
                expectRowsWhole(*list);
            }
            if (qobject_cast<const QLabel *>(widget) ||
                qobject_cast<const QAbstractButton *>(widget)) {
                expectWhole(*widget);
            }
        }
    }
    const QFont m_before = QApplication::font();
};

TEST_P(LooksTest, window_cutsNoTextOff) {
    startUp();
    expectNothingCutOff(*m_form);
}

TEST_P(LooksTest, highestFrequencies_fitIntoTheirFields) {
    startUp();
    for (const char *name : {"txtFreq", "txtStart", "txtCentre", "txtEnd"}) {
        const auto &field = child<QLineEdit>(name);
        expectRoom(field, field.contentsRect().width() - 8, QStringLiteral("3500.00000"));
    }
}

TEST_P(LooksTest, dialogs_cutNoTextOff) {
    startUp();
    pickDialog("mnuSettingsDisplay", expectNothingCutOff);
    pickDialog("mnuSettingsComms", expectNothingCutOff);
    pickDialog("mnuAbout", expectNothingCutOff);
}

INSTANTIATE_TEST_SUITE_P(Points, LooksTest, testing::Values(9, 12, 16));

} // namespace
} // namespace veldron
