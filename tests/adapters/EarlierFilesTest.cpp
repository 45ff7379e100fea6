// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarMemory.h"
#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/SettingsStore.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

// As written by the first versions that had these files.
const QByteArray settingsFile =
    "[General]\n"
    "hasCompletedWelcome=true\n"
    "manualLessons=\"@ByteArray([{\\\"durationMinutes\\\":30,\\\"id\\\":\\\"0F1E2D3C-4B5A-6978-8796-"
    "A5B4C3D2E1F0\\\","
    "\\\"platform\\\":\\\"Zoom\\\",\\\"startTime\\\":817000000,\\\"studentName\\\":\\\"Zo\\xc3\\xab\\\"}])"
    "\"\n"
    "notificationDuration=9\n"
    "notificationPosition=topRight\n"
    "playsSound=false\n"
    "startAtLogin=false\n";

const QByteArray memoryFile =
    "quillet calendar memory 1\n"
    "423dd728ca4efd274a05b8e0470bbc343e318d8a5b0cc4efd9d173c60e958175\n"
    "{\"account\":\"On this "
    "computer\",\"from\":1795305600,\"identifier\":\"eds:personal\",\"name\":\"Personal\","
    "\"readAt\":1795330000.5,\"to\":1796083200}\n"
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n";

} // namespace

/// Files that an earlier version has left on the disk.
class EarlierFilesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void settingsAndLessonsAreKept()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"quillet.ini"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(settingsFile);
        file.close();
        // Twice, to see that the first start writes back what it found.
        for (int start = 0; start < 2; ++start) {
            FakeLoginItem loginItem;
            SettingsStore store(path);
            const AppSettings settings(store, store, loginItem);
            QCOMPARE(settings.notificationDuration(), 9.0);
            QCOMPARE(settings.notificationPosition(), NotificationPosition::topRight);
            QVERIFY(settings.hasCompletedWelcome() && !settings.playsSound() && !settings.startAtLogin());
            QCOMPARE(settings.manualLessons().size(), std::size_t{1});
            const ManualLessonEntry &lesson = settings.manualLessons().front();
            QCOMPARE(lesson.studentName, u"Zoë"_s);
            QCOMPARE(lesson.platform, TeachingPlatform::zoom);
            QCOMPARE(lesson.startTime, dateSince1970(817'000'000.0 + 978'307'200));
            QCOMPARE(lesson.durationMinutes, 30);
            QVERIFY(file.open(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), settingsFile);
            file.close();
        }
    }

    void theMemoryOfACalendarIsKept()
    {
        const auto calendar = decodeMemory(memoryFile);
        QVERIFY(calendar);
        QCOMPARE(calendar->identifier, u"eds:personal"_s);
        QCOMPARE(calendar->name, u"Personal"_s);
        QCOMPARE(calendar->readAt, dateSince1970(1795330000.5));
        QCOMPARE(calendar->text, QByteArray("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nEND:VCALENDAR\r\n"));
        QCOMPARE(encodeMemory(*calendar), memoryFile);
    }
};

QUILLET_TEST(EarlierFilesTest, runTest<EarlierFilesTest>);
#include "EarlierFilesTest.moc"
