// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QWidget>

#include "app/PollLoop.h"

namespace veldron {

/// A picture of 24 by 24 pixels: grey ground, on it nothing, a red dot of 8 pixels or one of 16.
class ActivityPicture : public QWidget {
    Q_OBJECT

public:
    explicit ActivityPicture(QWidget *parent = nullptr);

    /// Paints \a image at once, without turning the event loop.
    void setImage(ActivityImage image);
    [[nodiscard]] ActivityImage image() const { return m_image; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ActivityImage m_image = ActivityImage::Blank;
};

/// A line of text that is cut with an ellipsis where its place is too narrow; the whole text is its
/// tool tip then.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    void setWholeText(const QString &text);
    [[nodiscard]] const QString &wholeText() const { return m_wholeText; }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    QString m_wholeText;
};

} // namespace veldron
