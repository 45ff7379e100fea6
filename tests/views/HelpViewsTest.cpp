// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Badge.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/SymbolView.h"
#include "Corvane/Look/Symbols.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Utilities/InformationDictionary.h"
#include "Corvane/Views/AboutCorvaneView.h"
#include "Corvane/Views/HelpArticleView.h"
#include "Corvane/Views/HelpCenterView.h"
#include "Corvane/Views/UserManualPDF.h"
#include "tests/support/Pictures.h"

#include <QAccessible>
#include <QApplication>
#include <QBuffer>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using pictures::Theme;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize helpSize(920, 620);
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

QRect place(const QWidget &view, const QWidget *child)
{
    return {child->mapTo(&view, QPoint()), child->size()};
}

/// The view's texts from top to bottom, as a screen reader reads them.
QStringList texts(const QWidget &view)
{
    QStringList found;
    for (auto *text : view.findChildren<look::Text *>()) {
        found.push_back(QAccessible::queryAccessibleInterface(text)->text(QAccessible::Name));
    }
    return found;
}

template <typename Widget>
Widget *named(const QWidget &view, const QString &text)
{
    for (auto *widget : view.findChildren<Widget *>()) {
        if (widget->text() == text) {
            return widget;
        }
    }
    return nullptr;
}

} // namespace

class HelpViewsTest final : public QObject {
    Q_OBJECT

private:
    [[nodiscard]] UserManualPDF manualIn(const QString &folder)
    {
        return {{folder}, opener(), [this] { ++m_beeps; }};
    }

    [[nodiscard]] LinkOpener opener()
    {
        return [this](const QUrl &url) {
            m_opened.push_back(url);
            return true;
        };
    }

    static void compare(QWidget &view, QSize size, const QString &name)
    {
        view.resize(size);
        (void)view.grab(); // forces the layout, which may turn out to need scrolling
        QCoreApplication::processEvents();
        const QString difference = pictures::difference(view.grab().toImage(), name);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    static QListWidget *list(const QWidget &view) { return view.findChild<QListWidget *>(); }
    static QLineEdit *search(const QWidget &view) { return view.findChild<QLineEdit *>(); }

    static QStringList rows(const QWidget &view)
    {
        QStringList found;
        for (int row = 0; row < list(view)->count(); ++row) {
            found.push_back(list(view)->item(row)->text());
        }
        return found;
    }

    static void click(QListWidget *list, const QString &text, Qt::KeyboardModifiers modifiers = {})
    {
        const auto items = list->findItems(text, Qt::MatchExactly);
        QCOMPARE(items.size(), 1);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers,
                          list->visualItemRect(items.front()).center());
    }

    std::unique_ptr<QTemporaryDir> m_room;
    std::unique_ptr<UserManualPDF> m_manual;
    QList<QUrl> m_opened;
    int m_beeps = 0;

private Q_SLOTS:
    void init()
    {
        pictures::prepareApplication(Theme::light, 1);
        m_room = std::make_unique<QTemporaryDir>();
        m_manual = std::make_unique<UserManualPDF>(manualIn(m_room->path()));
        m_opened.clear();
        m_beeps = 0;
    }

    // --- pictures

