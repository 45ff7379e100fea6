// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// Whom the teacher turns to. Both are options of the build, QUILLET_SUPPORT_ADDRESS and QUILLET_WEB_SITE.
namespace corvane::product {

/// The e-mail address of the support.
[[nodiscard]] QString supportAddress();

/// The product's web site as it is written in a text: "https://…".
[[nodiscard]] QString webSite();

/// Where a letter to `address` is begun, or none where that is no address that a link can hold.
[[nodiscard]] std::optional<QUrl> mailLink(const QString &address);

/// The encrypted address of `site`, which may be given with or without a scheme, or none where that is no
/// address of a host.
[[nodiscard]] std::optional<QUrl> secureLink(const QString &site);

} // namespace corvane::product
