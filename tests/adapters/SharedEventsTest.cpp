// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/adapters/CalendarRoom.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

/// One revision of the invitation "invite" for 14 May 2025.
QByteArray invitation(const QByteArray &title, int sequence, const QByteArray &hour,
                      const QByteArray &more = {})
{
    return "BEGIN:VEVENT\nUID:invite\nDTSTAMP:20250101T000000Z\nSEQUENCE:" + QByteArray::number(sequence) +
           "\nDTSTART:20250514T" + hour + "0000Z\nDTEND:20250514T" + hour + "3000Z\n" + more +
           "SUMMARY:" + title + "\nEND:VEVENT\n";
}

} // namespace

/// Several files in the folders contain the same event.
class SharedEventsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<CalendarRoom> m_room;

    void write(const QString &name, const QByteArray &components) const
    {
        m_room->writeEvents(name, components);
    }

    /// Truncates a file by 20 bytes.
    void cutOff(const QString &name) const
    {
        QFile file(m_room->path(name));
        QVERIFY(file.resize(file.size() - 20));
    }

    /// The titles and start hours of the day's events, such as "Anna 9".
    [[nodiscard]] QStringList load(int daysLater = 0)
    {
        const DateInterval day = testDay(daysLater);
        const auto events = QCoro::waitFor(CalendarRoom::load(m_room->store(), day));
        QStringList found;
        for (const CalendarEvent &event : events.value_or(std::vector<CalendarEvent>())) {
            const double hour = (event.startDate - day.start).count() / 3600;
            found << u"%1 %2"_s.arg(event.title.value_or(QString()), QString::number(hour));
        }
        return found;
    }

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<CalendarRoom>();
        m_room->startOnFolders();
    }

    void cleanup() { m_room.reset(); }

    void anInvitationSavedTwiceIsOneLesson()
    {
        write(u"invite.ics"_s, invitation("Anna", 0, "09"));
        write(u"invite(1).ics"_s, invitation("Anna", 0, "09"));
        QCOMPARE(load(), QStringList{u"Anna 9"_s});
    }

    void theHighestRevisionWinsInAnyFile()
    {
        write(u"a.ics"_s, invitation("Anna", 2, "10"));
        write(u"b.ics"_s, invitation("Anna", 1, "09"));
        QCOMPARE(load(), QStringList{u"Anna 10"_s});
        write(u"c.ics"_s, invitation("Anna", 3, "11"));
        QCOMPARE(load(), QStringList{u"Anna 11"_s});
    }

    void aCancellationInAnotherFileIsApplied()
    {
        write(u"invite.ics"_s, invitation("Anna", 0, "09"));
        QCOMPARE(load(), QStringList{u"Anna 9"_s});
        write(u"cancel.ics"_s, invitation("Anna", 1, "09", "STATUS:CANCELLED\n"));
        QCOMPARE(load(), QStringList());
    }

    void withoutTheNewerFileTheOlderIsUsedAgain()
    {
        write(u"a.ics"_s, invitation("Anna", 0, "09"));
        write(u"b.ics"_s, invitation("Anna", 1, "10"));
        QCOMPARE(load(), QStringList{u"Anna 10"_s});
        QVERIFY(QFile::remove(m_room->path(u"b.ics"_s)));
        QCOMPARE(load(), QStringList{u"Anna 9"_s});
    }

    void aChangedInstanceMayBeInAnotherFileThanItsSeries()
    {
        write(u"series.ics"_s, invitation("Anna", 0, "09", "RRULE:FREQ=DAILY;COUNT=3\n"));
        write(u"moved.ics"_s, invitation("Anna moved", 0, "15", "RECURRENCE-ID:20250514T090000Z\n"));
        QCOMPARE(load(), QStringList{u"Anna moved 15"_s});
    }

    void eventsInOnlyOneFileAreUnaffected()
    {
        write(u"a.ics"_s,
              invitation("Anna", 0, "09") + invitation("Ben", 0, "12").replace("invite", "other"));
        write(u"b.ics"_s,
              invitation("Anna", 1, "10") + invitation("Cleo", 0, "13").replace("invite", "third"));
        QCOMPARE(load(), (QStringList{u"Anna 10"_s, u"Ben 12"_s, u"Cleo 13"_s}));
        QCOMPARE(load(), (QStringList{u"Anna 10"_s, u"Ben 12"_s, u"Cleo 13"_s}));
    }

    void aFoldedIdentifierIsRecognised()
    {
        const QByteArray identifier = QByteArray(100, 'x') + '@' + QByteArray(40, 'y');
        const QByteArray folded = identifier.left(60) + "\n " + identifier.mid(60);
        write(u"a.ics"_s, invitation("Anna", 0, "09").replace("UID:invite", "uid:" + folded));
        write(u"b.ics"_s, invitation("Anna", 1, "10").replace("UID:invite", "UID;X-A=b:" + identifier));
        QCOMPARE(load(), QStringList{u"Anna 10"_s});
    }

    void theZonesOfBothFilesAreUsed()
    {
        const auto zone = [](const QByteArray &offset) {
            return "BEGIN:VTIMEZONE\nTZID:Ours\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:" +
                   offset + "\nTZOFFSETTO:" + offset + "\nEND:STANDARD\nEND:VTIMEZONE\n";
        };
        const auto inZone = [](QByteArray event) {
            return event.replace("DTSTART:20250514T120000Z", "DTSTART;TZID=Ours:20250514T120000")
                .replace("DTEND:20250514T123000Z", "DTEND;TZID=Ours:20250514T123000");
        };
        write(u"series.ics"_s,
              zone("+0400") + inZone(invitation("Anna", 0, "12", "RRULE:FREQ=DAILY;COUNT=3\n")));
        write(u"moved.ics"_s,
              zone("+0600") + inZone(invitation("Anna moved", 0, "12", "RECURRENCE-ID:20250514T080000Z\n")));
        QCOMPARE(load(), QStringList{u"Anna moved 6"_s});
    }

    void aTruncatedFileKeepsTheMergedEvents()
    {
        write(u"series.ics"_s, invitation("Anna", 0, "09", "RRULE:FREQ=DAILY;COUNT=3\n"));
        write(u"moved.ics"_s, invitation("Anna moved", 0, "15", "RECURRENCE-ID:20250514T090000Z\n"));
        QCOMPARE(load(), QStringList{u"Anna moved 15"_s});
        cutOff(u"series.ics"_s);
        QCOMPARE(load(), QStringList{u"Anna moved 15"_s});
        QCOMPARE(load(), QStringList{u"Anna moved 15"_s});
    }

    void theMergedEventsSurviveARestart_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("the series is truncated") << u"series.ics"_s;
        QTest::newRow("the changed instance is truncated") << u"moved.ics"_s;
    }

    void theMergedEventsSurviveARestart()
    {
        QFETCH(const QString, name);
        write(u"series.ics"_s, invitation("Anna", 0, "09", "RRULE:FREQ=DAILY;COUNT=3\n") +
                                   invitation("Ben", 0, "12").replace("invite", "other"));
        write(u"moved.ics"_s, invitation("Anna moved", 0, "15", "RECURRENCE-ID:20250514T090000Z\n"));
        QCOMPARE(load(), (QStringList{u"Ben 12"_s, u"Anna moved 15"_s}));
        QTRY_COMPARE(m_room->memoryFiles().size(), 2);
        cutOff(name);
        m_room->startOnFolders();
        QCOMPARE(load(), (QStringList{u"Ben 12"_s, u"Anna moved 15"_s}));
        QCOMPARE(load(1), QStringList{u"Anna 9"_s});
    }

    void aCancellationIsRememberedWithoutOccurrences()
    {
        write(u"invite.ics"_s, invitation("Anna", 0, "09"));
        write(u"cancel.ics"_s, invitation("Anna", 1, "09", "STATUS:CANCELLED\n"));
        QCOMPARE(load(), QStringList());
        QTRY_COMPARE(m_room->memoryFiles().size(), 2);
        cutOff(u"cancel.ics"_s);
        m_room->startOnFolders();
        QCOMPARE(load(), QStringList());
    }

    void anEventThatBecomesSharedIsRememberedAnew()
    {
        write(u"cancel.ics"_s, invitation("Anna", 1, "09", "STATUS:CANCELLED\n"));
        QCOMPARE(load(), QStringList());
        QTRY_COMPARE(m_room->memoryFiles().size(), 1);
        write(u"invite.ics"_s, invitation("Anna", 0, "09"));
        QTRY_COMPARE((static_cast<void>(load()), m_room->memoryFiles().size()), 2);
        QCOMPARE(load(), QStringList());
        m_room->startOnFolders();
        cutOff(u"cancel.ics"_s);
        QCOMPARE(load(), QStringList());
    }

    void aFileTruncatedWhenAnotherAppearsDoesNotDuplicateTheEvent()
    {
        write(u"series.ics"_s, invitation("Anna", 0, "09", "RRULE:FREQ=DAILY;COUNT=3\n"));
        QCOMPARE(load(), QStringList{u"Anna 9"_s});
        QTRY_COMPARE(m_room->memoryFiles().size(), 1);
        write(u"moved.ics"_s, invitation("Anna moved", 0, "15", "RECURRENCE-ID:20250514T090000Z\n"));
        cutOff(u"series.ics"_s);
        QCOMPARE(load(), QStringList{u"Anna moved 15"_s});
    }

    void anIdentifierWithACommaIsRecognised()
    {
        write(u"a.ics"_s, invitation("Anna", 0, "09").replace("UID:invite", "UID:one\\,two"));
        write(u"b.ics"_s, invitation("Anna", 1, "10").replace("UID:invite", "UID:one\\,two"));
        QCOMPARE(load(), QStringList{u"Anna 10"_s});
    }

    void hiddenFilesAndFoldersAreNotRead()
    {
        write(u"a.ics"_s, invitation("Anna", 0, "09"));
        write(u".a.ics"_s, invitation("Anna", 5, "10"));
        write(u".stversions/a.ics"_s, invitation("Anna", 6, "11"));
        write(u".git/b.ics"_s, invitation("Ben", 0, "12").replace("invite", "other"));
        QCOMPARE(load(), QStringList{u"Anna 9"_s});
    }
};

QUILLET_TEST(SharedEventsTest, runTest<SharedEventsTest>);
#include "SharedEventsTest.moc"
