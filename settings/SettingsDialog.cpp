// SPDX-License-Identifier: MIT
#include "settings/SettingsDialog.h"

#include <utility>

namespace veldron {

SettingsDialog::SettingsDialog(ErrorGuard guard, QWidget *parent)
    : QDialog(parent), m_guard(std::move(guard)) {}

void SettingsDialog::showEvent(QShowEvent *event) {
    QDialog::showEvent(event);
    // Otherwise the control that had the focus when the dialog was hidden would have it again.
    if (m_firstControl != nullptr) {
        m_firstControl->setFocus();
    }
}

} // namespace veldron
