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

/// What the help centre can tell about.
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

/// All topics in the order in which the help centre lists them.
inline constexpr std::array allHelpTopics{
    HelpTopic::welcome,       HelpTopic::installation,   HelpTopic::quickStart,
    HelpTopic::notifications, HelpTopic::settings,       HelpTopic::troubleshooting,
    HelpTopic::faq,           HelpTopic::versionHistory, HelpTopic::contact};

/// The topic's identity: "quickStart".
[[nodiscard]] QString rawValue(HelpTopic topic);

/// The topic with exactly this raw value, or none.
[[nodiscard]] std::optional<HelpTopic> helpTopic(const QString &rawValue);

/// The heading of the topic's article: "Quick Start".
[[nodiscard]] QString title(HelpTopic topic);

/// The name of the symbol beside the title: "bolt.fill".
[[nodiscard]] QString symbolName(HelpTopic topic);

/// The topic's article. Made anew at each call.
[[nodiscard]] QList<HelpSection> sections(HelpTopic topic);

/// The first point of the first section, which stands under the article's title; empty where there is none.
[[nodiscard]] QString summary(const QList<HelpSection> &sections);
[[nodiscard]] QString summary(HelpTopic topic);

/// What a search looks through: the title and all points, but not the titles of the sections.
[[nodiscard]] QString searchableText(HelpTopic topic);

/// The topics that a search for `searchText` leaves, in their order: all of them where the text is empty but
/// for white space, else those that hold it in any letter case. What is the other case of a letter is a
/// matter of `locale`: in Turkish and Azerbaijani "I" is that of the dotless "ı", and "İ" that of "i".
[[nodiscard]] QList<HelpTopic> visibleHelpTopics(const QString &searchText, const QLocale &locale);

} // namespace corvane
