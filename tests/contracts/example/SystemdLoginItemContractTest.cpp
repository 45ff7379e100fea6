// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "tests/contracts/example/SystemdLoginItem.h"

#include "tests/contracts/LoginItemContract.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;

class SystemdLoginItemContractTest final : public LoginItemContract {
    Q_OBJECT

protected:
    LoginItem &item() override { return *m_item; }

    // Ask systemd rather than read the files.
    bool startsAtLogin() override
    {
        return run(u"systemctl"_s, {u"--root="_s + m_machine->path(), u"--global"_s, u"is-enabled"_s,
                                    QFileInfo(m_item->path()).fileName()}) == u"enabled"_s;
    }

    void makeRegisteringImpossible() override
    {
        QFile file(m_machine->filePath(u"etc"_s));
        QVERIFY(file.open(QIODevice::WriteOnly)); // in the folder's place
    }

private Q_SLOTS:
    void init()
    {
        m_machine = std::make_unique<QTemporaryDir>();
        // Units for all users are in /etc/systemd/user, laid out like a user's in ~/.config/systemd/user.
        m_item.emplace(u"/opt/quillet/bin/quillet"_s, m_machine->filePath(u"etc"_s));
    }

    void theUnitIsValidForAnyProgramPath_data()
    {
        QTest::addColumn<QString>("program");
        QTest::newRow("plain") << u"/opt/quillet/bin/quillet"_s;
        QTest::newRow("awkward") << u"/opt/my lessons/100%f/\"it's\" $HOME \\x/老师/quillet"_s;
    }

    void theUnitIsValidForAnyProgramPath()
    {
        QFETCH(QString, program);
        SystemdLoginItem item(program, m_machine->filePath(u"etc"_s));
        QVERIFY(item.registerItem().has_value());
        QCOMPARE(run(u"systemd-analyze"_s, {u"--user"_s, u"verify"_s, item.path()}), QString());
    }

    void aMovedProgramIsRegisteredAnew()
    {
        QVERIFY(m_item->registerItem().has_value());
        SystemdLoginItem moved(u"/usr/bin/quillet"_s, m_machine->filePath(u"etc"_s));
        QVERIFY(moved.registerItem().has_value());
        QFile unit(moved.path());
        QVERIFY(unit.open(QIODevice::ReadOnly));
        QVERIFY(unit.readAll().contains(" \"/usr/bin/quillet\"\n"));
        QVERIFY(startsAtLogin());
    }

private:
    /// Runs the program and returns its output, including standard error.
    [[nodiscard]] static QString run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        return process.waitForFinished(20000) ? QString::fromUtf8(process.readAll()).trimmed()
                                              : program + u" does not run"_s;
    }

    std::unique_ptr<QTemporaryDir> m_machine;
    std::optional<SystemdLoginItem> m_item;
};

QUILLET_TEST(SystemdLoginItemContractTest, runTest<SystemdLoginItemContractTest>);
#include "SystemdLoginItemContractTest.moc"
