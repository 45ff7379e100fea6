// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Look/Look.h"
#include "Corvane/Platform/Linux/Banners/CardBannerPanels.h"
#include "Corvane/Views/FloatingBannerView.h"
#include "tests/support/TestDesktop.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

namespace corvane {

/// Banners on a screen of 1280 × 800 pixels, checked in screenshots and operated by real pointer and key
/// events. A test class derives from it and provides the banner panels and the surroundings (such as a window
/// manager) in which they must work. The test program itself sees the screen through an X server.
class ShownBannersFixture : public QObject {
    Q_OBJECT

protected:
    static constexpr Rect home{140, 260, 1000, 280};
    // Desktop coordinates, y downwards, for a card at `home`.
    static constexpr QPoint onTheCard{170, 400}; ///< in its left part, where it is empty
    static constexpr QPoint onTheCloseButton{1140 - 41, 260 + 41};
    static constexpr QPoint inTheCorner{141, 261}; ///< of the card's rectangle, outside the rounded corner
    static constexpr QPoint onTheMargin{640, 260 + 280 + 20};
    static constexpr QPoint farAway{30, 30};

    /// New banner panels for each test.
    virtual std::unique_ptr<CardBannerPanels> makeBannerPanels(CardBannerPanels::ContentFactory makeContent,
                                                               const CardShape &shape) = 0;
    /// The names of all surroundings, and of those with a compositor, where windows may be translucent.
    [[nodiscard]] virtual QStringList surroundings() const = 0;
    [[nodiscard]] virtual QStringList compositedSurroundings() const = 0;
    /// Sets up the surroundings `name` and tears them down again. A failed check in them fails the test.
    virtual void enterSurroundings(const QString &name) = 0;
    virtual void leaveSurroundings() = 0;
    /// Starts the full-screen program in the current surroundings.
    virtual std::unique_ptr<QProcess> startOpponent(const QStringList &arguments) = 0;

    [[nodiscard]] static TeachingAction startNow()
    {
        const Lesson lesson{.id = QUuid::createUuid(),
                            .studentName = QStringLiteral("Anna"),
                            .platform = TeachingPlatform::zoom,
                            .startTime = currentDate(),
                            .duration = Seconds{1500},
                            .profile = PlatformProfile::defaults().at(TeachingPlatform::zoom)};
        return {.state = LessonState::startNow,
                .lesson = lesson,
                .nextLesson = lesson,
                .message = QStringLiteral("Start now"),
                .priority = TeachingActionPriority::urgent,
                .effectiveDate = currentDate(),
                .nextTransitionDate = std::nullopt};
    }

    [[nodiscard]] static QColor pixel(QPoint at)
    {
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, at.x(), at.y(), 1, 1)
            .toImage()
            .pixelColor(0, 0);
    }

    [[nodiscard]] static bool isDark(QPoint at)
    {
        constexpr int dark = 40;
        return pixel(at).lightness() < dark;
    }

    [[nodiscard]] static QColor opponentColor() { return {0xa0, 0xc0, 0xe0}; }

    static void point(QPoint at)
    {
        TestDesktop::xdotool({QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y())});
    }

    static void click(QPoint at)
    {
        point(at);
        TestDesktop::xdotool({QStringLiteral("click"), QStringLiteral("1")});
    }

    static void press(const QString &key) { TestDesktop::xdotool({QStringLiteral("key"), key}); }

    [[nodiscard]] CardBannerPanels &bannerPanels() { return *m_bannerPanels; }

    [[nodiscard]] std::shared_ptr<BannerPanel> present(std::function<void()> onDismiss = [] {})
    {
        auto bannerPanel = m_bannerPanels->makeBannerPanel(home, {}, startNow(), std::move(onDismiss));
        bannerPanel->setFrame(home.scaledAboutCentre(0.95));
        bannerPanel->setAlpha(0);
        bannerPanel->orderFrontRegardless();
        bannerPanel->animate(
            {.duration = Seconds{0.22}, .curve = TimingCurve::easeOut, .alpha = 1, .frame = home}, {});
        return bannerPanel;
    }

    void oppose(const QStringList &arguments = {})
    {
        m_heard.clear();
        m_opponent = startOpponent(arguments);
        QTRY_VERIFY_WITH_TIMEOUT(heard().contains(QStringLiteral("ready")), 20'000);
        QTRY_COMPARE_WITH_TIMEOUT(pixel(onTheCard), opponentColor(), 20'000);
    }

    void endOpponent()
    {
        if (m_opponent) {
            m_opponent->terminate();
            QVERIFY(m_opponent->state() == QProcess::NotRunning || m_opponent->waitForFinished());
            m_opponent.reset();
        }
    }

    /// The opponent's output so far.
    [[nodiscard]] QString heard()
    {
        m_heard += QString::fromUtf8(m_opponent->readAllStandardOutput());
        return m_heard;
    }

    static void addRows(const QStringList &names)
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : names) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }

    /// Sets up the surroundings of the current row and starts the opponent there.
    void enter()
    {
        QFETCH(QString, name);
        enterSurroundings(name);
        if (!QTest::currentTestFailed()) {
            oppose();
        }
    }

private:
    std::unique_ptr<CardBannerPanels> m_bannerPanels;
    std::unique_ptr<QProcess> m_opponent;
    QString m_heard;

protected Q_SLOTS:
    void init()
    {
        m_bannerPanels = makeBannerPanels(
            [](const TeachingAction &action, std::function<void()> onDismiss) {
                return std::make_unique<FloatingBannerView>(action, std::move(onDismiss));
            },
            CardShape{look::banner::cornerRadius, look::banner::shadowBlur, look::banner::shadowOpacity});
    }

private Q_SLOTS:
    void cleanupTestCase()
    {
        // Wait longer than a tick and any animation, so that those of destroyed banner panels have ended.
        QCoro::waitFor(wait(Seconds{1.1}));
    }

    void cleanup()
    {
        m_bannerPanels.reset();
        endOpponent();
        leaveSurroundings();
    }
};

} // namespace corvane
