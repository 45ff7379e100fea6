// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/support/CalendarService.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTest>

#include <csignal>

#ifdef __SANITIZE_ADDRESS__
// The calendar library leaks a few bytes for each watched list of calendars; newer versions also leak for
// each call to a service that has died. Slow unwinding is needed because the suppressions match frames of
// code compiled without frame pointers.
extern "C" const char *__asan_default_options();
extern "C" const char *__asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:e_dbus_object_manager_client_new_for_bus_sync\n"
           "leak:e_dbus_calendar_call_\n";
}
#endif

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(CalendarService::Part part)
{
    return part == CalendarService::Part::registry ? u"org.gnome.evolution.dataserver.Sources5"_s
                                                   : u"org.gnome.evolution.dataserver.Calendar8"_s;
}

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    // The service detects changes by modification time in whole seconds, which two quick edits would share.
    static int edits = 0;
    const QDateTime time = QDateTime::currentDateTime().addSecs(2LL * ++edits);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush() ||
        !file.setFileTime(time, QFileDevice::FileModificationTime) || !file.commit()) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

QString sourceFile(const QString &id)
{
    return qEnvironmentVariable("XDG_CONFIG_HOME") + u"/evolution/sources/"_s + id + u".source"_s;
}

void signalTree(qint64 process, int signal)
{
    QFile children(u"/proc/%1/task/%1/children"_s.arg(process));
    if (children.open(QIODevice::ReadOnly)) {
        for (const QByteArray &child : children.readAll().split(' ')) {
            if (child.toLongLong() > 1) {
                signalTree(child.toLongLong(), signal);
            }
        }
    }
    ::kill(static_cast<pid_t>(process), signal);
}

} // namespace

CalendarService::CalendarService()
    : m_bus({u"/usr/share/dbus-1/services"_s})
    , m_connection(QDBusConnection::connectToBus(m_bus.address(), u"calendar-service"_s))
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
    // Start both parts now: on a busy or fresh machine their start takes longer than a load's time limit.
    for (const Part part : {Part::registry, Part::factory}) {
        if (process(part) <= 0) {
            qFatal("the calendar service does not come up");
        }
    }
}

CalendarService::~CalendarService()
{
    // A stopped process would not notice that its bus has ended.
    for (const Part part : {Part::registry, Part::factory}) {
        if (isRunning(part)) {
            signal(part, SIGCONT);
            signal(part, SIGTERM);
        }
    }
    QDBusConnection::disconnectFromBus(u"calendar-service"_s);
}

void CalendarService::writeCalendar(const QByteArray &ics)
{
    write(qEnvironmentVariable("XDG_DATA_HOME") + u"/evolution/calendar/system/calendar.ics"_s, ics);
}

void CalendarService::addCalendar(const QString &id, const QString &displayName, const QByteArray &ics,
                                  bool isEnabled)
{
    const QString file = qEnvironmentVariable("XDG_DATA_HOME") + u"/test-calendars/"_s + id + u".ics"_s;
    write(file, ics);
    addSource(id, u"[Data Source]\nDisplayName=%1\nEnabled=%2\nParent=local-stub\n\n[Calendar]\n"
                  "BackendName=local\nSelected=true\n\n[Local Backend]\nCustomFile=file://%3\n"_s.arg(
                      displayName, isEnabled ? u"true"_s : u"false"_s, file));
}

void CalendarService::addSource(const QString &id, const QString &description)
{
    write(sourceFile(id), description.toUtf8());
}

void CalendarService::removeCalendar(const QString &id)
{
    QFile::remove(sourceFile(id));
}

qint64 CalendarService::process(Part part)
{
    QDBusConnectionInterface *bus = m_connection.interface();
    bus->startService(nameOf(part));
    return bus->servicePid(nameOf(part)).value();
}

void CalendarService::signal(Part part, int signal)
{
    const qint64 process = m_connection.interface()->servicePid(nameOf(part)).value();
    if (process <= 1) {
        // The system would take this for the whole process group.
        qFatal("the part of the calendar service does not run");
    }
    signalTree(process, signal);
}

void CalendarService::kill(Part part)
{
    const auto process = [this, part] { return m_connection.interface()->servicePid(nameOf(part)).value(); };
    const qint64 killed = process();
    signal(part, SIGKILL);
    if (!QTest::qWaitFor([&] { return process() != killed; })) {
        qFatal("the part of the calendar service survives");
    }
}

bool CalendarService::isRunning(Part part) const
{
    return m_connection.interface()->isServiceRegistered(nameOf(part)).value();
}

QByteArray calendarText(const QByteArray &components)
{
    QByteArray text = "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Quillet//Tests//EN\n" + components;
    text += "END:VCALENDAR\n";
    return text.replace("\r\n", "\n").replace("\n", "\r\n");
}

} // namespace corvane
