// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

#include <QString>

namespace veldron {

/// A line of text that is cut with an ellipsis in its middle where it doesn't fit; the whole text
/// is its tool tip then, and its accessible name always. No text is taken for mark-up.
class ElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    void setWholeText(const QString &text);
    /// No width at all, so that a long text never keeps the window wide.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();

    QString m_wholeText;
};

} // namespace veldron
