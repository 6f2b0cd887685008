// SPDX-License-Identifier: MIT
#include "chart/RowScrollBar.h"

#include <QStyleOptionSlider>

namespace veldron {

void RowScrollBar::sliderChange(SliderChange change) {
    const QRect thumb = this->thumb();
    if (thumb != m_thumb) {
        m_thumb = thumb;
        QScrollBar::sliderChange(change);
    }
}

// The toolkit's own repaint of a widget that appears comes one turn of the event loop later than
// that of the picture around it.
void RowScrollBar::showEvent(QShowEvent *event) {
    QScrollBar::showEvent(event);
    update();
}

QRect RowScrollBar::thumb() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
}

} // namespace veldron
