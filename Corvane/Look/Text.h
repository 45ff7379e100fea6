// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"

#include <QLabel>
#include <QUrl>

#include <functional>
#include <optional>
#include <vector>

namespace corvane::look {

/// Plain text on as many lines as it needs. Unless centred, it is aligned with the page, whatever its own
/// direction. It follows the desktop's font and palette while it is shown.
class Text final : public QLabel {
    Q_OBJECT

public:
    /// In the style's own weight.
    Text(const QString &text, TextStyle style, Ink ink = Ink::primary, QWidget *parent = nullptr);
    Text(const QString &text, TextStyle style, QFont::Weight weight, Ink ink = Ink::primary,
         QWidget *parent = nullptr);

    void setInk(Ink ink);
    void setWeight(QFont::Weight weight);

    /// Prefers a single line to a block of lines; still wraps where there is less room.
    void setPrefersOneLine();

    /// Lets the user select the text with the pointer, to copy it.
    void setSelectable();

    /// A part of the text and its destination.
    struct Link {
        QString text;
        QUrl destination;
    };

    /// Makes the text selectable and its `links` clickable; `open` opens them. Links come in the order of the
    /// text; one that does not occur in it is ignored.
    void setLinks(const std::vector<Link> &links, std::function<void(const QUrl &)> open);

    /// Wraps into lines of about the same length. For centred texts.
    void setBalanced();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void apply();
    void alignAsThePage();

    TextStyle m_style;
    std::optional<QFont::Weight> m_weight;
    Ink m_ink;
    bool m_prefersOneLine = false;
    bool m_isBalanced = false;
    bool m_isApplying = false;
};

} // namespace corvane::look
