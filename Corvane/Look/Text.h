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

/// A text as plain text, whatever it holds, on as many lines as it needs. Where it is not centred, it is
/// aligned as the page is, whichever way it is written itself. It follows the desktop's font and palette
/// while it is shown.
class Text final : public QLabel {
    Q_OBJECT

public:
    /// In the weight that the style has by itself.
    Text(const QString &text, TextStyle style, Ink ink = Ink::primary, QWidget *parent = nullptr);
    Text(const QString &text, TextStyle style, QFont::Weight weight, Ink ink = Ink::primary,
         QWidget *parent = nullptr);

    void setInk(Ink ink);
    void setWeight(QFont::Weight weight);

    /// Digits all equally wide, for times that change.
    void setMonospacedDigits();

    /// Asks for one line as long as the text is, instead of a block of lines; it still breaks where there is
    /// less room.
    void setPrefersOneLine();

    /// Lets the pointer select the text, to be copied.
    void setSelectable();

    /// A part of a text, and where it leads.
    struct Link {
        QString text;
        QUrl destination;
    };

    /// The same, and has `links` opened by `open`. They are given in the order in which they stand in the
    /// text; one that is not in it is left out.
    void setLinks(const std::vector<Link> &links, std::function<void(const QUrl &)> open);

    /// Breaks it into lines of much the same length where it takes several. For centred texts.
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
    bool m_hasMonospacedDigits = false;
    bool m_prefersOneLine = false;
    bool m_isBalanced = false;
    bool m_isApplying = false;
};

} // namespace corvane::look
