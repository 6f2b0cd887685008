// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <QFont>
#include <QString>

class QFrame;
class QLabel;

namespace veldron {

/// Who makes the program, in lines joined with a CR.
[[nodiscard]] QString makerAddress();

/// \a text, whose lines are joined with a CR, as a label wants it.
[[nodiscard]] QString labelLines(QString text);

/// The font of the two forms that only inform: Arial, or the nearest that the machine has.
[[nodiscard]] QFont informationFont(int points, QFont::Weight weight = QFont::Normal);

/// The picture that stands on the screen while the program looks for the unit.
///
/// It does no work and has no timer: whoever shows it also hides it. A key press, or a click on
/// the frame, closes it early; hiding and destroying it after that does no harm, and closing it
/// never ends the program.
class frmSplash : public QWidget {
    Q_OBJECT

public:
    /// \a version as "1.0.0"; \a parent is the owner, over which the form stands as a window of its
    /// own in the middle of the screen.
    explicit frmSplash(const QString &version, QWidget *parent = nullptr);

    /// Runs the event loop until the form, which has been shown, is painted on the screen or
    /// closed: once as a rule, and for half a second at most.
    void awaitPaint();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeControls(const QString &version);
    QLabel *makeLabel(const char *name, const QString &text, const QFont &font);
    /// Scales the built-in picture to \a size pixels of the form, at the density of the screen.
    void showPicture(QSize size);
    /// Makes the picture smaller where the form would be larger than the screen.
    void fitOnScreen();
    void layOut();
    void centre();

    QFrame *Frame1 = nullptr;
    QLabel *Image1 = nullptr;
    QLabel *Label4 = nullptr;
    QLabel *lblProductName = nullptr;
    QLabel *Label2 = nullptr;
    QLabel *lblVersion = nullptr;
    QLabel *lblDescription = nullptr;
};

} // namespace veldron
