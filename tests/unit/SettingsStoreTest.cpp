// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/SettingsStore.h"
#include "tests/support/Obstacles.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <memory>
#include <random>

using namespace corvane;
using namespace Qt::StringLiterals;

class SettingsStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"quillet/quillet.ini"_s);
        QVERIFY(QDir().mkpath(QFileInfo(m_path).path()));
    }

    void setValuesAreOnDiskAfterSync()
    {
        SettingsStore store(m_path);
        QVERIFY(!store.contains(u"a"_s));
        store.setValue(u"a"_s, 7.5);
        QVERIFY(store.contains(u"a"_s));
        QVERIFY(!QFile::exists(m_path));
        QVERIFY(store.sync());
        QCOMPARE(content(), QByteArray("[General]\na=7.5\n"));
        store.setValue(u"a"_s, true);
        store.setValue(u"b"_s, u"x"_s);
        QVERIFY(store.sync());
        QCOMPARE(content(), QByteArray("[General]\na=true\nb=x\n"));
        QCOMPARE(SettingsStore(m_path).value(u"a"_s), QVariant(u"true"_s));
        QCOMPARE(SettingsStore(m_path).allKeys(), (QStringList{u"a"_s, u"b"_s}));
    }

    // --- compatibility with QSettings, which earlier versions used

    void qSettingsReadsWhatIsWritten()
    {
        for (const QVariant &value : samples()) {
            // QSettings does not read a file of the same name, size and time again.
            m_path += u'x';
            SettingsStore store(m_path);
            store.setValue(u"key"_s, value);
            QVERIFY(store.sync());
            const QSettings toolkit(m_path, QSettings::IniFormat);
            const QVariant read = toolkit.value(u"key"_s);
            QVERIFY2(read.toString() == value.toString() && read.toByteArray() == value.toByteArray(),
                     content().constData());
            QCOMPARE(toolkit.status(), QSettings::NoError);
        }
    }

    void whatQSettingsWroteIsRead()
    {
        for (const QVariant &value : samples()) {
            m_path += u'x';
            {
                QSettings toolkit(m_path, QSettings::IniFormat);
                toolkit.setValue(u"key"_s, value);
                toolkit.setValue(u"group/key"_s, u"another"_s);
            }
            const QVariant read = SettingsStore(m_path).value(u"key"_s);
            QVERIFY2(read.toString() == value.toString() && read.toByteArray() == value.toByteArray(),
                     content().constData());
            QCOMPARE(SettingsStore(m_path).allKeys(), QStringList{u"key"_s});
        }
    }

    // --- files edited by hand

    void aHandEditedFileKeepsItsCommentsAndForeignKeys()
    {
        const QByteArray text =
            "; mine\nfirst = 1\n\n[Window]\na=1\n[general]\r\n# note\r\nb = no ; for now\n"
            "c=\"two\nlines\"\nb=off\n\n[Other]\nb=3";
        put(text);
        SettingsStore store(m_path);
        QCOMPARE(store.value(u"first"_s), QVariant(u"1"_s));
        QCOMPARE(store.value(u"b"_s), QVariant(u"off"_s));
        QCOMPARE(store.value(u"c"_s), QVariant(u"two\nlines"_s));
        QCOMPARE(store.value(u"a"_s), QVariant());
        store.setValue(u"b"_s, true);
        store.setValue(u"d"_s, 1.0);
        QVERIFY(store.sync());
        QByteArray expected = text;
        expected.replace("b=off\n", "b=true\nd=1\n");
        QCOMPARE(content(), expected);
        QVERIFY(!store.copyOfGarbled());
    }

    void foreignChangesBetweenTwoWritesAreKept()
    {
        SettingsStore store(m_path);
        store.setValue(u"a"_s, 1.0);
        QVERIFY(store.sync());
        put("[General]\na=2\nb=3\n");
        store.setValue(u"c"_s, 4.0);
        QVERIFY(store.sync());
        QCOMPARE(content(), QByteArray("[General]\na=2\nb=3\nc=4\n"));
    }

    // A teacher may look for her settings with an editor.
    void aTextStaysReadableInTheFile()
    {
        SettingsStore store(m_path);
        store.setValue(u"a"_s, u"Anna Maria Ö"_s);
        QVERIFY(store.sync());
        QCOMPARE(content(), QByteArray("[General]\na=Anna Maria Ö\n"));
    }

    void handWrittenValuesAreUnderstood()
    {
        put("[General]\na= plain text \nb=\" quoted \"\nc=one, two\nd=\\x41 "
            "\\\"\ne=\nj=\"one \" , two\nf=@@x\ng=@String(y)\nh=a;b\n");
        const SettingsStore store(m_path);
        QCOMPARE(store.value(u"a"_s), QVariant(u"plain text"_s));
        QCOMPARE(store.value(u"b"_s), QVariant(u" quoted "_s));
        QCOMPARE(store.value(u"c"_s), QVariant(QStringList{u"one"_s, u"two"_s}));
        QCOMPARE(store.value(u"d"_s), QVariant(u"A \""_s));
        QCOMPARE(store.value(u"e"_s), QVariant(QString()));
        QCOMPARE(store.value(u"f"_s), QVariant(u"@x"_s));
        QCOMPARE(store.value(u"g"_s), QVariant(u"y"_s));
        QCOMPARE(store.value(u"h"_s), QVariant(u"a"_s));
        QCOMPARE(store.value(u"i"_s, 5), QVariant(5));
        QCOMPARE(store.value(u"j"_s), QVariant(QStringList{u"one "_s, u"two"_s}));
    }

    // A backslash makes the line break part of the value.
    void anEntryAfterAnEscapedLineBreakIsALineOfItsOwn_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("kept");
        const QByteArray entry("[General]\na=1\\");
        QTest::newRow("line feed") << entry + '\n' << entry + "\n\n";
        QTest::newRow("carriage return") << entry + '\r' << entry + "\r\r";
        QTest::newRow("both") << entry + "\r\n" << entry + "\r\n\n";
        QTest::newRow("both, reversed") << entry + "\n\r" << entry + "\n\r\r";
        QTest::newRow("and a comment") << entry + "\n;c" << entry + "\n\n;c";
    }

    void anEntryAfterAnEscapedLineBreakIsALineOfItsOwn()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, kept);
        put(before);
        for (const double value : {2.0, 3.0}) {
            SettingsStore store(m_path);
            store.setValue(u"b"_s, value);
            QVERIFY(store.sync());
            QCOMPARE(SettingsStore(m_path).value(u"b"_s).toDouble(), value);
            const qsizetype comment = kept.indexOf(';');
            QByteArray expected = kept;
            expected.insert(comment < 0 ? kept.size() : comment, "b=" + QByteArray::number(value) + '\n');
            QCOMPARE(content(), expected);
        }
    }

    void aGarbledFileIsKeptAsideBeforeItIsReplaced()
    {
        const QByteArray garbled = "[General]\na=1\nnonsense\n[half\nb=\"open\n";
        put(garbled);
        SettingsStore store(m_path);
        store.setValue(u"c"_s, 2.0);
        QVERIFY(store.sync());
        QCOMPARE(content(), QByteArray("[General]\na=1\nc=2\n"));
        QCOMPARE(store.copyOfGarbled(), m_path + u".unreadable"_s);
        QCOMPARE(content(m_path + u".unreadable"_s), garbled);
        put("[half\nc=5\n");
        QVERIFY(store.sync());
        QVERIFY(!SettingsStore(m_path).contains(u"c"_s));
        store.setValue(u"c"_s, 3.0);
        QVERIFY(store.sync());
        QCOMPARE(store.copyOfGarbled(), m_path + u".unreadable-2"_s);
        QCOMPARE(content(m_path + u".unreadable"_s), garbled);
        QCOMPARE(content(), QByteArray("[General]\nc=3\n"));
    }

    // --- obstacles in the file's place

    void filesThatAreNotRegularLeaveTheValuesInMemory_data() { obstacles::addRows(); }

    void filesThatAreNotRegularLeaveTheValuesInMemory()
    {
        QFETCH(obstacles::Kind, kind);
        const auto obstacle = obstacles::put(kind, m_path);
        SettingsStore store(m_path);
        QVERIFY(store.error());
        QCOMPARE(store.error()->kind, FileError::Kind::unusable);
        store.setValue(u"a"_s, 1.0);
        QVERIFY(!store.sync());
        QCOMPARE(store.value(u"a"_s), QVariant(1.0));
        QVERIFY(obstacle.isUntouched());
        // When the obstacle is gone, the values are written.
        QVERIFY(kind == obstacles::Kind::folder ? QDir().rmdir(m_path) : QFile::remove(m_path));
        QVERIFY(store.sync());
        QVERIFY(!store.error());
        QCOMPARE(content(), QByteArray("[General]\na=1\n"));
    }

    void aPipeInPlaceOfTheLockDelaysNothing()
    {
        const auto pipe = obstacles::put(obstacles::Kind::pipe, m_path + u".lock"_s);
        SettingsStore store(m_path);
        store.setValue(u"a"_s, 1.0);
        QVERIFY(store.sync());
        QVERIFY(pipe.isUntouched());
    }

    void onlyTheUserCanReadTheFileAndItsNeighbours()
    {
        put("[General]\na=1\n");
        const QString beside = m_path + u".unreadable"_s;
        QVERIFY(QFile::copy(m_path, beside));
        const auto everybody = QFile::Permissions(0x6666);
        for (const QString &path : {m_path, beside}) {
            QVERIFY(QFile::setPermissions(path, everybody));
        }
        QVERIFY(QFile::setPermissions(QFileInfo(m_path).path(), QFile::Permissions(0x7755)));
        SettingsStore store(m_path);
        store.setValue(u"a"_s, 1.0); // the stored value: nothing is written
        QVERIFY(store.sync());
        for (const QString &path : {m_path, beside, QFileInfo(m_path).path()}) {
            QCOMPARE(QFile::permissions(path) & QFile::Permissions(0x0077), QFile::Permissions());
        }
    }

    void theUsersFileIsBelowTheConfigurationFolder()
    {
        const QByteArray before = qgetenv("XDG_CONFIG_HOME");
        qputenv("XDG_CONFIG_HOME", "relative");
        const QString path = SettingsStore::userPath();
        qputenv("XDG_CONFIG_HOME", before);
        QCOMPARE(path, QDir::homePath() + u"/.config/quillet/quillet.ini"_s);
    }

private:
    void put(const QByteArray &bytes) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    [[nodiscard]] QByteArray content(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    [[nodiscard]] QByteArray content() const { return content(m_path); }

    static QList<QVariant> samples()
    {
        QList<QVariant> found{true,
                              false,
                              10.0,
                              7.25,
                              -1e300,
                              std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(),
                              QString(),
                              u" blanks "_s,
                              u"a,b;c=d"_s,
                              u"@at"_s,
                              u"\"quotes\" and \\x41"_s,
                              u"line\nfeed\r\ttab\u0001f\u0085"_s,
                              u"王 😀 Ö"_s,
                              QByteArray(),
                              QByteArray("[{\"studentName\":\"王, Ö\"}]"),
                              QByteArray("\0\xff\x7f a", 5)};
        std::minstd_rand random(5);
        for (int count = 0; count < 30; ++count) {
            QByteArray data;
            QString text;
            for (std::uint_fast32_t length = random() % 40; length > 0; --length) {
                data += static_cast<char>(random());
                text += QChar(static_cast<char16_t>(1 + random() % 0x17F));
            }
            found << data << text;
        }
        return found;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QUILLET_TEST(SettingsStoreTest, runTest<SettingsStoreTest>);
#include "SettingsStoreTest.moc"
