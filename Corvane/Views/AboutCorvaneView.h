// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Views/LinkOpener.h"
#include "Corvane/Views/UserManualPDF.h"

namespace corvane {

class InformationDictionary;

/// The version line of the About window: "Version 1.0.6", or "Version 1.0" if `information` has no version.
[[nodiscard]] QString versionLine(const InformationDictionary &information);

/// The content of the About window.
class AboutCorvaneView final : public look::ScrollView {
    Q_OBJECT

public:
    /// `manual` is borrowed and outlives the view. `openLink` opens web and mailto links.
    AboutCorvaneView(const UserManualPDF &manual, const InformationDictionary &information,
                     const LinkOpener &openLink, QWidget *parent = nullptr);

    /// The height that shows everything without scrolling.
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
};

} // namespace corvane
