// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "common/ErrorGuard.h"

class QToolButton;

namespace veldron {

class EntryBox;

/// A pair of small buttons, up over down, that write the next whole number into the text of their
/// partner. Whatever stands there, a press leaves a number within the limits; a held button
/// repeats. The partner tells of the change itself, by its textChanged.
class UpDownButtons : public QWidget {
    Q_OBJECT

public:
    /// The lowest number that a press leaves.
    static constexpr int kLower = 2;
    static constexpr int kIncrement = 1;

    /// \a partner outlives the buttons. \a name is what the buttons count, for their accessible
    /// names.
    UpDownButtons(const ErrorGuard &guard, EntryBox &partner, const QString &name, QWidget *parent);

    /// The highest number that a press leaves.
    [[nodiscard]] int upper() const { return m_upper; }
    void setUpper(int upper) { m_upper = upper; }

private:
    QToolButton *addButton(const ErrorGuard &guard, Qt::ArrowType arrow, const QString &name,
                           int change);
    void step(int change);

    EntryBox &m_partner;
    int m_upper = 31;
};

} // namespace veldron
