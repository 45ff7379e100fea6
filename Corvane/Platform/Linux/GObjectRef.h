// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <glib-object.h>

#include <utility>

namespace corvane {

/// Owns one reference to a GObject of type `T`.
template <typename T>
class GObjectRef {
public:
    GObjectRef() = default;
    ~GObjectRef() { reset(); }
    GObjectRef(const GObjectRef &other) : m_object(other.m_object)
    {
        if (m_object != nullptr) {
            g_object_ref(m_object);
        }
    }
    GObjectRef(GObjectRef &&other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    GObjectRef &operator=(GObjectRef other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    /// Takes over the caller's reference.
    [[nodiscard]] static GObjectRef adopt(T *object)
    {
        GObjectRef ref;
        ref.m_object = object;
        return ref;
    }

    /// Adds a reference to an object that the caller only borrows.
    [[nodiscard]] static GObjectRef share(T *object)
    {
        if (object != nullptr) {
            g_object_ref(object);
        }
        return adopt(object);
    }

    [[nodiscard]] T *get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    void reset()
    {
        if (m_object != nullptr) {
            g_object_unref(std::exchange(m_object, nullptr));
        }
    }

private:
    T *m_object = nullptr;
};

} // namespace corvane
