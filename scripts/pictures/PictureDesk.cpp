// SPDX-License-Identifier: MIT
#include "scripts/pictures/PictureDesk.h"

#include "app/PollTimer.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QTest>

#include <cmath>

namespace veldron {

namespace {

constexpr qint16 kUnitPort = 3;
constexpr QSize kWindow(1000, 640);
constexpr int kTitleHeight = 24;
constexpr int kShadow = 1;
/// The step in which time passes, in seconds.
constexpr double kStep = 0.1;
/// How long the unit takes for a reply, in seconds.
constexpr double kReplyTime = 0.02;

/// An empty picture for \a size pixels of the program, at the density of \a like.
QImage emptyPicture(QSize size, const QImage &like) {
    QImage picture(size * like.devicePixelRatio(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(like.devicePixelRatio());
    return picture;
}

/// \a picture under a bar with \a title, as a window manager would show it.
QImage withTitle(const QImage &picture, const QString &title) {
    const QSize inside = picture.deviceIndependentSize().toSize();
    const QSize size = inside + QSize(2 * kShadow, kTitleHeight + kShadow);
    QImage framed = emptyPicture(size, picture);
    framed.fill(QColor(0x5a, 0x66, 0x78));
    QPainter painter(&framed);
    painter.setPen(Qt::white);
    painter.drawText(QRect(8, 0, size.width() - 8, kTitleHeight), Qt::AlignVCenter, title);
    painter.drawImage(kShadow, kTitleHeight, picture);
    return framed;
}

QImage grabbed(QWidget &widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

PictureDesk::PictureDesk(QString folder) : m_folder(std::move(folder)) {
    m_line.setPorts({1, kUnitPort});
    m_line.setUnitPort(kUnitPort);
    m_line.setCommandHook([this](const QString &command) { answer(command); });
    qApp->installEventFilter(this);
}

PictureDesk::~PictureDesk() {
    m_form.reset();
    qApp->removeEventFilter(this);
}

/// The program's timers run on the machine's time, which is nothing for a picture: they tick in
/// run() alone.
bool PictureDesk::eventFilter(QObject *watched, QEvent *event) {
    return event->type() == QEvent::Timer && !m_firing && qobject_cast<QTimer *>(watched) &&
           m_form != nullptr && watched->parent() != nullptr;
}

void PictureDesk::answer(const QString &command) {
    if (!m_unitThere || m_line.CommPort() != kUnitPort) {
        return;
    }
    m_unit.setTime(m_clock.steadySeconds());
    const QByteArray reply = m_unit.answer(command.toLatin1());
    const bool garbles = command == m_garbled;
    m_line.queueReply(command, ReplyScript{{garbles ? "#\r\n" : reply, kReplyTime}});
}

void PictureDesk::start() {
    m_form.reset();
    m_unit = Unit();
    m_form = std::make_unique<frmDisplay>(
        frmDisplay::Dependencies{m_line, m_clock, m_dialogs, m_texts, QDir::currentPath(),
                                 QCoreApplication::applicationVersion(), QString()});
    m_dialogs.setWindow(m_form.get());
    m_form->load();
    m_form->resize(kWindow);
    m_form->activateWindow();
    QCoreApplication::processEvents();
}

void PictureDesk::fire(QTimer *timer) {
    if (timer->isActive()) {
        m_firing = true;
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
        m_firing = false;
    }
}

void PictureDesk::run(double seconds) {
    const double end = m_clock.steadySeconds() + seconds;
    QTimer *poll = m_form->findChild<PollTimer *>()->findChild<QTimer *>();
    for (double next = 0.0; m_clock.steadySeconds() < end; m_clock.advance(kStep)) {
        if (m_clock.steadySeconds() >= next) {
            next = m_clock.steadySeconds() + poll->interval() / 1000.0;
            fire(poll);
        }
        for (QTimer *timer : m_form->findChildren<QTimer *>()) {
            if (timer != poll && timer->parent()->objectName() != QLatin1String("ctlPlayback1")) {
                fire(timer);
            }
        }
        QCoreApplication::processEvents();
    }
}

void PictureDesk::pick(const char *entry) {
    child<QAction>(entry).trigger();
}

void PictureDesk::overNext(const std::function<void(QDialog &)> &act) {
    QTimer::singleShot(0, this, [act] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            qFatal("no dialog came up");
        }
        QCoreApplication::processEvents();
        act(*dialog);
        if (dialog->isVisible()) {
            dialog->reject();
        }
    });
}

void PictureDesk::pickDialog(const char *entry, const std::function<void(QDialog &)> &act) {
    overNext([act](QDialog &dialog) {
        act(dialog);
        dialog.accept();
    });
    pick(entry);
}

void PictureDesk::pickRow(const char *name, int row, QWidget *owner) {
    auto &list = child<QComboBox>(name, owner);
    list.setCurrentIndex(row);
    Q_EMIT list.activated(row);
}

void PictureDesk::type(const char *name, const QString &text) {
    auto &field = child<QWidget>(name);
    QWidget *target = field.focusProxy() != nullptr ? field.focusProxy() : &field;
    target->setFocus();
    QTest::keyClicks(target, text);
}

void PictureDesk::press(const char *name) {
    child<QAbstractButton>(name).click();
}

QWidget &PictureDesk::surface() {
    return child<QWidget>("Picture1", &child<QWidget>("ctlChartSpectrum1"));
}

QImage PictureDesk::desktop(const QRect &part) {
    QCoreApplication::processEvents();
    QImage picture = grabbed(*m_form);
    QPainter painter(&picture);
    for (QWidget *other : QApplication::topLevelWidgets()) {
        if (other->isVisible() && other != m_form.get()) {
            painter.drawImage(other->mapToGlobal(QPoint()) - m_form->mapToGlobal(QPoint()),
                              grabbed(*other));
        }
    }
    painter.end();
    const qreal density = picture.devicePixelRatio();
    return part.isNull() ? picture
                         : picture.copy({part.topLeft() * density, part.size() * density});
}

void PictureDesk::save(const QString &name) {
    write(name, desktop());
}

void PictureDesk::saveWidgets(const QString &name, const QList<QWidget *> &widgets, int margin) {
    QRect shown;
    for (const QWidget *widget : widgets) {
        shown |= QRect(inWindow(*widget), widget->size());
    }
    shown = shown.adjusted(-margin, -margin, margin, margin).intersected(m_form->rect());
    write(name, desktop(shown));
}

void PictureDesk::saveDialog(const QString &name, QWidget &dialog) {
    write(name, withTitle(grabbed(dialog), dialog.windowTitle()));
}

void PictureDesk::saveDialogList(const QString &name, QWidget &dialog, QComboBox &list) {
    list.showPopup();
    QCoreApplication::processEvents();
    QWidget &rows = *list.view()->window();
    const QImage below = withTitle(grabbed(dialog), dialog.windowTitle());
    const QPoint place =
        dialog.mapFromGlobal(rows.mapToGlobal(QPoint())) + QPoint(kShadow, kTitleHeight);
    const QRect whole =
        QRect(QPoint(), below.deviceIndependentSize().toSize()) | QRect(place, rows.size());
    QImage both = emptyPicture(whole.size(), below);
    both.fill(Qt::white);
    QPainter painter(&both);
    painter.drawImage(-whole.topLeft(), below);
    painter.drawImage(place - whole.topLeft(), grabbed(rows));
    painter.end();
    list.hidePopup();
    write(name, both);
}

void PictureDesk::write(const QString &name, const QImage &picture) {
    const QString path = m_folder + QLatin1Char('/') + name + QStringLiteral(".png");
    if (!picture.save(path, "PNG", 0)) {
        qFatal("can't write %s", qPrintable(path));
    }
}

} // namespace veldron
