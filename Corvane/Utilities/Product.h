// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The teacher's contacts for support. Both are build options, QUILLET_SUPPORT_ADDRESS and QUILLET_WEB_SITE.
namespace corvane::product {

/// The e-mail address for support.
[[nodiscard]] QString supportAddress();

/// The product's web site as shown in texts: "https://…".
[[nodiscard]] QString webSite();

/// The mailto link to `address`, or none if it is not an address that a link can contain.
[[nodiscard]] std::optional<QUrl> mailLink(const QString &address);

/// The https URL of `site`, which may lack a scheme, or none if it names no host.
[[nodiscard]] std::optional<QUrl> secureLink(const QString &site);

} // namespace corvane::product
