// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTimeEdit>

namespace corvane::look {

/// The toolkit's editor, but a step carries into the next larger unit: a minute after 10:59 is 11:00. A click
/// selects the unit under it, so that typing replaces it.
class DateTimeEdit final : public QDateTimeEdit {
    Q_OBJECT

public:
    /// `format` is a display format of the toolkit, in the locale of `parent`.
    explicit DateTimeEdit(const QString &format, QWidget *parent = nullptr);

    void stepBy(int steps) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }

private:
    void selectClickedSection();
};

} // namespace corvane::look
