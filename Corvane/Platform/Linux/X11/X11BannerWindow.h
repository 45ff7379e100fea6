// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Banners/BannerCard.h"

namespace corvane {

/// The X11 window of one banner: it passes the window manager by, takes no focus, and stands on every
/// workspace above everything.
///
/// Under a compositing manager clicks on its shadow fall through to what lies behind. Without one it is cut
/// to the card's shape and opaque.
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
