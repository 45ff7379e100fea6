// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Corvane/Views/HelpSection.h"

#include <QList>
#include <QLocale>
#include <QString>

#include <array>
#include <optional>

namespace corvane {

/// The topics of the help centre.
enum class HelpTopic {
    welcome,
    installation,
    quickStart,
    notifications,
    settings,
    troubleshooting,
    faq,
    versionHistory,
    contact,
};

/// All topics, in the order of the help centre's list.
inline constexpr std::array allHelpTopics{
    HelpTopic::welcome,       HelpTopic::installation,   HelpTopic::quickStart,
    HelpTopic::notifications, HelpTopic::settings,       HelpTopic::troubleshooting,
    HelpTopic::faq,           HelpTopic::versionHistory, HelpTopic::contact};

/// The topic's identifier, for example "quickStart".
[[nodiscard]] QString rawValue(HelpTopic topic);

/// The topic with this raw value, case-sensitive, or none.
[[nodiscard]] std::optional<HelpTopic> helpTopic(const QString &rawValue);

/// The heading of the topic's article, for example "Quick Start".
[[nodiscard]] QString title(HelpTopic topic);

/// The name of the symbol beside the title, for example "bolt.fill".
[[nodiscard]] QString symbolName(HelpTopic topic);

/// The topic's article. Built at each call.
[[nodiscard]] QList<HelpSection> sections(HelpTopic topic);

/// The first point of the first section, shown under the article's title; empty if there is none.
[[nodiscard]] QString summary(const QList<HelpSection> &sections);
[[nodiscard]] QString summary(HelpTopic topic);

/// The text that a search covers: the title and all points, but not the section titles.
[[nodiscard]] QString searchableText(HelpTopic topic);

/// The topics that match a search for `searchText`, in list order. Blank text matches all of them; other text
/// matches case-insensitively. `locale` decides which letters differ only in case: in Turkish and Azerbaijani
/// "I" pairs with the dotless "ı", and "İ" with "i".
[[nodiscard]] QList<HelpTopic> visibleHelpTopics(const QString &searchText, const QLocale &locale);

} // namespace corvane
