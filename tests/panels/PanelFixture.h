// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include "common/ErrorGuard.h"

#include <gtest/gtest.h>

#include <vector>

namespace veldron {

/// Fails the test on any error out of a panel's slots.
inline ErrorGuard failingGuard() {
    return ErrorGuard([](const UntrappedError &error) { ADD_FAILURE() << error.what(); });
}

/// A panel in a shown, active window beside a control of another panel. Keys and clicks go to the
/// window and find their way as a user's do.
/// \a ChangeCode is the argument of the panel's event.
template <typename Panel, typename ChangeCode>
class PanelFixture : public testing::Test {
protected:
    using Code = ChangeCode;
    using Events = std::vector<ChangeCode>;

    PanelFixture() {
        auto *strip = new QHBoxLayout(&window);
        panel = new Panel(
            ErrorGuard([this](const UntrappedError &error) { errors += error.message(); }),
            &window);
        outside = new QLineEdit(&window);
        strip->addWidget(panel);
        strip->addWidget(outside);
        QObject::connect(panel, &Panel::Changed, &window,
                         [this](ChangeCode what) { events.push_back(what); });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        outside->setFocus();
    }

    template <typename Widget = QWidget>
    Widget *child(const char *name) const {
        auto *found = panel->template findChild<Widget *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QComboBox *list(const char *name) const { return child<QComboBox>(name); }
    QLineEdit *box(const char *name) const { return child<QLineEdit>(name); }
    QString label(const char *name) const { return child<QLabel>(name)->text(); }
    QString text(const char *name) const {
        const auto *combo = qobject_cast<QComboBox *>(child(name));
        return combo != nullptr ? combo->currentText() : box(name)->text();
    }
    QStringList rows(const char *name) const {
        QStringList texts;
        for (int row = 0; row < list(name)->count(); ++row) {
            texts += list(name)->itemText(row);
        }
        return texts;
    }
    bool isShown(const char *name) const { return child(name)->isVisible(); }

    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), code, modifiers);
    }
    /// Types into whatever holds the focus; "\r" is Enter, "\b" Backspace, "\x1b" Escape.
    void type(const char *keys) {
        for (const char *next = keys; *next != '\0'; ++next) {
            switch (*next) {
            case '\r':
                key(Qt::Key_Return);
                break;
            case '\b':
                key(Qt::Key_Backspace);
                break;
            case '\x1b':
                key(Qt::Key_Escape);
                break;
            default:
                QTest::keyClick(window.windowHandle(), *next);
            }
        }
    }
    void click(QWidget *widget, QPoint place) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          widget->mapTo(&window, place));
    }
    /// Clicks into the text of a list, or into the middle of any other control.
    void click(const char *name) {
        const auto *combo = qobject_cast<QComboBox *>(child(name));
        QWidget *target = combo != nullptr && combo->isEditable() ? combo->lineEdit() : child(name);
        click(target, target->rect().center());
    }
    void typeInto(const char *name, const char *keys) {
        click(name);
        type(keys);
    }
    /// Opens the list with its key and picks a row with the arrows and Enter.
    void pick(const char *name, int row) {
        list(name)->setFocus();
        key(Qt::Key_F4);
        key(Qt::Key_Home);
        for (int i = 0; i < row; ++i) {
            key(Qt::Key_Down);
        }
        key(Qt::Key_Return);
    }
    void leave() { click(outside, outside->rect().center()); }

    QWidget window;
    Panel *panel = nullptr;
    QLineEdit *outside = nullptr;
    Events events;
    QStringList errors;
};

} // namespace veldron
