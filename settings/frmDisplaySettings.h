// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace veldron {

class DialogList;
class PalettePreview;

/// The dialog "Display Settings", and the store of what it shows.
///
/// It is made once, lives hidden for the whole run, and is read and written at any time, open or
/// not. What the user changes is noted in the mask Change, for the form to apply after the dialog
/// has closed; writes from code store their value and note nothing. OK, the close box and Escape
/// all hide the dialog and leave fields and mask alone.
///
/// Bits of the mask: 4 waterfall, 8 persistence, 16 palette, 64 marker. Fields are 0 and false, and
/// no row is selected, until the start-up writes the defaults.
class frmDisplaySettings : public QDialog {
    Q_OBJECT

public:
    explicit frmDisplaySettings(QWidget *parent = nullptr);

    /// The trace holds its peaks.
    [[nodiscard]] bool PersistenceEnable() const { return m_PersistenceEnable; }
    void setPersistenceEnable(bool value);
    [[nodiscard]] bool WaterfallEnable() const { return m_WaterfallEnable; }
    void setWaterfallEnable(bool value);
    [[nodiscard]] bool MarkerEnable() const { return m_MarkerEnable; }
    void setMarkerEnable(bool value);
    /// Seconds per waterfall row: 1, 2, 5, 10, 30 or 60.
    [[nodiscard]] qint32 Update() const { return m_Update; }
    /// A value without a row in the list changes nothing.
    void setUpdate(qint32 value);
    /// Seconds that peaks last, from 5 to 3600, or -1 for ever.
    [[nodiscard]] qint32 Persistence() const { return m_Persistence; }
    /// A value without a row in the list changes nothing.
    void setPersistence(qint32 value);
    /// What the user changed since the last call; clears it.
    qint32 Change();
    /// Position in the list of palettes, from 0 to 5.
    [[nodiscard]] qint16 PaletteIndex() const { return m_PaletteIndex; }
    /// A value outside the list changes nothing.
    void setPaletteIndex(qint16 value);

Q_SIGNALS:
    /// The user changed something; \a What is its bit in Change.
    void Changed(qint32 What);

public Q_SLOTS:
    void reject() override { accept(); }

private:
    void makeCheckBoxes();
    void makeLists();
    void layOut();
    void addList(QGridLayout *grid, int row, QLabel *label, DialogList *list);
    void orderTabs();
    void wireControls();
    void writeCheckBox(QCheckBox *box, bool &field, bool value);
    void reactToCheckBox(bool &field, bool checked, qint32 bit);
    void reactToPersistence();
    void reactToUpdate();
    void reactToPalette();
    void noteChange(qint32 bit);

    qint32 m_Update = 0;
    qint32 m_Persistence = 0;
    qint16 m_PaletteIndex = 0;
    qint32 m_Change = 0;
    bool m_Updating = false;
    bool m_PersistenceEnable = false;
    bool m_WaterfallEnable = false;
    bool m_MarkerEnable = false;

    QCheckBox *chkPersistence = nullptr;
    QLabel *Label5 = nullptr;
    DialogList *cboPersistence = nullptr;
    QCheckBox *chkWaterfall = nullptr;
    QLabel *Label4 = nullptr;
    DialogList *cboUpdate = nullptr;
    QLabel *Label6 = nullptr;
    DialogList *cboPalette = nullptr;
    PalettePreview *Picture1 = nullptr;
    QLabel *Label8 = nullptr;
    QLabel *Label9 = nullptr;
    QCheckBox *chkMarker = nullptr;
    QPushButton *OKButton = nullptr;
};

} // namespace veldron
