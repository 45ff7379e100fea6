// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/SessionDisplay.h"

#include "tests/agent/ListeningSocket.h"
#include "tests/support/TestProgram.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class SessionDisplayTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCompositorExistsWhileItListens()
    {
        const QTemporaryDir runtime;
        const QString path = runtime.filePath(u"wayland-3"_s);
        QVERIFY(!(SessionDisplay{{}, u"wayland-3"_s, {}}.isThere(runtime.path())));
        {
            const ListeningSocket compositor(QFile::encodeName(path));
            QVERIFY((SessionDisplay{{}, u"wayland-3"_s, {}}.isThere(runtime.path())));
            QVERIFY((SessionDisplay{{}, path, {}}.isThere({})));
            // An X server that the compositor starts on demand may not run now.
            QVERIFY((SessionDisplay{u":64999"_s, u"wayland-3"_s, {}}.isThere(runtime.path())));
        }
        QVERIFY(QFile::exists(path));
        QVERIFY(!(SessionDisplay{{}, u"wayland-3"_s, {}}.isThere(runtime.path())));
    }

    void anXServerExistsWhileItListens()
    {
        QVERIFY(!(SessionDisplay{u":64998"_s, {}, {}}.isThere({})));
        // An X server without a socket file has this abstract one.
        const ListeningSocket server(QByteArray("\0/tmp/.X11-unix/X64998", 22));
        QVERIFY((SessionDisplay{u":64998"_s, {}, {}}.isThere({})));
        QVERIFY((SessionDisplay{u"unix:64998.1"_s, {}, {}}.isThere({})));
        // The same number on another machine is another server.
        QVERIFY(!(SessionDisplay{u"far.example:64998"_s, {}, {}}.isThere({})));
    }

    void aDisplayWithoutALocalServerDoesNotExist_data()
    {
        QTest::addColumn<QString>("display");
        for (const auto *display :
             {"", ":", "0", ":x", ":-1", ":64999", ":99999999999", "far.example:0", "localhost:10.0"}) {
            QTest::newRow(display) << QString::fromLatin1(display);
        }
    }

    void aDisplayWithoutALocalServerDoesNotExist()
    {
        QFETCH(const QString, display);
        QVERIFY(!(SessionDisplay{display, {}, {}}.isThere({})));
    }

    void onlySetVariablesArePassedOn()
    {
        QCOMPARE((SessionDisplay{u":7"_s, {}, u"/a"_s}.environment()),
                 (QMap<QString, QString>{{u"DISPLAY"_s, u":7"_s}, {u"XAUTHORITY"_s, u"/a"_s}}));
    }
};

QUILLET_TEST(SessionDisplayTest, runTest<SessionDisplayTest>);
#include "SessionDisplayTest.moc"
