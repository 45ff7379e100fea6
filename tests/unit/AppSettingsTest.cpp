// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/AppSettings.h"
#include "Corvane/Settings/NotificationDurationOption.h"
#include "tests/support/FakeLoginItem.h"
#include "tests/support/Samples.h"
#include "tests/support/TemporarySettings.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

ManualLessonEntry sampleEntry()
{
    return {.id = QUuid::createUuid(),
            .studentName = u"Anna"_s,
            .platform = TeachingPlatform::zoom,
            .startTime = at("10:00:00"),
            .durationMinutes = 25};
}

using Call = FakeLoginItem::Call;

} // namespace

class AppSettingsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<TemporarySettings> m_temporary;
    std::unique_ptr<FakeLoginItem> m_loginItem;

    [[nodiscard]] std::unique_ptr<AppSettings> make()
    {
        return std::make_unique<AppSettings>(store(), store(), *m_loginItem);
    }
    [[nodiscard]] QSettings &store() { return m_temporary->store(); }

private Q_SLOTS:
    void init()
    {
        m_temporary = std::make_unique<TemporarySettings>();
        m_loginItem = std::make_unique<FakeLoginItem>();
    }

    void emptyDefaultsLeaveOneKeyAndARegisteredLoginItem()
    {
        const auto settings = make();
        QCOMPARE(store().allKeys(), QStringList{u"startAtLogin"_s});
        QCOMPARE(store().value(u"startAtLogin"_s).toBool(), true);
        QVERIFY(m_loginItem->isRegistered);
        QCOMPARE(m_loginItem->calls, (std::vector{Call::registered, Call::registered}));
        QCOMPARE(settings->notificationDuration(), 10.0);
        QCOMPARE(settings->notificationPosition(), NotificationPosition::center);
        QCOMPARE(settings->playsSound(), true);
        QCOMPARE(settings->startAtLogin(), true);
        QCOMPARE(settings->hasCompletedWelcome(), false);
        QVERIFY(settings->manualLessons().empty());
    }

    void anUnknownPositionStaysStoredAndIsNotUsed()
    {
        for (const QString &text : {u"Center"_s, u"TopLeft"_s, u"left"_s, QString()}) {
            store().setValue(u"notificationPosition"_s, text);
            QCOMPARE(make()->notificationPosition(), NotificationPosition::center);
            QCOMPARE(store().value(u"notificationPosition"_s).toString(), text);
        }
    }

    void aStoredPositionIsUsed()
    {
        for (const NotificationPosition position : allNotificationPositions) {
            store().setValue(u"notificationPosition"_s, rawValue(position));
            QCOMPARE(make()->notificationPosition(), position);
        }
    }

    void anyStoredDurationIsUsedAndShownAsTheNearestOption()
    {
        const auto shown = [this](double stored) {
            store().setValue(u"notificationDuration"_s, stored);
            const auto settings = make();
            return settings->notificationDuration() == stored
                       ? title(nearestNotificationDurationOption(settings->notificationDuration()))
                       : u"not kept"_s;
        };
        QCOMPARE(shown(7.0), u"5 seconds"_s);
        QCOMPARE(shown(8.0), u"10 seconds"_s);
        QCOMPARE(shown(7.5), u"5 seconds"_s);
        QCOMPARE(shown(0.0), u"5 seconds"_s);
        QCOMPARE(shown(-1.0), u"5 seconds"_s);
        QCOMPARE(shown(3600.0), u"10 seconds"_s);
        QCOMPARE(title(nearestNotificationDurationOption(std::nan(""))), u"5 seconds"_s);
    }

    void aStoredFalseUnregistersTwiceAndIsRewritten()
    {
        TemporarySettings read;
        read.store().setValue(u"startAtLogin"_s, false);
        const AppSettings settings(read.store(), store(), *m_loginItem);
        QCOMPARE(settings.startAtLogin(), false);
        QCOMPARE(m_loginItem->calls, (std::vector{Call::unregistered, Call::unregistered}));
        QCOMPARE(store().value(u"startAtLogin"_s), QVariant(false));
    }

    void whatIsLoadedIsWrittenBackAndNothingElse()
    {
        TemporarySettings read;
        read.store().setValue(u"notificationPosition"_s, u"topLeft"_s);
        read.store().setValue(u"notificationDuration"_s, 7.0);
        read.store().setValue(u"playsSound"_s, false);
        read.store().setValue(u"hasCompletedWelcome"_s, true);
        const AppSettings settings(read.store(), store(), *m_loginItem);
        QCOMPARE(store().value(u"notificationPosition"_s), QVariant(u"topLeft"_s));
        QCOMPARE(store().value(u"notificationDuration"_s).toDouble(), 7.0);
        QCOMPARE(store().value(u"playsSound"_s), QVariant(false));
        QCOMPARE(store().value(u"hasCompletedWelcome"_s), QVariant(true));
        QCOMPARE(store().value(u"startAtLogin"_s), QVariant(true));
        QCOMPARE(store().allKeys().size(), 5);
    }

    void lessonsWithoutOneKeyStartAnEmptyList()
    {
        QByteArray data = encode({sampleEntry()}).value();
        data.replace(",\"durationMinutes\":25", "").replace("\"durationMinutes\":25,", "");
        QVERIFY(!data.contains("durationMinutes"));
        store().setValue(u"manualLessons"_s, data);
        QVERIFY(make()->manualLessons().empty());
        QCOMPARE(store().value(u"manualLessons"_s).toByteArray(), data);
    }

    void corruptLessonsStayStoredUntilTheListChanges()
    {
        const QByteArray corrupt = "[{\"id\": 1";
        store().setValue(u"manualLessons"_s, corrupt);
        const auto settings = make();
        QVERIFY(settings->manualLessons().empty());
        QCOMPARE(store().value(u"manualLessons"_s).toByteArray(), corrupt);
        settings->setManualLessons({sampleEntry()});
        QVERIFY(decodeManualLessons(store().value(u"manualLessons"_s).toByteArray()).value() ==
                settings->manualLessons());
    }

    void storedLessonsAreLoadedAndWrittenBackAtOnce()
    {
        const std::vector entries{sampleEntry(), sampleEntry()};
        // A foreign key shows whether the data was written anew.
        QByteArray data = encode(entries).value();
        data.replace("{", "{\"foreign\":1,");
        store().setValue(u"manualLessons"_s, data);
        const auto settings = make();
        QVERIFY(settings->manualLessons() == entries);
        QVERIFY(decodeManualLessons(store().value(u"manualLessons"_s).toByteArray()).value() == entries);
        QVERIFY(!store().value(u"manualLessons"_s).toByteArray().contains("foreign"));
    }

    void lessonsThatCannotBeEncodedAreNotStored()
    {
        const auto settings = make();
        settings->setManualLessons({sampleEntry()});
        const QByteArray before = store().value(u"manualLessons"_s).toByteArray();
        ManualLessonEntry endless = sampleEntry();
        endless.startTime = dateSince1970(std::numeric_limits<double>::infinity());
        settings->setManualLessons({endless});
        QCOMPARE(store().value(u"manualLessons"_s).toByteArray(), before);
        QCOMPARE(settings->manualLessons().size(), std::size_t{1});
    }

    void eachChangeTellsTheObserversAndIsStoredAtOnce()
    {
        const auto settings = make();
        const QSignalSpy duration(settings.get(), &AppSettings::notificationDurationChanged);
        const QSignalSpy login(settings.get(), &AppSettings::startAtLoginChanged);
        const QSignalSpy sound(settings.get(), &AppSettings::playsSoundChanged);
        const QSignalSpy position(settings.get(), &AppSettings::notificationPositionChanged);
        const QSignalSpy welcome(settings.get(), &AppSettings::hasCompletedWelcomeChanged);
        const QSignalSpy lessons(settings.get(), &AppSettings::manualLessonsChanged);
        settings->setNotificationDuration(5.0);
        settings->setStartAtLogin(false);
        settings->setPlaysSound(false);
        settings->setNotificationPosition(NotificationPosition::bottomRight);
        settings->setHasCompletedWelcome(true);
        settings->setManualLessons({sampleEntry()});
        for (const QSignalSpy *spy : {&duration, &login, &sound, &position, &welcome, &lessons}) {
            QCOMPARE(spy->count(), 1);
        }
        QCOMPARE(m_loginItem->calls.back(), Call::unregistered);

        // Read by another store over the same file: what was set is on the disk.
        QSettings onDisk(m_temporary->path(), QSettings::IniFormat);
        FakeLoginItem loginItem;
        const AppSettings again(onDisk, onDisk, loginItem);
        QCOMPARE(again.notificationDuration(), 5.0);
        QCOMPARE(again.startAtLogin(), false);
        QCOMPARE(again.playsSound(), false);
        QCOMPARE(again.notificationPosition(), NotificationPosition::bottomRight);
        QCOMPARE(again.hasCompletedWelcome(), true);
        QVERIFY(again.manualLessons() == settings->manualLessons());
    }

    void writesGoToTheStandardStoreWhateverStoreWasRead()
    {
        TemporarySettings injected;
        injected.store().setValue(u"notificationDuration"_s, 7.0);
        AppSettings settings(injected.store(), store(), *m_loginItem);
        settings.setPlaysSound(false);
        QCOMPARE(injected.store().allKeys(), QStringList{u"notificationDuration"_s});
        QCOMPARE(store().value(u"notificationDuration"_s).toDouble(), 7.0);
        QCOMPARE(store().value(u"playsSound"_s).toBool(), false);
    }

    void aLoginItemThatFailsChangesNothingElse()
    {
        m_loginItem->failure = Failure{u"no such folder"_s};
        const auto settings = make();
        QCOMPARE(settings->startAtLogin(), true);
        QCOMPARE(store().value(u"startAtLogin"_s).toBool(), true);
    }

    void lessonDataCutAtAnyByteStartsWithAnEmptyList()
    {
        const QByteArray data = encode({sampleEntry()}).value();
        for (qsizetype length = 0; length < data.size(); ++length) {
            store().setValue(u"manualLessons"_s, data.left(length));
            QVERIFY(make()->manualLessons().empty());
            QCOMPARE(store().value(u"manualLessons"_s).toByteArray(), data.left(length));
        }
    }

    void aGarbageFileGivesTheDefaults()
    {
        QFile file(m_temporary->path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("\x00\xff[[[\n=%%%\nnotificationDuration=@Variant(\x01", 32));
        file.close();
        QSettings garbage(m_temporary->path(), QSettings::IniFormat);
        const AppSettings settings(garbage, garbage, *m_loginItem);
        QCOMPARE(settings.notificationPosition(), NotificationPosition::center);
        QCOMPARE(settings.startAtLogin(), true);
        QVERIFY(settings.manualLessons().empty());
    }

    void optionsAreMadeFromExactlyTheirValues()
    {
        QCOMPARE(notificationDurationOption(5.0), NotificationDurationOption::fiveSeconds);
        QCOMPARE(notificationDurationOption(10.0), NotificationDurationOption::tenSeconds);
        QVERIFY(!notificationDurationOption(5.0000001));
        QVERIFY(!notificationDurationOption(std::nan("")));
        QVERIFY(!notificationPosition(u"Center"_s));
        QStringList titles;
        for (const NotificationPosition position : allNotificationPositions) {
            titles.append(title(position));
            QCOMPARE(notificationPosition(rawValue(position)), position);
        }
        QCOMPARE(titles, (QStringList{u"Center"_s, u"Top"_s, u"Bottom"_s, u"Top Left"_s, u"Top Right"_s,
                                      u"Bottom Left"_s, u"Bottom Right"_s}));
        QCOMPARE(title(NotificationDurationOption::fiveSeconds), u"5 seconds"_s);
        QCOMPARE(title(NotificationDurationOption::tenSeconds), u"10 seconds"_s);
    }
};

QUILLET_TEST(AppSettingsTest, runTest<AppSettingsTest>);
#include "AppSettingsTest.moc"
