// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QButtonGroup;

namespace corvane::look {

/// A choice between a few options, all visible: radio buttons side by side. Tab reaches the selected one, the
/// arrow keys change the selection.
class SegmentedControl final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; the first of `segments` is selected.
    SegmentedControl(const QString &label, const QStringList &segments, QWidget *parent = nullptr);

    [[nodiscard]] int selection() const;
    void setSelection(int index);

Q_SIGNALS:
    /// The user or setSelection() selected another segment.
    void selectionChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QButtonGroup *m_segments;
};

} // namespace corvane::look
