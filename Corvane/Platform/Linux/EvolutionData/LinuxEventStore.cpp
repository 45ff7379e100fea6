// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventExpansion.h"

#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"

#include "Corvane/Platform/Linux/EvolutionData/EvolutionCalendars.h"
#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"
#include "Corvane/Utilities/UserFolders.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QFile>
#include <QPointer>

#include <glib.h>

#include <cstdio>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace corvane {

QStringList defaultCalendarFolders()
{
    return {userFolders::data() + u"/quillet/calendars"_s, QDir::homePath() + u"/.calendars"_s};
}

QString defaultCalendarMemoryFolder()
{
    return userFolders::state() + u"/quillet/calendars"_s;
}

std::unique_ptr<EventStore> makeLinuxEventStore(DebugLogService &log, const QStringList &folders,
                                                const QString &memoryFolder)
{
    return makeLinuxEventStore(std::make_shared<CalendarServices>(log, memoryFolder), folders);
}

std::unique_ptr<EventStore> makeLinuxEventStore(const std::shared_ptr<CalendarServices> &services,
                                                const QStringList &folders)
{
    // Read at each query: a floating event at ten is at ten wherever a traveller is now.
    const TimeZoneId timeZoneId = &systemTimeZoneId;
    // Keeps the calendar library from loading its plug-ins for mail servers, a megabyte of code that no
    // calendar needs: this folder contains none and is certain to exist. Set before there are threads.
    if (qEnvironmentVariableIsEmpty("EDS_CAMEL_PROVIDER_DIR")) {
        qputenv("EDS_CAMEL_PROVIDER_DIR", QFile::encodeName(QDir::rootPath()));
    }
    // The calendar library reads on threads of its own once a minute. One that stays for the next reading
    // wakes up after fifteen seconds, only to end.
    g_thread_pool_set_max_unused_threads(0);
    std::vector<std::shared_ptr<CalendarSource>> sources;
    // The folders first: their existence is known at once, so that a service that hangs delays no grant.
    [[maybe_unused]] const auto cleaning =
        startOnPool(services->memories.threads(), [memory = services->memory, now = currentDate()] {
            memory.forgetExpired(now);
            return true;
        });
    sources.push_back(std::make_shared<IcsFolders>(services, folders));
    sources.push_back(std::make_shared<EvolutionCalendars>(services));
    auto store = std::make_unique<MergedEventStore>(std::move(sources), timeZoneId);
    services->announceNews = [monitor = QPointer(&store->monitor())] {
        if (monitor != nullptr) {
            Q_EMIT monitor->newsArrived();
        }
    };
    return store;
}

bool checkEventLoopServesCalendars(DebugLogService &log)
{
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    for (const QMetaObject *type = dispatcher != nullptr ? dispatcher->metaObject() : nullptr;
         type != nullptr; type = type->superClass()) {
        if (QByteArrayView(type->className()).contains("Glib")) {
            return true;
        }
    }
    const QString line =
        u"calendar service unreachable reason=\"the event loop runs without GLib\" hint=\"unset QT_NO_GLIB\""_s;
    log.log(line);
    std::fprintf(stderr, "quillet: %s\n", qUtf8Printable(line));
    return false;
}

} // namespace corvane