    void theHelpCentreLooksAsItShould_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<double>("textScale");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("selected");
        QTest::addColumn<QString>("sought");
        const auto row = [](const char *name, bool isDark, double scale, QSize size, const QString &selected,
                            const QString &sought = {}) {
            QTest::newRow(name) << isDark << scale << size << selected << sought;
        };
        for (const HelpTopic topic : allHelpTopics) {
            row(qPrintable(rawValue(topic)), false, 1, helpSize, title(topic));
        }
        row("welcome-dark", true, 1, helpSize, u"Welcome"_s);
        row("troubleshooting-dark", true, 1, helpSize, u"Troubleshooting"_s);
        row("search", false, 1, helpSize, u"Settings"_s, u"settings"_s);
        row("search-dark", true, 1, helpSize, u"Settings"_s, u"settings"_s);
        row("search-without-the-selected", false, 1, helpSize, u"Settings"_s, u"  zoom  "_s);
        row("search-in-vain", false, 1, helpSize, u"Welcome"_s, u"xylophone"_s);
        row("nothing-selected", false, 1, helpSize, {});
        row("nothing-selected-dark", true, 1, helpSize, {}, u"xylophone"_s);
        row("large-text", false, 2, helpSize, u"Frequently Asked Questions"_s);
        row("large-text-small-window", false, 2, QSize(640, 440), u"Troubleshooting"_s);
        row("small-window", false, 1, QSize(520, 360), u"Installation & Permissions"_s);
        row("large-window", false, 1, QSize(1400, 700), u"Notification Guide"_s);
    }

    void theHelpCentreLooksAsItShould()
    {
        QFETCH(bool, isDark);
        QFETCH(double, textScale);
        QFETCH(QSize, size);
        QFETCH(QString, selected);
        QFETCH(QString, sought);
        pictures::prepareApplication(isDark ? Theme::dark : Theme::light, textScale);
        HelpCenterView view(*m_manual, opener());
        if (selected.isEmpty()) {
            list(view)->clearSelection();
        } else {
            list(view)->setCurrentItem(list(view)->findItems(selected, Qt::MatchExactly).front());
        }
        search(view)->setText(sought);
        compare(view, size, u"help-"_s + QLatin1StringView(QTest::currentDataTag()));
    }

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

    // --- help centre

    void itBeginsWithAnEmptySearchAndTheWelcome()
    {
        const HelpCenterView view(*m_manual, opener());
        QCOMPARE(view.searchText(), QString());
        QCOMPARE(view.selection(), std::optional(HelpTopic::welcome));
        QCOMPARE(view.visibleTopics(), QList<HelpTopic>(allHelpTopics.begin(), allHelpTopics.end()));
        QCOMPARE(rows(view),
                 (QStringList{u"Welcome"_s, u"Installation & Permissions"_s, u"Quick Start"_s,
                              u"Notification Guide"_s, u"Settings"_s, u"Troubleshooting"_s,
                              u"Frequently Asked Questions"_s, u"Version History"_s, u"About & Contact"_s}));
        QCOMPARE(list(view)->currentItem()->text(), u"Welcome"_s);
        QVERIFY(list(view)->currentItem()->isSelected());
        QCOMPARE(search(view)->placeholderText(), u"Search help"_s);
        QVERIFY(named<look::Text>(view, u"Quillet Help"_s));
    }

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

    void choosingATopicShowsItsArticle()
    {
        HelpCenterView view(*m_manual, opener());
        view.resize(helpSize);
        view.show();
        click(list(view), u"Version History"_s);
        QCOMPARE(view.selection(), std::optional(HelpTopic::versionHistory));
        QCOMPARE(view.findChildren<HelpArticleView *>().size(), 1);
        QVERIFY(named<look::Text>(view, u"1.0.6"_s));
        QTest::keyClick(list(view), Qt::Key_Down);
        QCOMPARE(view.selection(), std::optional(HelpTopic::contact));
        QVERIFY(!named<look::Text>(view, u"1.0.6"_s));
    }

    void theListFollowsTheSearch()
    {
        HelpCenterView view(*m_manual, opener());
        QTest::keyClicks(search(view), u"settings"_s);
        QCOMPARE(rows(view), (QStringList{u"Installation & Permissions"_s, u"Notification Guide"_s,
                                          u"Settings"_s, u"Troubleshooting"_s}));
        QTest::keyClick(search(view), Qt::Key_Escape);
        QCOMPARE(view.searchText(), QString());
        QCOMPARE(rows(view).size(), 9);
    }

    void aSearchKeepsTheSelection()
    {
        HelpCenterView view(*m_manual, opener());
        list(view)->setCurrentRow(4);
        const auto *article = view.findChild<HelpArticleView *>();
        search(view)->setText(u"  zoom  "_s);
        QCOMPARE(rows(view), QStringList{u"Frequently Asked Questions"_s});
        QCOMPARE(view.selection(), std::optional(HelpTopic::settings));
        QCOMPARE(list(view)->selectedItems().size(), 0);
        search(view)->setText(u"sett"_s);
        QCOMPARE(list(view)->selectedItems().value(0)->text(), u"Settings"_s);
        search(view)->clear();
        QCOMPARE(view.selection(), std::optional(HelpTopic::settings));
        QCOMPARE(list(view)->selectedItems().value(0)->text(), u"Settings"_s);
        // The article is the same object, so it keeps its scroll position.
        QCOMPARE(view.findChild<HelpArticleView *>(), article);
    }

    void aSearchWithoutResultsEmptiesTheListAndKeepsTheArticle()
    {
        HelpCenterView view(*m_manual, opener());
        search(view)->setText(u"xylophone"_s);
        QCOMPARE(rows(view), QStringList());
        QCOMPARE(view.selection(), std::optional(HelpTopic::welcome));
        QVERIFY(view.findChild<HelpArticleView *>());
        QVERIFY(!named<look::Text>(view, u"No matching help topic"_s));
    }

    void focusingTheListByKeyboardSelectsNothing()
    {
        HelpCenterView view(*m_manual, opener());
        view.resize(helpSize);
        view.show();
        QTRY_VERIFY(view.isActiveWindow());
        search(view)->setText(u"zoom"_s);
        list(view)->setFocus(Qt::TabFocusReason);
        QVERIFY(list(view)->hasFocus());
        QCOMPARE(view.selection(), std::optional(HelpTopic::welcome));
        QTest::keyClick(list(view), Qt::Key_Space);
        QCOMPARE(view.selection(), std::optional(HelpTopic::faq));
    }

    void aClickBelowTheLastTopicDeselects()
    {
        HelpCenterView view(*m_manual, opener());
        view.resize(helpSize);
        view.show();
        QTest::mouseClick(list(view)->viewport(), Qt::LeftButton, {},
                          list(view)->viewport()->rect().bottomLeft() + QPoint(5, -5));
        QCOMPARE(view.selection(), std::nullopt);
        QVERIFY(!view.findChild<HelpArticleView *>());
        QVERIFY(named<look::Text>(view, u"No matching help topic"_s));
        click(list(view), u"Welcome"_s);
        QCOMPARE(view.selection(), std::optional(HelpTopic::welcome));
        QVERIFY(view.findChild<HelpArticleView *>());
        QVERIFY(!named<look::Text>(view, u"No matching help topic"_s));
    }

    void aClickWithControlDeselects()
    {
        HelpCenterView view(*m_manual, opener());
        view.resize(helpSize);
        view.show();
        click(list(view), u"Welcome"_s, Qt::ControlModifier);
        QCOMPARE(view.selection(), std::nullopt);
        QVERIFY(named<look::Text>(view, u"No matching help topic"_s));
    }

    void openPdfManualOpensTheManual()
    {
        const QString path = m_room->filePath(u"Quillet-User-Manual.pdf"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        const HelpCenterView view(*m_manual, opener());
        auto *button = named<QPushButton>(view, u"Open PDF Manual"_s);
        QVERIFY(button);
        QCOMPARE(button->toolTip(), u"Open the printable Quillet User Manual"_s);
        button->click();
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(path)});
        QCOMPARE(m_beeps, 0);
    }

    void withoutTheManualOpenPdfManualBeepsAndOpensNothing()
    {
        const HelpCenterView view(*m_manual, opener());
        named<QPushButton>(view, u"Open PDF Manual"_s)->click();
        QCOMPARE(m_opened, QList<QUrl>());
        QCOMPARE(m_beeps, 1);
    }

    void theKeyboardReachesEverything()
    {
        HelpCenterView view(*m_manual, opener());
        view.resize(520, 300); // small enough for the article to scroll
        view.show();
        QTRY_VERIFY(view.isActiveWindow());
        search(view)->setFocus();
        QTest::keyClick(&view, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), list(view));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), named<QPushButton>(view, u"Open PDF Manual"_s));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(m_beeps, 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        auto *article = view.findChild<HelpArticleView *>();
        QCOMPARE(QApplication::focusWidget(), article);
        QTest::keyClick(article, Qt::Key_End);
        QCOMPARE(article->verticalScrollBar()->value(), article->verticalScrollBar()->maximum());
        QVERIFY(article->verticalScrollBar()->maximum() > 0);
        QTest::keyClick(article, Qt::Key_Home);
        QCOMPARE(article->verticalScrollBar()->value(), 0);
        QTest::keyClick(article, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), search(view));
    }

    void returnMovesFromTheSearchToItsFirstHitAndOpensIt()
    {
        HelpCenterView view(*m_manual, opener());
        view.show();
        QTRY_VERIFY(view.isActiveWindow());
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Down}) {
            list(view)->setCurrentRow(0);
            search(view)->setFocus();
            search(view)->setText(u"settings"_s);
            QTest::keyClick(search(view), key);
            QCOMPARE(QApplication::focusWidget(), list(view));
            QCOMPARE(list(view)->currentItem()->text(), u"Installation & Permissions"_s);
            QCOMPARE(view.selection(), std::optional(HelpTopic::welcome)); // not opened yet
            QTest::keyClick(list(view), Qt::Key_Return);
            QCOMPARE(view.selection(), std::optional(HelpTopic::installation));
            QCOMPARE(list(view)->selectedItems().value(0)->text(), u"Installation & Permissions"_s);
            QTest::keyClick(list(view), Qt::Key_Down);
            QCOMPARE(view.selection(), std::optional(HelpTopic::notifications));
            search(view)->clear();
        }
        search(view)->setFocus();
        search(view)->setText(u"xylophone"_s);
        QTest::keyClick(search(view), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), search(view));
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

    void allControlsHaveAccessibleNames()
    {
        HelpCenterView view(*m_manual, opener());
        const auto name = [](QObject *widget) {
            return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
        };
        QCOMPARE(name(search(view)), u"Search help"_s);
        QCOMPARE(name(list(view)), u"Help topics"_s);
        QCOMPARE(name(named<QPushButton>(view, u"Open PDF Manual"_s)), u"Open PDF Manual"_s);
        QCOMPARE(name(view.findChild<HelpArticleView *>()), u"Welcome"_s);
        const auto *rows = QAccessible::queryAccessibleInterface(list(view));
        QCOMPARE(rows->childCount(), 9);
        QCOMPARE(rows->child(3)->text(QAccessible::Name), u"Notification Guide"_s);
    }

    void nothingIsCutInASmallWindowWithLargeTexts()
    {
        pictures::prepareApplication(Theme::light, 2);
        HelpCenterView view(*m_manual, opener());
        for (int row = 0; row < 9; ++row) {
            list(view)->setCurrentRow(row);
            view.resize(view.minimumSizeHint());
            (void)view.grab();
            const auto *article = view.findChild<HelpArticleView *>();
            for (const auto *text : article->widget()->findChildren<look::Text *>()) {
                QVERIFY(article->widget()->rect().contains(place(*article->widget(), text)));
                QVERIFY(text->height() >= text->heightForWidth(text->width()));
            }
        }
        QVERIFY2(view.minimumSizeHint().width() <= 920 && view.minimumSizeHint().height() <= 620,
                 "it fits its own window");
    }

    // --- About

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

    void anOpenHelpCentreFollowsTheDesktopsFontAndPalette()
    {
        HelpCenterView view(*m_manual, opener());
        view.show();
        const auto *heading = named<look::Text>(view, u"Quillet Help"_s);
        const auto *button = named<QPushButton>(view, u"Open PDF Manual"_s);
        const int headingHeight = heading->sizeHint().height();
        const int buttonHeight = button->sizeHint().height();
        pictures::prepareApplication(Theme::dark, 2);
        QTRY_VERIFY(heading->sizeHint().height() > headingHeight);
        QTRY_VERIFY(button->sizeHint().height() > buttonHeight);
        QTRY_VERIFY(heading->palette().color(QPalette::WindowText).lightnessF() > 0.5F);
        pictures::prepareApplication(Theme::light, 1);
        QTRY_COMPARE(heading->sizeHint().height(), headingHeight);
        QTRY_COMPARE(button->sizeHint().height(), buttonHeight);
        QTRY_VERIFY(heading->palette().color(QPalette::WindowText).lightnessF() < 0.5F);
    }
};

QUILLET_TEST(HelpViewsTest, runViewTest<HelpViewsTest>);

#include "HelpViewsTest.moc"
