// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarFoldersFixture.h"
#include "tests/support/CalendarService.h"
#include "tests/support/TestProgram.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTest>

#include <array>

using namespace corvane;
using namespace Qt::StringLiterals;

/// Which folders and files are read, and when again.
class CalendarFoldersTest final : public CalendarFoldersFixture {
    Q_OBJECT

private Q_SLOTS:
    void anEmptyFolderGrantsAccess() { QCOMPARE(load(), QStringList()); }

    void withoutAnyFolderAccessIsDenied()
    {
        QVERIFY(QDir(m_room->calendarFolder()).removeRecursively());
        const auto granted = QCoro::waitFor(m_room->store().requestFullAccessToEvents());
        QVERIFY(granted.has_value());
        QVERIFY(!*granted);
    }

    void aDenialIsNotRemembered()
    {
        QVERIFY(QDir(m_room->calendarFolder()).removeRecursively());
        QCOMPARE(load(), QStringList{u"failed: no access"_s});
        QCOMPARE(m_room->store().authorizationStatus(), CalendarAuthorization::notDetermined);
        writeLessons(u"new.ics"_s, {lesson("Zoom - Anna")});
        QCOMPARE(load(), QStringList{u"Zoom - Anna"_s});
    }

    void accessEndsWithTheLastFolder()
    {
        QCOMPARE(load(), QStringList());
        QVERIFY(QDir(m_room->calendarFolder()).removeRecursively());
        QVERIFY(load().first().startsWith(u"failed"_s));
        QCOMPARE(m_room->store().authorizationStatus(), CalendarAuthorization::notDetermined);
    }

    void allFoldersAreReadWithTheirSubfolders()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        writeLessons(u"school/term/b.ics"_s, {lesson("Zoom - Two")});
        writeLessons(u"../others/c.ics"_s, {lesson("Zoom - Zwei")});
        QCOMPARE(load(), (QStringList{u"Zoom - One"_s, u"Zoom - Two"_s, u"Zoom - Zwei"_s}));
    }

    void theFileExtensionMayBeInAnyCase()
    {
        writeLessons(u"a.ICS"_s, {lesson("Zoom - One")});
        writeLessons(u"b.Ics"_s, {lesson("Zoom - Two")});
        writeLessons(u"c.ics.bak"_s, {lesson("Zoom - Three")});
        writeLessons(u"ics"_s, {lesson("Zoom - Four")});
        QCOMPARE(load(), (QStringList{u"Zoom - One"_s, u"Zoom - Two"_s}));
    }

    void aFileMayHoldSeveralCalendars()
    {
        write(u"a.ics"_s, calendarText(lesson("Zoom - One")) + calendarText(lesson("Zoom - Two")));
        QCOMPARE(load(), (QStringList{u"Zoom - One"_s, u"Zoom - Two"_s}));
    }

    void aByteOrderMarkIsAccepted()
    {
        write(u"a.ics"_s, "\xEF\xBB\xBF" + calendarText(lesson("Zoom - One")));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
    }

    void aChangedFileIsReadAgain()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        writeLessons(u"a.ics"_s, {lesson("Zoom - Two")});
        QCOMPARE(load(), QStringList{u"Zoom - Two"_s});
    }

    void aRemovedFileIsForgotten()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QVERIFY(QFile::remove(path(u"a.ics"_s)));
        QCOMPARE(load(), QStringList());
    }

    void anUnchangedFileIsNotOpenedAgain()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        QVERIFY(::inotify_add_watch(watch, path(u"a.ics"_s).toLocal8Bit().constData(), IN_OPEN) >= 0);
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        std::array<char, 4096> events{};
        QVERIFY(::read(watch, events.data(), events.size()) < 0);
        ::close(watch);
    }

    void aChangeThatKeepsSizeAndTimeIsNoticed()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        struct stat before = {};
        QCOMPARE(::stat(path(u"a.ics"_s).toLocal8Bit().constData(), &before), 0);
        QFile file(path(u"a.ics"_s));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray text = file.readAll();
        text.replace("Zoom - One", "Zoom - Two");
        file.seek(0);
        file.write(text);
        file.close();
        const timespec times[] = {before.st_atim, before.st_mtim};
        QCOMPARE(::utimensat(AT_FDCWD, path(u"a.ics"_s).toLocal8Bit().constData(), times, 0), 0);
        QCOMPARE(load(), QStringList{u"Zoom - Two"_s});
    }

    void aFileReadOnOneDayServesTheNext()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One", "RRULE:FREQ=DAILY\n")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        QCOMPARE(load(1), QStringList{u"Zoom - One"_s});
    }

    void entriesThatAreNotFilesAreSkipped()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(::mkfifo(path(u"pipe.ics"_s).toLocal8Bit().constData(), 0600), 0);
        QVERIFY(QDir(m_room->calendarFolder()).mkpath(u"folder.ics"_s));
        QVERIFY(QFile::link(u"/nowhere/at/all.ics"_s, path(u"dangling.ics"_s)));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
    }

    void circularLinksAreFollowedOnce()
    {
        writeLessons(u"one/a.ics"_s, {lesson("Zoom - One")});
        QVERIFY(QFile::link(m_room->calendarFolder(), path(u"one/up"_s)));
        QVERIFY(QFile::link(path(u"one"_s), path(u"two"_s)));
        QVERIFY(QFile::link(u"self"_s, path(u"self"_s)));
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
    }

    void concurrentCallsAllGetTheEvents()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        std::vector<QCoro::Task<std::expected<std::vector<CalendarEvent>, Failure>>> calls;
        calls.reserve(200);
        for (int number = 0; number < 200; ++number) {
            calls.push_back(m_room->store().events(testDay()));
        }
        for (auto &call : calls) {
            const auto events = QCoro::waitFor(call);
            QVERIFY(events.has_value());
            QCOMPARE(events->size(), std::size_t{1});
        }
    }

    void aStoreMayBeDestroyedDuringACall()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One")});
        QCOMPARE(load(), QStringList{u"Zoom - One"_s});
        writeLessons(u"a.ics"_s, {lesson("Zoom - Two")});
        auto call = m_room->store().events(testDay());
        m_room->stop();
        // The call still ends.
        [[maybe_unused]] const auto either = QCoro::waitFor(std::move(call));
    }

    void aSeriesWithAnUnreadableRuleIsLoggedOnALaterDay()
    {
        writeLessons(u"a.ics"_s, {lesson("Zoom - One", "RRULE:FREQ=SOMETIMES\n")});
        QVERIFY(!load(7).contains(u"Zoom - One"_s));
        QCOMPARE(m_room->logged(u"Zoom - One"_s), 1);
        QCOMPARE(m_room->logged(u"its RRULE cannot be read"_s), 1);
    }
};

QUILLET_TEST(CalendarFoldersTest, runTest<CalendarFoldersTest>);
#include "CalendarFoldersTest.moc"
