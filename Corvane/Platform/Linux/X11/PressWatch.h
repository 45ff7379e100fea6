// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <functional>

namespace corvane::x11 {

/// Reports each press of a pointer button that the X server sees outside the program's windows and their
/// frames. The presses still reach their windows. Main thread only.
class PressWatch final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT

public:
    /// `pressed` is called on a later turn of the event loop and may destroy this object.
    explicit PressWatch(std::function<void()> pressed);
    ~PressWatch() override;

    /// Whether the server reports presses. It does not without its input extension.
    [[nodiscard]] bool isServed() const { return m_isServed; }

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool select(std::uint32_t events);

    std::function<void()> m_pressed;
    std::uint8_t m_extension = 0; ///< the input extension's number; 0 if there is none
    bool m_isServed = false;
};

} // namespace corvane::x11
