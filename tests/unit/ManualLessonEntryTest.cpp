// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Calendar/ManualLessonEntry.h"
#include "tests/support/Samples.h"
#include "tests/support/TestProgram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

ManualLessonEntry sampleEntry(qint64 minutes = 25)
{
    return {.id = QUuid(u"{0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0}"_s),
            .studentName = u"Anna \"王\" <b>"_s,
            .platform = TeachingPlatform::microsoftTeams,
            .startTime = at("10:00:00.5"),
            .durationMinutes = minutes};
}

QByteArray stored(const QJsonObject &object)
{
    return QJsonDocument(QJsonArray{object}).toJson();
}

QJsonObject sampleObject()
{
    return {{u"id"_s, u"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"_s},
            {u"studentName"_s, u"Anna"_s},
            {u"platform"_s, u"Zoom"_s},
            {u"startTime"_s, 800000000.25},
            {u"durationMinutes"_s, 25}};
}

} // namespace

class ManualLessonEntryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void lengthsAreUsedAsEntered()
    {
        QCOMPARE(sampleEntry(25).makeLesson().duration, Seconds{1500});
        QCOMPARE(sampleEntry(60).makeLesson().duration, Seconds{3600});
        QCOMPARE(sampleEntry(30).makeLesson().duration, Seconds{1800});
    }

    void anEntryMakesTheSameLessonAtEveryReload()
    {
        const ManualLessonEntry entry = sampleEntry();
        const Lesson first = entry.makeLesson();
        QCOMPARE(first.id, entry.id);
        QVERIFY(first == entry.makeLesson());
        QCOMPARE(first.studentName, entry.studentName);
        QCOMPARE(first.platform, entry.platform);
        QCOMPARE(first.startTime, entry.startTime);
        QVERIFY(first.profile == PlatformProfile::defaults().at(TeachingPlatform::microsoftTeams));
    }

    void aPlatformWithoutAProfileGetsTheGenericOne()
    {
        auto profiles = PlatformProfile::defaults();
        profiles.erase(TeachingPlatform::microsoftTeams);
        QVERIFY(sampleEntry().makeLesson(profiles).profile == profiles.at(TeachingPlatform::onlineLesson));
    }

    void theStoredFormHasExactlyItsFiveKeys()
    {
        const QByteArray data = encode({sampleEntry()}).value();
        const QJsonObject object = QJsonDocument::fromJson(data).array().at(0).toObject();
        QCOMPARE(object.keys(), (QStringList{u"durationMinutes"_s, u"id"_s, u"platform"_s, u"startTime"_s,
                                             u"studentName"_s}));
        QCOMPARE(object[u"id"_s], QJsonValue(u"0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0"_s));
        QCOMPARE(object[u"studentName"_s], QJsonValue(u"Anna \"王\" <b>"_s));
        QCOMPARE(object[u"platform"_s], QJsonValue(u"Microsoft Teams"_s));
        // 2026-11-16 10:00:00.5 UTC, counted from 2001.
        QCOMPARE(object[u"startTime"_s], QJsonValue(816516000.5));
        QCOMPARE(object[u"durationMinutes"_s], QJsonValue(25));
    }

    void theStoredFormReadsBackEqual()
    {
        ManualLessonEntry odd = sampleEntry(std::numeric_limits<qint64>::max());
        odd.startTime = dateSince1970(1731657600.1234567);
        odd.studentName = QString();
        odd.platform = TeachingPlatform::onlineLesson;
        const std::vector entries{sampleEntry(), odd, sampleEntry(-3)};
        QVERIFY(decodeManualLessons(encode(entries).value()).value() == entries);
        QVERIFY(decodeManualLessons(encode(std::vector<ManualLessonEntry>()).value()).value().empty());
    }

    void aStartThatIsNotFiniteIsNotEncoded()
    {
        ManualLessonEntry entry = sampleEntry();
        entry.startTime = dateSince1970(std::numeric_limits<double>::infinity());
        QVERIFY(!encode({entry}));
        entry.startTime = dateSince1970(std::nan(""));
        QVERIFY(!encode({entry}));
    }

    void aMissingKeyRejectsTheList()
    {
        QVERIFY(decodeManualLessons(stored(sampleObject())));
        for (const QString &key : sampleObject().keys()) {
            QJsonObject object = sampleObject();
            object.remove(key);
            const auto decoded = decodeManualLessons(stored(object));
            QVERIFY2(!decoded, qPrintable(key));
            QCOMPARE(decoded.error().localizedDescription, u"a stored lesson is not whole"_s);
        }
    }

    void aWrongValueRejectsTheList()
    {
        const auto rejects = [](const QString &key, const QJsonValue &value) {
            QJsonObject object = sampleObject();
            object[key] = value;
            return !decodeManualLessons(stored(object));
        };
        QVERIFY(rejects(u"id"_s, u"0F1E2D3C"_s));
        QVERIFY(rejects(u"id"_s, u"{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}"_s));
        QVERIFY(rejects(u"id"_s, 4));
        QVERIFY(rejects(u"studentName"_s, 4));
        QVERIFY(rejects(u"platform"_s, u"Skype"_s));
        QVERIFY(rejects(u"startTime"_s, u"800000000"_s));
        QVERIFY(rejects(u"durationMinutes"_s, 7.5));
        QVERIFY(rejects(u"durationMinutes"_s, u"25"_s));
        QVERIFY(!rejects(u"durationMinutes"_s, 25.0));
        QVERIFY(!rejects(u"id"_s, u"0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0"_s));
        QVERIFY(!rejects(u"somethingElse"_s, 1));
    }

    void dataTruncatedAtAnyByteIsRejected()
    {
        const QByteArray data = encode({sampleEntry(), sampleEntry(60)}).value();
        for (qsizetype length = 0; length < data.size(); ++length) {
            QVERIFY(!decodeManualLessons(data.left(length)));
        }
        QVERIFY(decodeManualLessons(data));
    }
};

QUILLET_TEST(ManualLessonEntryTest, runTest<ManualLessonEntryTest>);
#include "ManualLessonEntryTest.moc"
