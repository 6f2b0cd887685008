// SPDX-License-Identifier: MIT
#include "app/QtDialogs.h"

#include "tests/support/PlainUser.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

namespace veldron {
namespace {

class QtDialogsTest : public testing::Test {
protected:
    QtDialogsTest() { dropQuit(); }
    ~QtDialogsTest() override { dropQuit(); }
    /// The last window to close asks the application to quit.
    static void dropQuit() {
        QCoreApplication::removePostedEvents(QCoreApplication::instance(), QEvent::Quit);
    }
    /// Runs \a act over the next box of type T.
    template <typename T>
    void over(const std::function<void(T &)> &act) {
        QTimer::singleShot(0, &m_window, [act] {
            auto *box = qobject_cast<T *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
        });
    }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    void makeFile(const QString &name) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    [[nodiscard]] FileRequest request() const {
        return {"Save Settings", "VELDRON Settings (*.set)", m_folder.path(), "set"};
    }
    static void typeName(QFileDialog &dialog, const QString &name) {
        dialog.findChild<QLineEdit *>("fileNameEdit")->setText(name);
    }

    /// Accepts \a dialog and presses \a button of the question that it asks.
    void accept(QFileDialog &dialog, QMessageBox::StandardButton button) {
        over<QMessageBox>([this, button](QMessageBox &box) {
            m_questions.append(box.text());
            EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            box.button(button)->click();
        });
        QMetaObject::invokeMethod(&dialog, "accept");
    }

    QTemporaryDir m_folder;
    QStringList m_questions;
    QWidget m_window;
    QtDialogs m_dialogs;
};

TEST_F(QtDialogsTest, question_hasOkAndCancelWithCancelAsDefault) {
    over<QMessageBox>([](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), "Exit VELDRON?");
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Cancel));
        box.button(QMessageBox::Ok)->click();
    });
    EXPECT_TRUE(m_dialogs.askOkOrCancel("Exit VELDRON?", "Really?"));
}

