#include "automation/result_identifier.h"

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kRequest{"request"};

} // namespace

QString resultIdentifier(const PortQuery& query) {
    return query.port ? u":%1"_s.arg(*query.port) : kRequest;
}

std::optional<PortQuery> queryOfResult(const QString& identifier) {
    if (identifier == kRequest)
        return PortQuery();
    const std::optional<PortQuery> query = parsePortQuery(identifier, {});
    return query && resultIdentifier(*query) == identifier ? query : std::nullopt;
}

} // namespace zenlot
