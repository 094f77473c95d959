#include "updates/release_version.h"

#include <QRegularExpression>

#include <algorithm>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestVersion = 64;

bool isNumber(const QString& part) {
    return part.front().isDigit();
}

// Any number of digits, which need not fit an integer.
int compareNumbers(const QString& one, const QString& other) {
    const auto significant = [](const QString& digits) {
        const auto first = std::ranges::find_if(digits, [](QChar digit) { return digit != u'0'; });
        return QStringView(first, digits.end());
    };
    const QStringView left = significant(one);
    const QStringView right = significant(other);
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

int compareParts(const QString& one, const QString& other) {
    if (isNumber(one) != isNumber(other))
        return isNumber(one) ? -1 : 1;
    return isNumber(one) ? compareNumbers(one, other) : one.compare(other, Qt::CaseInsensitive);
}

} // namespace

std::optional<ReleaseVersion> ReleaseVersion::fromText(const QString& text) {
    static const QRegularExpression kForm(QRegularExpression::anchoredPattern(
        u"[vV]?"
        "((?<number>[0-9]{1,9}(\\.[0-9]{1,9})*)"
        "(?<suffix>[-~.]?[A-Za-z][0-9A-Za-z.~-]*|[-~][0-9][0-9A-Za-z.~-]*)?"
        "(\\+[0-9A-Za-z.-]+)?)"_s));
    static const QRegularExpression kPart(u"[0-9]+|[A-Za-z]+"_s);
    if (text.size() > kLongestVersion)
        return std::nullopt;
    const QRegularExpressionMatch match = kForm.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    ReleaseVersion version;
    version.text_ = match.captured(1);
    version.number_ = QVersionNumber::fromString(match.captured(u"number"_s)).normalized();
    auto parts = kPart.globalMatch(match.captured(u"suffix"_s));
    while (parts.hasNext())
        version.preRelease_.append(parts.next().captured());
    return version;
}

int ReleaseVersion::compare(const ReleaseVersion& one, const ReleaseVersion& other) {
    if (const int order = QVersionNumber::compare(one.number_, other.number_))
        return order;
    if (one.preRelease_.isEmpty() != other.preRelease_.isEmpty())
        return one.preRelease_.isEmpty() ? 1 : -1;
    const qsizetype shared = std::min(one.preRelease_.size(), other.preRelease_.size());
    for (qsizetype part = 0; part < shared; ++part) {
        if (const int order = compareParts(one.preRelease_.at(part), other.preRelease_.at(part)))
            return order;
    }
    if (one.preRelease_.size() == other.preRelease_.size())
        return 0;
    return one.preRelease_.size() < other.preRelease_.size() ? -1 : 1;
}

} // namespace zenlot
