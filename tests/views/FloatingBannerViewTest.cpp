// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/FloatingBannerView.h"
#include "Corvane/Look/LineLabel.h"
#include "Corvane/Look/Look.h"
#include "Corvane/Look/Symbols.h"
#include "tests/support/ManualClock.h"
#include "tests/support/Pictures.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr Date now = dateSince1970(1'800'000'000);

Lesson lesson(const QString &name, double secondsFromNow, TeachingPlatform platform = TeachingPlatform::zoom)
{
    return {.id = {},
            .studentName = name,
            .platform = platform,
            .startTime = now + Seconds{secondsFromNow},
            .duration = Seconds{1500},
            .profile = PlatformProfile::defaults().at(platform)};
}

TeachingAction action(LessonState state, std::optional<Lesson> about, std::optional<Lesson> next,
                      const QString &message = {},
                      TeachingActionPriority priority = TeachingActionPriority::attention)
{
    return {.state = state,
            .lesson = std::move(about),
            .nextLesson = std::move(next),
            .message = message,
            .priority = priority,
            .effectiveDate = now,
            .nextTransitionDate = std::nullopt};
}

TeachingAction join(double secondsFromNow)
{
    return action(LessonState::joinPlatform, lesson(u"Anna"_s, secondsFromNow), std::nullopt);
}

} // namespace

class FloatingBannerViewTest final : public QObject {
    Q_OBJECT

public:
    explicit FloatingBannerViewTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    [[nodiscard]] static QStringList lines(const QWidget &view)
    {
        QStringList lines;
        for (const auto *label : view.findChildren<look::LineLabel *>()) {
            lines << label->text();
        }
        return lines;
    }

    [[nodiscard]] static QRect place(const QWidget &view, const QWidget *child)
    {
        return {child->mapTo(&view, QPoint()), child->size()};
    }

    int m_scaleFactor;
    std::unique_ptr<ManualClock> m_clock;

private Q_SLOTS:
    void init() { m_clock = std::make_unique<ManualClock>(now); }
    void cleanup()
    {
        m_clock->advance(Seconds{2}); // ends a pending tick
        QCOMPARE(m_clock->waitCount(), std::size_t{0});
        m_clock.reset();
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<TeachingAction>("shown");
        const Lesson anna = lesson(u"Anna"_s, -1400);
        const Lesson ben = lesson(u"Ben"_s, 95);
        const QString longName = u"Maximiliane Konstantina Theodora "_s.repeated(7).left(200);
        QTest::newRow("prepare") << action(LessonState::prepare, lesson(u"Anna"_s, 240),
                                           lesson(u"Anna"_s, 240));
        QTest::newRow("one-minute-warning")
            << action(LessonState::oneMinuteWarning, lesson(u"Anna"_s, 60), std::nullopt);
        QTest::newRow("join-platform") << action(
            LessonState::joinPlatform, lesson(u"Anna"_s, 55, TeachingPlatform::microsoftTeams), std::nullopt);
        QTest::newRow("join-seconds") << join(25);
        QTest::newRow("join-started") << join(0);
        QTest::newRow("start-now") << action(LessonState::startNow, lesson(u"Anna"_s, 10), std::nullopt,
                                             u"Start now"_s, TeachingActionPriority::urgent);
        QTest::newRow("wrap-up") << action(LessonState::wrapUp, anna, ben);
        QTest::newRow("wrap-up-last") << action(LessonState::wrapUp, anna, std::nullopt);
        QTest::newRow("teaching") << action(LessonState::teaching, anna, ben, u"Teach Anna"_s,
                                            TeachingActionPriority::calm);
        QTest::newRow("teaching-urgent")
            << action(LessonState::teaching, anna, ben, u"Teach Anna"_s, TeachingActionPriority::urgent);
        QTest::newRow("idle") << TeachingAction::idle(now, std::nullopt);
        QTest::newRow("long-name") << action(LessonState::wrapUp, lesson(longName, -1400),
                                             lesson(longName, 60));
        QTest::newRow("long-message") << action(LessonState::teaching, lesson(longName, 0), std::nullopt,
                                                u"Teach "_s + longName, TeachingActionPriority::calm);
        QTest::newRow("chinese") << action(LessonState::wrapUp, lesson(u"王小明"_s, -1400),
                                           lesson(u"李雷 (二班)"_s, 60));
        QTest::newRow("arabic") << action(LessonState::prepare, lesson(u"محمد الأمين (B2)"_s, 240),
                                          std::nullopt);
        QTest::newRow("hostile") << action(
            LessonState::prepare, lesson(u"<b>Eve</b> &amp; \n\r\u2028\t\u0007\u202EevE\u0301\u0301"_s, 240),
            std::nullopt);
    }

