// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/Samples.h"
#include "tests/support/ViewModelFixture.h"

#include <QString>
#include <QStringList>

namespace corvane {

/// A view model, with a record of its banners and its log.
struct MenuBarViewModelFixture : ViewModelFixture {
    using ViewModelFixture::ViewModelFixture;

    [[nodiscard]] QStringList presentedMessages() const
    {
        QStringList messages;
        for (const auto &presented : presenter.presented) {
            messages.append(presented.action.message);
        }
        return messages;
    }

    /// When they were presented, as "09:56:00".
    [[nodiscard]] QStringList presentedTimes() const
    {
        QStringList times;
        for (const auto &presented : presenter.presented) {
            times.append(descriptionText(presented.moment).sliced(11, 8));
        }
        return times;
    }

    [[nodiscard]] QStringList logged() const
    {
        QStringList messages;
        for (const QString &line : logger.latestLines()) {
            messages.append(line.sliced(25));
        }
        return messages;
    }
};

/// Anna's lesson from 10:00 to 10:25.
[[nodiscard]] inline Lesson anna()
{
    return sampleLesson(QStringLiteral("Anna"), at("10:00:00"), minutes(25));
}

} // namespace corvane
