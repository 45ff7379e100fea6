// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/contracts/ScreensContract.h"

#include <QWidget>

#include <memory>

namespace corvane {

/// The Screens contract for platforms where the program's windows are widgets.
class WidgetScreensContract : public ScreensContract {
    Q_OBJECT

protected:
    void openKeyWindow() override
    {
        m_window = std::make_unique<QWidget>();
        m_window->setGeometry(place());
        m_window->show();
        m_window->activateWindow();
    }

    void closeKeyWindow() override { m_window.reset(); }

    /// The window's geometry in the toolkit's coordinates, y downwards.
    [[nodiscard]] virtual QRect place() const { return {50, 50, 200, 100}; }

private:
    std::unique_ptr<QWidget> m_window;
};

} // namespace corvane
