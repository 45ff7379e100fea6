// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Views/UserManualPDF.h"
#include "Corvane/Utilities/Product.h"
#include "Corvane/Utilities/Resources.h"
#include "tests/support/TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

class UserManualPDFTest final : public QObject {
    Q_OBJECT

private:
    [[nodiscard]] QString folder(const QString &name) const
    {
        const QString path = m_room->filePath(name);
        QDir().mkpath(path);
        return path;
    }

    [[nodiscard]] QString manualIn(const QString &name) const
    {
        const QString path = folder(name) + u"/Quillet-User-Manual.pdf"_s;
        QFile file(path);
        (void)file.open(QIODevice::WriteOnly);
        return path;
    }

    [[nodiscard]] UserManualPDF manual()
    {
        return {{folder(u"installed"_s), folder(u"built"_s)},
                [this](const QUrl &url) {
                    m_opened.push_back(url);
                    return m_hasViewer;
                },
                [this] { ++m_beeps; }};
    }

    std::unique_ptr<QTemporaryDir> m_room;
    QList<QUrl> m_opened;
    int m_beeps = 0;
    bool m_hasViewer = true;

private Q_SLOTS:
    void init()
    {
        m_room = std::make_unique<QTemporaryDir>();
        m_opened.clear();
        m_beeps = 0;
        m_hasViewer = true;
    }

    void theInstalledManualIsOpened()
    {
        const QString installed = manualIn(u"installed"_s);
        (void)manualIn(u"built"_s);
        manual().open();
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(installed)});
        QCOMPARE(m_beeps, 0);
    }

    void withoutAnInstalledManualTheOneInTheBuildTreeIsOpened()
    {
        const QString built = manualIn(u"built"_s);
        manual().open();
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(built)});
        QCOMPARE(m_beeps, 0);
    }

    void withoutTheManualItBeepsAndOpensNothing()
    {
        manual().open();
        QCOMPARE(m_opened, QList<QUrl>());
        QCOMPARE(m_beeps, 1);
    }

    void aFolderWithTheManualsNameIsIgnored()
    {
        QDir(folder(u"installed"_s)).mkdir(u"Quillet-User-Manual.pdf"_s);
        manual().open();
        QCOMPARE(m_opened, QList<QUrl>());
        QCOMPARE(m_beeps, 1);
    }

    void withoutAViewerItBeeps()
    {
        m_hasViewer = false;
        (void)manualIn(u"installed"_s);
        manual().open();
        QCOMPARE(m_opened.size(), 1);
        QCOMPARE(m_beeps, 1);
    }

    void itIsLookedUpEachTime()
    {
        const UserManualPDF document = manual();
        document.open();
        QCOMPARE(m_beeps, 1);
        const QString installed = manualIn(u"installed"_s);
        document.open();
        QCOMPARE(m_opened, QList{QUrl::fromLocalFile(installed)});
        QFile::remove(installed);
        document.open();
        QCOMPARE(m_beeps, 2);
    }

    void aPathWithUrlCharactersIsOpenedUnchanged()
    {
        const QString path = manualIn(u"a b#c?d%20é"_s);
        UserManualPDF(
            {m_room->filePath(u"a b#c?d%20é"_s)},
            [this](const QUrl &url) {
                m_opened.push_back(url);
                return true;
            },
            [] {})
            .open();
        QCOMPARE(m_opened.value(0).toLocalFile(), path);
        QVERIFY(m_opened.value(0).isLocalFile());
    }

    void resourcesAreLookedUpBesideTheProgramThenInTheDesktopsFolders()
    {
        QCOMPARE(resources::folders(u"/opt/quillet/bin"_s, {u"/home/anna/.local/share"_s, u"/usr/share/"_s}),
                 (QStringList{u"/opt/quillet/share/quillet"_s, u"/home/anna/.local/share/quillet"_s,
                              u"/usr/share/quillet"_s}));
        QVERIFY(!resources::folders().isEmpty());
    }

    void theBuildsManualIsAPdf()
    {
        const auto path =
            resources::find({QStringLiteral(QUILLET_BUILT_RESOURCES)}, u"Quillet-User-Manual.pdf"_s);
        QVERIFY(path);
        QFile file(*path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray document = file.readAll();
        QVERIFY(document.startsWith("%PDF-1."));
        QVERIFY(document.trimmed().endsWith("%%EOF"));
        QVERIFY2(document.size() > 100'000, "a manual with pictures is larger");
        QVERIFY2(document.size() < 1'500'000, "a manual should be quick to open and to print");
    }

    void aMailLinkNeedsAValidAddress()
    {
        QCOMPARE(product::mailLink(product::supportAddress()),
                 std::optional(QUrl(u"mailto:support@quillet.example"_s)));
        for (const QString &wrong : {QString(), u"support"_s, u"@quillet.example"_s, u"support@"_s,
                                     u"support desk@quillet.example"_s, u"a@b?subject=x"_s, u"a@b#c"_s}) {
            QVERIFY2(!product::mailLink(wrong), qPrintable(wrong));
        }
    }

    void theWebSiteIsOpenedWithHttps()
    {
        const std::optional wanted(QUrl(u"https://quillet.example"_s));
        QCOMPARE(product::secureLink(product::webSite()), wanted);
        QCOMPARE(product::secureLink(u"http://quillet.example"_s), wanted);
        QCOMPARE(product::secureLink(u"quillet.example"_s), wanted);
        QVERIFY(!product::secureLink(QString()));
        QVERIFY(!product::secureLink(u"https://"_s));
        QVERIFY(!product::secureLink(u"no site"_s));
    }
};

QUILLET_TEST(UserManualPDFTest, runTest<UserManualPDFTest>);
#include "UserManualPDFTest.moc"
