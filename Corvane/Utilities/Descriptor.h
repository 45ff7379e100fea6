// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unistd.h>

#include <utility>

namespace corvane {

/// A file descriptor, closed at the end of its scope.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes ownership of the result of ::open(), which may be a failure.
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            m_number = std::exchange(other.m_number, -1);
        }
        return *this;
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int get() const { return m_number; }

private:
    void close()
    {
        if (m_number >= 0) {
            ::close(m_number);
        }
    }

    int m_number = -1;
};

} // namespace corvane
