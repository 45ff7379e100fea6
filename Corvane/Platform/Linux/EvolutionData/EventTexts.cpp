// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Platform/Linux/EvolutionData/EventTexts.h"

#include "Corvane/Platform/Linux/EvolutionData/CalendarBytes.h"
#include "Corvane/Platform/Linux/EvolutionData/EventRules.h"
#include "Corvane/Platform/Linux/GObjectRef.h"
#include "Corvane/Utilities/PlainText.h"

#include <QUrl>

#include <cstring>
#include <optional>

namespace corvane {

namespace {

QString toText(const char *text)
{
    auto length = static_cast<qsizetype>(strnlen(text, static_cast<std::size_t>(maximumValueBytes) + 1));
    if (length > maximumValueBytes) {
        length = maximumValueBytes;
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
            --length;
        }
    }
    return QString::fromUtf8(text, length);
}

std::optional<QString> optionalText(const char *text)
{
    if (text == nullptr || *text == '\0') {
        return std::nullopt;
    }
    return toText(text);
}

/// `address` as a link; none if it was cut, since it would lead nowhere.
std::optional<QUrl> link(const char *address)
{
    if (address == nullptr || *address == '\0' ||
        strnlen(address, static_cast<std::size_t>(maximumValueBytes)) >=
            static_cast<std::size_t>(maximumValueBytes)) {
        return std::nullopt;
    }
    const QUrl url(toText(address).trimmed(), QUrl::TolerantMode);
    return url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

std::optional<QUrl> ownLink(ICalComponent *event)
{
    const auto property =
        GObjectRef<ICalProperty>::adopt(i_cal_component_get_first_property(event, I_CAL_URL_PROPERTY));
    return property ? link(i_cal_property_get_url(property.get())) : std::nullopt;
}

/// Only what a browser opens: telephone numbers are links, too.
std::optional<QUrl> browserLink(const char *address)
{
    const auto url = link(address);
    return url && (url->scheme() == u"https" || url->scheme() == u"http") ? url : std::nullopt;
}

/// The link to a meeting, from the format's newer property or from those of single providers.
std::optional<QUrl> conferenceLink(ICalComponent *event)
{
    // The library's GObject bindings have no name for it.
    constexpr auto conference = static_cast<ICalPropertyKind>(ICAL_CONFERENCE_PROPERTY);
    for (const auto &property : properties(event, conference)) {
        char *address = i_cal_property_get_value_as_string(property.get());
        auto url = browserLink(address);
        g_free(address);
        if (url) {
            return url;
        }
    }
    for (const auto &property : properties(event, I_CAL_X_PROPERTY)) {
        const char *name = i_cal_property_get_x_name(property.get());
        if (name != nullptr && (qstricmp(name, "X-GOOGLE-CONFERENCE") == 0 ||
                                qstricmp(name, "X-MICROSOFT-SKYPETEAMSMEETINGURL") == 0)) {
            if (auto url = browserLink(i_cal_property_get_x(property.get()))) {
                return url;
            }
        }
    }
    return std::nullopt;
}

} // namespace

CalendarEvent eventTexts(ICalComponent *event)
{
    CalendarEvent made;
    made.title = optionalText(i_cal_component_get_summary(event));
    made.location = optionalText(i_cal_component_get_location(event));
    made.notes = optionalText(i_cal_component_get_description(event));
    made.url = ownLink(event);
    if (!made.url) {
        made.url = conferenceLink(event);
    }
    return made;
}

qsizetype textLength(const CalendarEvent &event)
{
    const auto length = [](const std::optional<QString> &text) { return text ? text->size() : 0; };
    return length(event.title) + length(event.location) + length(event.notes);
}

QString logText(const QString &text)
{
    constexpr qsizetype longest = 80;
    QString line = plainText(text.left(longest));
    line.replace(u'"', u'\'');
    return text.size() > longest ? line + u'…' : line;
}

} // namespace corvane