    void itLooksAsItShould()
    {
        QFETCH(TeachingAction, shown);
        FloatingBannerView view(shown, {});
        const QImage picture = view.grab().toImage();
        QCOMPARE(picture.size(), QSize(1000, 280) * m_scaleFactor);
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(
            picture, u"banner-%1%2"_s.arg(QLatin1StringView(QTest::currentDataTag()), suffix));
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void everyTextStaysInsideTheCardAndClearOfTheCloseButton_data() { itLooksAsItShould_data(); }

    void everyTextStaysInsideTheCardAndClearOfTheCloseButton()
    {
        QFETCH(TeachingAction, shown);
        FloatingBannerView view(shown, {});
        (void)view.grab(); // forces the layout
        const QRect close = place(view, view.findChild<QAbstractButton *>());
        QCOMPARE(close, QRect(1000 - 20 - 42, 20, 42, 42));
        int below = 0;
        for (const auto *label : view.findChildren<look::LineLabel *>()) {
            const QRect area = place(view, label);
            QVERIFY(view.rect().contains(area));
            QVERIFY(!area.intersects(close));
            QVERIFY(area.top() >= below);
            below = area.bottom();
        }
    }

    void aJoinBannerCountsDownOnceASecond()
    {
        FloatingBannerView view(join(32), {});
        view.show();
        QCOMPARE(lines(view).first(), u"JOIN ZOOM NOW"_s);
        m_clock->advance(Seconds{2});
        QCOMPARE(lines(view).first(), u"30 SECONDS"_s);
        m_clock->advance(Seconds{1});
        QCOMPARE(lines(view).first(), u"29 SECONDS"_s);
        m_clock->advance(Seconds{28.5});
        QCOMPARE(lines(view), (QStringList{u"20 SECONDS"_s, u"Anna"_s, u"Get ready to start"_s}));
        m_clock->advance(Seconds{1});
        QCOMPARE(lines(view), (QStringList{u"START NOW"_s, u"Anna"_s, u"Lesson begins now"_s}));
    }

    void aClockChangeTakesEffectAtTheNextTick()
    {
        FloatingBannerView view(join(90), {});
        view.show();
        m_clock->setWallClock(now + Seconds{70});
        QCOMPARE(lines(view).first(), u"JOIN ZOOM NOW"_s);
        m_clock->advance(Seconds{1});
        QCOMPARE(lines(view).first(), u"20 SECONDS"_s);
    }

    void aHiddenBannerDoesNotTickAndIsUpdatedWhenShownAgain()
    {
        FloatingBannerView view(join(60), {});
        view.show();
        view.hide();
        m_clock->advance(Seconds{5});
        QCOMPARE(m_clock->waitCount(), std::size_t{0});
        m_clock->advance(Seconds{30});
        view.show();
        QCOMPARE(lines(view).first(), u"25 SECONDS"_s);
        QCOMPARE(m_clock->waitCount(), std::size_t{1});
    }

    void showingTwiceStillTicksOnce()
    {
        FloatingBannerView view(join(60), {});
        view.show();
        view.hide();
        view.show();
        m_clock->advance(Seconds{1});
        QCOMPARE(m_clock->waitCount(), std::size_t{1});
    }

    void aBannerMayBeDestroyedBetweenTwoTicks()
    {
        auto view = std::make_unique<FloatingBannerView>(join(60), std::function<void()>());
        view->show();
        view.reset();
        m_clock->advance(Seconds{3});
        QCOMPARE(m_clock->waitCount(), std::size_t{0});
    }

    void theCloseButtonWorksByMouse()
    {
        int dismissals = 0;
        FloatingBannerView view(join(60), [&] { ++dismissals; });
        view.show();
        QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(500, 140));
        QCOMPARE(dismissals, 0);
        auto *close = view.findChild<QAbstractButton *>();
        QVERIFY(view.childAt(1000 - 41, 41) == close);
        QTest::mouseClick(close, Qt::LeftButton);
        QCOMPARE(dismissals, 1);
    }

    void theCloseButtonHighlightsUnderThePointer()
    {
        FloatingBannerView view(join(60), {});
        auto *close = view.findChild<QAbstractButton *>();
        const auto ground = [&] {
            return view.grab().toImage().pixelColor(QPoint(959, 26) * view.devicePixelRatio());
        };
        const QColor atRest = ground();
        close->setAttribute(Qt::WA_UnderMouse);
        const QColor under = ground();
        close->setDown(true);
        QVERIFY(atRest.lightness() < under.lightness());
        QVERIFY(under.lightness() < ground().lightness());
    }

