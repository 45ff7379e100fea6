// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/Freedesktop/AutostartLoginItem.h"

#include "tests/contracts/LoginItemContract.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <memory>
#include <optional>

using namespace corvane;
using namespace Qt::StringLiterals;

class AutostartLoginItemTest final : public LoginItemContract {
    Q_OBJECT

protected:
    LoginItem &item() override { return *m_item; }

    // As desktops read it: the user's file overrides the system's, and a hidden entry counts as absent.
    bool startsAtLogin() override
    {
        for (const QString &path : {m_item->path(), systemPath()}) {
            if (QFile::exists(path)) {
                const QString text = read(path);
                return !text.contains(u"\nHidden=true\n"_s) &&
                       !text.contains(u"\nX-GNOME-Autostart-enabled=false\n"_s);
            }
        }
        return false;
    }

    void makeRegisteringImpossible() override
    {
        put(m_folder->filePath(u"config"_s), u"a file where the folder should be"_s);
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        make(u"/opt/quillet/bin/quillet"_s);
    }

    void theEntryIsValid()
    {
        QVERIFY(m_item->registerItem());
        QCOMPARE(validationErrors(), QString());
        const QString text = read(m_item->path());
        QVERIFY(text.contains(u"\nExec=\"/opt/quillet/bin/quillet\" --login\n"_s));
        QVERIFY(text.contains(u"\nTryExec=/opt/quillet/bin/quillet\n"_s));
        QVERIFY(text.contains(u"\nX-GNOME-Autostart-enabled=true\n"_s));
        QVERIFY(!text.contains(u"Hidden"_s));
        QVERIFY(m_item->path().endsWith(u"/autostart/com.ordwinsoftware.Quillet.desktop"_s));
    }

    void theHidingEntryIsValid()
    {
        putSystemEntry();
        QVERIFY(m_item->unregisterItem());
        QCOMPARE(validationErrors(), QString());
    }

