// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Wayland/SharedMemoryBuffers.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

/// One on the screen, one queued, one to paint.
constexpr std::size_t maximumBuffers = 3;

struct Mapping {
    void *memory;
    std::size_t size;
};

void unmap(void *data)
{
    const auto *mapping = static_cast<Mapping *>(data);
    munmap(mapping->memory, mapping->size);
    delete mapping;
}

constexpr wl_buffer_listener bufferListener{
    .release =
        [](void *data, wl_buffer *) {
            auto *buffer = static_cast<SharedMemoryBuffers::Buffer *>(data);
            buffer->isBusy = false;
            buffer->owner->released();
        },
};

} // namespace

SharedMemoryBuffers::SharedMemoryBuffers(std::function<void()> onRelease) : m_onRelease(std::move(onRelease))
{
}

SharedMemoryBuffers::~SharedMemoryBuffers() = default;

SharedMemoryBuffers::Buffer *SharedMemoryBuffers::next(wl_shm *memory, QSize pixels)
{
    m_buffers.remove_if([pixels](const Buffer &buffer) { return buffer.image.size() != pixels; });
    const auto free = [this] { return std::ranges::find(m_buffers, false, &Buffer::isBusy); };
    if (free() == m_buffers.end() && m_buffers.size() < maximumBuffers) {
        add(memory, pixels);
    }
    const auto found = free();
    return found != m_buffers.end() ? &*found : nullptr;
}

void SharedMemoryBuffers::add(wl_shm *memory, QSize pixels)
{
    constexpr int bytesOfAPixel = 4;
    const int stride = pixels.width() * bytesOfAPixel;
    const int size = stride * pixels.height();
    const int file = memfd_create("quillet-banner", MFD_CLOEXEC);
    if (file < 0) {
        return;
    }
    void *bytes = MAP_FAILED;
    if (ftruncate(file, size) == 0) {
        bytes = mmap(nullptr, static_cast<std::size_t>(size), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    }
    if (bytes != MAP_FAILED) {
        wl_shm_pool *pool = wl_shm_create_pool(memory, file, size);
        Buffer &buffer = m_buffers.emplace_back();
        buffer.owner = this;
        buffer.image = QImage(static_cast<uchar *>(bytes), pixels.width(), pixels.height(), stride,
                              QImage::Format_ARGB32_Premultiplied, unmap,
                              new Mapping{bytes, static_cast<std::size_t>(size)});
        buffer.handle.reset(wl_shm_pool_create_buffer(pool, 0, pixels.width(), pixels.height(), stride,
                                                      WL_SHM_FORMAT_ARGB8888));
        wl_buffer_add_listener(buffer.handle.get(), &bufferListener, &buffer);
        wl_shm_pool_destroy(pool); // the buffer keeps the memory
    }
    ::close(file);
}

} // namespace corvane
