// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/LostRules.h"

#include "Corvane/Platform/Linux/EvolutionData/ComponentRepairs.h"
#include "Corvane/Platform/Linux/Waiting/GioCall.h"

#include <QCoreApplication>

#include <utility>

namespace corvane {

/// Receives the signals of a view, on any thread, and passes identifiers on to the main thread.
struct LostRules::Receiver {
    std::weak_ptr<LostRules> rules;

    static void handleAdded(ECalClientView *, const GSList *components, gpointer data)
    {
        Batch batch = batchOf(components);
        batch.sound.clear(); // none of them was known
        report(data, std::move(batch));
    }

    static void handleModified(ECalClientView *, const GSList *components, gpointer data)
    {
        report(data, batchOf(components));
    }

    static void handleRemoved(ECalClientView *, const GSList *ids, gpointer data)
    {
        Batch batch;
        for (const GSList *item = ids; item != nullptr; item = item->next) {
            const auto *id = static_cast<const ECalComponentId *>(item->data);
            if (e_cal_component_id_get_rid(id) == nullptr) {
                batch.sound.insert(e_cal_component_id_get_uid(id));
            }
        }
        report(data, std::move(batch));
    }

private:
    static Batch batchOf(const GSList *components)
    {
        Batch batch;
        for (const GSList *item = components; item != nullptr; item = item->next) {
            auto *component = static_cast<ICalComponent *>(item->data);
            const char *uid = i_cal_component_get_uid(component);
            const bool isInstance =
                i_cal_component_count_properties(component, I_CAL_RECURRENCEID_PROPERTY) > 0;
            if (uid != nullptr && !isInstance) {
                (hasLostRule(component) ? batch.damaged : batch.sound).insert(uid);
            }
        }
        return batch;
    }

    static void report(gpointer data, Batch batch)
    {
        if (batch.damaged.empty() && batch.sound.empty()) {
            return;
        }
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [rules = static_cast<Receiver *>(data)->rules, batch = std::move(batch)] {
                if (const auto self = rules.lock()) {
                    self->take(batch);
                }
            },
            Qt::QueuedConnection);
    }
};

QCoro::Task<void> LostRules::watch(std::shared_ptr<LostRules> self, GObjectRef<ECalClient> client,
                                   GObjectRef<GCancellable> cancellable)
{
    if (self->m_client.get() == client.get()) {
        co_return;
    }
    self->m_client = client;
    const auto making = startGioCall([&](GAsyncReadyCallback callback, gpointer data) {
        GTask *task = g_task_new(nullptr, cancellable.get(), callback, data);
        g_task_set_task_data(task, new Request{client, self},
                             [](gpointer request) { delete static_cast<Request *>(request); });
        g_task_run_in_thread(task, &LostRules::make);
        g_object_unref(task);
    });
    co_await making.untilResolved();
    auto view = GObjectRef<ECalClientView>::adopt(
        static_cast<ECalClientView *>(g_task_propagate_pointer(G_TASK(making.value().get()), nullptr)));
    if (self->m_client.get() != client.get()) {
        co_return;
    }
    if (view) {
        self->m_view = std::move(view);
    } else {
        self->m_client = {}; // the next reading tries again
    }
}

// On a GLib thread, because these calls have no form that does not block.
void LostRules::make(GTask *task, gpointer, gpointer data, GCancellable *cancellable)
{
    const auto &request = *static_cast<Request *>(data);
    GError *error = nullptr;
    ECalClientView *view = nullptr;
    if (e_cal_client_get_view_sync(request.client.get(), "#t", &view, cancellable, &error) == FALSE) {
        g_task_return_error(task, error);
        return;
    }
    const auto connect = [view, rules = request.rules](const char *signal, GCallback handler) {
        g_signal_connect_data(
            view, signal, handler, new Receiver{rules},
            [](gpointer receiver, GClosure *) { delete static_cast<Receiver *>(receiver); }, GConnectFlags{});
    };
    connect("objects-added", G_CALLBACK(&Receiver::handleAdded));
    connect("objects-modified", G_CALLBACK(&Receiver::handleModified));
    connect("objects-removed", G_CALLBACK(&Receiver::handleRemoved));
    e_cal_client_view_start(view, &error);
    if (error != nullptr) {
        g_object_unref(view);
        g_task_return_error(task, error);
        return;
    }
    g_task_return_pointer(task, view, g_object_unref);
}

void LostRules::take(const Batch &batch)
{
    bool isChanged = false;
    for (const QByteArray &identifier : batch.sound) {
        isChanged = m_identifiers.erase(identifier) > 0 || isChanged;
    }
    for (const QByteArray &identifier : batch.damaged) {
        // One that is known may have changed as well.
        const bool isTaken = m_identifiers.size() < maximum || m_identifiers.contains(identifier);
        if (isTaken) {
            m_identifiers.insert(identifier);
        }
        isChanged = isChanged || isTaken;
    }
    if (isChanged) {
        ++m_changes;
        m_onChange();
    }
}

} // namespace corvane
