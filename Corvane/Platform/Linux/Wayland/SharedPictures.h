// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Platform/Linux/Wayland/WaylandRef.h"

#include <QImage>

#include <functional>
#include <list>

namespace corvane {

/// The pictures of one surface, in memory that the compositor reads: while it reads one, the next is painted.
class SharedPictures {
public:
    struct Picture {
        QImage image; ///< premultiplied; a view of the shared memory
        WaylandRef<wl_buffer> buffer;
        bool isRead = false; ///< by the compositor, from when it is handed over until it gives it back
        SharedPictures *owner = nullptr;
    };

    /// `onReturn` is called when the compositor gives back a picture.
    explicit SharedPictures(std::function<void()> onReturn);
    ~SharedPictures();
    SharedPictures(const SharedPictures &) = delete;
    SharedPictures &operator=(const SharedPictures &) = delete;

    /// A picture of `pixels` that the compositor does not read; null while it reads all that there may be, or
    /// when there is no memory. Pictures of another size are let go of.
    [[nodiscard]] Picture *next(wl_shm *memory, QSize pixels);

    /// The compositor has given back a picture.
    void returned() { m_onReturn(); }

    /// Lets go of all of them.
    void clear() { m_pictures.clear(); }

private:
    void add(wl_shm *memory, QSize pixels);

    std::function<void()> m_onReturn;
    std::list<Picture> m_pictures;
};

} // namespace corvane
