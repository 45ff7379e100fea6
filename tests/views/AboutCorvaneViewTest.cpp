// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/AboutCorvaneView.h"
#include "Corvane/Look/Badge.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Utilities/InformationDictionary.h"
#include "tests/support/Pictures.h"
#include "tests/views/HelpFixture.h"

#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

constexpr QSize aboutSize(460, 430);

InformationDictionary version(const QByteArray &value)
{
    QBuffer buffer;
    buffer.setData("<plist><dict><key>CFBundleShortVersionString</key>" + value + "</dict></plist>");
    buffer.open(QIODevice::ReadOnly);
    return InformationDictionary(buffer);
}

InformationDictionary released()
{
    return version("<string>1.0.6</string>");
}

} // namespace

class AboutCorvaneViewTest final : public HelpFixture {
    Q_OBJECT

private Q_SLOTS:
    void aboutLooksAsItShould_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<double>("textScale");
        QTest::addColumn<QSize>("size");
        QTest::newRow("light") << false << 1.0 << aboutSize;
        QTest::newRow("dark") << true << 1.0 << aboutSize;
        QTest::newRow("large-text") << false << 2.0 << aboutSize;
        QTest::newRow("small-window") << false << 1.0 << QSize(260, 240);
        QTest::newRow("large-window") << false << 1.0 << QSize(800, 700);
    }

    void aboutLooksAsItShould()
    {
        QFETCH(bool, isDark);
        QFETCH(double, textScale);
        QFETCH(QSize, size);
        pictures::prepareApplication(isDark ? Theme::dark : Theme::light, textScale);
        AboutCorvaneView view(*m_manual, released(), opener());
        compare(view, size, u"about-"_s + QLatin1StringView(QTest::currentDataTag()));
    }

    void aboutShowsExactlyTheseTexts()
    {
        const AboutCorvaneView view(*m_manual, released(), opener());
        QCOMPARE(
            texts(view),
            (QStringList{u"Quillet"_s, u"Start on time."_s, u"Version 1.0.6"_s,
                         u"A calm, reliable teaching assistant for finishing one lesson well and starting "
                         "the next on time."_s,
                         u"Ordwin Software"_s}));
        QStringList buttons;
        for (const auto *button : view.findChildren<QPushButton *>()) {
            buttons.push_back(button->text());
        }
        QCOMPARE(buttons, (QStringList{u"User Manual"_s, u"Contact Support"_s, u"quillet.example"_s,
                                       u"support@quillet.example"_s}));
    }

    void withoutAVersionAboutShowsOnePointZero()
    {
        for (const QByteArray &value :
             {QByteArray(), QByteArray("<real>2.5</real>"), QByteArray("<true/>")}) {
            QCOMPARE(versionLine(version(value)), u"Version 1.0"_s);
        }
        QCOMPARE(versionLine(InformationDictionary()), u"Version 1.0"_s);
        QCOMPARE(versionLine(version("<string>7.8</string>")), u"Version 7.8"_s);
        const AboutCorvaneView view(*m_manual, InformationDictionary(), opener());
        QVERIFY(named<look::Text>(view, u"Version 1.0"_s));
    }

    void aboutKeepsItsMeasures()
    {
        AboutCorvaneView view(*m_manual, released(), opener());
        view.resize(aboutSize);
        (void)view.grab();
        const QWidget *content = view.widget();
        const auto *badge = content->findChild<look::Badge *>();
        QCOMPARE(badge->size(), QSize(88, 88));
        const auto of = [content](const QWidget *widget) { return place(*content, widget); };
        const auto gap = [](const QRect &above, const QRect &below) {
            return below.top() - above.bottom() - 1;
        };
        const auto text = [&view](const QString &words) { return named<look::Text>(view, words); };
        const auto button = [&view](const QString &words) { return named<QPushButton>(view, words); };
        QVERIFY(of(badge).top() >= 36);
        QCOMPARE(of(badge).center().x(), content->rect().center().x());
        QCOMPARE(gap(of(badge), of(text(u"Quillet"_s))), 18);
        QCOMPARE(gap(of(text(u"Quillet"_s)), of(text(u"Start on time."_s))), 5);
        QCOMPARE(gap(of(text(u"Start on time."_s)), of(text(u"Version 1.0.6"_s))), 5);
        const auto *description = content->findChildren<look::Text *>().at(3);
        QCOMPARE(gap(of(text(u"Version 1.0.6"_s)), of(description)), 18);
        QVERIFY(description->width() <= 350);
        QCOMPARE(gap(of(description), of(button(u"User Manual"_s))), 18);
        QCOMPARE(of(button(u"Contact Support"_s)).left() - of(button(u"User Manual"_s)).right() - 1, 12);
        QCOMPARE(gap(of(button(u"User Manual"_s)), of(text(u"Ordwin Software"_s))), 18);
        QCOMPARE(gap(of(text(u"Ordwin Software"_s)), of(button(u"quillet.example"_s))), 4);
        QCOMPARE(gap(of(button(u"quillet.example"_s)), of(button(u"support@quillet.example"_s))), 4);
        QVERIFY(
            content->rect().adjusted(36, 36, -36, -36).contains(of(button(u"support@quillet.example"_s))));
        QCOMPARE(view.verticalScrollBar()->maximum(), 0);
        QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
    }

    void userManualBehavesLikeOpenPdfManual()
    {
        const AboutCorvaneView view(*m_manual, released(), opener());
        auto *button = named<QPushButton>(view, u"User Manual"_s);
        button->click();
        QCOMPARE(m_opened, QList<QUrl>());
        QCOMPARE(m_beeps, 1);
        const QString path = m_room->filePath(u"Quillet-User-Manual.pdf"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        button->click();
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(path)});
        QCOMPARE(m_beeps, 1);
    }

    void theLinksOpenTheirAddresses()
    {
        const AboutCorvaneView view(*m_manual, released(), opener());
        named<QPushButton>(view, u"Contact Support"_s)->click();
        named<QPushButton>(view, u"quillet.example"_s)->click();
        named<QPushButton>(view, u"support@quillet.example"_s)->click();
        QCOMPARE(m_opened,
                 (QList{QUrl(u"mailto:support@quillet.example"_s), QUrl(u"https://quillet.example"_s),
                        QUrl(u"mailto:support@quillet.example"_s)}));
    }

    void aboutReportsTheHeightThatShowsItWhole()
    {
        for (const double scale : {1.0, 1.1, 1.5, 2.0}) {
            pictures::prepareApplication(Theme::light, scale);
            AboutCorvaneView view(*m_manual, released(), opener());
            const int height = view.heightForWidth(aboutSize.width());
            for (const int less : {0, 1}) {
                view.resize(aboutSize.width(), height - less);
                (void)view.grab();
                QCOMPARE(view.verticalScrollBar()->maximum(), less);
            }
        }
    }

    void theKeyboardReachesEverythingInAbout()
    {
        AboutCorvaneView view(*m_manual, released(), opener());
        view.resize(aboutSize);
        view.show();
        QTRY_VERIFY(view.isActiveWindow());
        named<QPushButton>(view, u"User Manual"_s)->setFocus();
        QStringList reached;
        for (int count = 0; count < 4; ++count) {
            reached.push_back(qobject_cast<QPushButton *>(QApplication::focusWidget())->text());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(reached, (QStringList{u"User Manual"_s, u"Contact Support"_s, u"quillet.example"_s,
                                       u"support@quillet.example"_s}));
        QCOMPARE(QApplication::focusWidget(), named<QPushButton>(view, u"User Manual"_s));
    }
};

QUILLET_TEST(AboutCorvaneViewTest, runViewTest<AboutCorvaneViewTest>);

#include "AboutCorvaneViewTest.moc"
