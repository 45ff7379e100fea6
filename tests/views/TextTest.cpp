// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Text.h"
#include "Corvane/Look/Balance.h"
#include "tests/support/Pictures.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QImage>
#include <QTest>

#include <cstdlib>

using namespace corvane;
using namespace Qt::StringLiterals;

class TextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void textBesideLinksStaysPlainText()
    {
        look::Text text(u"<b>a.example</b> & b@a.example, https://a.example"_s, look::TextStyle::body);
        text.setLinks({{u"nowhere"_s, QUrl(u"https://nowhere.example"_s)},
                       {u"b@a.example"_s, QUrl(u"mailto:b@a.example"_s)},
                       {u"https://a.example"_s, QUrl(u"https://a.example"_s)}},
                      {});
        QCOMPARE(text.text(),
                 u"&lt;b&gt;a.example&lt;/b&gt; &amp; <a href=\"mailto:b@a.example\">b@a.example</a>, "
                 "<a href=\"https://a.example\">https://a.example</a>"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(&text)->text(QAccessible::Name),
                 u"<b>a.example</b> & b@a.example, https://a.example"_s);
    }

    void aBalancedTextUsesTheLeastWidthForItsLines()
    {
        const QFont font = look::font(look::TextStyle::body);
        const QFontMetrics metrics(font);
        const auto width = [&](const QString &text) { return metrics.horizontalAdvance(text); };
        const int room = width(u"one two three four"_s) + 1;
        // Unbalanced, the last word would be alone on a second line.
        const int balanced = look::balancedWidth(u"one two three four five"_s, font, room);
        QVERIFY(balanced >= width(u"one two three"_s) && balanced < width(u"one two three four"_s));
        // A single line, a word wider than the room, an empty text.
        QVERIFY(look::balancedWidth(u"one two"_s, font, room) >= width(u"one two"_s));
        QCOMPARE(look::balancedWidth(u"w"_s.repeated(100) + u" one"_s, font, room), room);
        QVERIFY(look::balancedWidth({}, font, room) <= room);
    }

    void aBalancedTextIsCentredOnTheSameNumberOfLines()
    {
        look::Text text(u"one two three four five"_s, look::TextStyle::body);
        text.setAlignment(Qt::AlignCenter);
        const int room = QFontMetrics(text.font()).horizontalAdvance(u"one two three four"_s) + 2;
        text.resize(room, text.heightForWidth(room));
        const QImage before = text.grab().toImage();
        text.setBalanced();
        const QImage after = text.grab().toImage();
        QVERIFY(after != before);
        const auto inked = [](const QImage &picture) {
            QRect ink;
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    if (picture.pixel(x, y) != picture.pixel(0, 0)) {
                        ink |= QRect(x, y, 1, 1);
                    }
                }
            }
            return ink;
        };
        QVERIFY(inked(after).width() < inked(before).width());
        QVERIFY(inked(after).height() >= QFontMetrics(text.font()).height()); // still two lines
        QVERIFY(std::abs(inked(after).center().x() - text.rect().center().x()) <= 3);
    }

    void textsAreAlignedWithTheLayoutDirection()
    {
        const auto inkIsAtTheRight = [](look::Text &text) {
            const QImage picture = text.grab().toImage();
            const auto isInk = [&](int x) {
                for (int y = 0; y < picture.height(); ++y) {
                    if (picture.pixel(x, y) != picture.pixel(0, 0) &&
                        picture.pixel(x, y) != picture.pixel(picture.width() - 1, 0)) {
                        return true;
                    }
                }
                return false;
            };
            for (int x = 0; x < picture.width() / 4; ++x) {
                if (isInk(x)) {
                    return false;
                }
            }
            return true;
        };
        for (const QString &words : {u"English words"_s, u"محمد الأمين"_s}) {
            for (const bool isSelectable : {false, true}) {
                look::Text text(words, look::TextStyle::body);
                if (isSelectable) {
                    text.setSelectable();
                }
                text.resize(400, 30);
                QVERIFY(!inkIsAtTheRight(text));
                text.setLayoutDirection(Qt::RightToLeft);
                QVERIFY(inkIsAtTheRight(text));
                text.setLayoutDirection(Qt::LeftToRight);
                QVERIFY(!inkIsAtTheRight(text));
            }
        }
    }
};

QUILLET_TEST(TextTest, runViewTest<TextTest>);

#include "TextTest.moc"
