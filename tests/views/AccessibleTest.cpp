// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Look/Accessible.h"
#include "Corvane/Look/Controls.h"
#include "Corvane/Look/Stacks.h"
#include "Corvane/Look/Text.h"
#include "Corvane/Settings/SettingsView.h"
#include "Corvane/Utilities/InformationDictionary.h"
#include "Corvane/Views/AboutCorvaneView.h"
#include "Corvane/Views/FirstRunSetupView.h"
#include "Corvane/Views/FloatingBannerView.h"
#include "Corvane/Views/HelpCenterView.h"
#include "Corvane/Views/MenuBarContentView.h"
#include "Corvane/Views/MenuBarPanelWindow.h"
#include "tests/support/DebugRoom.h"
#include "tests/support/Pictures.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QStringList>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

QAccessibleInterface &interfaceOf(QObject *object)
{
    return *QAccessible::queryAccessibleInterface(object);
}

/// All accessible interfaces in `object`, in reading order.
std::vector<QAccessibleInterface *> all(QObject *object)
{
    std::vector<QAccessibleInterface *> found;
    const std::function<void(QAccessibleInterface *)> visit = [&](QAccessibleInterface *interface) {
        found.push_back(interface);
        for (int index = 0; index < interface->childCount(); ++index) {
            visit(interface->child(index));
        }
    };
    visit(&interfaceOf(object));
    return found;
}

/// The names of the interfaces with `role` in `object`, in reading order.
QStringList names(QObject *object, QAccessible::Role role)
{
    QStringList found;
    for (const QAccessibleInterface *interface : all(object)) {
        if (interface->role() == role) {
            found << interface->text(QAccessible::Name);
        }
    }
    return found;
}

} // namespace

/// What assistive tools learn about the windows, the panel and the banner.
class AccessibleTest final : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<DebugRoom> m_room;
    UserManualPDF m_manual{{}, [](const QUrl &) { return true; }, [] {}};
    InformationDictionary m_information;
    QList<QUrl> m_opened;

    [[nodiscard]] std::unique_ptr<QWidget> banner()
    {
        const Lesson lesson = sampleLesson(u"Anna"_s, at("10:00:00"), minutes(25));
        return std::make_unique<FloatingBannerView>(TeachingAction{.state = LessonState::startNow,
                                                                   .lesson = lesson,
                                                                   .nextLesson = std::nullopt,
                                                                   .message = {},
                                                                   .priority = TeachingActionPriority::urgent,
                                                                   .effectiveDate = at("09:59:50"),
                                                                   .nextTransitionDate = std::nullopt},
                                                    std::function<void()>());
    }

    [[nodiscard]] std::unique_ptr<QWidget> view(const QString &name)
    {
        const auto opener = [this](const QUrl &url) {
            m_opened << url;
            return true;
        };
        if (name == u"About Quillet") {
            return std::make_unique<AboutCorvaneView>(m_manual, m_information, opener);
        }
        if (name == u"Quillet Help") {
            return std::make_unique<HelpCenterView>(m_manual, opener);
        }
        if (name == u"Quillet Settings") {
            return std::make_unique<SettingsView>(
                m_room->settings, []() -> QCoro::Task<void> { co_return; }, [](const WindowName &) {});
        }
        if (name == u"Welcome to Quillet") {
            return std::make_unique<FirstRunSetupView>(m_room->settings, [] {});
        }
        if (name == u"Debug Window") {
            return std::move(m_room->view);
        }
        return panel();
    }

    [[nodiscard]] std::unique_ptr<QWidget> panel()
    {
        const MenuActions actions{.hasWindow = [](const WindowName &) { return true; },
                                  .openWindow = [](const WindowName &) {},
                                  .openWindowBeside = [](const WindowName &) {},
                                  .quit = [] {}};
        return std::make_unique<MenuBarPanelWindow>(
            MenuBarPanelWindow::Kind::card, std::make_unique<MenuBarContentView>(*m_room->model, actions),
            [](Size size) {
                return MenuBarPanelPlacement{.frame = {0, 0, size.width, size.height},
                                             .visible = {0, 0, 800, 600}};
            });
    }

    void listViews()
    {
        QTest::addColumn<QStringList>("headings");
        QTest::addColumn<QStringList>("groups");
        QTest::newRow("Quillet") << QStringList{u"Today’s schedule"_s}
                                 << QStringList{u"Schedule view"_s, u"Today’s schedule"_s};
        QTest::newRow("About Quillet") << QStringList{u"Quillet"_s} << QStringList{};
        QTest::newRow("Quillet Help") << QStringList{u"Quillet Help"_s, u"Welcome"_s, u"What Quillet Does"_s}
                                      << QStringList{u"Welcome"_s};
        const QStringList cards{u"Calendar Connection"_s, u"Manual Lesson Entry"_s, u"Reminders & Display"_s,
                                u"Help"_s};
        QTest::newRow("Quillet Settings") << QStringList{u"Settings"_s} + cards << cards;
        QTest::newRow("Welcome to Quillet") << QStringList{u"Welcome to Quillet"_s} << QStringList{};
        const QStringList parts{u"Now"_s, u"Calendars"_s, u"Not lessons today"_s, u"Log"_s};
        QTest::newRow("Debug Window") << QStringList{u"Debug Window"_s} + parts << parts;
    }

