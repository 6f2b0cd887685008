// SPDX-License-Identifier: MIT
#include "settings/PlainTip.h"

#include <QTextDocument>

namespace veldron {

QString plainTip(const QString &text) {
    // Only where it must be: mark-up wraps its lines, which plain tips don't.
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

} // namespace veldron
