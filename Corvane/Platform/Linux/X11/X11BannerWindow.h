// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/BannerCard.h"

namespace corvane {

/// The X11 window of one banner. It bypasses the window manager, takes no focus, and stays above all windows
/// on every workspace.
///
/// Under a compositing manager, clicks on its shadow go to the window below. Without one it is opaque and cut
/// to the card's shape.
class X11BannerWindow final : public BannerCard {
    Q_OBJECT

public:
    explicit X11BannerWindow(const Setting &setting);

protected:
    [[nodiscard]] QRectF onDesktop(const Rect &points) const override;
    void moveWindow(QPoint corner, QPoint centre) override;
    [[nodiscard]] double drawingRatio() const override { return devicePixelRatioF(); }
    void setOnScreen(bool isOnScreen) override;
    void drawn() override;

private:
    void updateShape();
};

} // namespace corvane
