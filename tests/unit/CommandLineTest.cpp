// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/CommandLine.h"

#include "tests/support/TestProgram.h"

#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(CommandLine::Request)

class CommandLineTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachOptionIsKnown_data()
    {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<CommandLine::Request>("request");
        QTest::newRow("none") << QByteArrayList{} << CommandLine::Request::run;
        QTest::newRow("login") << QByteArrayList{"--login"} << CommandLine::Request::login;
        QTest::newRow("login twice") << QByteArrayList{"--login", "--login"} << CommandLine::Request::login;
        QTest::newRow("version") << QByteArrayList{"--version"} << CommandLine::Request::version;
        QTest::newRow("help") << QByteArrayList{"--login", "--help"} << CommandLine::Request::help;
        QTest::newRow("restored by a session manager")
            << QByteArrayList{"-session", "10a2"} << CommandLine::Request::run;
        QTest::newRow("both") << QByteArrayList{"-session", "--help", "--login"}
                              << CommandLine::Request::login;
    }

    void eachOptionIsKnown()
    {
        QFETCH(QByteArrayList, arguments);
        QFETCH(CommandLine::Request, request);
        QVERIFY((CommandLine::parse(arguments) == CommandLine{.request = request, .error = {}}));
    }

    void anythingElseIsAnErrorOfOneLine_data()
    {
        QTest::addColumn<QByteArrayList>("arguments");
        QTest::addColumn<QString>("named");
        QTest::newRow("an option") << QByteArrayList{"--login", "--loud"} << u"“--loud”"_s;
        QTest::newRow("a file") << QByteArrayList{"lessons.ics"} << u"“lessons.ics”"_s;
        QTest::newRow("an empty one") << QByteArrayList{""} << u"“”"_s;
        QTest::newRow("a session without its identifier") << QByteArrayList{"-session"} << u"“-session”"_s;
        QTest::newRow("one with line breaks") << QByteArrayList{"a\n\x1b[1mb"} << u"“a  [1mb”"_s;
    }

    void anythingElseIsAnErrorOfOneLine()
    {
        QFETCH(QByteArrayList, arguments);
        QFETCH(QString, named);
        const CommandLine line = CommandLine::parse(arguments);
        QCOMPARE(line.request, CommandLine::Request::invalid);
        QCOMPARE(line.error, u"quillet: unknown option %1; try “quillet --help”."_s.arg(named));
    }

    void theHelpNamesEachOption()
    {
        for (const auto *option :
             {CommandLine::loginOption, CommandLine::versionOption, CommandLine::helpOption}) {
            QVERIFY(CommandLine::help().contains(u"\n  "_s + QLatin1StringView(option)));
        }
    }
};

QUILLET_TEST(CommandLineTest, runTest<CommandLineTest>);
#include "CommandLineTest.moc"
