// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QWidget>

#include <memory>

namespace corvane {

/// Content of fixed width with a small text below it.
class FootnotedContent final : public QWidget {
public:
    FootnotedContent(std::unique_ptr<QWidget> content, const QString &footnote);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

    /// Shows only the content from now on.
    void removeFootnote();

private:
    QWidget *m_footnote;
};

} // namespace corvane
