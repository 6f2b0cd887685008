// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QString>

namespace veldron {

/// The layout that the panels share: a thin frame, two rows of cells, each cell a control under its
/// label. Heights, margins and distances follow from the font alone, so that the lines of panels
/// side by side are level. It places widgets and knows no value; what it makes belongs to the
/// panel.
class PanelGrid {
public:
    /// Lays \a panel out; it owns what is added. The grid itself may go after the last cell.
    explicit PanelGrid(QFrame &panel);

    struct Cell {
        int row = 0;    ///< 0 or 1
        int column = 0; ///< from 0
        int columns = 1;
    };

    /// Puts \a control under a new label. Both get their object names, the label becomes the
    /// control's buddy and gives it its accessible name.
    QLabel *add(Cell cell, const QString &labelName, const QString &labelText,
                const QString &controlName, QWidget *control);
    /// A label alone: for \a buddy, which stands in a cell together with other controls.
    QLabel *addLabel(Cell cell, const QString &labelName, const QString &labelText, QWidget *buddy);
    /// Puts a control without a label onto the line of the controls.
    void addControl(Cell cell, const QString &controlName, QWidget *control);

    /// Gives the first \a count columns one width: that of their widest control. Goes after the
    /// last cell.
    void levelColumns(int count);
    /// The same, and wide enough for a list with the longest name of a receiver, so that the
    /// columns of all panels that do it are of one width.
    void levelWideColumns(int count);

    /// A new text for a label that is already there, and with it for its control.
    static void rename(QLabel &label, const QString &text);
    /// A hidden control leaves its place empty, so that nothing else moves.
    static void keepPlaceWhenHidden(QWidget &widget);
    /// Makes a text box just wide enough for \a text, and as wide as its column at most.
    static void fitBox(QWidget &box, const QString &text);
    /// Height of every control, in pixels.
    [[nodiscard]] static int controlHeight(const QWidget &control);

private:
    void levelColumns(int count, int leastWidth);

    QFrame &m_panel;
    QGridLayout *m_layout;
};

} // namespace veldron
