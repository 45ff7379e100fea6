// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Views/HelpTopic.h"
#include "Corvane/Views/LinkOpener.h"

namespace corvane {

/// The article of one help topic, with selectable text.
class HelpArticleView final : public look::ScrollView {
    Q_OBJECT

public:
    /// `openLink` opens web and mailto links.
    HelpArticleView(HelpTopic topic, const LinkOpener &openLink, QWidget *parent = nullptr);
};

} // namespace corvane
