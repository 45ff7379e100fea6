// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Look.h"
#include "tests/support/Pictures.h"
#include "tests/support/ViewWalk.h"
#include "tests/views/SetupRoom.h"

#include <QScrollBar>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;
using pictures::Theme;

/// How the setup window looks.
class FirstRunSetupLookTest final : public QObject {
    Q_OBJECT

public:
    explicit FirstRunSetupLookTest(int scaleFactor) : m_scaleFactor(scaleFactor) {}

private:
    void comparePicture(const QImage &picture, const QString &name) const
    {
        const QString suffix = m_scaleFactor == 1 ? QString() : u"@%1x"_s.arg(m_scaleFactor);
        const QString difference = pictures::difference(picture, u"setup-"_s + name + suffix);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    int m_scaleFactor;

private Q_SLOTS:
    void init() { pictures::prepareApplication(); }

    void itHasExactlyTheseMeasures()
    {
        const SetupRoom room;
        QCOMPARE(room.view->minimumSize(), QSize(620, 420));
        QCOMPARE(room.view->minimumSizeHint().boundedTo(QSize(620, 420)), room.view->minimumSizeHint());
        for (const QSize size : {QSize(620, 420), QSize(680, 500), QSize(1200, 900)}) {
            room.view->resize(size);
            (void)room.view->grab();
            const QRect page = room.place(room.page()->widget());
            const QRect indicator = room.place(room.indicator());
            const QRect back = room.place(room.back());
            const QRect forward = room.place(room.forward());
            QCOMPARE(page.width(), 500);
            QCOMPARE(page.left(), (size.width() - 500) / 2);
            QCOMPARE(indicator.size(), QSize(26 + 4 * 8 + 4 * 8, 8));
            QCOMPARE(indicator.left(), (size.width() - 90) / 2);
            QCOMPARE(indicator.top() - (page.bottom() + 1), 24);
            QCOMPARE(back.top() - (indicator.bottom() + 1), 24);
            QCOMPARE(back.left(), page.left());
            QCOMPARE(forward.right(), page.right());
            QCOMPARE(forward.top(), back.top());
            QCOMPARE(forward.height(), back.height());
            QVERIFY(std::abs(page.top() - (size.height() - 1 - back.bottom())) <= 1); // in the middle
            QVERIFY(page.top() >= 42);
        }
    }

    void theControlsStayInPlaceFromPageToPage()
    {
        const SetupRoom room;
        (void)room.view->grab();
        const QRect indicator = room.place(room.indicator());
        const QRect back = room.place(room.back());
        const int right = room.place(room.forward()).right();
        for (int page = 1; page < 5; ++page) {
            room.goTo(page);
            (void)room.view->grab();
            QCOMPARE(room.place(room.indicator()), indicator);
            QCOMPARE(room.place(room.back()), back);
            QCOMPARE(room.place(room.forward()).right(), right);
        }
    }

    void nothingIsCutAtAnyTextSize_data()
    {
        QTest::addColumn<double>("fontScale");
        for (const double scale : {0.8, 1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("%.2f", scale) << scale;
        }
    }

    void nothingIsCutAtAnyTextSize()
    {
        QFETCH(double, fontScale);
        pictures::prepareApplication(Theme::light, fontScale);
        const SetupRoom room;
        room.view->resize(620, 420);
        for (int page = 0; page < 5; ++page) {
            room.goTo(page);
            (void)room.view->grab();
            QCOMPARE(viewWalk::cutWidgets(*room.view).join(u'\n'), QString());
            QCOMPARE(room.view->size(), QSize(620, 420));
            QCOMPARE(room.page()->verticalScrollBar()->maximum(),
                     room.page()->widget()->height() - room.page()->viewport()->height());
            QCOMPARE(room.page()->horizontalScrollBar()->maximum(), 0);
        }
    }

    void itReportsTheHeightThatShowsEveryPageWhole()
    {
        for (const double scale : {1.0, 1.5, 2.0}) {
            pictures::prepareApplication(Theme::light, scale);
            const SetupRoom room;
            const int height = room.view->heightForWidth(680);
            for (const int less : {0, 1}) {
                room.view->resize(680, std::max(height - less, 420));
                (void)room.view->grab();
                QCOMPARE(room.page()->verticalScrollBar()->maximum(), height > 420 ? less : 0);
            }
        }
    }

    void anOpenWindowFollowsTheDesktopsColoursAndFont()
    {
        const SetupRoom room;
        room.show();
        pictures::prepareApplication(Theme::dark, 1.5);
        QTRY_COMPARE(room.forward()->font(), look::font(look::TextStyle::body));
        room.view->hide(); // on the screen it would also show the focus mark
        const QImage followed = room.view->grab().toImage();
        const SetupRoom fresh;
        QVERIFY(followed == fresh.view->grab().toImage());
    }

    void itLooksAsItShould_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::addColumn<double>("fontScale");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("step");
        for (int step = 0; step < 5; ++step) {
            QTest::addRow("%d-light", step + 1) << Theme::light << 1.0 << QSize(680, 500) << step;
            if (m_scaleFactor == 1) {
                QTest::addRow("%d-dark", step + 1) << Theme::dark << 1.0 << QSize(680, 500) << step;
            }
        }
        if (m_scaleFactor == 1) {
            QTest::addRow("least") << Theme::light << 1.0 << QSize(620, 420) << 3;
            QTest::addRow("large") << Theme::light << 2.0 << QSize(680, 500) << 1;
            QTest::addRow("large-dark") << Theme::dark << 2.0 << QSize(900, 800) << 3;
        }
    }

    void itLooksAsItShould()
    {
        QFETCH(Theme, theme);
        QFETCH(double, fontScale);
        QFETCH(QSize, size);
        QFETCH(int, step);
        pictures::prepareApplication(theme, fontScale);
        const SetupRoom room;
        room.view->resize(size);
        room.goTo(step);
        comparePicture(room.view->grab().toImage(), QLatin1StringView(QTest::currentDataTag()));
    }
};

QUILLET_TEST(FirstRunSetupLookTest, runViewTest<FirstRunSetupLookTest>);

#include "FirstRunSetupLookTest.moc"
