// SPDX-License-Identifier: MIT
#pragma once

#include "settings/DisplaySettings.h"
#include "settings/SettingsDialog.h"

#include <functional>
#include <vector>

class QGridLayout;

namespace veldron {

class PalettePreview;

/// The dialog "Display Settings", and the holder of the display settings, open or not.
///
/// What the user changes is noted in the mask Change, for the form to apply after the dialog has
/// closed; writes from code store their values and note nothing. The settings are 0 and false, and
/// no row of a list is selected, until the start writes its values.
class frmDisplaySettings : public SettingsDialog {
    Q_OBJECT

public:
    explicit frmDisplaySettings(ErrorGuard guard, QWidget *parent = nullptr);

    [[nodiscard]] const DisplaySettings &values() const { return m_values; }
    /// Stores and shows \a values. A number that has no row in its list leaves that setting alone.
    void setValues(const DisplaySettings &values);
    /// What the user changed since the last call; clears it.
    DisplayChanges Change();

Q_SIGNALS:
    /// The user changed something; \a What is its bit in Change.
    void Changed(veldron::DisplayChange What);

private:
    struct BoxRow;
    struct ListRow;

    // Each adds a row to \a grid, below those before.
    void makeControls(QGridLayout *grid);
    void addBox(QGridLayout *grid, const BoxRow &row);
    void addList(QGridLayout *grid, const ListRow &row);
    void addPreview(QGridLayout *grid);
    void addOk(QGridLayout *grid);
    void addGap(QGridLayout *grid, int height);
    void noteChange(DisplayChange change);

    /// Always what the controls show, but for the time before the first write.
    DisplaySettings m_values;
    DisplayChanges m_Change;
    /// One for each control: stores and shows its part of the settings, without an event.
    std::vector<std::function<void(const DisplaySettings &values)>> m_writers;
    int m_row = 0; ///< the next free row of the layout
    PalettePreview *Picture1 = nullptr;
};

} // namespace veldron
