// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "common/ErrorGuard.h"

#include <QLocale>
#include <QString>

class QLabel;
class QPushButton;

namespace veldron {

/// What frmAbout tells of, at the moment it is made.
struct AboutFacts {
    QString title;          ///< of the program
    QString version;        ///< of the program, as "1.0.0"
    QString programFile;    ///< path of the program's own file, whose date tells when it was built
    bool Connected = false; ///< of the link, as are the next two
    QString Status;
    QString Version;                    ///< of the unit, shown exactly as it came
    QLocale locale = QLocale::system(); ///< of the date
};

/// State of the link and version of the unit's program, joined with a CR; empty without a
/// connection.
[[nodiscard]] QString infoText(const AboutFacts &facts);

/// The dialog that tells which program this is, and which unit it is connected to. It is made anew
/// each time that it is shown, and follows no change of the link while it is up.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    /// UntrappedError(File) when the date of the program's file can't be read.
    frmAbout(const ErrorGuard &guard, const AboutFacts &facts, QWidget *parent = nullptr);

private:
    QLabel *makeLabel(const char *name, const QString &text);
    void layOut();

    QLabel *lblTitle = nullptr;
    QLabel *lblVersion = nullptr;
    QLabel *lblDescription = nullptr;
    QLabel *lblInfo = nullptr;
    QPushButton *cmdOK = nullptr;
};

} // namespace veldron
