// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "app/ActivityImage.h"

namespace veldron {

/// A picture of 24 by 24 pixels: grey ground, on it nothing, a red dot of 8 pixels or one of 16.
/// The colours are its own and not the desktop's, and its accessible description says in words what
/// it shows.
class ActivityPicture : public QWidget {
    Q_OBJECT

public:
    explicit ActivityPicture(QWidget *parent = nullptr);

    /// Paints \a image at once, without running the event loop: a poll holds the thread right after
    /// this. The image that is shown already costs nothing.
    void setImage(ActivityImage image);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ActivityImage m_image = ActivityImage::Blank;
};

} // namespace veldron
