#include "updates/release.h"

#include "updates/web_address.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace zenlot {

std::optional<Release> releaseFromFeed(const QByteArray& feed) {
    const QJsonObject fields = QJsonDocument::fromJson(feed).object();
    const std::optional<ReleaseVersion> version =
        ReleaseVersion::fromText(fields.value(QLatin1String("version")).toString());
    const QUrl page(fields.value(QLatin1String("page")).toString(), QUrl::StrictMode);
    const QJsonValue dateText = fields.value(QLatin1String("date"));
    const QDate date = QDate::fromString(dateText.toString(), Qt::ISODate);
    if (!version || !isSecureWebAddress(page) || (!dateText.isUndefined() && !date.isValid()))
        return std::nullopt;
    return Release{*version, page, date};
}

} // namespace zenlot
