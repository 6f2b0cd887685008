// SPDX-License-Identifier: MIT
// The window, its dialogs and its boxes under large letters, on dense screens and on dark desktops.
#include "tests/app/ScreensFixture.h"

#include "app/QtDialogs.h"
#include "app/frmSplash.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QToolButton>

#include <algorithm>
#include <vector>

namespace veldron {
namespace {

QPalette darkColours() {
    return {QColor(0x35, 0x39, 0x40), QColor(0x2a, 0x2d, 0x33)};
}

/// Verbs of what the user may bring up, and the real dialogs of the toolkit.
class Looks : public ScreensFixture {
protected:
    Looks() { m_toolkit.setWindow(nullptr); }
    ~Looks() override {
        dropForm();
        QApplication::setFont(m_fontBefore);
        QApplication::setPalette(m_paletteBefore);
    }
    static void useLetters(int points) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    void begin(double density = 1.0) {
        startUp();
        goTo(density);
        m_toolkit.setWindow(m_form.get());
    }
    void startPlayback() {
        m_dialogs.pickFile(path("evening.rec"));
        pick("mnuFileRecord");
        poll(3);
        pick("mnuFileRecord");
        pick("mnuFilePlayback");
        QApplication::processEvents();
    }
    /// Runs \a bringUp, and \a act over the dialog that it shows.
    void over(const std::function<void()> &bringUp, const std::function<void(QDialog &)> &act) {
        bool cameUp = false;
        QTimer::singleShot(0, m_form.get(), [&] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            QApplication::processEvents();
            cameUp = true;
            act(*dialog);
            dialog->reject();
        });
        bringUp();
        EXPECT_TRUE(cameUp);
    }
    /// \a look sees each dialog of the program, file dialog and message box.
    void overEachDialog(const std::function<void(QWidget &)> &look) {
        for (const char *entry : {"mnuSettingsDisplay", "mnuSettingsComms", "mnuAbout"}) {
            over([&] { pick(entry); }, look);
        }
        const FileRequest request{"Save Settings", "VELDRON Settings (*.set)", m_folder.path(),
                                  "set"};
        over([&] { m_toolkit.openFile(request); }, look);
        over([&] { m_toolkit.saveFile(request); }, look);
        over([&] { m_toolkit.askOkOrCancel("Exit VELDRON?", "Really?\r\n Or not?"); }, look);
        over([&] { m_toolkit.showMessage("Select serial port", "COM  4 is in use"); }, look);
        over([&] { m_toolkit.showError(kLongError); }, look);
    }

    static inline const QString kLongError =
        "Line 12345 of the file \"/home/a-user/recordings/of-the-last-evening.rec\": the file "
        "ends in the middle of a scan. What was played up to this place can be played again.";
    QtDialogs m_toolkit;

private:
    const QFont m_fontBefore = QApplication::font();
    const QPalette m_paletteBefore = QApplication::palette();
};

// ---- nothing cut off

QString nameOf(const QWidget &widget) {
    const QWidget *parent = widget.parentWidget();
    return widget.window()->windowTitle() + '/' + (parent != nullptr ? parent->objectName() : "") +
           '/' + widget.objectName() + " of " + widget.metaObject()->className();
}

void expectRoom(const QWidget &widget, int room, const QString &text) {
    EXPECT_GE(room, widget.fontMetrics().horizontalAdvance(text))
        << qPrintable(nameOf(widget)) << " cuts off \"" << qPrintable(text) << '"';
}

/// The room that the text of \a widget takes, or its icon alone.
QSize leastSize(const QWidget &widget) {
    const auto *label = qobject_cast<const QLabel *>(&widget);
    if (label != nullptr && label->wordWrap()) {
        return {0, label->heightForWidth(label->width())};
    }
    const auto *button = qobject_cast<const QToolButton *>(&widget);
    return button != nullptr && button->text().isEmpty() ? button->iconSize()
                                                         : widget.minimumSizeHint();
}

void expectWhole(const QWidget &widget) {
    const QSize least = leastSize(widget);
    EXPECT_GE(widget.width(), least.width()) << qPrintable(nameOf(widget));
    EXPECT_GE(widget.height(), least.height()) << qPrintable(nameOf(widget));
    EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry()))
        << qPrintable(nameOf(widget)) << " sticks out";
}

void expectRowsWhole(const QComboBox &list) {
    QStyleOptionComboBox option;
    option.initFrom(&list);
    option.editable = list.isEditable();
    const QRect field = list.style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                     QStyle::SC_ComboBoxEditField, &list);
    for (int row = 0; row < list.count(); ++row) {
        expectRoom(list, field.width(), list.itemText(row));
    }
}

/// What shows a text or an icon, or is pressed. A path in the toolkit's own list may be of any
/// length, and the label on the receiver panel's single pixel is never seen.
template <typename Act>
int forEachText(const QWidget &window, const Act &act) {
    int count = 0;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const bool shows = qobject_cast<const QLabel *>(widget) ||
                           qobject_cast<const QAbstractButton *>(widget) ||
                           qobject_cast<const QComboBox *>(widget);
        const bool isLeftOut =
            widget->objectName() == "lookInCombo" || widget->objectName() == "lblFreq";
        if (shows && widget->isVisible() && !isLeftOut) {
            act(*widget);
            ++count;
        }
    }
    return count;
}

