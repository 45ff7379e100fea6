// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <QImage>

#include <functional>
#include <list>

namespace corvane {

/// The buffers of one surface in shared memory: while the compositor reads one, the next is painted.
class SharedMemoryBuffers {
public:
    struct Buffer {
        QImage image; ///< premultiplied; a view of the shared memory
        WaylandRef<wl_buffer> handle;
        bool isBusy = false; ///< the compositor reads it: from attach to release
        SharedMemoryBuffers *owner = nullptr;
    };

    /// `onRelease` is called when the compositor releases a buffer.
    explicit SharedMemoryBuffers(std::function<void()> onRelease);
    ~SharedMemoryBuffers();
    SharedMemoryBuffers(const SharedMemoryBuffers &) = delete;
    SharedMemoryBuffers &operator=(const SharedMemoryBuffers &) = delete;

    /// A buffer of `pixels` that is not busy; null if the maximum number of buffers is busy or memory is
    /// short. Drops buffers of other sizes.
    [[nodiscard]] Buffer *next(wl_shm *memory, QSize pixels);

    /// Called when the compositor has released a buffer.
    void released() { m_onRelease(); }

    void clear() { m_buffers.clear(); }

private:
    void add(wl_shm *memory, QSize pixels);

    std::function<void()> m_onRelease;
    std::list<Buffer> m_buffers;
};

} // namespace corvane
