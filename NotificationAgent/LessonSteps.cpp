// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "NotificationAgent/LessonSteps.h"

#include "Corvane/Utilities/Names.h"

#include <QHash>
#include <QStringView>

#include <algorithm>

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

// A SHA-256 in hexadecimal.
constexpr qsizetype digestLength = 64;

// `name` without the digest at the end of a shortened identifier.
QStringView withoutDigest(QStringView name)
{
    const bool isCut = name.size() > digestLength && name.at(name.size() - digestLength - 1) == u'…';
    return isCut ? name.chopped(digestLength + 1) : name;
}

} // namespace

std::optional<QString> lessonOfStep(const QString &identifier)
{
    if (!identifier.startsWith(names::backupPrefix)) {
        return std::nullopt;
    }
    const QStringView rest = QStringView(identifier).sliced(names::backupPrefix.size());
    const qsizetype afterStep = rest.indexOf(u'.');
    const qsizetype afterStart = rest.indexOf(u'.', afterStep + 1);
    if (afterStep <= 0 || afterStart < 0) {
        return std::nullopt;
    }
    bool isNumber = false;
    (void)rest.sliced(afterStep + 1, afterStart - afterStep - 1).toLongLong(&isNumber);
    return isNumber ? std::optional(withoutDigest(rest.sliced(afterStep + 1)).toString()) : std::nullopt;
}

bool isOutdatedBy(const PendingRequest &step, const PendingRequest &later)
{
    const auto lesson = lessonOfStep(step.identifier);
    return lesson && step.fireDate < later.fireDate && lesson == lessonOfStep(later.identifier);
}

QStringList outdatedSteps(const std::vector<PendingRequest> &requests, qint64 now)
{
    QHash<QString, qint64> newest;
    for (const PendingRequest &request : requests) {
        const auto lesson = lessonOfStep(request.identifier);
        if (lesson && request.fireDate <= now && now < request.expirationDate) {
            qint64 &latest = newest[*lesson];
            latest = std::max(latest, request.fireDate);
        }
    }
    QStringList outdated;
    for (const PendingRequest &request : requests) {
        const auto lesson = lessonOfStep(request.identifier);
        if (lesson && request.fireDate < newest.value(*lesson, request.fireDate)) {
            outdated.append(request.identifier);
        }
    }
    return outdated;
}

} // namespace corvane
