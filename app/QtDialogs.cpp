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

/// A box that takes nothing of its text for mark-up, whatever a file is called.
class PlainBox : public QMessageBox {
public:
    PlainBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons,
             QWidget *parent)
        : QMessageBox(icon, title, text, buttons, parent) {
        setTextFormat(Qt::PlainText);
    }
};

/// A save dialog that stays up for a name that may not be written, and for one that the user, when
/// asked, doesn't want to be made or replaced.
class SaveDialog : public QFileDialog {
public:
    explicit SaveDialog(QWidget *parent) : QFileDialog(parent) {
        // The toolkit's own question would show a file's name as mark-up.
        setOption(QFileDialog::DontConfirmOverwrite);
    }

    void accept() override {
        const QStringList files = selectedFiles();
        const QString refusal = files.isEmpty() ? QString() : refusalToWrite(files.first());
        if (!refusal.isEmpty()) {
            PlainBox(QMessageBox::Warning, windowTitle(), refusal, QMessageBox::Ok, this).exec();
            return;
        }
        if (files.isEmpty() || QFileInfo(files.first()).isDir() || mayWrite(files.first())) {
            QFileDialog::accept();
        }
    }

private:
    bool mayWrite(const QString &path) {
        return QFileInfo::exists(path)
                   ? agrees(QMessageBox::Warning, QMessageBox::No, path,
                            QStringLiteral("%1 already exists.\nDo you want to replace it?"))
                   : agrees(QMessageBox::Question, QMessageBox::Yes, path,
                            QStringLiteral("%1 does not exist.\nDo you want to create it?"));
    }
    bool agrees(QMessageBox::Icon icon, QMessageBox::StandardButton usual, const QString &path,
                const QString &question) {
        PlainBox box(icon, windowTitle(), question.arg(QFileInfo(path).fileName()),
                     QMessageBox::Yes | QMessageBox::No, this);
        box.setDefaultButton(usual);
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
    PlainBox(QMessageBox::NoIcon, title, text, QMessageBox::Ok, owner()).exec();
}

bool QtDialogs::askOkOrCancel(const QString &title, const QString &text) {
    PlainBox box(QMessageBox::Warning, title, text, QMessageBox::Ok | QMessageBox::Cancel, owner());
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

void QtDialogs::showError(const QString &text) {
    PlainBox(QMessageBox::Critical, QStringLiteral("VELDRON has to end"), text, QMessageBox::Ok,
             owner())
        .exec();
}

} // namespace veldron
