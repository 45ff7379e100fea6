// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "NotificationAgent/RequestFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace corvane {

/// A queue file in a folder of its own. A test class derives from it for each subject of the file.
class RequestFileFixture : public QObject {
    Q_OBJECT

protected:
    [[nodiscard]] static PendingRequest numberedRequest(int number)
    {
        return {QStringLiteral("quillet.backup.start.%1.王 \"Ä\"\n\\ 😀").arg(number),
                QStringLiteral("Quillet: START NOW"),
                QStringLiteral("Anna\tstarts & <soon>\u2028."),
                QStringLiteral("quillet.lesson"),
                1'800'000'000 + number,
                1'800'000'020 + number};
    }

    [[nodiscard]] static RequestQueue queueOf(int count)
    {
        RequestQueue queue;
        for (int number = 0; number < count; ++number) {
            queue.add(numberedRequest(number));
        }
        return queue;
    }

    void put(const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(m_path).path());
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    [[nodiscard]] QByteArray content(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    [[nodiscard]] QByteArray content() const { return content(m_path); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral("state/quillet/pending"));
    }
};

} // namespace corvane
