// SPDX-License-Identifier: MIT
#include "app/ActivityPicture.h"

#include <QPaintEvent>
#include <QPainter>

namespace veldron {

namespace {

/// The same on every desktop, so that the red stands out in dark themes too.
constexpr QColor kGround(240, 240, 240);
constexpr int kSide = 24;
constexpr int kSmallDot = 8;
constexpr int kLargeDot = 16;

QString description(ActivityImage image) {
    switch (image) {
    case ActivityImage::Idle:
        return QStringLiteral("Link idle");
    case ActivityImage::Busy:
        return QStringLiteral("Poll running");
    case ActivityImage::Blank:
        break;
    }
    return QStringLiteral("No link");
}

} // namespace

ActivityPicture::ActivityPicture(QWidget *parent) : QWidget(parent) {
    setFixedSize(kSide, kSide);
    setAccessibleName(QStringLiteral("Link activity"));
    setAccessibleDescription(description(m_image));
}

void ActivityPicture::setImage(ActivityImage image) {
    if (image == m_image) {
        return;
    }
    m_image = image;
    setAccessibleDescription(description(image));
    if (isVisible()) {
        repaint();
    }
}

void ActivityPicture::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), kGround);
    if (m_image == ActivityImage::Blank) {
        return;
    }
    const int side = m_image == ActivityImage::Busy ? kLargeDot : kSmallDot;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 0, 0));
    painter.drawEllipse(QRect((kSide - side) / 2, (kSide - side) / 2, side, side));
}

} // namespace veldron
