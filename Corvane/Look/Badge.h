// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace corvane::look {

/// The product's badge: a white symbol on the accent colour. Hidden from screen readers, since the product's
/// name is beside it.
class Badge final : public QWidget {
    Q_OBJECT

public:
    explicit Badge(const QString &symbolName, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbolName;
};

} // namespace corvane::look
