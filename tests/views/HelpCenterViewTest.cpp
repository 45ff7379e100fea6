// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/HelpCenterView.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Views/HelpArticleView.h"
#include "tests/support/Pictures.h"
#include "tests/views/HelpFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

namespace {

constexpr QSize helpSize(920, 620);

} // namespace

class HelpCenterViewTest final : public HelpFixture {
    Q_OBJECT

private:
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

private Q_SLOTS:
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

QUILLET_TEST(HelpCenterViewTest, runViewTest<HelpCenterViewTest>);

#include "HelpCenterViewTest.moc"
