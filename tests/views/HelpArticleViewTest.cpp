// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpArticleView.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Look/Text.h"
#include "tests/support/Pictures.h"
#include "tests/views/HelpFixture.h"

#include <QApplication>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class HelpArticleViewTest final : public HelpFixture {
    Q_OBJECT

private Q_SLOTS:
    void anArticleSaysItsSummaryTwice()
    {
        const HelpArticleView view(HelpTopic::quickStart, opener());
        QCOMPARE(texts(view),
                 (QStringList{u"Quick Start"_s, u"Launch Quillet and leave the menu-bar bell running."_s,
                              u"Teaching in Under Two Minutes"_s,
                              u"Launch Quillet and leave the menu-bar bell running."_s,
                              u"Allow calendar and notification access when asked."_s,
                              u"Open the bell menu and choose Test Notification."_s,
                              u"Confirm that you see the banner and hear the sound."_s,
                              u"Begin teaching. Quillet will follow your calendar's lesson times."_s}));
    }

    void everyArticleShowsItsWholeTopic()
    {
        for (const HelpTopic topic : allHelpTopics) {
            QStringList wanted{title(topic), summary(topic)};
            qsizetype points = 0;
            for (const HelpSection &section : sections(topic)) {
                wanted << section.title << section.points;
                points += section.points.size();
            }
            const HelpArticleView view(topic, opener());
            QCOMPARE(texts(view), wanted);
            QCOMPARE(view.findChildren<look::SymbolView *>().size(), points + 1);
            QVERIFY(look::hasSymbol(symbolName(topic)));
        }
        QVERIFY(look::hasSymbol(u"checkmark.circle.fill"_s));
    }

    void anArticleKeepsItsMargins()
    {
        HelpArticleView view(HelpTopic::welcome, opener());
        view.resize(900, 600);
        (void)view.grab();
        const QWidget *article = view.widget();
        QCOMPARE(article->width(), 650);
        const QRect area = place(*article, article);
        const auto found = article->findChildren<look::Text *>();
        const auto symbols = article->findChildren<look::SymbolView *>();
        QCOMPARE(place(*article, symbols.front()).left(), 32);
        QCOMPARE(place(view, article).topLeft(), QPoint(0, 0));
        QCOMPARE(place(*article, found.at(1)).left(), 32);
        for (const auto *text : found) {
            QVERIFY(area.adjusted(32, 32, -32, -32).contains(place(*article, text)));
        }
        // 20 points between blocks, 8 between the lines of a section.
        QCOMPARE(place(*article, found.at(2)).top() - place(*article, found.at(1)).bottom() - 1, 20);
        QCOMPARE(place(*article, found.at(3)).top() - place(*article, found.at(2)).bottom() - 1, 8);
        QCOMPARE(place(*article, found.at(4)).top() - place(*article, found.at(3)).bottom() - 1, 8);
    }

    void theTextsOfAnArticleCanBeSelected()
    {
        HelpArticleView view(HelpTopic::quickStart, opener());
        view.resize(600, 500);
        view.show();
        for (auto *text : view.findChildren<look::Text *>()) {
            QTest::mouseDClick(text, Qt::LeftButton, {}, QPoint(2, QFontMetrics(text->font()).height() / 2));
            QVERIFY2(text->text().startsWith(text->selectedText()) && !text->selectedText().isEmpty(),
                     qPrintable(text->text()));
        }
    }

    void addressAndSiteAreLinks()
    {
        HelpArticleView view(HelpTopic::contact, opener());
        view.resize(600, 500);
        view.show();
        QTRY_VERIFY(view.isActiveWindow());
        view.setFocus();
        const QList<QUrl> wanted{QUrl(u"mailto:support@quillet.example"_s),
                                 QUrl(u"https://quillet.example"_s)};
        for (qsizetype link = 1; link <= wanted.size(); ++link) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QCOMPARE(m_opened, wanted.first(link));
        }
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_Tab); // again from the first link
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(m_opened.size(), 3);
        QCOMPARE(m_opened.back(), wanted.front());
    }
};

QUILLET_TEST(HelpArticleViewTest, runViewTest<HelpArticleViewTest>);

#include "HelpArticleViewTest.moc"
