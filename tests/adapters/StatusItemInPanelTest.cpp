// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/StatusNotifierItem.h"

#include "Corvane/Platform/Linux/Freedesktop/StatusBell.h"
#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <memory>
#include <utility>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

constexpr int panelHeight = 32;

QString text(const QStringList &command, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(command.constFirst(), command.sliced(1));
    process.waitForFinished(20000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

// The item in a panel that is really there: xfce4-panel, on a display and a bus of the test's own. The item
// itself lives on the bus only.
class StatusItemInPanelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>(QStringList{u"/usr/share/dbus-1/services"_s});
        m_folder = std::make_unique<QTemporaryDir>();
        m_environment = QProcessEnvironment::systemEnvironment();
        m_display.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"600x200x24"_s,
                                    u"-nolisten"_s, u"tcp"_s});
        QTRY_VERIFY_WITH_TIMEOUT(m_display.canReadLine(), 20000);
        m_environment.insert(u"DISPLAY"_s, u":"_s + QString::fromLatin1(m_display.readLine()).trimmed());
        m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
        m_environment.insert(u"XDG_CURRENT_DESKTOP"_s, u"XFCE"_s);
        m_environment.insert(u"NO_AT_BRIDGE"_s, u"1"_s);
    }

    void cleanup()
    {
        m_item.reset();
        end(m_panel);
        QDBusConnection::disconnectFromBus(u"item"_s);
        m_bus.reset();
        end(m_display);
    }

    void theBellIsSeenAndClickedOnAnyPanel_data()
    {
        QTest::addColumn<QString>("theme");
        QTest::newRow("light") << u"Adwaita"_s;
        QTest::newRow("dark") << u"Adwaita:dark"_s;
    }

    void theBellIsSeenAndClickedOnAnyPanel()
    {
        QFETCH(QString, theme);
        m_environment.insert(u"GTK_THEME"_s, theme);
        startPanel();
        const QColor ground = awaitPanel();
        QVERIFY(ground.isValid());
        QCOMPARE(ground.lightness() > 128, theme == u"Adwaita"_s);

        startItem();
        // So large, and so different from the panel, that it is seen.
        const QRect bellAt = awaitBell(ground);
        QVERIFY2(bellAt.width() >= 10 && bellAt.height() >= 10, qPrintable(QString::number(bellAt.width())));

        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        for (int click = 1; click <= 2; ++click) {
            text({u"xdotool"_s, u"mousemove"_s, QString::number(bellAt.center().x()),
                  QString::number(bellAt.center().y()), u"click"_s, u"1"_s},
                 m_environment);
            QTRY_COMPARE_WITH_TIMEOUT(clicks.size(), click, 10000);
        }
        QVERIFY(!awaitBell(ground).isEmpty());
    }

    void aPanelThatRestartsShowsTheBellAgain()
    {
        startItem();
        QSignalSpy registrations(m_item.get(), &StatusNotifierItem::registered);
        for (int start = 1; start <= 2; ++start) {
            startPanel();
            QTRY_COMPARE_WITH_TIMEOUT(registrations.size(), start, 20000);
            QVERIFY(!awaitBell(awaitPanel()).isEmpty());
            end(m_panel);
        }
    }

    void aPanelBearsAnyTitle()
    {
        startPanel();
        startItem();
        const QRect bellAt = awaitBell(awaitPanel());
        QVERIFY(!bellAt.isEmpty());
        for (const QString &title : {QString(1000000, u'x'), u"<b>&\u0001\n\u001b"_s, QString(QChar(0)),
                                     QString(QChar(0xd800)), QString(), u"\u202e老师 Ö 😀"_s}) {
            m_item->setTitle(title);
            text({u"xdotool"_s, u"mousemove"_s, u"5"_s, u"150"_s, u"mousemove"_s,
                  QString::number(bellAt.center().x()), QString::number(bellAt.center().y())},
                 m_environment);
        }
        QSignalSpy clicks(m_item.get(), &StatusItem::activated);
        text({u"xdotool"_s, u"click"_s, u"1"_s}, m_environment);
        QTRY_COMPARE_WITH_TIMEOUT(clicks.size(), 1, 10000);
        QCOMPARE(m_panel.state(), QProcess::Running);
    }