void expectNothingCutOff(const QWidget &window) {
    const int seen = forEachText(window, [](const QWidget &widget) {
        if (const auto *list = qobject_cast<const QComboBox *>(&widget)) {
            expectRowsWhole(*list);
        } else {
            expectWhole(widget);
        }
    });
    EXPECT_GE(seen, 2) << qPrintable(window.windowTitle());
}

struct Look {
    int points;
    double density;
};

class LooksTest : public Looks, public testing::WithParamInterface<Look> {
protected:
    LooksTest() { useLetters(GetParam().points); }
    void begin() { Looks::begin(GetParam().density); }
    static void expectWholeThere(const QWidget &window) {
        EXPECT_EQ(window.devicePixelRatioF(), GetParam().density)
            << qPrintable(window.windowTitle());
        expectNothingCutOff(window);
    }
};

TEST_P(LooksTest, window_cutsNoTextOff) {
    begin();
    expectWholeThere(*m_form);
}

TEST_P(LooksTest, windowInPlayback_cutsNoTextOff) {
    begin();
    startPlayback();
    EXPECT_TRUE(transport().isVisible());
    expectWholeThere(*m_form);
}

TEST_P(LooksTest, highestFrequencies_fitIntoTheirFields) {
    begin();
    for (const char *name : {"txtFreq", "txtStart", "txtCentre", "txtEnd"}) {
        const auto &field = child<QLineEdit>(name);
        expectRoom(field, field.contentsRect().width() - 8, QStringLiteral("3500.00000"));
    }
}

TEST_P(LooksTest, dialogsAndBoxes_cutNoTextOff) {
    begin();
    overEachDialog([](QWidget &dialog) { expectWholeThere(dialog); });
}

TEST_P(LooksTest, splash_cutsNoTextOff) {
    frmSplash splash("10.10.10");
    splash.show();
    QApplication::processEvents();
    expectNothingCutOff(splash);
}

INSTANTIATE_TEST_SUITE_P(LettersAndScreens, LooksTest,
                         testing::Values(Look{9, 1.0}, Look{12, 1.0}, Look{16, 1.0}, Look{9, 2.0},
                                         Look{12, 2.0}, Look{16, 2.0}),
                         [](const auto &look) {
                             return std::to_string(look.param.points) + "pointsAtDensity" +
                                    std::to_string(qRound(look.param.density));
                         });

// ---- dark desktops

/// From 0 to 1, as the eye weighs the colours.
double lightness(QRgb colour) {
    const QColor linear = QColor(colour);
    const auto part = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(linear.redF()) + 0.7152 * part(linear.greenF()) +
           0.0722 * part(linear.blueF());
}

double contrast(double a, double b) {
    return (qMax(a, b) + 0.05) / (qMin(a, b) + 0.05);
}

/// The lightness of a picture's ground, which most of its pixels are of, and the highest contrast
/// of any pixel with it.
struct Seen {
    double ground = 0.0;
    double contrast = 0.0;
};
Seen seen(const QImage &picture) {
    std::vector<double> all;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            all.push_back(lightness(picture.pixel(x, y)));
        }
    }
    std::sort(all.begin(), all.end());
    const double ground = all.at(all.size() / 2);
    return {ground, qMax(contrast(ground, all.front()), contrast(ground, all.back()))};
}

class DarkLooksTest : public Looks {
protected:
    DarkLooksTest() { QApplication::setPalette(darkColours()); }
    /// Icons of boxes and check boxes without a text are what the style makes them.
    static bool isEmpty(const QWidget &widget) {
        const auto *label = qobject_cast<const QLabel *>(&widget);
        const auto *box = qobject_cast<const QCheckBox *>(&widget);
        return (label != nullptr && label->text().isEmpty()) ||
               (box != nullptr && box->text().isEmpty());
    }
    /// Each part of the window that can be used is dark, with a text or icon that can be read.
    static void expectDarkAndReadable(QWidget &window) {
        constexpr double kDark = 0.2;
        constexpr double kReadable = 4.5;
        const QImage all = window.grab().toImage();
        forEachText(window, [&](const QWidget &widget) {
            if (!widget.isEnabled() || isEmpty(widget)) {
                return;
            }
            const Seen found =
                seen(all.copy(QRect(widget.mapTo(&window, QPoint()), widget.size())));
            EXPECT_LT(found.ground, kDark) << qPrintable(nameOf(widget));
            EXPECT_GT(found.contrast, kReadable) << qPrintable(nameOf(widget));
        });
    }
};

TEST_F(DarkLooksTest, window_isDarkAndReadable) {
    begin();
    expectDarkAndReadable(*m_form);
    EXPECT_LT(seen(m_form->menuBar()->grab().toImage()).ground, 0.2);
}

TEST_F(DarkLooksTest, windowInPlayback_isDarkAndReadable) {
    begin();
    startPlayback();
    expectDarkAndReadable(*m_form);
}

TEST_F(DarkLooksTest, dialogsAndBoxes_areDarkAndReadable) {
    begin();
    overEachDialog(expectDarkAndReadable);
}

TEST_F(DarkLooksTest, chart_staysAsItIsOnALightDesktop) {
    begin();
    chart().setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    poll(3);
    const QImage dark = chart().grab().toImage();
    QApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
    QApplication::processEvents();
    const QImage light = chart().grab().toImage();
    EXPECT_EQ(dark.copy(child<QWidget>("Picture1").geometry()),
              light.copy(child<QWidget>("Picture1").geometry()));
}

} // namespace
} // namespace veldron
