// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/SourceCalendar.h"

#include "tests/adapters/CalendarRoom.h"

#include "Corvane/Platform/Linux/EvolutionData/IcsFolders.h"
#include "Corvane/Platform/Linux/EvolutionData/LinuxEventStore.h"
#include "Corvane/Platform/Linux/EvolutionData/MergedEventStore.h"
#include "tests/support/CalendarService.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

DateInterval testDay(int daysLater)
{
    constexpr double start = 1'747'180'800;
    constexpr double oneDay = 86'400;
    return {dateSince1970(start + daysLater * oneDay), dateSince1970(start + (daysLater + 1) * oneDay)};
}

QByteArray lesson(const QByteArray &title, const QByteArray &more, const QByteArray &hour)
{
    return "BEGIN:VEVENT\nUID:" + title.left(50).simplified().replace(' ', '-') +
           "\nDTSTAMP:20250101T000000Z\nDTSTART:20250514T" + hour + "0000Z\nDTEND:20250514T" + hour +
           "3000Z\n" + more + "SUMMARY:" + title + "\nEND:VEVENT\n";
}

QStringList titles(const std::expected<std::vector<CalendarEvent>, Failure> &events)
{
    if (!events) {
        return {u"failed: "_s + events.error().localizedDescription};
    }
    QStringList titles;
    for (const CalendarEvent &event : *events) {
        titles << event.title.value_or(QString());
    }
    return titles;
}

CalendarRoom::CalendarRoom() = default;

CalendarRoom::~CalendarRoom()
{
    stop();
}

void CalendarRoom::startOnFolders(const QStringList &folders)
{
    stop();
    QDir().mkpath(calendarFolder());
    const auto services = std::make_shared<CalendarServices>(m_log, memoryFolder());
    m_services = services;
    m_store = std::make_unique<MergedEventStore>(
        std::vector<std::shared_ptr<CalendarSource>>{std::make_shared<IcsFolders>(
            services, folders.isEmpty() ? QStringList{calendarFolder()} : folders)},
        [this] { return m_timeZoneId; });
}

void CalendarRoom::startOnAll()
{
    stop();
    const auto services = std::make_shared<CalendarServices>(m_log, memoryFolder());
    m_services = services;
    m_store = makeLinuxEventStore(services, {calendarFolder()});
}

void CalendarRoom::stop()
{
    m_store.reset();
    // Pending writes continue after the store's end; wait for them.
    const QDeadlineTimer deadline(5000);
    while (!m_services.expired() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    }
}

QStringList CalendarRoom::load(int daysLater)
{
    return titles(QCoro::waitFor(load(*m_store, testDay(daysLater))));
}

QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>> CalendarRoom::load(EventStore &store,
                                                                                   DateInterval day)
{
    if (store.authorizationStatus() != CalendarAuthorization::fullAccess) {
        auto granted = co_await store.requestFullAccessToEvents();
        if (!granted) {
            co_return std::unexpected(granted.error());
        }
        if (!*granted) {
            co_return std::unexpected(Failure{u"no access"_s});
        }
    }
    auto events = co_await store.events(day);
    co_return events;
}

QString CalendarRoom::calendarFolder() const
{
    return m_folder.filePath(u"calendars"_s);
}

QString CalendarRoom::path(const QString &name) const
{
    return calendarFolder() + u'/' + name;
}

void CalendarRoom::write(const QString &name, const QByteArray &text) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text) != text.size()) {
        qFatal("%s cannot be written", qPrintable(path(name)));
    }
}

void CalendarRoom::writeEvents(const QString &name, const QByteArray &components) const
{
    write(name, calendarText(components));
}

QString CalendarRoom::memoryFolder() const
{
    return m_folder.filePath(u"state/memory"_s);
}

QStringList CalendarRoom::memoryFiles() const
{
    return QDir(memoryFolder()).entryList({u"*.memory"_s}, QDir::Files);
}

qsizetype CalendarRoom::logged(const QString &part) const
{
    return m_log.latestLines().filter(part).size();
}

} // namespace corvane