    void theCloseButtonWithoutAHandlerIsHarmless()
    {
        FloatingBannerView view(join(60), {});
        view.findChild<QAbstractButton *>()->click();
    }

    void theCloseButtonSaysWhatItDoes()
    {
        FloatingBannerView view(join(60), {});
        const auto *close = view.findChild<QAbstractButton *>();
        QCOMPARE(close->accessibleName(), u"Close reminder"_s);
        QCOMPARE(close->toolTip(), u"Close reminder"_s);
        QCOMPARE(close->focusPolicy(), Qt::NoFocus);
        const QAccessibleInterface *interface =
            QAccessible::queryAccessibleInterface(const_cast<QAbstractButton *>(close));
        QVERIFY(interface != nullptr);
        QCOMPARE(interface->role(), QAccessible::Button);
        QCOMPARE(interface->text(QAccessible::Name), u"Close reminder"_s);
    }

    void theTextsCanBeReadByAssistiveTools()
    {
        FloatingBannerView view(join(25), {});
        QStringList names;
        for (auto *label : view.findChildren<look::LineLabel *>()) {
            const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(label);
            QVERIFY(interface != nullptr);
            QCOMPARE(interface->role(), QAccessible::StaticText);
            names << interface->text(QAccessible::Name);
        }
        QCOMPARE(names, (QStringList{u"25 SECONDS"_s, u"Anna"_s, u"Get ready to start"_s}));
    }

    void aTruncatedTextIsAccessibleInFull()
    {
        const QString name = u"Maximiliane "_s.repeated(16).trimmed();
        FloatingBannerView view(action(LessonState::startNow, lesson(name, 0), std::nullopt), {});
        (void)view.grab();
        auto *label = view.findChildren<look::LineLabel *>().at(1);
        QCOMPARE(QAccessible::queryAccessibleInterface(label)->text(QAccessible::Name), name);
    }

    void aTextOfAMillionCharactersIsTruncated()
    {
        const QString name = u"王<b>\n\u202E "_s.repeated(200'000);
        FloatingBannerView view(action(LessonState::wrapUp, lesson(name, 0), lesson(name, 60), name), {});
        const QImage picture = view.grab().toImage();
        for (const QString &line : lines(view)) {
            QVERIFY(line.size() <= 1100);
            QVERIFY(!line.contains(u'\n') && !line.contains(u'\u202E'));
        }
    }

    void lineBreaksAndDirectionMarksAreLeftOut()
    {
        look::LineLabel label(look::font(20, QFont::Normal), Qt::white, 1);
        label.setLine(u"  a\n\tb\u2028c\u202Ed\u2067e\u0007f  "_s);
        QCOMPARE(label.text(), u"a b cde f"_s);
        QCOMPARE(label.textFormat(), Qt::PlainText);
    }

    void aCharacterBeyondTheBasicPlaneIsNotCutInHalf()
    {
        look::LineLabel label(look::font(20, QFont::Normal), Qt::white, 1);
        label.setLine(u"a"_s + u"😀"_s.repeated(1000));
        QVERIFY(!label.text().back().isHighSurrogate());
    }

    void everySymbolOfABannerExists()
    {
        for (const auto *name : {u"bell.fill", u"exclamationmark.triangle.fill", u"checkmark.circle.fill",
                                 u"arrow.right.circle.fill", u"xmark"}) {
            const QString symbol = QString::fromUtf16(name);
            QVERIFY(look::hasSymbol(symbol));
            for (const auto weight : {look::SymbolWeight::regular, look::SymbolWeight::bold}) {
                const QImage picture = look::symbolPixmap(symbol, 32, Qt::red, 2, weight).toImage();
                QCOMPARE(picture.size(), QSize(64, 64));
                int covered = 0;
                for (int y = 0; y < 64; ++y) {
                    for (int x = 0; x < 64; ++x) {
                        covered += picture.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
                    }
                }
                QVERIFY2(covered > 100, qPrintable(symbol));
            }
            const QIcon icon = look::symbolIcon(symbol, Qt::white);
            QCOMPARE(icon.pixmap(QSize(22, 22), 2.0).size(), QSize(44, 44));
        }
        QVERIFY(!look::hasSymbol(u"no.such.symbol"_s));
    }
};

QUILLET_TEST(FloatingBannerViewTest, runViewTest<FloatingBannerViewTest>);

#include "FloatingBannerViewTest.moc"
