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
    [[nodiscard]] SettingsStore &store() { return m_temporary->store(); }

    void writeFile(const QByteArray &bytes) const
    {
        QFile file(m_temporary->path());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    [[nodiscard]] QByteArray diskContent() const
    {
        QFile file(m_temporary->path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }

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

    void onlyLoadedValuesAreWrittenBack()
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

    void lessonsWithAMissingKeyLoadAsAnEmptyList()
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
        // The foreign key disappears when the data is rewritten.
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

    void eachChangeNotifiesObserversAndIsStoredAtOnce()
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

        // Check the file itself: a store would also return values that it has not written yet.
        for (const char *line : {"notificationDuration=5", "startAtLogin=false", "playsSound=false",
                                 "notificationPosition=bottomRight", "hasCompletedWelcome=true"}) {
            QVERIFY2(diskContent().contains(QByteArray(line) + '\n'), line);
        }
        SettingsStore onDisk(m_temporary->path());
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

    void handWrittenBooleansAreUnderstood_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("expected");
        for (const QString &word :
             {u"no"_s, u"off"_s, u"0"_s, u"false"_s, u"No"_s, u"OFF"_s, u" n "_s, u"0.0"_s}) {
            QTest::newRow(qPrintable(word)) << word << false;
        }
        for (const QString &word :
             {u"yes"_s, u"on"_s, u"1"_s, u"true"_s, u"Yes"_s, u"ON"_s, u"y"_s, u"2"_s}) {
            QTest::newRow(qPrintable(word)) << word << true;
        }
    }

    void handWrittenBooleansAreUnderstood()
    {
        QFETCH(QString, stored);
        QFETCH(bool, expected);
        writeFile("[General]\nplaysSound=" + stored.toUtf8() + "\nstartAtLogin=" + stored.toUtf8() +
                  "\nhasCompletedWelcome=" + stored.toUtf8() + '\n');
        SettingsStore onDisk(m_temporary->path());
        const AppSettings settings(onDisk, onDisk, *m_loginItem);
        QCOMPARE(settings.playsSound(), expected);
        QCOMPARE(settings.startAtLogin(), expected);
        QCOMPARE(settings.hasCompletedWelcome(), expected);
        QCOMPARE(m_loginItem->calls.back(), expected ? Call::registered : Call::unregistered);
    }

    void anUnknownBooleanLeavesTheDefault()
    {
        writeFile("[General]\nplaysSound=perhaps\nstartAtLogin=\nhasCompletedWelcome=a,b\n");
        SettingsStore onDisk(m_temporary->path());
        const AppSettings settings(onDisk, onDisk, *m_loginItem);
        QCOMPARE(settings.playsSound(), true);
        QCOMPARE(settings.startAtLogin(), true);
        QCOMPARE(settings.hasCompletedWelcome(), false);
        QCOMPARE(onDisk.value(u"playsSound"_s), QVariant(u"perhaps"_s));
    }

    void aNonNumericDurationLeavesTheDefault()
    {
        for (const QByteArray text : {"ten", "10 seconds", "7,5", "", "0x10", "1e999x"}) {
            writeFile("[General]\nnotificationDuration=" + text + '\n');
            SettingsStore onDisk(m_temporary->path());
            const AppSettings settings(onDisk, onDisk, *m_loginItem);
            QCOMPARE(settings.notificationDuration(), 10.0);
            QVERIFY(diskContent().contains("notificationDuration=" + text + '\n'));
        }
    }

    void anyStoredNumberIsKept()
    {
        const auto loaded = [this](const QByteArray &text) {
            writeFile("[General]\nnotificationDuration=" + text + '\n');
            SettingsStore onDisk(m_temporary->path());
            return AppSettings(onDisk, onDisk, *m_loginItem).notificationDuration();
        };
        QVERIFY(std::isnan(loaded("nan")));
        QCOMPARE(loaded("inf"), std::numeric_limits<double>::infinity());
        QCOMPARE(loaded("-inf"), -std::numeric_limits<double>::infinity());
        QCOMPARE(loaded("0"), 0.0);
        QCOMPARE(loaded("-3"), -3.0);
        QCOMPARE(loaded(" 7.5 "), 7.5);
        QCOMPARE(loaded("1e2"), 100.0);
    }

    void aFailingLoginItemChangesNothingElse()
    {
        m_loginItem->failure = Failure{u"no such folder"_s};
        const auto settings = make();
        QCOMPARE(settings->startAtLogin(), true);
        QCOMPARE(store().value(u"startAtLogin"_s).toBool(), true);
    }

    void lessonDataTruncatedAtAnyByteLoadsAsAnEmptyList()
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
        SettingsStore garbage(m_temporary->path());
        const AppSettings settings(garbage, garbage, *m_loginItem);
        QCOMPARE(settings.notificationPosition(), NotificationPosition::center);
        QCOMPARE(settings.startAtLogin(), true);
        QVERIFY(settings.manualLessons().empty());
    }

    void optionsAreMadeOnlyFromTheirExactValues()
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
