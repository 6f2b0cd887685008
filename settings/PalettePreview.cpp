// SPDX-License-Identifier: MIT
#include "settings/PalettePreview.h"

#include "common/Numbers.h"
#include "utilities/Colour.h"
#include "utilities/Palette.h"

#include <QColor>
#include <QPainter>

namespace veldron {

PalettePreview::PalettePreview(QWidget *parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PalettePreview::setScheme(qint16 scheme) {
    m_scheme = scheme;
    update();
}

quint8 PalettePreview::levelOfColumn(int x, int width) {
    return static_cast<quint8>(Numbers::divideHalfEven(qint64{x} * kHighestLevel, width));
}

void PalettePreview::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    for (int x = 0; m_scheme && x < width(); ++x) {
        const quint32 colour =
            GeneralUtilities::PaletteColour(levelOfColumn(x, width()), *m_scheme);
        painter.fillRect(x, 0, 1, height(), QColor::fromRgb(toRgb(colour)));
    }
}

} // namespace veldron
