// SPDX-License-Identifier: MIT
#include "app/StatusPanels.h"

#include "app/ActivityPicture.h"
#include "app/ElidedLabel.h"

#include <QLabel>
#include <QLocale>
#include <QRegularExpression>

namespace veldron {

namespace {

constexpr int kLeastWidth = 24;
/// Keeps a text on panel 3 off the window's edge.
constexpr int kRightMargin = 8;
constexpr int kMillisecondsPerMinute = 60000;
/// Panel 2 and the text of panel 3 are as high as the picture, so that the bar keeps its height.
constexpr int kLeastHeight = 24;

/// The locale's short time without the seconds that a few locales have in it.
QString clockText(QTime time) {
    static const QRegularExpression seconds(QStringLiteral("[^A-Za-z]*s+"));
    QString format = QLocale().timeFormat(QLocale::ShortFormat);
    return QLocale().toString(time, format.remove(seconds));
}

} // namespace

StatusPanels::StatusPanels(const ErrorGuard &guard, Clock &clock, QWidget *parent)
    : QStatusBar(parent), m_clock(clock), m_panel1(new ElidedLabel(this)) {
    setSizeGripEnabled(false);
    m_panel1->setObjectName(QStringLiteral("Panel1"));
    m_panel1->setWholeText(QStringLiteral("Finding Serial Ports"));
    addWidget(m_panel1, 1);
    m_clockTimer.setSingleShot(true);
    connectGuarded(guard, &m_clockTimer, &QTimer::timeout, this, &StatusPanels::renewClock);
}

void StatusPanels::addPanels() {
    if (m_panel2 != nullptr) {
        return;
    }
    m_panel2 = new QLabel(this);
    m_panel2->setObjectName(QStringLiteral("Panel2"));
    m_panel2->setMinimumSize(kLeastWidth, kLeastHeight);
    m_panel2->setTextFormat(Qt::PlainText);
    m_panel3Text = new QLabel(this);
    m_panel3Text->setObjectName(QStringLiteral("Panel3Text"));
    m_panel3Text->setMinimumSize(kLeastWidth, kLeastHeight);
    m_panel3Text->setTextFormat(Qt::PlainText);
    m_panel3Text->setContentsMargins(0, 0, kRightMargin, 0);
    m_panel3 = new ActivityPicture(this);
    m_panel3->setObjectName(QStringLiteral("Panel3"));
    addPermanentWidget(m_panel2);
    addPermanentWidget(m_panel3Text);
    addPermanentWidget(m_panel3);
    showClockAndActivity();
}

void StatusPanels::setStatusText(const QString &text) {
    m_panel1->setWholeText(text);
}

void StatusPanels::showActivity(ActivityImage image) {
    if (m_panel3 != nullptr) {
        m_panel3->setImage(image);
    }
}

void StatusPanels::hideClockAndActivity() {
    if (m_panel2 == nullptr) {
        return;
    }
    m_showsClock = false;
    m_clockTimer.stop();
    m_panel2->clear();
    m_panel3->setImage(ActivityImage::Blank);
    m_panel3->hide();
}

void StatusPanels::showTexts(const QString &second, const QString &third) {
    if (m_panel2 == nullptr) {
        return;
    }
    if (!m_showsClock) {
        m_panel2->setText(second);
    }
    m_panel3Text->setText(third);
    m_panel3Text->show();
}

void StatusPanels::showClockAndActivity() {
    if (m_panel2 == nullptr) {
        return;
    }
    m_showsClock = true;
    m_panel3Text->clear();
    m_panel3Text->hide();
    m_panel3->setImage(ActivityImage::Blank);
    m_panel3->show();
    renewClock();
}

/// The clock shows minutes, so one tick a minute is enough.
void StatusPanels::renewClock() {
    if (!m_showsClock || m_panel2 == nullptr) {
        return;
    }
    const QTime time = m_clock.now().time();
    m_panel2->setText(clockText(time));
    m_clockTimer.start(kMillisecondsPerMinute -
                       time.msecsSinceStartOfDay() % kMillisecondsPerMinute + 1);
}

} // namespace veldron
