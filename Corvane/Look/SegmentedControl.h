// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QButtonGroup;

namespace corvane::look {

/// One of a few choices, all of them seen at once: the toolkit's radio buttons beside one another. Tab
/// reaches the one that is chosen, the arrow keys choose.
class SegmentedControl final : public QWidget {
    Q_OBJECT

public:
    /// `label` is its name for a screen reader; the first of `segments` is chosen.
    SegmentedControl(const QString &label, const QStringList &segments, QWidget *parent = nullptr);

    [[nodiscard]] int selection() const;
    void setSelection(int index);

Q_SIGNALS:
    /// The user, or setSelection(), chose another segment.
    void selectionChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QButtonGroup *m_segments;
};

} // namespace corvane::look
