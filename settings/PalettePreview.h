// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <optional>

namespace veldron {

/// A strip that shows a colour scheme of the waterfall, from its lowest level at the left end to
/// its highest at the right. Empty until a scheme is given.
class PalettePreview : public QWidget {
    Q_OBJECT

public:
    explicit PalettePreview(QWidget *parent = nullptr);

    /// The palette index, from 0; draws anew.
    void setScheme(qint16 scheme);

    /// The level (0 to 255) that column \a x of \a width shows, rounded half to even. \a width is
    /// above 0.
    [[nodiscard]] static quint8 levelOfColumn(int x, int width);

    [[nodiscard]] QSize sizeHint() const override { return {200, 24}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {64, 16}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::optional<qint16> m_scheme;
};

} // namespace veldron