    void aProgramAtAnyPathIsStarted_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("spaces") << u"my lessons/quillet"_s;
        QTest::newRow("percent") << u"100%f/quillet"_s;
        QTest::newRow("quotes") << u"it's \"here\"/quillet"_s;
        QTest::newRow("shell characters") << u"$HOME `id` & ; |/quillet"_s;
        QTest::newRow("backslash") << u"a\\b\\\\c/quillet"_s;
        QTest::newRow("letters") << u"老师 Ö/quillet"_s;
    }

    // An independent implementation of the format starts the program.
    void aProgramAtAnyPathIsStarted()
    {
        QFETCH(QString, path);
        const QString program = m_folder->filePath(path);
        const QString mark = m_folder->filePath(u"started"_s);
        QVERIFY(QDir().mkpath(QFileInfo(program).path()));
        QFile script(program);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$*\" >\"$MARK.part\" && mv \"$MARK.part\" \"$MARK\"\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        script.close();
        make(program);
        QVERIFY(m_item->registerItem());
        QCOMPARE(validationErrors(), QString());

        qputenv("MARK", mark.toUtf8());
        QProcess launcher;
        launcher.start(u"/usr/bin/python3"_s, {u"-c"_s,
                                               u"import sys\nfrom gi.repository import Gio\n"
                                               "info = Gio.DesktopAppInfo.new_from_filename(sys.argv[1])\n"
                                               "sys.exit(0 if info and info.launch([], None) else 1)"_s,
                                               m_item->path()});
        QVERIFY(launcher.waitForFinished(20000));
        QCOMPARE(launcher.exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(mark), 10000);
        QCOMPARE(read(mark), u"--login\n"_s);
    }

    void registeringAgainDoesNotTouchTheFile()
    {
        QVERIFY(m_item->registerItem());
        QFile file(m_item->path());
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QDateTime old = QDateTime::fromSecsSinceEpoch(1000000000);
        QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(m_item->registerItem());
        QCOMPARE(QFileInfo(m_item->path()).lastModified(), old);
    }

    void aMovedProgramIsRegisteredAnew()
    {
        QVERIFY(m_item->registerItem());
        make(u"/usr/bin/quillet"_s);
        QVERIFY(m_item->registerItem());
        QVERIFY(read(m_item->path()).contains(u"\nExec=\"/usr/bin/quillet\" --login\n"_s));
        QVERIFY(!read(m_item->path()).contains(u"/opt"_s));
    }

    void aProgramInItsBuildFolderKeepsAnInstalledOnesEntry()
    {
        const QString installed = QCoreApplication::applicationFilePath(); // an existing program
        make(installed);
        QVERIFY(m_item->registerItem());
        const QString entered = read(m_item->path());
        make(u"/build/quillet"_s, true);
        QVERIFY(m_item->registerItem());
        QCOMPARE(read(m_item->path()), entered);
        // If the registered program is missing, the one in the build folder replaces it.
        make(u"/nowhere/quillet"_s);
        QVERIFY(m_item->registerItem());
        make(u"/build/quillet"_s, true);
        QVERIFY(m_item->registerItem());
        QVERIFY(read(m_item->path()).contains(u"\nTryExec=/build/quillet\n"_s));
    }

    void foreignKeysAreKept()
    {
        put(m_item->path(),
            u"[Desktop Entry]\nType=Application\nName=Mine\nExec=old\nX-GNOME-Autostart-Delay=5\n"
            "OnlyShowIn=XFCE;\n\n[X-Other]\nKey=1\n"_s);
        QVERIFY(m_item->registerItem());
        const QString text = read(m_item->path());
        QVERIFY(text.contains(u"\nX-GNOME-Autostart-Delay=5\n"_s));
        QVERIFY(text.contains(u"\nOnlyShowIn=XFCE;\n"_s));
        QVERIFY(text.endsWith(u"\n[X-Other]\nKey=1\n"_s));
        QVERIFY(!text.contains(u"old"_s));
        QCOMPARE(text.count(u"\nName="_s), 1);
        QCOMPARE(validationErrors(), QString());
        QVERIFY(m_item->registerItem());
        QCOMPARE(read(m_item->path()), text);
    }

    void anEntryDisabledByTheDesktopIsEnabled()
    {
        QVERIFY(m_item->registerItem());
        const QString text = read(m_item->path());
        put(m_item->path(),
            QString(text).replace(u"enabled=true"_s, u"enabled=false"_s) + u"Hidden=true\n"_s);
        QVERIFY(!startsAtLogin());
        QVERIFY(m_item->registerItem());
        QCOMPARE(read(m_item->path()), text);
    }

    void garbageInTheFileIsReplaced()
    {
        QFile file(m_item->path());
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("\x00\xff[[[\n=\n\x01=1\n", 12) + QByteArray(200000, 'x'));
        file.close();
        QVERIFY(m_item->registerItem());
        QCOMPARE(validationErrors(), QString());
        QVERIFY(QFileInfo(m_item->path()).size() < 1000);
    }

    void aPackagesEntryIsHiddenAndShownAgain()
    {
        putSystemEntry();
        QVERIFY(startsAtLogin());
        QVERIFY(m_item->unregisterItem());
        QVERIFY(!startsAtLogin());
        QVERIFY(QFile::exists(systemPath()));
        QVERIFY(m_item->registerItem());
        QVERIFY(startsAtLogin());
    }

    void unregisteringRemovesTheFile()
    {
        QVERIFY(m_item->registerItem());
        QVERIFY(m_item->unregisterItem());
        QVERIFY(!QFile::exists(m_item->path()));
    }

    void aFolderThatCannotBeCreatedIsReported()
    {
        makeRegisteringImpossible();
        const auto result = m_item->registerItem();
        QVERIFY(!result);
        QVERIFY(result.error().localizedDescription.contains(m_item->path()));
        QVERIFY(m_item->unregisterItem());
    }

    void aFileThatIsNotRegularIsLeftAlone_data() { obstacles::addRows(); }

    void aFileThatIsNotRegularIsLeftAlone()
    {
        QFETCH(obstacles::Kind, kind);
        QVERIFY(QDir().mkpath(QFileInfo(m_item->path()).path()));
        const auto obstacle = obstacles::put(kind, m_item->path());
        const auto registered = m_item->registerItem();
        QVERIFY(!registered);
        QVERIFY(registered.error().localizedDescription.contains(u"cannot be written: it is "_s));
        QVERIFY(obstacle.isUntouched());
        if (!QFileInfo(m_item->path()).isSymLink()) {
            QVERIFY(!m_item->unregisterItem());
            QVERIFY(obstacle.isUntouched());
        }
    }

    void aLinkToTheUsersOwnFileStaysALink()
    {
        const QString real = m_folder->filePath(u"repository/entry"_s);
        put(real, u"[Desktop Entry]\nX-GNOME-Autostart-Delay=5\n"_s);
        QVERIFY(QDir().mkpath(QFileInfo(m_item->path()).path()));
        QVERIFY(QFile::link(real, m_item->path()));
        QVERIFY(m_item->registerItem());
        QVERIFY(QFileInfo(m_item->path()).isSymLink());
        QVERIFY(read(real).contains(u"\nX-GNOME-Autostart-Delay=5\n"_s));
        QVERIFY(startsAtLogin());
    }

    void theRunningProgramIsRegisteredInTheUsersFolder()
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", "relative/is/ignored");
        const AutostartLoginItem fallback = AutostartLoginItem::forThisProgram();
        QCOMPARE(fallback.path(),
                 QDir::homePath() + u"/.config/autostart/com.ordwinsoftware.Quillet.desktop"_s);
        qputenv("XDG_CONFIG_HOME", m_folder->filePath(u"config"_s).toUtf8());
        AutostartLoginItem here = AutostartLoginItem::forThisProgram();
        qputenv("XDG_CONFIG_HOME", before);
        QCOMPARE(here.path(), m_item->path());
        QVERIFY(here.registerItem());
        QVERIFY(read(here.path()).contains(QCoreApplication::applicationFilePath()));
    }

private:
    void make(const QString &program, bool isTrial = false)
    {
        m_item.emplace(program, m_folder->filePath(u"config"_s), QStringList{m_folder->filePath(u"etc"_s)},
                       isTrial);
    }

    [[nodiscard]] QString systemPath() const
    {
        return m_folder->filePath(u"etc/autostart/com.ordwinsoftware.Quillet.desktop"_s);
    }

    void putSystemEntry()
    {
        put(systemPath(), u"[Desktop Entry]\nType=Application\nName=Quillet\nExec=quillet\n"_s);
    }

    static QString read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    static void put(const QString &path, const QString &text)
    {
        QFile file(path);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }

    // The reference validator's complaints about the entry.
    [[nodiscard]] QString validationErrors() const
    {
        QProcess checker;
        checker.setProcessChannelMode(QProcess::MergedChannels);
        checker.start(u"desktop-file-validate"_s, {u"--no-hints"_s, m_item->path()});
        if (!checker.waitForFinished(20000)) {
            return u"desktop-file-validate does not run"_s;
        }
        return QString::fromUtf8(checker.readAll());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::optional<AutostartLoginItem> m_item;
};

QUILLET_TEST(AutostartLoginItemTest, runTest<AutostartLoginItemTest>);
#include "AutostartLoginItemTest.moc"
