// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Services/NameInitials.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class NameInitialsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initialsAreTheFirstCharactersOfWords()
    {
        QCOMPARE(initials(u"Anna"_s), u"A."_s);
        QCOMPARE(initials(u" Anna  Maria\tSmith"_s), u"A. M. S."_s);
        QCOMPARE(initials(u"Anna-Lena O'Neil (B2)"_s), u"A. L. O. B."_s);
        QCOMPARE(initials(u"王小明"_s), u"王."_s);
        QCOMPARE(initials(u"محمد الأمين"_s), u"م. ا."_s);
        QCOMPARE(initials(u"E\u0301mile"_s), u"\u00C9."_s);
        QCOMPARE(initials(u"\U00020000\U00020001"_s), u"\U00020000."_s);
        QCOMPARE(initials(u"?!"_s), u"…"_s);
        QCOMPARE(initials(QString()), u"…"_s);
    }

    void knownNamesAreCutEverywhere_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cut");
        const auto row = [](const char *name, const QStringList &names, const QString &text,
                            const QString &cut) { QTest::newRow(name) << names << text << cut; };
        row("alone", {u"Anna"_s}, u"Anna"_s, u"A."_s);
        row("in a sentence", {u"Anna"_s}, u"Finish up Anna (Zoom)"_s, u"Finish up A. (Zoom)"_s);
        row("in another case", {u"Anna"_s}, u"/calendars/ANNA.ics, anna"_s, u"/calendars/A..ics, A."_s);
        row("two words", {u"Anna Maria"_s}, u"Anna Maria, Maria and Anna"_s, u"A. M., M. and A."_s);
        row("the longer first", {u"Anna"_s, u"Anna Maria"_s}, u"Anna Maria, Anna"_s, u"A. M., A."_s);
        row("with a hyphen", {u"Anna-Lena"_s}, u"to Anna-Lena, Lena"_s, u"to A. L., L."_s);
        row("a small word in a name stays", {u"Anna de Vries"_s}, u"de Anna de Vries, Vries"_s,
            u"de A. d. V., V."_s);
        row("not part of a word", {u"Al"_s, u"Ann"_s, u"Ende"_s}, u"calendar annual calendars Al-Ann"_s,
            u"calendar annual calendars A.-A."_s);
        row("not before an accent", {u"Ann"_s}, u"Ann\u0301"_s, u"An\u0144"_s);
        row("not before an accent that stays apart", {u"Anq"_s}, u"Anq\u0301"_s, u"Anq\u0301"_s);
        row("beside digits and underscores", {u"Anna"_s}, u"anna12 x_anna_1"_s, u"A.12 x_A._1"_s);
        row("Chinese", {u"王小明"_s}, u"与王小明上课"_s, u"与王.上课"_s);
        row("Latin amid Chinese", {u"Anna"_s}, u"和Anna上课"_s, u"和A.上课"_s);
        row("Arabic", {u"محمد"_s}, u"مع ومحمد"_s, u"مع وم."_s);
        row("Cyrillic", {u"Мария"_s}, u"МАРИЯ!"_s, u"М.!"_s);
        row("composed and not", {u"\u00C9mile"_s}, u"E\u0301mile"_s, u"\u00C9."_s);
        row("not a name", {u"Student"_s, u""_s, u"A"_s}, u"a student=x Student"_s, u"a student=x Student"_s);
        row("pattern characters", {u"A.* (x)"_s}, u"A.* (x) Axx"_s, u"A. x. Axx"_s);
    }

    void knownNamesAreCutEverywhere()
    {
        QFETCH(QStringList, names);
        QFETCH(QString, text);
        QFETCH(QString, cut);
        QCOMPARE(NameInitials(names).applied(text), cut);
    }

    void logFieldsAreCutEvenForUnknownNames_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cut");
        QTest::newRow("student") << u"calendar lesson student=\"Ben Ox\" platform=\"Zoom\" start=1"_s
                                 << u"calendar lesson student=\"B. O.\" platform=\"Zoom\" start=1"_s;
        QTest::newRow("title") << u"left out title=\"Ben & Cem\" reason=\"too long\""_s
                               << u"left out title=\"B. C.\" reason=\"too long\""_s;
        QTest::newRow("with quotation marks") << u"student=\"Ben \"Big\" Ox\" platform=\"Zoom\""_s
                                              << u"student=\"B. B. O.\" platform=\"Zoom\""_s;
        QTest::newRow("no end") << u"title=\"Ben Ox"_s << u"title=\"B. O."_s;
        QTest::newRow("a word at the end") << u"title=\"Ben\" Ox"_s << u"title=\"B. O."_s;
        QTest::newRow("line breaks") << u"student=\"Ben\nOx\" platform=\"Zoom\""_s
                                     << u"student=\"B. O.\" platform=\"Zoom\""_s;
        QTest::newRow("no field") << u"subtitle=\"Ben\" student=Ben"_s << u"subtitle=\"Ben\" student=Ben"_s;
    }

    void logFieldsAreCutEvenForUnknownNames()
    {
        QFETCH(QString, text);
        QFETCH(QString, cut);
        QCOMPARE(NameInitials({}).applied(text), cut);
    }

    void linksAreLeftOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cut");
        QTest::newRow("with a scheme") << u"at https://us02web.zoom.us/j/1?pwd=x now"_s << u"at [link] now"_s;
        QTest::newRow("in a field") << u"error=\"webcal://a.example/x\" at=1"_s << u"error=\"[link]\" at=1"_s;
        QTest::newRow("without") << u"zoom.us/j/123 meet.google.com/abc-def"_s << u"[link] [link]"_s;
        QTest::newRow("other kinds") << u"www.a.example MAILTO:x@a.example tel:+49"_s
                                     << u"[link] [link] [link]"_s;
        QTest::newRow("paths stay") << u"/home/t.x/.local/state/a.b/quillet-debug.log Europe/Berlin"_s
                                    << u"/home/t.x/.local/state/a.b/quillet-debug.log Europe/Berlin"_s;
    }

    void linksAreLeftOut()
    {
        QFETCH(QString, text);
        QFETCH(QString, cut);
        QCOMPARE(NameInitials({}).applied(text), cut);
    }

    void directionMarksAndLineBreaksAreRemoved()
    {
        QCOMPARE(NameInitials({u"An\u202Ena\nX"_s}).applied(u"\u2066An\u202Ena\tX\r\n\u0007 end\u2069"_s),
                 u"A. X. end"_s);
    }

    void aNameAtTheEndOfATruncatedTextIsCut()
    {
        const QString name = u"Annabella Christina"_s;
        const NameInitials names({name});
        for (qsizetype before = 970; before < 1010; ++before) {
            const QString cut = names.applied(QString(before, u'.') + name + QString(5000, u'.'));
            QVERIFY2(!cut.contains(u"An"_s) && !cut.contains(u"Chr"_s), qPrintable(cut.right(60)));
            QVERIFY(cut.endsWith(u'…') && cut.size() < 1010);
        }
    }

    void megabytesAreHandledQuickly()
    {
        // Reading these to the end would take minutes; the test's time limit would notice.
        const QString megabyte = u"Anna "_s.repeated(1'000'000);
        QStringList names(300, megabyte);
        for (int index = 0; index < 1000; ++index) {
            names.append(u"Anna %1"_s.arg(index));
        }
        const NameInitials initialsOf(names);
        for (const QString &text : {megabyte, u"a.a"_s.repeated(1'000'000), u"title=\""_s.repeated(500'000),
                                    u"https://"_s.repeated(500'000)}) {
            const QString cut = initialsOf.applied(text);
            QVERIFY(cut.size() <= 1201 && !cut.contains(u"Anna"_s));
        }
        QVERIFY(initials(megabyte).size() < 1000);
    }

    void anEndlessNameIsRemovedCompletely()
    {
        const QString endless = u"Ann Bell "_s.repeated(60);
        QCOMPARE(
            NameInitials({endless}).applied(u"message=\""_s + endless + u"\" state=x"_s).section(u"\""_s, 2),
            u" state=x"_s);
    }
};

QUILLET_TEST(NameInitialsTest, runTest<NameInitialsTest>);
#include "NameInitialsTest.moc"
