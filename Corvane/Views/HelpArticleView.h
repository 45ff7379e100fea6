// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/ScrollView.h"
#include "Corvane/Views/HelpTopic.h"

namespace corvane {

/// The article of one help topic.
class HelpArticleView final : public look::ScrollView {
    Q_OBJECT

public:
    explicit HelpArticleView(HelpTopic topic, QWidget *parent = nullptr);
};

} // namespace corvane
