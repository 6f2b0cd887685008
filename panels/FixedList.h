// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QWheelEvent>

namespace veldron {

/// A drop-down list of fixed rows. The wheel over the closed list does nothing; an open one
/// scrolls by itself. Users' picks are the signal activated, also of the row that is shown.
class FixedList : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

} // namespace veldron
