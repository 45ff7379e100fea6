// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QComboBox>
#include <QLineEdit>

namespace corvane::look {

/// The ground that something to be filled in stands on; with a ring where it has the keyboard. Called while
/// painting `field`.
void paintField(const QWidget &field, bool hasFocus);

/// How tall a field is with a text in `font`: as tall as a button.
[[nodiscard]] int fieldHeight(const QFont &font);

/// A line to type in.
class TextField final : public QLineEdit {
    Q_OBJECT

public:
    /// `placeholder` is shown while it is empty, and is its name for a screen reader.
    explicit TextField(const QString &placeholder, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

/// One of several choices, of which the chosen one is seen. The wheel scrolls the page that it stands on and
/// never chooses.
class Picker final : public QComboBox {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; the first of `choices` is chosen.
    Picker(const QString &label, const QStringList &choices, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] int symbolSize() const;
};

} // namespace corvane::look
