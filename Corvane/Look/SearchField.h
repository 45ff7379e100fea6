// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLineEdit>

class QAbstractButton;

namespace corvane::look {

/// A line to type what is sought. Escape, or the cross at its end, empties it.
class SearchField final : public QLineEdit {
    Q_OBJECT

public:
    /// `prompt` stands in it while it is empty, and is its name for a screen reader.
    explicit SearchField(const QString &prompt, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] int symbolSize() const;

    QAbstractButton *m_cross;
};

} // namespace corvane::look
