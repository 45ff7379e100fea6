// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Views/FirstRunSetupView.h"
#include "Corvane/Views/PageIndicator.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/ViewWalk.h"

#include <QPushButton>
#include <QScrollArea>
#include <QTest>

#include <memory>

namespace corvane {

/// The setup window's content, and how often it asked to close.
struct SetupRoom {
    explicit SetupRoom(bool hasCompleted = false)
    {
        if (hasCompleted) {
            settings.setHasCompletedWelcome(true);
        }
        view = std::make_unique<FirstRunSetupView>(settings, [this] { ++dismissals; });
        view->resize(680, 500);
    }

    void show() const
    {
        view->show();
        QTRY_VERIFY(view->isActiveWindow());
    }

    [[nodiscard]] QAbstractButton *back() const { return viewWalk::button(*view, QStringLiteral("Back")); }
    /// The Continue or Finish button.
    [[nodiscard]] QAbstractButton *forward() const { return view->findChildren<QPushButton *>().last(); }
    [[nodiscard]] PageIndicator *indicator() const { return view->findChild<PageIndicator *>(); }
    [[nodiscard]] QScrollArea *page() const { return view->findChild<QScrollArea *>(); }
    [[nodiscard]] QRect place(const QWidget *widget) const
    {
        return {widget->mapTo(view.get(), QPoint()), widget->size()};
    }
    void goTo(int step) const
    {
        while (view->step() < step) {
            forward()->click();
        }
    }

    std::unique_ptr<TemporarySettings> file = std::make_unique<TemporarySettings>();
    FakeLoginItem loginItem;
    AppSettings settings{file->store(), file->store(), loginItem};
    int dismissals = 0;
    std::unique_ptr<FirstRunSetupView> view;
};

} // namespace corvane
