// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Views/HelpTopic.h"
#include "Corvane/Views/UserManualPDF.h"

namespace corvane {

/// The article of one help topic. Its texts can be selected.
class HelpArticleView final : public look::ScrollView {
    Q_OBJECT

public:
    /// `openLink` opens the web site, and begins a letter.
    HelpArticleView(HelpTopic topic, const UserManualPDF::Opener &openLink, QWidget *parent = nullptr);
};

} // namespace corvane
