// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Models/TeachingAction.h"

#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>

namespace corvane {

namespace look {
class LineLabel;
}

/// The content of a banner: a dark, rounded card of 1000 by 280 points with the action's symbol, three lines
/// of text and a close button. While visible, it updates its texts once a second.
class FloatingBannerView final : public QWidget {
    Q_OBJECT

public:
    /// `onDismiss`, which may be empty, is called when the close button is clicked. It may delete the view
    /// only on a later turn of the event loop.
    FloatingBannerView(const TeachingAction &action, std::function<void()> onDismiss,
                       QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void updateTexts();
    static QCoro::Task<void> followClock(QPointer<FloatingBannerView> view, std::uint64_t showing);

    TeachingAction m_action;
    std::function<void()> m_onDismiss;
    look::LineLabel *m_title;
    look::LineLabel *m_student;
    look::LineLabel *m_information;
    std::uint64_t m_showing = 0; ///< changes with each show and hide, to end an earlier clock task
};

} // namespace corvane
