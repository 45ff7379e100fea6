// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Utilities/Clock.h"

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace corvane {

/// Reports when a window has been left alone: when the pointer has been outside it for a minute and no key
/// was pressed in it meanwhile. Main thread only.
class PointerAbsence final : public QObject {
    Q_OBJECT

public:
    static constexpr Seconds limit{60};

    /// Becomes a child of `window`, which must be shown. The first minute starts now.
    explicit PointerAbsence(QWindow *window);

    /// Restarts the minute if the pointer is outside.
    void beginAnew();

Q_SIGNALS:
    /// The minute is over. The next starts with beginAnew() or when the pointer leaves again.
    void lasted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static QCoro::Task<void> count(QPointer<PointerAbsence> absence);

    Seconds m_begin; ///< start of the minute, in uptime()
    bool m_isAway = true;
    bool m_isCounting = false;
};

} // namespace corvane
