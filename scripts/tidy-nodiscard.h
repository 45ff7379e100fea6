// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT
#pragma once
// Read by scripts/tidy before each source: a task that nobody waits for becomes a finding. So does an answer
// that nobody looks at, also behind co_await, where GCC does not warn: see mark_answers() there.

namespace QCoro {
template <typename T>
class [[nodiscard]] Task;
}
