// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/CalendarBytes.h"
#include "tests/support/TestProgram.h"

#include <QStringEncoder>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QByteArray end = "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";

QByteArray calendar(const QByteArray &line)
{
    return "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\n" + line + end;
}

/// The unfolded text, or the reason why there is none.
QByteArray read(const QByteArray &bytes)
{
    const auto text = toCalendarText(bytes);
    if (!text) {
        return (text.error().isTruncated ? "truncated: " : "error: ") + text.error().reason.toUtf8();
    }
    return QByteArray(*text).replace("\r\n ", "");
}

QByteArray encoded(QStringConverter::Encoding encoding, const QString &text, bool hasMark)
{
    QStringEncoder encoder(encoding,
                           hasMark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return encoder.encode(text);
}

} // namespace

class CalendarBytesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyEncodingIsDetected_data()
    {
        using Encoding = QStringConverter::Encoding;
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title");
        const QString title = u"SUMMARY:Zoom - Grüße 课"_s;
        const QString text = QString::fromUtf8(calendar(title.toUtf8()));
        QTest::newRow("UTF-8") << text.toUtf8() << title;
        QTest::newRow("UTF-8 with a byte order mark") << "\xEF\xBB\xBF" + text.toUtf8() << title;
        for (const bool hasMark : {false, true}) {
            const char *mark = hasMark ? " with a byte order mark" : "";
            QTest::addRow("UTF-16LE%s", mark) << encoded(Encoding::Utf16LE, text, hasMark) << title;
            QTest::addRow("UTF-16BE%s", mark) << encoded(Encoding::Utf16BE, text, hasMark) << title;
        }
        QTest::newRow("Latin-1") << calendar("SUMMARY:Zoom - Gr\xFC\xDF"
                                             "e")
                                 << u"SUMMARY:Zoom - Grüße"_s;
        QTest::newRow("Windows-1252") << calendar("SUMMARY:Zoom \x96 5 \x80") << u"SUMMARY:Zoom – 5 €"_s;
        QTest::newRow("a stray byte") << calendar("SUMMARY:\xE8\xAF\xBE\xE8 x") << u"SUMMARY:课è x"_s;
        QTest::newRow("folded within a character")
            << calendar("SUMMARY:\xE8\xAF\r\n \xBE") << u"SUMMARY:课"_s;
    }

    void everyEncodingIsDetected()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, title);
        QCOMPARE(QString::fromUtf8(read(bytes)), QString::fromUtf8(calendar(title.toUtf8())));
    }

    void anyLineEndIsAccepted()
    {
        const QByteArray text = calendar("SUMMARY:a");
        QCOMPARE(read(QByteArray(text).replace("\r\n", "\n")), text);
        QCOMPARE(read(QByteArray(text).replace("\r\n", "\r")), text);
        QCOMPARE(read(text.chopped(2)), text);
    }

    void nullBytesBecomeBlanks()
    {
        QCOMPARE(read(calendar(QByteArray("SUMMARY:a\0b", 11))), calendar("SUMMARY:a b"));
    }

    void aTextWithoutItsEndIsReportedAsTruncated()
    {
        const QByteArray text = calendar("SUMMARY:a");
        for (qsizetype length = 0; length < text.size() - 4; ++length) {
            QVERIFY2(read(text.first(length)).startsWith("truncated"), qPrintable(QString::number(length)));
        }
        QVERIFY(read(QByteArray(5'000, '\0')).startsWith("truncated"));
        QVERIFY(read(text + text.chopped(10)).startsWith("truncated"));
    }

    void aTextThatIsNotACalendarIsAnError()
    {
        QCOMPARE(read("BEGIN:VCARD\r\nFN:Anna\r\nEND:VCARD\r\n"), QByteArray("error: it holds no calendar"));
        QCOMPARE(read("\xff\xfe"), QByteArray("truncated: it is empty"));
        QCOMPARE(read("garbage"), QByteArray("error: it holds no calendar"));
    }

    void deepNestingIsRefused()
    {
        QCOMPARE(read("BEGIN:VCALENDAR\r\n" + QByteArray("BEGIN:VEVENT\r\n").repeated(100'000)),
                 QByteArray("error: it is nested too deeply"));
    }

    void longValuesAreCutBetweenCharacters()
    {
        for (const char *unit : {"x", "课", "\\n", "\\\\", "x\\,"}) {
            const QByteArray text = read(calendar("DESCRIPTION:" + QByteArray(unit).repeated(200'000)));
            const qsizetype begin = text.indexOf("DESCRIPTION:") + 12;
            const QByteArray value = text.mid(begin, text.indexOf("\r\n", begin) - begin);
            QVERIFY(value.size() <= maximumValueBytes);
            QVERIFY(value.size() > maximumValueBytes - 5);
            QCOMPARE(QString::fromUtf8(value).toUtf8(), value);
            const qsizetype backslashes = value.count('\\');
            QVERIFY2(qstrcmp(unit, "\\\\") != 0 || backslashes % 2 == 0, unit);
            QVERIFY2(qstrcmp(unit, "\\n") != 0 || !value.endsWith('\\'), unit);
            QVERIFY(text.endsWith(end));
        }
    }

    void onlyEventsAndTimeZonesAreKept()
    {
        const QByteArray zone =
            "BEGIN:VTIMEZONE\r\nTZID:Own\r\nBEGIN:STANDARD\r\nTZNAME:a\r\nEND:STANDARD\r\n"
            "END:VTIMEZONE\r\n";
        const QByteArray event = "BEGIN:VEVENT\r\nUID:a\r\nSUMMARY:a\r\n";
        const QByteArray alarm = "ATTACH:a\r\nBEGIN:VALARM\r\nDESCRIPTION:b\r\nEND:VALARM\r\nATTENDEE:b\r\n";
        const QByteArray task = "BEGIN:VTODO\r\nSUMMARY:c\r\nEND:VTODO\r\n";
        const auto around = [](const QByteArray &text) {
            return "BEGIN:VCALENDAR\r\nMETHOD:PUBLISH\r\n" + text + "END:VCALENDAR\r\n";
        };
        QCOMPARE(read(around(zone + task + event + alarm + "URL:c\r\nEND:VEVENT\r\n" + task)),
                 around(zone + event + "URL:c\r\nEND:VEVENT\r\n"));
    }

    void anUnclosedEventDoesNotSwallowTheNext()
    {
        const auto around = [](const QByteArray &text) {
            return "BEGIN:VCALENDAR\r\n" + text + "END:VCALENDAR\r\n";
        };
        const QByteArray event = "BEGIN:VEVENT\r\nUID:a\r\n";
        const QByteArray close = "END:VEVENT\r\n";
        QCOMPARE(read(around(event + event + "BEGIN:VALARM\r\n" + event)),
                 around(event + close + event + close + event + close));
        QCOMPARE(read(around(event + close + close)), around(event + close));
    }

    void excessRulesAndDatesAreDropped()
    {
        const QByteArray text =
            read(calendar(QByteArray("RRULE:FREQ=DAILY\r\n").repeated(300) + "EXDATE:20250514" +
                          QByteArray(",20250514").repeated(1'000'000)));
        QCOMPARE(text.count("RRULE"), 11);
        QCOMPARE(text.count("EXDATE"), 10'001);
    }

    void aLineWithOverlongParametersIsLeftOut()
    {
        QCOMPARE(read(calendar("SUMMARY;CN=\"" + QByteArray(200'000, 'x') + "\":mailto:a")),
                 QByteArray(calendar("")).replace("\r\n\r\n", "\r\n"));
    }
};

QUILLET_TEST(CalendarBytesTest, runTest<CalendarBytesTest>);
#include "CalendarBytesTest.moc"