private:
    // A panel at the top with nothing in it but the items.
    void startPanel()
    {
        const QString folder =
            qEnvironmentVariable("XDG_CONFIG_HOME") + u"/xfce4/xfconf/xfce-perchannel-xml"_s;
        QVERIFY(QDir().mkpath(folder));
        QFile file(folder + u"/xfce4-panel.xml"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<channel name=\"xfce4-panel\" version=\"1.0\">\n"
            "<property name=\"configver\" type=\"int\" value=\"2\"/>\n"
            "<property name=\"panels\" type=\"array\"><value type=\"int\" value=\"1\"/>\n"
            "<property name=\"panel-1\" type=\"empty\">\n"
            "<property name=\"position\" type=\"string\" value=\"p=11;x=0;y=0\"/>\n"
            "<property name=\"length\" type=\"uint\" value=\"100\"/>\n"
            "<property name=\"size\" type=\"uint\" value=\"30\"/>\n"
            "<property name=\"plugin-ids\" type=\"array\"><value type=\"int\" value=\"1\"/></property>\n"
            "</property></property>\n"
            "<property name=\"plugins\" type=\"empty\">\n"
            "<property name=\"plugin-1\" type=\"string\" value=\"systray\"/>\n"
            "</property></channel>\n");
        file.close();
        m_panel.setProcessEnvironment(m_environment);
        m_panel.setStandardErrorFile(QProcess::nullDevice());
        m_panel.setStandardOutputFile(QProcess::nullDevice());
        m_panel.start(u"xfce4-panel"_s, {u"--disable-wm-check"_s});
        QVERIFY(m_panel.waitForStarted(10000));
    }

    void startItem()
    {
        m_item =
            std::make_unique<StatusNotifierItem>(QDBusConnection::connectToBus(m_bus->address(), u"item"_s),
                                                 statusBellImages(), StatusNotifierItem::Desktop{});
        m_item->setTitle(u"Anna in 4 min"_s);
    }

    static void end(QProcess &process)
    {
        process.terminate();
        if (!process.waitForFinished(10000)) {
            process.kill();
            process.waitForFinished(5000);
        }
    }

    // The part of the screen where the panel is.
    [[nodiscard]] QImage picture() const
    {
        const QString file = m_folder->filePath(u"screen.png"_s);
        text({u"import"_s, u"-window"_s, u"root"_s, file}, m_environment);
        return QImage(file).convertToFormat(QImage::Format_RGB32).copy(0, 0, 600, panelHeight);
    }

    // The panel's colour, once there is a panel: the bare screen is black.
    [[nodiscard]] QColor awaitPanel() const
    {
        QColor colour;
        const bool came = QTest::qWaitFor(
            [&] {
                const QImage image = picture();
                colour = image.isNull() ? QColor(Qt::black) : image.pixelColor(300, 15);
                return colour != QColor(Qt::black);
            },
            20000);
        return came ? colour : QColor();
    }

    // Where the bell is, once it has come and the panel has put it into its place: two pictures agree.
    [[nodiscard]] QRect awaitBell(QColor ground) const
    {
        QRect place;
        const bool came = QTest::qWaitFor(
            [&] {
                const QRect before = std::exchange(place, bell(ground));
                return !place.isEmpty() && place == before;
            },
            20000);
        return came ? place : QRect();
    }

    // Where something is in the panel that stands out from its ground.
    [[nodiscard]] QRect bell(QColor ground) const
    {
        const QImage image = picture();
        QRect place;
        for (int y = 2; y < 27; ++y) {
            for (int x = 12; x < image.width() - 12; ++x) {
                if (std::abs(qGray(image.pixel(x, y)) - qGray(ground.rgb())) > 100) {
                    place |= QRect(x, y, 1, 1);
                }
            }
        }
        return place;
    }

    QProcessEnvironment m_environment;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    QProcess m_display;
    QProcess m_panel;
    std::unique_ptr<StatusNotifierItem> m_item;
};

QTEST_MAIN(StatusItemInPanelTest)
#include "StatusItemInPanelTest.moc"
