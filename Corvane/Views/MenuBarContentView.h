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

/// The content of the menu bar panel: today's schedule, the error of the last load if it failed, and the
/// commands. It is 320 points wide and as high as its content, which changes; its ground is the window's.
/// Made each time the menu bar panel opens, or shown again: each time it appears, the lessons are loaded
/// anew, and setup is opened while it has not been completed.
class MenuBarContentView final : public QWidget {
    Q_OBJECT

public:
    /// `viewModel` is borrowed. Commands whose window is not there at this moment are left out.
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
