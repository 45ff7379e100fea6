// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT
#pragma once
// scripts/tidy includes this before each source, so that a task that nobody awaits is a finding. A discarded
// std::expected is one as well, also after co_await, where GCC does not warn: see mark_answers() there.

namespace QCoro {
template <typename T>
class [[nodiscard]] Task;
}