private Q_SLOTS:
    void init()
    {
        pictures::prepareApplication();
        m_room = std::make_unique<DebugRoom>();
        m_opened.clear();
    }
    void cleanup() { m_room.reset(); }

    void windowsHeadingsAndGroupsHaveTheirRoles_data() { listViews(); }
    void windowsHeadingsAndGroupsHaveTheirRoles()
    {
        QFETCH(QStringList, headings);
        QFETCH(QStringList, groups);
        const QString title = QString::fromUtf8(QTest::currentDataTag());
        const auto view = this->view(title);
        view->setWindowTitle(title);
        QCOMPARE(interfaceOf(view.get()).role(), QAccessible::Window);
        QCOMPARE(interfaceOf(view.get()).text(QAccessible::Name), title);
        QCOMPARE(names(view.get(), QAccessible::Heading), headings);
        QCOMPARE(names(view.get(), QAccessible::Grouping), groups);
    }

    void namesAndDescriptionsDifferAndHoldNoMarkup_data() { listViews(); }
    void namesAndDescriptionsDifferAndHoldNoMarkup()
    {
        const QString longName = u"Maximiliane <b> "_s.repeated(20);
        m_room->start({sampleLesson(longName, at("10:00:00"), minutes(25))});
        m_room->settings.setManualLessons({ManualLessonEntry{.id = QUuid::createUuid(),
                                                             .studentName = longName,
                                                             .platform = TeachingPlatform::zoom,
                                                             .startTime = at("11:00:00"),
                                                             .durationMinutes = 30}});
        const auto view = this->view(QString::fromUtf8(QTest::currentDataTag()));
        view->resize(620, 400);
        (void)view->grab();
        for (const QAccessibleInterface *interface : all(view.get())) {
            const QString name = interface->text(QAccessible::Name);
            const QString description = interface->text(QAccessible::Description);
            QVERIFY2(description.isEmpty() || (description != name && !description.endsWith(u"//"_s + name) &&
                                               !description.endsWith(u':' + name)),
                     qPrintable(name));
            QVERIFY2(!description.contains(u"<p>"_s), qPrintable(description));
        }
    }

    void theBannerIsANotificationNamedByItsTexts()
    {
        const auto view = banner();
        view->show();
        QAccessibleInterface &interface = interfaceOf(view.get());
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
        QCOMPARE(interface.role(), QAccessible::AlertMessage);
#else
        QCOMPARE(interface.role(), QAccessible::Notification);
#endif
        QCOMPARE(interface.text(QAccessible::Name), names(view.get(), QAccessible::StaticText).join(u". "_s));
        QCOMPARE(names(view.get(), QAccessible::StaticText).size(), 3);
        QCOMPARE(names(view.get(), QAccessible::Button), QStringList{u"Close reminder"_s});
    }

    void theContactLinksCanBePressed()
    {
        const auto about = view(u"About Quillet"_s);
        about->show();
        QCOMPARE(names(about.get(), QAccessible::Link),
                 (QStringList{u"quillet.example"_s, u"support@quillet.example"_s}));
        for (QAccessibleInterface *interface : all(about.get())) {
            if (interface->role() == QAccessible::Link) {
                QVERIFY(interface->state().focusable && interface->state().linked);
                interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            }
        }
        QTRY_COMPARE(m_opened, (QList<QUrl>{QUrl(u"https://quillet.example"_s),
                                            QUrl(u"mailto:support@quillet.example"_s)}));
    }

    void aSwitchIsAsLargeAsItsTrack()
    {
        QCheckBox box(u"Play sound"_s);
        box.setGeometry(0, 0, 400, 30);
        box.show();
        QAccessibleInterface &interface = interfaceOf(&box);
        QCOMPARE(interface.role(), QAccessible::CheckBox);
        QCOMPARE(interface.text(QAccessible::Name), u"Play sound"_s);
        const QRect line(box.mapToGlobal(QPoint()), box.size());
        QVERIFY(line.contains(interface.rect()));
        QVERIFY(interface.rect().width() < 60);
        QCOMPARE(interface.rect().right(), line.right());
        QVERIFY(!interface.state().checked);
        interface.actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QTRY_VERIFY(interface.state().checked);
    }

    void theHelpReadsItsListBeforeTheArticle()
    {
        const auto help = view(u"Quillet Help"_s);
        QList<QAccessible::Role> order;
        for (const QAccessibleInterface *interface : all(help.get())) {
            if (interface->role() == QAccessible::List ||
                interface->text(QAccessible::Name) == u"Open PDF Manual") {
                order << interface->role();
            }
        }
        QCOMPARE(order, (QList<QAccessible::Role>{QAccessible::List, QAccessible::Button}));
    }

    void aLabelNamesItsField()
    {
        const auto settings = view(u"Quillet Settings"_s);
        for (const QAccessibleInterface *interface : all(settings.get())) {
            if (interface->role() == QAccessible::StaticText &&
                interface->text(QAccessible::Name) == u"Length") {
                const auto relations = interface->relations(QAccessible::Labelled);
                QCOMPARE(relations.size(), 1);
                QCOMPARE(relations.front().first->role(), QAccessible::ComboBox);
                return;
            }
        }
        QFAIL("there is no such label");
    }

    void aPickerDescribesItsChoice()
    {
        const std::unique_ptr<QComboBox> picker(look::picker(u"Length"_s, {u"15 min"_s, u"30 min"_s}));
        QCOMPARE(interfaceOf(picker.get()).text(QAccessible::Description), u"15 min, 1 of 2"_s);
        picker->setCurrentIndex(1);
        QCOMPARE(interfaceOf(picker.get()).text(QAccessible::Description), u"30 min, 2 of 2"_s);
    }

    void changesOfTheFocusedControlAreAnnounced()
    {
        QWidget window;
        auto *first = look::picker(u"Length"_s, {u"15 min"_s, u"30 min"_s});
        auto *second = look::picker(u"Platform"_s, {u"Zoom"_s, u"LingoAce"_s});
        window.setLayout(look::column(0, {first, second}));
        window.show();
        QTRY_VERIFY(window.isActiveWindow());
        first->setFocus();
        first->setCurrentIndex(1);
        second->setCurrentIndex(1);
        look::announce(window, u"Added: Anna"_s);
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
        QCOMPARE(names(&window, QAccessible::Notification),
                 (QStringList{u"30 min, 2 of 2"_s, u"Added: Anna"_s}));
#endif
    }

    void aLinkedTextIsReadWithoutItsMarkup()
    {
        look::Text text(u"Write to anna@school.example & ask."_s, look::TextStyle::body);
        text.setLinks(
            {{.text = u"anna@school.example"_s, .destination = QUrl(u"mailto:anna@school.example"_s)}},
            [](const QUrl &) {});
        QCOMPARE(interfaceOf(&text).text(QAccessible::Name), u"Write to anna@school.example & ask."_s);
    }
};

QUILLET_TEST(AccessibleTest, runViewTest<AccessibleTest>);

#include "AccessibleTest.moc"