TEST_F(QtDialogsTest, questionAnsweredByEscape_isCancelled) {
    over<QMessageBox>([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_FALSE(m_dialogs.askOkOrCancel("Exit VELDRON?", "Really?"));
}

TEST_F(QtDialogsTest, message_hasOneOkButton) {
    QString text;
    over<QMessageBox>([&](QMessageBox &box) {
        text = box.windowTitle() + "|" + box.text();
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        box.accept();
    });
    m_dialogs.showMessage("Select serial port", "COM  4 is in use by another application");
    EXPECT_EQ(text, "Select serial port|COM  4 is in use by another application");
}

TEST_F(QtDialogsTest, boxUnderAnOpenDialog_belongsToTheDialog) {
    QDialog dialog(&m_window);
    dialog.setModal(true);
    dialog.show();
    const QWidget *owner = nullptr;
    over<QMessageBox>([&](QMessageBox &box) {
        owner = box.parentWidget();
        box.accept();
    });
    m_dialogs.showMessage("Select serial port", "COM  4 is in use by another application");
    EXPECT_EQ(owner, &dialog);
}

TEST_F(QtDialogsTest, error_namesTheProgram) {
    QString text;
    over<QMessageBox>([&](QMessageBox &box) {
        text = box.windowTitle() + "|" + box.text();
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        box.accept();
    });
    m_dialogs.showError("It has to end.");
    EXPECT_EQ(text, "VELDRON has to end|It has to end.");
}

TEST_F(QtDialogsTest, markUpInAnError_isShownAsItStands) {
    const QString text = "Line 3 of the file \"a.rec\": \"<b>1</b>\" is not a date.";
    over<QMessageBox>([&](QMessageBox &box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        const auto *label = box.findChild<QLabel *>("qt_msgbox_label");
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->text(), text);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        box.accept();
    });
    m_dialogs.showError(text);
}

TEST_F(QtDialogsTest, markUpInAMessageOrQuestion_isShownAsItStands) {
    const QString text = "<b>4</b> is in use";
    const auto expectPlain = [&](QMessageBox &box) {
        EXPECT_EQ(box.findChild<QLabel *>("qt_msgbox_label")->text(), text);
        EXPECT_EQ(box.findChild<QLabel *>("qt_msgbox_label")->textFormat(), Qt::PlainText);
        box.reject();
    };
    over<QMessageBox>(expectPlain);
    m_dialogs.showMessage("Select serial port", text);
    over<QMessageBox>(expectPlain);
    EXPECT_FALSE(m_dialogs.askOkOrCancel("Exit VELDRON?", text));
}

TEST_F(QtDialogsTest, markUpInAFilesName_isShownAsItStands) {
    makeFile("<b>x<b>.set");
    for (const char *name : {"<b>x<b>.set", "<i>new<i>.set"}) {
        over<QFileDialog>([&](QFileDialog &dialog) {
            typeName(dialog, name);
            over<QMessageBox>([&](QMessageBox &box) {
                EXPECT_TRUE(box.text().startsWith(QLatin1String(name)));
                EXPECT_EQ(box.textFormat(), Qt::PlainText) << qPrintable(box.text());
                box.button(QMessageBox::No)->click();
            });
            QMetaObject::invokeMethod(&dialog, "accept");
            dialog.reject();
        });
        EXPECT_EQ(m_dialogs.saveFile(request()), std::nullopt);
    }
}

TEST_F(QtDialogsTest, box_belongsToTheWindowThatIsUp) {
    m_window.show();
    m_dialogs.setWindow(&m_window);
    QWidget *owner = nullptr;
    over<QMessageBox>([&](QMessageBox &box) {
        owner = box.parentWidget();
        box.accept();
    });
    m_dialogs.showError("It has to end.");
    EXPECT_EQ(owner, &m_window);
}

TEST_F(QtDialogsTest, nameWithoutSuffix_getsOne) {
    over<QFileDialog>([this](QFileDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save Settings");
        EXPECT_EQ(dialog.nameFilters(), QStringList{"VELDRON Settings (*.set)"});
        typeName(dialog, "mine");
        accept(dialog, QMessageBox::Yes);
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::optional<QString>(path("mine.set")));
    EXPECT_EQ(m_questions, QStringList{"mine.set does not exist.\nDo you want to create it?"});
}

TEST_F(QtDialogsTest, newNameThatIsNotWanted_keepsTheDialogUp) {
    over<QFileDialog>([this](QFileDialog &dialog) {
        typeName(dialog, "mine");
        accept(dialog, QMessageBox::No);
        EXPECT_TRUE(dialog.isVisible());
        typeName(dialog, "other.set");
        accept(dialog, QMessageBox::Yes);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::optional<QString>(path("other.set")));
    EXPECT_EQ(m_questions.size(), 2);
    EXPECT_FALSE(QFile::exists(path("mine.set")));
}

TEST_F(QtDialogsTest, existingFile_isReplacedOnlyWhenTheUserAgrees) {
    makeFile("a.set");
    over<QFileDialog>([this](QFileDialog &dialog) {
        typeName(dialog, "a.set");
        accept(dialog, QMessageBox::No);
        EXPECT_TRUE(dialog.isVisible());
        accept(dialog, QMessageBox::Yes);
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::optional<QString>(path("a.set")));
    const QString question = "a.set already exists.\nDo you want to replace it?";
    EXPECT_EQ(m_questions, (QStringList{question, question}));
}

TEST_F(QtDialogsTest, folderInASaveDialog_isEnteredWithoutAQuestion) {
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("inner"));
    over<QFileDialog>([this](QFileDialog &dialog) {
        typeName(dialog, path("inner"));
        QMetaObject::invokeMethod(&dialog, "accept");
        EXPECT_EQ(dialog.directory().path(), path("inner"));
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::nullopt);
}

TEST_F(QtDialogsTest, cancelledFileDialogs_giveNothing) {
    over<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::nullopt);
    over<QFileDialog>([](QFileDialog &dialog) { dialog.reject(); });
    EXPECT_EQ(m_dialogs.openFile(request()), std::nullopt);
}

TEST_F(QtDialogsTest, existingFile_isOpened) {
    makeFile("a.set");
    over<QFileDialog>([](QFileDialog &dialog) {
        typeName(dialog, "a.set");
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(m_dialogs.openFile(request()), std::optional<QString>(path("a.set")));
}

TEST_F(QtDialogsTest, nameThatCanNotBeWritten_isRefusedInsideTheDialog) {
    QString refusal;
    over<QFileDialog>([&](QFileDialog &dialog) {
        typeName(dialog, path("nowhere/a.set"));
        QTimer::singleShot(0, &m_window, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            refusal = box->text();
            box->accept();
        });
        QMetaObject::invokeMethod(&dialog, "accept");
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::nullopt);
    EXPECT_TRUE(refusal.contains("nowhere"));
}

TEST_F(QtDialogsTest, refusalToWrite_namesWhatIsInTheWay) {
    makeFile("a.set");
    EXPECT_EQ(refusalToWrite(path("a.set")), "");
    EXPECT_EQ(refusalToWrite(path("new.set")), "");
    EXPECT_EQ(refusalToWrite(m_folder.path()), "");
    EXPECT_TRUE(refusalToWrite(path("nowhere/a.set")).startsWith("There is no folder"));
    // A file where a folder is wanted can't be written into by anybody, root included.
    EXPECT_TRUE(refusalToWrite(path("a.set/b.set")).startsWith("There is no folder"));
}

TEST_F(QtDialogsTest, refusalToWrite_namesAReadOnlyFileAndAReadOnlyFolder) {
    makeFile("a.set");
    makeFile("mine.set");
    ASSERT_TRUE(QFile::setPermissions(path("a.set"), QFile::Permissions(0x4444)));
    ASSERT_TRUE(QFile::setPermissions(path("mine.set"), QFile::Permissions(0x6666)));
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x5555)));
    QStringList refusals;
    {
        const PlainUser user;
        refusals = {refusalToWrite(path("a.set")), refusalToWrite(path("new.set")),
                    refusalToWrite(path("mine.set"))};
    }
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777)));
    const QString folder =
        "You may not write to the folder \"" + m_folder.path() + "\". Please choose another one.";
    // The last one can be overwritten in place.
    EXPECT_EQ(refusals, (QStringList{"The file \"a.set\" is read-only. Please choose another name.",
                                     folder, ""}));
    EXPECT_EQ(refusalToWrite(path("new.set")), "");
}

} // namespace
} // namespace veldron
