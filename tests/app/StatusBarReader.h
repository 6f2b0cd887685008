// SPDX-License-Identifier: MIT
#pragma once

#include "app/ActivityImage.h"
#include "app/StatusPanels.h"

#include <QLabel>
#include <QString>

namespace veldron {

/// The whole text of panel 1, whether or not its label has room for it.
inline QString statusText(const StatusPanels &bar) {
    return bar.findChild<QLabel *>(QStringLiteral("Panel1"))->accessibleName();
}

/// Text of the label \a name; empty while it isn't there.
inline QString panelText(const StatusPanels &bar, const char *name) {
    const auto *panel = bar.findChild<QLabel *>(QLatin1String(name));
    return panel != nullptr ? panel->text() : QString();
}

/// The activity picture, by what it tells a screen reader.
inline ActivityImage shownActivity(const StatusPanels &bar) {
    const auto *picture = bar.findChild<QWidget *>(QStringLiteral("Panel3"));
    const QString told = picture != nullptr ? picture->accessibleDescription() : QString();
    if (told == QLatin1String("Poll running")) {
        return ActivityImage::Busy;
    }
    return told == QLatin1String("Link idle") ? ActivityImage::Idle : ActivityImage::Blank;
}

} // namespace veldron
