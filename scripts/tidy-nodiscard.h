// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT
#pragma once
// Read by scripts/tidy before each source: an answer that nobody looks at and a task that nobody waits for
// become findings, also behind co_await, where GCC warns of neither.

namespace std {
template <typename T, typename E>
class [[nodiscard]] expected;
}

namespace QCoro {
template <typename T>
class [[nodiscard]] Task;
}
