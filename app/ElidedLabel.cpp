// SPDX-License-Identifier: MIT
#include "app/ElidedLabel.h"

#include "settings/PlainTip.h"

namespace veldron {

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::setWholeText(const QString &text) {
    if (text == m_wholeText) {
        return;
    }
    m_wholeText = text;
    fit();
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent *event) {
    QLabel::resizeEvent(event);
    fit();
}

void ElidedLabel::fit() {
    const QString shown =
        fontMetrics().elidedText(m_wholeText, Qt::ElideMiddle, contentsRect().width());
    setText(shown);
    setAccessibleName(m_wholeText);
    setToolTip(shown == m_wholeText ? QString() : plainTip(m_wholeText));
}

} // namespace veldron
