// SPDX-License-Identifier: MIT
#include "app/QtDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
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

    QTemporaryDir m_folder;
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
    over<QFileDialog>([](QFileDialog &dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Save Settings");
        EXPECT_EQ(dialog.nameFilters(), QStringList{"VELDRON Settings (*.set)"});
        typeName(dialog, "mine");
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    EXPECT_EQ(m_dialogs.saveFile(request()), std::optional<QString>(path("mine.set")));
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

} // namespace
} // namespace veldron
