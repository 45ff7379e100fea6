// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include <gio/gio.h>

#include "Corvane/Platform/Linux/Freedesktop/GnomeNotificationSwitch.h"

#include "Corvane/Platform/Linux/GObjectRef.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

constexpr auto schemaName = "org.gnome.desktop.notifications.application";
constexpr auto switchKey = "enable";

/// Where GNOME keeps an application's settings: in lower case, with a dash for each run of other characters.
QByteArray settingsPath(const QString &applicationId)
{
    QByteArray name;
    for (const QChar character : applicationId.toLower()) {
        const bool isPlain =
            (character >= u'a' && character <= u'z') || (character >= u'0' && character <= u'9');
        if (isPlain) {
            name.append(character.toLatin1());
        } else if (!name.endsWith('-')) {
            name.append('-');
        }
    }
    return "/org/gnome/desktop/notifications/application/" + name + '/';
}

} // namespace

bool gnomeAllowsNotifications(const QString &applicationId)
{
    // Looked up first: GSettings ends the process if the schema is missing.
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    const std::unique_ptr<GSettingsSchema, decltype(&g_settings_schema_unref)> schema(
        source != nullptr ? g_settings_schema_source_lookup(source, schemaName, TRUE) : nullptr,
        &g_settings_schema_unref);
    if (!schema || g_settings_schema_has_key(schema.get(), switchKey) == FALSE) {
        return true;
    }
    const auto settings = GObjectRef<GSettings>::adopt(
        g_settings_new_full(schema.get(), nullptr, settingsPath(applicationId).constData()));
    return g_settings_get_boolean(settings.get(), switchKey) != FALSE;
}

} // namespace corvane
