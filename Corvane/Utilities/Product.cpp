// SPDX-FileCopyrightText: 2026 The Quillet authors
// SPDX-License-Identifier: MIT

#include "Corvane/Utilities/Product.h"

using namespace Qt::StringLiterals;

namespace corvane::product {

QString supportAddress()
{
    return QStringLiteral(QUILLET_SUPPORT_ADDRESS);
}

QString webSite()
{
    return QStringLiteral(QUILLET_WEB_SITE);
}

std::optional<QUrl> mailLink(const QString &address)
{
    const qsizetype at = address.indexOf(u'@');
    if (at < 1 || at == address.size() - 1) {
        return std::nullopt;
    }
    // Strict: anything that needs correction, such as a space, is a mistake in the address.
    const QUrl link(u"mailto:"_s + address, QUrl::StrictMode);
    return link.isValid() && link.path() == address ? std::optional(link) : std::nullopt;
}

std::optional<QUrl> secureLink(const QString &site)
{
    QUrl link(site.contains("://"_L1) ? site : u"https://"_s + site, QUrl::StrictMode);
    link.setScheme(u"https"_s);
    return link.isValid() && !link.host().isEmpty() ? std::optional(link) : std::nullopt;
}

} // namespace corvane::product
