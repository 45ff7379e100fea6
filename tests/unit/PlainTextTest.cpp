// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/PlainText.h"
#include "Corvane/Utilities/OneLine.h"
#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class PlainTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ordinaryTextIsUnchanged()
    {
        for (const QString &text : {QString(), u"Anna  Ö 王 😀"_s, u"محمد"_s, u"a\u200Bb\u200Ec\u00A0d"_s}) {
            QCOMPARE(plainText(text), text);
        }
    }

    void controlCharactersAndLineEndsBecomeSpaces()
    {
        for (char16_t c = 0; c < 0x100; ++c) {
            const bool isControlCharacter = c < 0x20 || (c >= 0x7F && c < 0xA0);
            const QString text = u'a' + QString(QChar(c)) + u'b';
            QCOMPARE(plainText(text), isControlCharacter ? u"a b"_s : text);
        }
        QCOMPARE(plainText(u"a\u2028b\u2029c\r\nd"_s), u"a b c  d"_s);
        QCOMPARE(plainText(u"\x1b[31mAnna\x1b]0;title\x07"_s), u" [31mAnna ]0;title "_s);
    }

    void directionMarksAreRemoved()
    {
        QCOMPARE(plainText(u"a\u202Ab\u202Bc\u202Cd\u202De\u202Ef"_s), u"abcdef"_s);
        QCOMPARE(plainText(u"\u2066a\u2067b\u2068c\u2069"_s), u"abc"_s);
    }

    void aLineIsCutAtItsMaximumLength()
    {
        QCOMPARE(oneLine(u"abcdef"_s, 6), u"abcdef"_s);
        QCOMPARE(oneLine(u"abcdefg"_s, 6), u"abcdef"_s);
        QCOMPARE(oneLine(u"abcdef"_s, 0), QString());
        QCOMPARE(oneLine(u"abcde fg"_s, 6), u"abcde"_s);
        // A pair of surrogates is not split.
        QCOMPARE(oneLine(u"abcde😀g"_s, 6), u"abcde😀"_s);
    }

    void aLineHasSingleSpacesAndNoDirectionMarks()
    {
        QCOMPARE(oneLine(u" \n a\r\n\tb\u00A0\u2003c\u202Ed \x1b"_s), u"a b cd"_s);
    }
};

QUILLET_TEST(PlainTextTest, runTest<PlainTextTest>);
#include "PlainTextTest.moc"
