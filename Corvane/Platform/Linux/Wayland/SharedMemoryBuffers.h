// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <QImage>

#include <functional>
#include <list>

namespace corvane {

/// The buffers of one surface, in memory that the compositor reads: while it reads one, the next is painted.
class SharedMemoryBuffers {
public:
    struct Buffer {
        QImage image; ///< premultiplied; a view of the shared memory
        WaylandRef<wl_buffer> handle;
        bool isBusy = false; ///< read by the compositor, from when it is handed over until it is released
        SharedMemoryBuffers *owner = nullptr;
    };

    /// `onRelease` is called when the compositor releases a buffer.
    explicit SharedMemoryBuffers(std::function<void()> onRelease);
    ~SharedMemoryBuffers();
    SharedMemoryBuffers(const SharedMemoryBuffers &) = delete;
    SharedMemoryBuffers &operator=(const SharedMemoryBuffers &) = delete;

    /// A buffer of `pixels` that is not busy; null while all that there may be are busy, or when there is no
    /// memory. Buffers of another size are let go of.
    [[nodiscard]] Buffer *next(wl_shm *memory, QSize pixels);

    /// The compositor has released a buffer.
    void released() { m_onRelease(); }

    /// Lets go of all of them.
    void clear() { m_buffers.clear(); }

private:
    void add(wl_shm *memory, QSize pixels);

    std::function<void()> m_onRelease;
    std::list<Buffer> m_buffers;
};

} // namespace corvane
