// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Services/MenuBarViewModel.h"
#include "Corvane/Services/MenuCommands.h"

#include <QWidget>

namespace corvane {

namespace look {
class Text;
}

/// The content of the menu bar panel: today's schedule, the error if the last load failed, and the commands.
/// It is 320 points wide; its height follows its content; the window paints the background. Each time it is
/// shown, it reloads the lessons, and opens the first-run setup if that has not been completed.
class MenuBarContentView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` is borrowed and outlives the view. Commands whose window does not exist at this moment are
    /// omitted.
    MenuBarContentView(MenuBarViewModel &viewModel, const MenuActions &actions, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showError();

    MenuBarViewModel &m_viewModel;
    MenuActions m_actions;
    look::Text *m_error;
};

} // namespace corvane
