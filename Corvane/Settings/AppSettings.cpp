// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Settings/AppSettings.h"

#include "Corvane/Settings/LaunchAtLogin.h"

#include <optional>
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

/// The boolean in a stored value, also as a user might write it; nothing if it is none.
std::optional<bool> truthValue(const QVariant &value)
{
    if (value.typeId() == QMetaType::Bool) {
        return value.toBool();
    }
    const QString word = value.toString().trimmed().toLower();
    if (QStringList{u"true"_s, u"yes"_s, u"on"_s, u"y"_s, u"t"_s}.contains(word)) {
        return true;
    }
    if (QStringList{u"false"_s, u"no"_s, u"off"_s, u"n"_s, u"f"_s}.contains(word)) {
        return false;
    }
    bool isNumber = false;
    const double number = word.toDouble(&isNumber);
    return isNumber ? std::optional(number != 0) : std::nullopt;
}

} // namespace

AppSettings::AppSettings(SettingsStore &userDefaults, SettingsStore &standardUserDefaults,
                         LoginItem &loginItem, QObject *parent)
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

void AppSettings::load(const SettingsStore &userDefaults)
{
    if (const auto position =
            corvane::notificationPosition(userDefaults.value(notificationPositionKey).toString())) {
        setNotificationPosition(*position);
    }
    bool isNumber = false;
    const double duration = userDefaults.value(notificationDurationKey).toDouble(&isNumber);
    if (isNumber) {
        setNotificationDuration(duration);
    }
    if (const auto plays = truthValue(userDefaults.value(playsSoundKey))) {
        setPlaysSound(*plays);
    }
    // On its first start the program registers itself to open at login, so that it is there on the next
    // teaching day.
    setStartAtLogin(truthValue(userDefaults.value(startAtLoginKey)).value_or(true));
    LaunchAtLogin::configure(m_startAtLogin, m_loginItem);
    if (const auto completed = truthValue(userDefaults.value(hasCompletedWelcomeKey))) {
        setHasCompletedWelcome(*completed);
    }
    // A list that cannot be decoded stays stored until the list changes.
    if (auto entries = decodeManualLessons(userDefaults.value(manualLessonsKey).toByteArray())) {
        setManualLessons(*std::move(entries));
    }
}

void AppSettings::store(const QString &key, const QVariant &value)
{
    m_standardUserDefaults.setValue(key, value);
    // A value that cannot be written lasts for this run; the store keeps the reason.
    [[maybe_unused]] const auto written = m_standardUserDefaults.sync();
}

} // namespace corvane
