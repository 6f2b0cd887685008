// SPDX-License-Identifier: MIT
#include "app/frmSplash.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QPointer>
#include <QScreen>
#include <QStringList>
#include <QVBoxLayout>
#include <QWindow>

/// The picture is in a library, whose resources nobody else asks for. Outside of any namespace, as
/// the macro wants it.
static void loadResources() {
    Q_INIT_RESOURCE(splash);
}

namespace veldron {

namespace {

/// A quarter of the built-in picture, in pixels of the form.
constexpr QSize kShownPicture(536, 243);
/// How long the form may take to reach the screen, in milliseconds.
constexpr int kPatience = 500;

} // namespace

QString makerAddress() {
    return QStringList{"VELDRON project", "Panoramic spectrum control",
                       "Free software, MIT licence"}
        .join('\r');
}

QString labelLines(QString text) {
    return text.replace('\r', '\n');
}

QFont informationFont(int points, QFont::Weight weight) {
    QFont font("Arial", points, weight);
    font.setStyleHint(QFont::SansSerif);
    return font;
}

frmSplash::frmSplash(const QString &version, QWidget *parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setWindowTitle("VELDRON");
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::StrongFocus);
    makeControls(version);
    showPicture(kShownPicture);
    layOut();
    fitOnScreen();
    centre();
}

void frmSplash::makeControls(const QString &version) {
    Frame1 = new QFrame(this);
    Frame1->setObjectName("Frame1");
    Frame1->setFrameStyle(QFrame::Panel | QFrame::Raised);
    Frame1->installEventFilter(this);
    Image1 = new QLabel(Frame1);
    Image1->setObjectName("Image1");
    Image1->setAccessibleName("A spectrum over its waterfall");
    Label4 = makeLabel("Label4", "PC control for", informationFont(12));
    lblProductName = makeLabel("lblProductName", "VELDRON", informationFont(30, QFont::Bold));
    Label2 = makeLabel("Label2", "Panoramic spectrum unit", informationFont(12));
    lblVersion = makeLabel("lblVersion", "Version " + version, informationFont(11, QFont::Bold));
    lblDescription = makeLabel("lblDescription", labelLines(makerAddress()), informationFont(9));
}

QLabel *frmSplash::makeLabel(const char *name, const QString &text, const QFont &font) {
    auto *const label = new QLabel(Frame1);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setFont(font);
    return label;
}

void frmSplash::showPicture(QSize size) {
    loadResources();
    const qreal density = devicePixelRatioF();
    // In full colours, so that scaling can mix them.
    const QImage whole = QImage(":/veldron/splash.png").convertToFormat(QImage::Format_RGB32);
    QPixmap picture = QPixmap::fromImage(
        whole.scaled(size * density, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(density);
    Image1->setFixedSize(size);
    Image1->setPixmap(picture);
}

void frmSplash::layOut() {
    auto *const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(Frame1);
    auto *const grid = new QGridLayout(Frame1);
    grid->setContentsMargins(20, 16, 20, 16);
    grid->setVerticalSpacing(4);
    grid->addWidget(Label4, 0, 0, 1, 2);
    grid->addWidget(lblProductName, 1, 0, 1, 2);
    grid->addWidget(Label2, 2, 0, 1, 2);
    grid->setRowMinimumHeight(3, 8);
    grid->addWidget(Image1, 4, 0, 1, 2);
    grid->setRowMinimumHeight(5, 8);
    grid->addWidget(lblDescription, 6, 0, Qt::AlignLeft | Qt::AlignTop);
    grid->addWidget(lblVersion, 6, 1, Qt::AlignRight | Qt::AlignTop);
}

/// On a small screen the picture gives way, in both directions alike.
void frmSplash::fitOnScreen() {
    const QScreen *const shownOn = QGuiApplication::primaryScreen();
    if (shownOn == nullptr) {
        return;
    }
    const QSize excess = (sizeHint() - shownOn->availableSize()).expandedTo({0, 0});
    if (!excess.isNull()) {
        const QSize room = (kShownPicture - excess).expandedTo({1, 1});
        showPicture(kShownPicture.scaled(room, Qt::KeepAspectRatio));
        Frame1->updateGeometry(); // the outer layout has the frame's size in its cache
    }
}

void frmSplash::centre() {
    adjustSize();
    if (const QScreen *const shownOn = QGuiApplication::primaryScreen()) {
        move(shownOn->availableGeometry().center() - rect().center());
    }
}

void frmSplash::awaitPaint() {
    const QDeadlineTimer patience(kPatience);
    const QPointer<frmSplash> self(this);
    do {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
    } while (self && isVisible() && !windowHandle()->isExposed() && !patience.hasExpired());
    if (self && isVisible()) {
        repaint();
    }
}

void frmSplash::keyPressEvent(QKeyEvent *) {
    close();
}

bool frmSplash::eventFilter(QObject *watched, QEvent *event) {
    const bool clicked = watched == Frame1 && event->type() == QEvent::MouseButtonRelease &&
                         static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton;
    if (clicked) {
        close();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace veldron
