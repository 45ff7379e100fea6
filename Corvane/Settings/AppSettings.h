// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Calendar/ManualLessonEntry.h"
#include "Corvane/Settings/LoginItem.h"
#include "Corvane/Settings/NotificationPosition.h"
#include "Corvane/Settings/SettingsStore.h"

#include <QObject>

#include <vector>

namespace corvane {

/// The user's preferences. Main thread only; one instance per run.
///
/// Every setter sets the value, emits its signal and writes the value to the standard store at once. A value
/// that cannot be read gets its default; a failed write is ignored, and the value lasts for this run.
class AppSettings : public QObject {
    Q_OBJECT

public:
    /// Loads every property from `userDefaults`. Writes go to `standardUserDefaults`, which is the same store
    /// in the running program. Registers or unregisters the login item according to the setting; the first
    /// start registers it. Borrows all three.
    AppSettings(SettingsStore &userDefaults, SettingsStore &standardUserDefaults, LoginItem &loginItem,
                QObject *parent = nullptr);

    /// How long a banner stays on screen, in seconds; any stored double.
    [[nodiscard]] double notificationDuration() const { return m_notificationDuration; }
    void setNotificationDuration(double seconds);

    [[nodiscard]] bool startAtLogin() const { return m_startAtLogin; }
    void setStartAtLogin(bool enabled);

    /// Shown in the settings window only; alerts always play their sound.
    [[nodiscard]] bool playsSound() const { return m_playsSound; }
    void setPlaysSound(bool enabled);

    [[nodiscard]] NotificationPosition notificationPosition() const { return m_notificationPosition; }
    void setNotificationPosition(NotificationPosition position);

    /// Whether the first-run setup is completed.
    [[nodiscard]] bool hasCompletedWelcome() const { return m_hasCompletedWelcome; }
    void setHasCompletedWelcome(bool completed);

    /// The lessons entered by hand, of any day, in the order of entry.
    [[nodiscard]] const std::vector<ManualLessonEntry> &manualLessons() const { return m_manualLessons; }
    void setManualLessons(std::vector<ManualLessonEntry> entries);

Q_SIGNALS:
    void notificationDurationChanged();
    void startAtLoginChanged();
    void playsSoundChanged();
    void notificationPositionChanged();
    void hasCompletedWelcomeChanged();
    void manualLessonsChanged();

private:
    void load(const SettingsStore &userDefaults);
    void store(const QString &key, const QVariant &value);

    SettingsStore &m_standardUserDefaults;
    LoginItem &m_loginItem;
    double m_notificationDuration = 10.0;
    bool m_startAtLogin = false;
    bool m_playsSound = true;
    NotificationPosition m_notificationPosition = NotificationPosition::center;
    bool m_hasCompletedWelcome = false;
    std::vector<ManualLessonEntry> m_manualLessons;
};

} // namespace corvane
