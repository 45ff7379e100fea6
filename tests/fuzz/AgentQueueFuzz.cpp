// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/RequestFile.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace corvane;

namespace {

/// The agent's queue file, damaged in any way: intact requests survive rewriting.
void run(const QByteArray &input)
{
    const DecodedRequests found = decodedRequests(input);
    RequestQueue queue;
    for (const PendingRequest &request : found.requests) {
        queue.add(request);
    }
    const QByteArray text = encodedRequests(queue);
    const DecodedRequests again = decodedRequests(text);
    fuzz::require(again.isWhole, "what is written is whole");
    fuzz::require(again.requests.size() == static_cast<std::size_t>(queue.size()), "nothing is lost");
    RequestQueue requeued;
    for (const PendingRequest &request : again.requests) {
        requeued.add(request);
    }
    fuzz::require(requeued == queue, "each request is what it was");
}

QUILLET_FUZZ_TARGET("AgentQueue", run);

} // namespace
