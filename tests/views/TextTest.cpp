// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Text.h"
#include "tests/support/Pictures.h"

#include <QAccessible>
#include <QImage>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class TextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void whatATextHoldsStaysPlainTextBesideItsLinks()
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

    void textsAreAlignedAsThePage()
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
