// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/CanberraNotificationSound.h"

#include "Corvane/Utilities/Names.h"

#include <canberra.h>

#include <chrono>
#include <semaphore>
#include <system_error>
#include <thread>

namespace corvane {

namespace {

// Longer sounds are cut off.
constexpr std::chrono::seconds maximumSoundLength{10};

void playNow()
{
    ca_context *context = nullptr;
    if (ca_context_create(&context) != CA_SUCCESS) {
        return;
    }
    ca_context_change_props(context, CA_PROP_APPLICATION_NAME, "Quillet", CA_PROP_APPLICATION_ID,
                            names::application.data(), CA_PROP_APPLICATION_ICON_NAME,
                            names::application.data(), nullptr);
    ca_proplist *properties = nullptr;
    if (ca_proplist_create(&properties) == CA_SUCCESS) {
        ca_proplist_sets(properties, CA_PROP_EVENT_ID, CanberraNotificationSound::eventName);
        ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
        std::binary_semaphore end(0);
        const auto ended = [](ca_context *, uint32_t, int, void *data) {
            static_cast<std::binary_semaphore *>(data)->release();
        };
        if (ca_context_play_full(context, 1, properties, ended, &end) == CA_SUCCESS) {
            (void)end.try_acquire_for(maximumSoundLength);
        }
        ca_proplist_destroy(properties);
        // Stops a sound that is still playing, and with it the last use of `end`.
        ca_context_destroy(context);
        return;
    }
    ca_context_destroy(context);
}

} // namespace

void CanberraNotificationSound::play()
{
    if (m_isPlaying->exchange(true)) {
        return;
    }
    try {
        std::thread([isPlaying = m_isPlaying] {
            playNow();
            *isPlaying = false;
        }).detach();
    } catch (const std::system_error &) {
        // No thread can be created, so the notification is silent.
        *m_isPlaying = false;
    }
}

} // namespace corvane
