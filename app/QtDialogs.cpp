// SPDX-License-Identifier: MIT
#include "app/QtDialogs.h"

#include "app/FormLayout.h"
#include "common/FileReplacement.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QScreen>

namespace veldron {

namespace {

/// A save dialog that stays up for a name that may not be written, and for one that the user, when
/// asked, doesn't want to be made. Before it replaces a file the toolkit's dialog asks by itself.
class SaveDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override {
        const QStringList files = selectedFiles();
        const QString refusal = files.isEmpty() ? QString() : refusalToWrite(files.first());
        if (!refusal.isEmpty()) {
            QMessageBox box(QMessageBox::Warning, windowTitle(), refusal, QMessageBox::Ok, this);
            box.setTextFormat(Qt::PlainText);
            box.exec();
            return;
        }
        if (files.isEmpty() || QFileInfo::exists(files.first()) || wantsNewFile(files.first())) {
            QFileDialog::accept();
        }
    }

private:
    bool wantsNewFile(const QString &path) {
        const QString question = QStringLiteral("%1 does not exist.\nDo you want to create it?");
        QMessageBox box(QMessageBox::Question, windowTitle(),
                        question.arg(QFileInfo(path).fileName()),
                        QMessageBox::Yes | QMessageBox::No, this);
        box.setTextFormat(Qt::PlainText);
        box.setDefaultButton(QMessageBox::Yes);
        return box.exec() == QMessageBox::Yes;
    }
};

void setUp(QFileDialog &dialog, const FileRequest &request) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setWindowTitle(request.title);
    dialog.setDirectory(request.folder);
    dialog.setNameFilter(request.filter);
    dialog.setDefaultSuffix(request.suffix);
}

/// The screen may be smaller than the size that the toolkit opens its dialog at.
void fitOnScreen(QFileDialog &dialog) {
    const QWidget *owner = dialog.parentWidget();
    const QScreen *screen = owner != nullptr ? owner->screen() : QGuiApplication::primaryScreen();
    dialog.resize(dialog.sizeHint().boundedTo(roomForWindow(screen->availableSize())));
}

std::optional<QString> run(QFileDialog &dialog) {
    fitOnScreen(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return dialog.selectedFiles().first();
}

} // namespace

QString refusalToWrite(const QString &path) {
    if (QFileInfo(path).isDir()) {
        return {}; // the dialog itself goes into the folder
    }
    return FileReplacement::of(path).refusal;
}

QWidget *QtDialogs::owner() const {
    QWidget *active = QApplication::activeModalWidget();
    if (active != nullptr) {
        return active;
    }
    return m_window != nullptr && m_window->isVisible() ? m_window.data() : nullptr;
}

std::optional<QString> QtDialogs::openFile(const FileRequest &request) {
    QFileDialog dialog(owner());
    setUp(dialog, request);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return run(dialog);
}

std::optional<QString> QtDialogs::saveFile(const FileRequest &request) {
    SaveDialog dialog(owner());
    setUp(dialog, request);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    return run(dialog);
}

void QtDialogs::showMessage(const QString &title, const QString &text) {
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, owner());
    box.exec();
}

bool QtDialogs::askOkOrCancel(const QString &title, const QString &text) {
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok | QMessageBox::Cancel,
                    owner());
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

void QtDialogs::showError(const QString &text) {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("VELDRON has to end"), text,
                    QMessageBox::Ok, owner());
    // What a file has put into the text is never taken for mark-up.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace veldron
