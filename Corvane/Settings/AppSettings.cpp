// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/AppSettings.h"

#include "Corvane/Settings/LaunchAtLogin.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

const QString notificationDurationKey = u"notificationDuration"_s;
const QString startAtLoginKey = u"startAtLogin"_s;
const QString playsSoundKey = u"playsSound"_s;
const QString notificationPositionKey = u"notificationPosition"_s;
const QString hasCompletedWelcomeKey = u"hasCompletedWelcome"_s;
const QString manualLessonsKey = u"manualLessons"_s;

} // namespace

AppSettings::AppSettings(QSettings &userDefaults, QSettings &standardUserDefaults, LoginItem &loginItem,
                         QObject *parent)
    : QObject(parent)
    , m_standardUserDefaults(standardUserDefaults)
    , m_loginItem(loginItem)
{
    load(userDefaults);
}

void AppSettings::setNotificationDuration(double seconds)
{
    m_notificationDuration = seconds;
    Q_EMIT notificationDurationChanged();
    store(notificationDurationKey, seconds);
}

void AppSettings::setStartAtLogin(bool enabled)
{
    m_startAtLogin = enabled;
    Q_EMIT startAtLoginChanged();
    store(startAtLoginKey, enabled);
    LaunchAtLogin::configure(enabled, m_loginItem);
}

void AppSettings::setPlaysSound(bool enabled)
{
    m_playsSound = enabled;
    Q_EMIT playsSoundChanged();
    store(playsSoundKey, enabled);
}

void AppSettings::setNotificationPosition(NotificationPosition position)
{
    m_notificationPosition = position;
    Q_EMIT notificationPositionChanged();
    store(notificationPositionKey, rawValue(position));
}

void AppSettings::setHasCompletedWelcome(bool completed)
{
    m_hasCompletedWelcome = completed;
    Q_EMIT hasCompletedWelcomeChanged();
    store(hasCompletedWelcomeKey, completed);
}

void AppSettings::setManualLessons(std::vector<ManualLessonEntry> entries)
{
    m_manualLessons = std::move(entries);
    Q_EMIT manualLessonsChanged();
    if (const auto data = encode(m_manualLessons)) {
        store(manualLessonsKey, *data);
    }
}

void AppSettings::load(const QSettings &userDefaults)
{
    if (const auto position =
            corvane::notificationPosition(userDefaults.value(notificationPositionKey).toString())) {
        setNotificationPosition(*position);
    }
    if (userDefaults.contains(notificationDurationKey)) {
        setNotificationDuration(userDefaults.value(notificationDurationKey).toDouble());
    }
    if (userDefaults.contains(playsSoundKey)) {
        setPlaysSound(userDefaults.value(playsSoundKey).toBool());
    }
    // A teacher's first start makes the program open at login, so that it is there on the next teaching day.
    setStartAtLogin(userDefaults.value(startAtLoginKey, true).toBool());
    LaunchAtLogin::configure(m_startAtLogin, m_loginItem);
    if (userDefaults.contains(hasCompletedWelcomeKey)) {
        setHasCompletedWelcome(userDefaults.value(hasCompletedWelcomeKey).toBool());
    }
    // What cannot be decoded stays stored until the list changes.
    if (auto entries = decodeManualLessons(userDefaults.value(manualLessonsKey).toByteArray())) {
        setManualLessons(*std::move(entries));
    }
}

void AppSettings::store(const QString &key, const QVariant &value)
{
    m_standardUserDefaults.setValue(key, value);
    m_standardUserDefaults.sync();
}

} // namespace corvane
