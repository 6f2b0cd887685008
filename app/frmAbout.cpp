// SPDX-License-Identifier: MIT
#include "app/frmAbout.h"

#include "app/frmSplash.h"
#include "common/UntrappedError.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace veldron {

namespace {

QDate dateOfFile(const QString &path) {
    const QDateTime written = QFileInfo(path).lastModified();
    if (!written.isValid()) {
        throw UntrappedError(
            UntrappedError::Kind::File,
            QString("The date of the program's own file could not be read: \"%1\".").arg(path));
    }
    return written.date();
}

QString versionText(const AboutFacts &facts) {
    return "Version " + facts.version + "  " +
           facts.locale.toString(dateOfFile(facts.programFile), QLocale::LongFormat);
}

} // namespace

QString infoText(const AboutFacts &facts) {
    return facts.Connected ? facts.Status + "\rFirmware " + facts.Version : QString();
}

frmAbout::frmAbout(const ErrorGuard &guard, const AboutFacts &facts, QWidget *parent)
    : QDialog(parent) {
    setWindowTitle("About " + facts.title);
    lblTitle = makeLabel("lblTitle", "PC control software for VELDRON");
    lblTitle->setFont(informationFont(14, QFont::Bold));
    lblVersion = makeLabel("lblVersion", versionText(facts));
    lblDescription = makeLabel("lblDescription", labelLines(makerAddress()));
    lblInfo = makeLabel("lblInfo", labelLines(infoText(facts)));
    cmdOK = new QPushButton("OK", this);
    cmdOK->setObjectName("cmdOK");
    cmdOK->setDefault(true);
    connectGuarded(guard, cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    layOut();
}

QLabel *frmAbout::makeLabel(const char *name, const QString &text) {
    auto *const label = new QLabel(this);
    label->setObjectName(QLatin1String(name));
    // What the unit sent is shown as it is, whatever it looks like.
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

void frmAbout::layOut() {
    auto *const column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->setContentsMargins(20, 16, 20, 16);
    column->setSpacing(10);
    for (QLabel *label : {lblTitle, lblVersion, lblDescription, lblInfo}) {
        column->addWidget(label);
    }
    lblInfo->setHidden(lblInfo->text().isEmpty());
    column->addSpacing(6);
    column->addWidget(cmdOK, 0, Qt::AlignRight);
}

} // namespace veldron
