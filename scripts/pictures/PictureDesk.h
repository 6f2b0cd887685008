// SPDX-License-Identifier: MIT
#pragma once

#include "app/QtDialogs.h"
#include "app/frmDisplay.h"
#include "common/DateTimeText.h"
#include "simulator/Unit.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ScriptedSerialControl.h"

#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QRect>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QComboBox;

namespace veldron {

/// The program's own boxes; the file dialogs, which would show this machine's folders, answer at
/// once with file().
class PictureDialogs : public QtDialogs {
public:
    std::optional<QString> openFile(const FileRequest & /*request*/) override { return file; }
    std::optional<QString> saveFile(const FileRequest & /*request*/) override { return file; }

    QString file;
};

/// The main window with the simulated unit on COM 3, at a time that only moves by hand, so that
/// whatever is shown can be shown again to the pixel.
class PictureDesk : public QObject {
public:
    /// Pictures go to \a folder.
    explicit PictureDesk(QString folder);
    ~PictureDesk() override;

    // ---- the world
    [[nodiscard]] ScriptedSerialControl &line() { return m_line; }
    [[nodiscard]] PictureDialogs &dialogs() { return m_dialogs; }
    /// The unit answers or is silent.
    void setUnitThere(bool there) { m_unitThere = there; }
    /// The unit itself, for what is set at it by hand.
    [[nodiscard]] Unit &unit() { return m_unit; }
    /// The reply to \a command is disturbed from now on.
    void garble(const QString &command) { m_garbled = command; }
    /// Makes a fresh window, searches the ports and connects.
    void start();
    /// Lets \a seconds pass, with every tick of the program's timers that falls into them.
    void run(double seconds);

    // ---- the user
    void pick(const char *entry);
    /// Picks \a entry, which shows a dialog; \a act runs over it, then it is accepted.
    void pickDialog(const char *entry, const std::function<void(QDialog &)> &act);
    /// \a act runs over the next dialog of any kind, which is then rejected if it is still there.
    void overNext(const std::function<void(QDialog &)> &act);
    /// The user picks \a row of the list \a name.
    void pickRow(const char *name, int row, QWidget *owner = nullptr);
    void type(const char *name, const QString &text);
    void press(const char *name);

    // ---- the pictures
    [[nodiscard]] frmDisplay &form() { return *m_form; }
    template <typename T>
    [[nodiscard]] T &child(const char *name, QWidget *owner = nullptr) {
        T *found = (owner != nullptr ? owner : m_form.get())->findChild<T *>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("there is no %s", name);
        }
        return *found;
    }
    /// The chart's own drawing surface.
    [[nodiscard]] QWidget &surface();
    /// desktop() as \a name.png.
    void save(const QString &name);
    /// \a widgets alone, with a margin around them.
    void saveWidgets(const QString &name, const QList<QWidget *> &widgets, int margin = 6);
    /// A dialog or box with its title.
    void saveDialog(const QString &name, QWidget &dialog);
    /// The same with the rows of \a list open.
    void saveDialogList(const QString &name, QWidget &dialog, QComboBox &list);
    void write(const QString &name, const QImage &picture);
    /// The window with every menu, list and tip above it, or \a part of that.
    [[nodiscard]] QImage desktop(const QRect &part = {});
    [[nodiscard]] QPoint inWindow(const QWidget &widget) const {
        return widget.mapTo(m_form.get(), QPoint());
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void answer(const QString &command);
    void fire(QTimer *timer);

    QString m_folder;
    ManualClock m_clock{72000.2};
    ScriptedSerialControl m_line{m_clock};
    Unit m_unit;
    PictureDialogs m_dialogs;
    DateTimeText m_texts{QLocale::c()};
    std::unique_ptr<frmDisplay> m_form;
    bool m_firing = false;
    bool m_unitThere = true;
    QString m_garbled;
};

} // namespace veldron
