// SPDX-License-Identifier: MIT
// Makes the pictures of the manual: the program's own window with the simulated unit, in the scenes
// below. Time, scene, font and style are fixed, so that the same tools give the same bytes.
//
// Usage: make_pictures FOLDER [light|dark POINTS]   (in an empty folder, which recordings go to)
//        make_pictures recording
//
// With colours and a size of letters it shows instead how the program looks under these. The last
// form draws nothing and records band.rec, which the manual's examples are about.
#include "scripts/pictures/PictureDesk.h"

#include "app/StatusPanels.h"
#include "history/ctlPlayback.h"
#include "tests/app/StatusBarReader.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHelpEvent>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>

#include <cstdio>

namespace veldron {
namespace {

/// Seconds until the waterfall has something to show.
constexpr double kShortWhile = 30.0;
constexpr double kLongWhile = 220.0;

// ---- verbs

void switchDisplay(PictureDesk &desk, const QStringList &boxes) {
    desk.pickDialog("mnuSettingsDisplay", [&](QDialog &dialog) {
        for (const QString &box : boxes) {
            desk.child<QCheckBox>(box.toLatin1().constData(), &dialog).click();
        }
    });
}

/// A window with peaks, waterfall and marker, after a while.
void startFull(PictureDesk &desk, double seconds = kLongWhile) {
    desk.start();
    switchDisplay(desk, {QStringLiteral("chkPersistence"), QStringLiteral("chkWaterfall")});
    desk.run(seconds);
}

/// A place on the chart, in shares of its width and height.
QPoint onChart(PictureDesk &desk, double x, double y) {
    const QSize size = desk.surface().size();
    return {qRound(x * size.width()), qRound(y * size.height())};
}

void click(PictureDesk &desk, QPoint at) {
    QTest::mouseMove(&desk.surface(), at);
    QTest::mouseClick(&desk.surface(), Qt::LeftButton, Qt::NoModifier, at);
}

/// The tip that comes up where the pointer rests at \a at.
void saveTip(PictureDesk &desk, const QString &name, QPoint at) {
    QTest::mouseMove(&desk.surface(), at - QPoint(0, 1));
    QTest::mouseMove(&desk.surface(), at);
    QHelpEvent rest(QEvent::ToolTip, at, desk.surface().mapToGlobal(at));
    QCoreApplication::sendEvent(&desk.surface(), &rest);
    desk.saveWidgets(name, {&desk.surface()}, 0);
    for (QWidget *tip : QApplication::topLevelWidgets()) {
        if (tip->inherits("QTipLabel")) {
            tip->hide(); // hideText() takes its time
        }
    }
}

void saveMenu(PictureDesk &desk, const QString &name, const char *menu) {
    auto &entries = desk.child<QMenu>(menu);
    const QRect place = desk.form().menuBar()->actionGeometry(entries.menuAction());
    entries.popup(desk.form().menuBar()->mapToGlobal(place.bottomLeft()));
    desk.write(name, desk.desktop(QRect(0, 0, 420, 230)));
    entries.close();
}

void saveList(PictureDesk &desk, const QString &name, const char *list, const QRect &part) {
    auto &box = desk.child<QComboBox>(list);
    box.showPopup();
    desk.write(name, desk.desktop(part));
    box.hidePopup();
}

void saveAbout(PictureDesk &desk) {
    desk.overNext([&](QDialog &about) { desk.saveDialog(QStringLiteral("about"), about); });
    desk.pick("mnuAbout");
}

/// Lets time pass until the status bar says \a text, a minute at most.
void awaitStatus(PictureDesk &desk, const char *text) {
    for (int tries = 0; tries < 240; ++tries) {
        if (statusText(desk.child<StatusPanels>("StatusBar1")).startsWith(QLatin1String(text))) {
            return;
        }
        desk.run(0.25);
    }
    qFatal("the status bar never says %s", text);
}

void saveStatusBar(PictureDesk &desk, const QString &name) {
    desk.saveWidgets(name, {&desk.child<QWidget>("StatusBar1")}, 0);
}

// ---- scenes

void firstStart(PictureDesk &desk) {
    desk.start();
    desk.run(kShortWhile);
    desk.save(QStringLiteral("first-start"));
    saveMenu(desk, QStringLiteral("menu-file"), "mnuFile");
    saveMenu(desk, QStringLiteral("menu-settings"), "mnuSettings");
    saveMenu(desk, QStringLiteral("menu-help"), "mnuHelp");
    saveStatusBar(desk, QStringLiteral("status-connected"));
    saveAbout(desk);
    desk.pickDialog("mnuSettingsComms", [&](QDialog &dialog) {
        desk.saveDialog(QStringLiteral("communications"), dialog);
        desk.saveDialogList(QStringLiteral("communications-ports"), dialog,
                            desk.child<QComboBox>("cboComPort", &dialog));
    });
}

void trouble(PictureDesk &desk) {
    desk.setUnitThere(false);
    awaitStatus(desk, "VELDRON not found");
    desk.save(QStringLiteral("silent"));
    saveStatusBar(desk, QStringLiteral("status-not-found"));
    desk.setUnitThere(true);
    desk.run(5.0);
    desk.garble(QStringLiteral("WSBW4"));
    desk.pickRow("cboRBW", 3);
    saveStatusBar(desk, QStringLiteral("status-failure"));
    desk.line().failOpen(1, SerialErrorCode::kPortInUse);
    desk.pickDialog("mnuSettingsComms", [&](QDialog &dialog) {
        desk.overNext([&](QDialog &box) { desk.saveDialog(QStringLiteral("port-in-use"), box); });
        desk.pickRow("cboComPort", 1, &dialog);
    });
}

void display(PictureDesk &desk) {
    startFull(desk);
    desk.save(QStringLiteral("window"));
    desk.pickDialog("mnuSettingsDisplay", [&](QDialog &dialog) {
        desk.saveDialog(QStringLiteral("display-settings"), dialog);
    });
    click(desk, onChart(desk, 0.57, 0.2));
    desk.run(0.3);
    desk.saveWidgets(QStringLiteral("marker"), {&desk.surface()}, 0);
    saveTip(desk, QStringLiteral("tip-trace"), onChart(desk, 0.62, 0.28));
    saveTip(desk, QStringLiteral("tip-waterfall"), onChart(desk, 0.45, 0.75));
    QTest::mouseMove(&desk.surface(), onChart(desk, 0.01, 0.01));
}

void looking(PictureDesk &desk) {
    auto &bar = desk.child<QScrollBar>("VScroll1");
    bar.setValue(80);
    desk.saveWidgets(QStringLiteral("scrolled"), {&desk.child<QWidget>("ctlChartSpectrum1")}, 0);
    bar.setValue(0);
    QWidget &surface = desk.surface();
    QTest::mouseMove(&surface, onChart(desk, 0.5, 0.5));
    const QPoint split(surface.width() / 2, surface.height() / 2);
    QTest::mousePress(&surface, Qt::LeftButton, Qt::NoModifier, split);
    QTest::mouseMove(&surface, onChart(desk, 0.5, 0.3));
    QTest::mouseRelease(&surface, Qt::LeftButton, Qt::NoModifier, onChart(desk, 0.5, 0.3));
    desk.saveWidgets(QStringLiteral("split"), {&desk.child<QWidget>("ctlChartSpectrum1")}, 0);
}

/// The six schemes side by side, each a strip of the same waterfall.
void palettes(PictureDesk &desk) {
    startFull(desk);
    QImage strips(3 * 300, 2 * 150, QImage::Format_RGB32);
    strips.fill(Qt::white);
    QPainter painter(&strips);
    for (int row = 0; row < 6; ++row) {
        desk.pickDialog("mnuSettingsDisplay",
                        [&](QDialog &dialog) { desk.pickRow("cboPalette", row, &dialog); });
        const QImage all = desk.desktop();
        const QPoint corner = desk.inWindow(desk.surface());
        painter.drawImage(
            row % 3 * 300, row / 3 * 150,
            all.copy(corner.x() + 120, corner.y() + desk.surface().height() * 6 / 10, 294, 144));
    }
    painter.end();
    desk.write(QStringLiteral("palettes"), strips);
}

void receiver(PictureDesk &desk) {
    desk.start();
    desk.run(4.0);
    QWidget &panel = desk.child<QWidget>("ctlFrequency1");
    const QRect part(0, desk.inWindow(panel).y() - 10, 420, 330);
    desk.saveWidgets(QStringLiteral("receiver"), {&panel});
    saveList(desk, QStringLiteral("receiver-list"), "cboRX", part);
    saveList(desk, QStringLiteral("receiver-mode"), "cboMode", part);
    desk.type("txtFreq", QStringLiteral("98.5"));
    desk.saveWidgets(QStringLiteral("receiver-typing"), {&panel});
    QTest::keyClick(&desk.child<QWidget>("txtFreq"), Qt::Key_Return);
    desk.run(1.5);
    desk.saveWidgets(QStringLiteral("receiver-tuned"), {&panel});
}

void monitor(PictureDesk &desk) {
    desk.start();
    QWidget &panel = desk.child<QWidget>("ctlMonitorMode1");
    desk.saveWidgets(QStringLiteral("monitor"), {&panel});
    desk.pickRow("cboSpan", 2, &panel);
    desk.run(kShortWhile);
    desk.save(QStringLiteral("monitor-narrow"));
    desk.pickRow("cboMonitorMode", 2, &panel);
    desk.run(kShortWhile);
    desk.save(QStringLiteral("monitor-channel"));
    desk.saveWidgets(QStringLiteral("monitor-channel-panel"), {&panel});
    desk.pickRow("cboMonitorMode", 0, &panel);
}

void data(PictureDesk &desk) {
    desk.start();
    QWidget &panel = desk.child<QWidget>("ctlDataMode1");
    desk.saveWidgets(QStringLiteral("data"), {&panel});
    desk.pickRow("cboDataMode", 1, &panel);
    desk.run(kShortWhile);
    desk.saveWidgets(QStringLiteral("data-average"), {&panel});
    desk.pickRow("cboDataMode", 2, &panel);
    desk.run(kShortWhile);
    desk.saveWidgets(QStringLiteral("data-maximum"), {&panel});
    desk.pickRow("cboDataMode", 0, &panel);
}

void history(PictureDesk &desk) {
    startFull(desk, kShortWhile);
    desk.pickDialog("mnuSettingsComms",
                    [&](QDialog &dialog) { desk.pickRow("cboPoll", 3, &dialog); });
    desk.dialogs().file = QStringLiteral("evening.rec");
    desk.pick("mnuFileRecord");
    desk.run(kLongWhile / 2);
    desk.save(QStringLiteral("recording"));
    saveMenu(desk, QStringLiteral("menu-recording"), "mnuFile");
    desk.overNext([&](QDialog &box) { desk.saveDialog(QStringLiteral("exit-question"), box); });
    desk.form().close();
    desk.pick("mnuFileRecord");
    desk.pick("mnuFilePlayback");
    for (int step = 0; step < 40; ++step) {
        Q_EMIT desk.child<ctlPlayback>("ctlPlayback1").Step(1);
    }
    desk.save(QStringLiteral("playback"));
    QWidget &transport = desk.child<QWidget>("ctlPlayback1");
    desk.saveWidgets(QStringLiteral("transport"),
                     {&desk.child<QWidget>("cmdPlay"), &desk.child<QWidget>("Label2", &transport)});
    desk.press("cmdClose");
}

void lastWords(PictureDesk &desk) {
    QFile bad(QStringLiteral("broken.rec"));
    if (!bad.open(QIODevice::WriteOnly)) {
        qFatal("can't write the bad recording");
    }
    bad.write("VELDRONv1 History file\r\nStartSettings 2026-03-14\r\nEndSettings \r\nData AAA\r\n");
    bad.close();
    desk.dialogs().file = QStringLiteral("broken.rec");
    desk.overNext([&](QDialog &box) { desk.saveDialog(QStringLiteral("error"), box); });
    desk.pick("mnuFilePlayback");
}

/// What the toolkit shows in the program's name.
void toolkitDialogs(PictureDesk &desk) {
    QtDialogs &dialogs = desk.dialogs();
    desk.overNext([&](QDialog &box) { desk.saveDialog(QStringLiteral("message"), box); });
    dialogs.showMessage(QStringLiteral("Select serial port"),
                        QStringLiteral("COM  4 is in use by another application"));
    desk.overNext([&](QDialog &files) { desk.saveDialog(QStringLiteral("file-dialog"), files); });
    dialogs.QtDialogs::saveFile({QStringLiteral("Save Settings"),
                                 QStringLiteral("VELDRON Settings (*.set)"), QDir::currentPath(),
                                 QStringLiteral("set")});
}

/// Under other colours and letters: what a picture can show to be cut off or hard to read.
void looks(PictureDesk &desk) {
    startFull(desk, kShortWhile);
    desk.save(QStringLiteral("window"));
    desk.pickRow("cboDataMode", 1);
    desk.saveWidgets(QStringLiteral("panels"),
                     {&desk.child<QWidget>("ctlFrequency1"), &desk.child<QWidget>("ctlDataMode1")});
    saveMenu(desk, QStringLiteral("menu"), "mnuFile");
    desk.pickDialog("mnuSettingsDisplay", [&](QDialog &dialog) {
        desk.saveDialog(QStringLiteral("display-settings"), dialog);
    });
    desk.pickDialog("mnuSettingsComms", [&](QDialog &dialog) {
        desk.saveDialog(QStringLiteral("communications"), dialog);
    });
    saveAbout(desk);
    toolkitDialogs(desk);
    desk.dialogs().file = QStringLiteral("evening.rec");
    desk.pick("mnuFileRecord");
    desk.run(4.0);
    desk.overNext([&](QDialog &box) { desk.saveDialog(QStringLiteral("exit-question"), box); });
    desk.form().close();
    desk.pick("mnuFileRecord");
    desk.pick("mnuFilePlayback");
    desk.save(QStringLiteral("playback"));
    desk.press("cmdClose");
    lastWords(desk);
}

/// A recording with what recordings have: scans that come faster than seconds, settings that were
/// changed at the unit, and a unit that was away for a while.
void recordBand(PictureDesk &desk) {
    startFull(desk, 2.4);
    desk.pickDialog("mnuSettingsComms",
                    [&](QDialog &dialog) { desk.pickRow("cboPoll", 0, &dialog); });
    desk.dialogs().file = QStringLiteral("band.rec");
    desk.pick("mnuFileRecord");
    desk.run(10.0);
    desk.setUnitThere(false);
    desk.run(6.0);
    desk.setUnitThere(true);
    desk.run(4.0);
    if (!desk.unit().setByHand("WSSP2")) {
        qFatal("the unit does not take the span");
    }
    desk.run(10.0);
    desk.pick("mnuFileRecord");
}

void manual(PictureDesk &desk) {
    firstStart(desk);
    trouble(desk);
    display(desk);
    looking(desk);
    palettes(desk);
    receiver(desk);
    monitor(desk);
    data(desk);
    history(desk);
    lastWords(desk);
}

QPalette lightColours() {
    QPalette palette(QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette darkColours() {
    QPalette palette(QColor(0x35, 0x39, 0x40), QColor(0x2a, 0x2d, 0x33));
    palette.setColor(QPalette::Base, QColor(0x1c, 0x1e, 0x22));
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// The same for every user: nothing of the machine's own looks.
void useFixedLooks(const QPalette &palette, int points) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), points));
    QApplication::setCursorFlashTime(0);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    QLocale::setDefault(QLocale::c());
}

constexpr int kUsualPoints = 9;

} // namespace
} // namespace veldron

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELDRON_VERSION));
    if (argc != 2 && argc != 4) {
        std::fprintf(
            stderr, "usage: make_pictures FOLDER [light|dark POINTS] or make_pictures recording\n");
        return 2;
    }
    using namespace veldron;
    const bool isDark = argc == 4 && QLatin1String(argv[2]) == QLatin1String("dark");
    useFixedLooks(isDark ? darkColours() : lightColours(),
                  argc == 4 ? QByteArray(argv[3]).toInt() : kUsualPoints);
    PictureDesk desk(QString::fromLocal8Bit(argv[1]));
    if (argc == 4) {
        looks(desk);
    } else if (QLatin1String(argv[1]) == QLatin1String("recording")) {
        recordBand(desk);
    } else {
        manual(desk);
    }
    return 0;
}
