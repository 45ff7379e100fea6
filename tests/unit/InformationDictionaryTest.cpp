// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/InformationDictionary.h"
#include "tests/support/TestProgram.h"

#include <QBuffer>
#include <QFile>
#include <QTest>

using namespace corvane;
using namespace Qt::StringLiterals;

namespace {

const QString versionKey = u"CFBundleShortVersionString"_s;

InformationDictionary read(const QByteArray &list)
{
    QBuffer buffer;
    buffer.setData(list);
    buffer.open(QIODevice::ReadOnly);
    return InformationDictionary(buffer);
}

InformationDictionary withEntries(const QByteArray &entries)
{
    return read("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
}

} // namespace

class InformationDictionaryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aTextIsFoundUnderItsKey()
    {
        const auto dictionary =
            withEntries("<key>Other</key><string>x</string>"
                        "<key>CFBundleShortVersionString</key>\n<string>2.3.4 &amp; later</string>");
        QCOMPARE(dictionary.text(versionKey), std::optional(u"2.3.4 & later"_s));
        QCOMPARE(dictionary.text(u"Other"_s), std::optional(u"x"_s));
        QCOMPARE(dictionary.text(u"cfbundleshortversionstring"_s), std::nullopt);
    }

    void anEmptyTextIsAText()
    {
        QCOMPARE(withEntries("<key>CFBundleShortVersionString</key><string/>").text(versionKey),
                 std::optional(QString()));
    }

    void aMissingKeyHasNoText() { QCOMPARE(withEntries({}).text(versionKey), std::nullopt); }

    void otherValuesHaveNoText_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("a number") << QByteArray("<real>1.5</real>");
        QTest::newRow("a whole number") << QByteArray("<integer>7</integer>");
        QTest::newRow("a boolean") << QByteArray("<true/>");
        QTest::newRow("a list") << QByteArray("<array><string>1.2</string></array>");
        QTest::newRow("a dictionary")
            << QByteArray("<dict><key>CFBundleShortVersionString</key><string>1.2</string></dict>");
        QTest::newRow("another key") << QByteArray("<key>Other</key><string>1.2</string>");
        QTest::newRow("nothing") << QByteArray();
    }

    void otherValuesHaveNoText()
    {
        QFETCH(QByteArray, value);
        const auto dictionary = withEntries("<key>CFBundleShortVersionString</key>" + value +
                                            "<key>Last</key><string>y</string>");
        QCOMPARE(dictionary.text(versionKey), std::nullopt);
        QCOMPARE(dictionary.text(u"Last"_s), std::optional(u"y"_s));
    }

    void aGarbledListIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("list");
        const QByteArray good = "<plist><dict><key>CFBundleShortVersionString</key><string>1.2</string>"
                                "</dict></plist>";
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("not a list") << QByteArray("CFBundleShortVersionString=1.2\n");
        QTest::newRow("binary data") << QByteArray("\0\xff\xfe\x01", 4);
        QTest::newRow("truncated") << good.chopped(10);
        QTest::newRow("truncated in a text") << good.left(good.indexOf(".2"));
        QTest::newRow("trailing text") << good + "<";
        QTest::newRow("another root") << "<list>" + good + "</list>";
        QTest::newRow("no dictionary") << QByteArray("<plist><array><string>1.2</string></array></plist>");
        QTest::newRow("an element in a key")
            << QByteArray("<plist><dict><key>CFBundleShortVersion<b>String</b></key><string>1.2</string>"
                          "</dict></plist>");
        QByteArray bomb = "<!DOCTYPE plist [<!ENTITY a0 \"1.2\">";
        for (int level = 1; level < 30; ++level) {
            const QByteArray below = "&a" + QByteArray::number(level - 1) + ";";
            bomb += "<!ENTITY a" + QByteArray::number(level) + " \"" + below + below + "\">";
        }
        QTest::newRow("an entity bomb") << bomb + "]><plist><dict><key>CFBundleShortVersionString</"
                                                  "key><string>&a29;</string></dict></plist>";
    }

    void aGarbledListIsEmpty()
    {
        QFETCH(QByteArray, list);
        QCOMPARE(read(list).text(versionKey), std::nullopt);
    }

    void theLastOfTwoValuesCounts()
    {
        QCOMPARE(withEntries("<key>CFBundleShortVersionString</key><string>1.1</string>"
                             "<key>CFBundleShortVersionString</key><string>1.2</string>")
                     .text(versionKey),
                 std::optional(u"1.2"_s));
    }

    void theInstalledListHasTheProjectsVersion()
    {
        QFile file(QStringLiteral(QUILLET_BUILT_RESOURCES) + u"/Info.plist"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const InformationDictionary dictionary(file);
        QCOMPARE(dictionary.text(versionKey), std::optional(QStringLiteral(QUILLET_PROJECT_VERSION)));
        QCOMPARE(dictionary.text(versionKey), std::optional(u"1.0.6"_s));
        QCOMPARE(dictionary.text(u"CFBundleIdentifier"_s), std::optional(u"com.ordwinsoftware.Quillet"_s));
    }
};

QUILLET_TEST(InformationDictionaryTest, runTest<InformationDictionaryTest>);
#include "InformationDictionaryTest.moc"
