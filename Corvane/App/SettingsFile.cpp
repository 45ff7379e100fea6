// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/App/SettingsFile.h"

#include "Corvane/Utilities/Clock.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace corvane {

std::unique_ptr<QSettings> SettingsFile::open()
{
    auto settings =
        std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, u"quillet"_s, u"quillet"_s);
    // The user's file alone: a value of the machine's would look as if the user had chosen it.
    settings->setFallbacksEnabled(false);
    if (settings->status() == QSettings::FormatError) {
        m_corruptPath = settings->fileName();
        // Never over an earlier copy: that may be the one that matters.
        QString copy = m_corruptPath + u".unreadable"_s;
        for (int number = 2; QFile::exists(copy); ++number) {
            copy = m_corruptPath + u".unreadable-"_s + QString::number(number);
        }
        if (QFile::copy(m_corruptPath, copy)) {
            m_copyPath = copy;
        }
    }
    return settings;
}

void SettingsFile::report(const QSettings &settings, DebugLogService &logger) const
{
    if (!m_corruptPath.isEmpty()) {
        logger.log(u"settings file not understood path=\""_s + m_corruptPath + u"\" copy=\""_s + m_copyPath +
                       u'"',
                   currentDate());
    }
    if (settings.status() == QSettings::AccessError) {
        logger.log(u"settings file cannot be written path=\""_s + settings.fileName() +
                       u"\", changes last for this run only"_s,
                   currentDate());
    }
}

} // namespace corvane
