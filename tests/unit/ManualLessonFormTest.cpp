// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/ManualLessonForm.h"
#include "Corvane/Utilities/DateText.h"
#include "tests/support/TestProgram.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimeZone>

#include <ctime>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Date now = dateSince1970(1'795'257'000.25); // 2026-11-21 10:30:00.25 UTC

/// Sets the process's time zone during its lifetime.
class Zone {
public:
    explicit Zone(const char *name) : m_before(qgetenv("TZ")) { set(name); }
    ~Zone() { set(m_before); }
    Zone(const Zone &) = delete;
    Zone &operator=(const Zone &) = delete;

private:
    static void set(const QByteArray &name)
    {
        qputenv("TZ", name);
        tzset();
    }

    QByteArray m_before;
};

} // namespace

class ManualLessonFormTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itBeginsWithAnOnlineLessonOfHalfAnHourInHalfAnHour()
    {
        const ManualLessonForm form = ManualLessonForm::at(now);
        QCOMPARE(form.studentName, QString());
        QCOMPARE(form.platform, TeachingPlatform::onlineLesson);
        QCOMPARE((form.startTime - now).count(), 1800.0);
        QCOMPARE(form.durationMinutes, 30);
    }

    void anEntryHoldsWhatWasChosen()
    {
        const QUuid id = QUuid::createUuid();
        const ManualLessonForm form{.studentName = u"Anna"_s,
                                    .platform = TeachingPlatform::zoom,
                                    .startTime = now + Seconds{58},
                                    .durationMinutes = 45};
        const ManualLessonEntry wanted{.id = id,
                                       .studentName = u"Anna"_s,
                                       .platform = TeachingPlatform::zoom,
                                       .startTime = now - Seconds{0.25}, // the whole minute, as shown
                                       .durationMinutes = 45};
        QCOMPARE(form.makeEntry(id), std::optional(wanted));
        QCOMPARE(form.startTime, now + Seconds{58}); // the form itself is unchanged
    }

    void whiteSpaceIsTrimmedFromBothEndsOfTheName_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("name");
        QTest::newRow("spaces") << u"  Anna  "_s << u"Anna"_s;
        QTest::newRow("tabs and line breaks") << u"\t\r\nAnna\n\v\f"_s << u"Anna"_s;
        QTest::newRow("line and paragraph separators") << u"\u2028Anna\u2029\u0085"_s << u"Anna"_s;
        QTest::newRow("other kinds of space") << u"\u00a0\u3000Anna\u2003\u202f"_s << u"Anna"_s;
        QTest::newRow("within the name") << u" Anna  Maria\n B "_s << u"Anna  Maria\n B"_s;
        QTest::newRow("other control characters") << u"\u0007Anna\u001b"_s << u"\u0007Anna\u001b"_s;
        QTest::newRow("chinese") << u"\u3000王小明 "_s << u"王小明"_s;
        QTest::newRow("arabic") << u" محمد الأمين\n"_s << u"محمد الأمين"_s;
        QTest::newRow("200 characters") << u"x"_s.repeated(200) + u' ' << u"x"_s.repeated(200);
    }

    void whiteSpaceIsTrimmedFromBothEndsOfTheName()
    {
        QFETCH(QString, typed);
        QFETCH(QString, name);
        ManualLessonForm form = ManualLessonForm::at(now);
        form.studentName = typed;
        QCOMPARE(form.makeEntry({})->studentName, name);
    }

    void aBlankNameMakesNoEntry()
    {
        ManualLessonForm form = ManualLessonForm::at(now);
        for (const QString &name : {QString(), u"   "_s, u"\n"_s, u"\t \u3000\r\n\u2028"_s}) {
            form.studentName = name;
            QVERIFY(!form.makeEntry({}));
        }
    }

    void lengthsAreShownInMinutes()
    {
        QStringList texts;
        for (const qint64 minutes : manualLessonLengths) {
            texts << lengthText(minutes);
        }
        QCOMPARE(texts, (QStringList{u"15 min"_s, u"20 min"_s, u"25 min"_s, u"30 min"_s, u"40 min"_s,
                                     u"45 min"_s, u"60 min"_s}));
        QCOMPARE(lengthText(7), u"7 min"_s);
        QCOMPARE(lengthText(-9'223'372'036'854'775'807), u"-9223372036854775807 min"_s);
    }

    void eachPlatformHasItsSymbol()
    {
        QStringList symbols;
        for (const TeachingPlatform platform : allTeachingPlatforms) {
            symbols << symbolName(platform);
        }
        QCOMPARE(symbols, (QStringList{u"person.crop.rectangle.stack.fill"_s, u"globe.asia.australia.fill"_s,
                                       u"person.2.wave.2.fill"_s, u"video.fill"_s,
                                       u"bubble.left.and.bubble.right.fill"_s}));
    }

    void aStartIsFormattedForTheLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QLocale::c() << u"Sat 21 Nov 2026 10:30"_s;
        QTest::newRow("britain") << QLocale(u"en_GB"_s) << u"Sat 21/11/2026 10:30"_s;
        QTest::newRow("america") << QLocale(u"en_US"_s) << u"Sat 11/21/2026 10:30 AM"_s;
        QTest::newRow("germany") << QLocale(u"de_DE"_s) << u"Sa. 21.11.2026 10:30"_s;
        QTest::newRow("china") << QLocale(u"zh_CN"_s) << u"周六 2026/11/21 10:30"_s;
    }

    void aStartIsFormattedForTheLocale()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        QCOMPARE(startText(now, locale), text);
    }

    void aStartIsShownInTheMachinesTimeZone()
    {
        const Zone zone("Asia/Shanghai");
        QCOMPARE(startText(now, QLocale::c()), u"Sat 21 Nov 2026 18:30"_s);
        QCOMPARE(startText(dateSince1970(1'795'272'180), QLocale::c()), u"Sat 21 Nov 2026 22:43"_s);
    }

    void everyLocaleHasAnUnambiguousTypeableFormat()
    {
        const QDateTime moment(QDate(2026, 11, 21), QTime(22, 34));
        const auto locales =
            QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
        QVERIFY(locales.size() > 300);
        for (const QLocale &locale : locales) {
            const QString format = startFormat(locale);
            const QString told = format + u" in "_s + locale.name();
            QVERIFY2(format.contains(u"yyyy"_s) && format.contains(u'M') && format.contains(u'd'),
                     qPrintable(told));
            QVERIFY2(format.contains(u'h', Qt::CaseInsensitive) && format.contains(u'm'), qPrintable(told));
            static const QRegularExpression quoted(u"'[^']*'"_s);
            static const QRegularExpression other(u"[^\\WyMdhHmaApP]"_s, QRegularExpression::NoPatternOption);
            QVERIFY2(!QString(format).remove(quoted).contains(other), qPrintable(told));
            QVERIFY2(locale.toString(moment, format) != locale.toString(moment.addSecs(-12 * 3600LL), format),
                     qPrintable(told));
        }
    }

    void aChosenStartIsAWholeMinute()
    {
        const QDateTime shown(QDate(2026, 11, 21), QTime(10, 30, 59, 999), QTimeZone::utc());
        QCOMPARE(secondsSince1970(chosenStart(shown)), 1'795'257'000.0);
        QCOMPARE(chosenStart(shown),
                 fromDateTime(QDateTime(QDate(2026, 11, 21), QTime(10, 30), QTimeZone::utc())));
    }

    void aStartInARepeatedHourStaysInItsOccurrence()
    {
        const Zone zone("Europe/Berlin");
        // 2026-10-25 02:30:20 in winter time, the second 02:30 of that night.
        const QDateTime second = QDateTime::fromSecsSinceEpoch(1'792'891'820);
        QCOMPARE(second.time(), QTime(2, 30, 20));
        QCOMPARE(secondsSince1970(chosenStart(second)), 1'792'891'800.0);
    }
};

QUILLET_TEST(ManualLessonFormTest, runTest<ManualLessonFormTest>);
#include "ManualLessonFormTest.moc"
