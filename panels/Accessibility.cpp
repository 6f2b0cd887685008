// SPDX-License-Identifier: MIT
#include "panels/Accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QComboBox>
#include <QFrame>
#include <QLineEdit>

namespace veldron::Accessibility {

namespace {

constexpr const char *kGroupProperty = "accessibleGroup";
constexpr const char *kInvisibleProperty = "accessiblyInvisible";

/// A control that reports itself as not shown, without children.
class InvisibleWidget : public QAccessibleWidget {
public:
    explicit InvisibleWidget(QWidget *widget) : QAccessibleWidget(widget, QAccessible::Client) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessibleInterface *child(int /*index*/) const override { return nullptr; }
};

QAccessibleInterface *interfaceOf(const QString & /*className*/, QObject *object) {
    auto *widget = qobject_cast<QWidget *>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    if (widget->property(kInvisibleProperty).toBool()) {
        return new InvisibleWidget(widget);
    }
    return widget->property(kGroupProperty).toBool()
               ? new QAccessibleWidget(widget, QAccessible::Grouping)
               : nullptr;
}

/// The toolkit asks the factory that was installed last first; one entry is enough for all.
void installFactory() {
    [[maybe_unused]] static const bool installed = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
}

} // namespace

void setName(QWidget &control, const QString &name) {
    // The toolkit announces a name that is set again as if it were another.
    if (control.accessibleName() == name) {
        return;
    }
    control.setAccessibleName(name);
    const auto *list = qobject_cast<QComboBox *>(&control);
    if (list != nullptr && list->lineEdit() != nullptr) {
        list->lineEdit()->setAccessibleName(name);
    }
}

void describePanel(QFrame &panel, const QString &name) {
    installFactory();
    panel.setProperty(kGroupProperty, true);
    panel.setAccessibleName(name);
}

void describeAsInvisible(QWidget &holder) {
    installFactory();
    holder.setProperty(kInvisibleProperty, true);
}

void announceValue(QWidget &control, const QString &text) {
    QAccessibleValueChangeEvent event(&control, text);
    QAccessible::updateAccessibility(&event);
}

} // namespace veldron::Accessibility
