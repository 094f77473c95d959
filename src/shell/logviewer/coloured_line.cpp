#include "shell/logviewer/coloured_line.h"

#include <QByteArray>

#include <algorithm>
#include <span>

namespace zenlot {
namespace {

constexpr QByteArrayView kErrors[] = {"error", "fatal", "crash"};
constexpr QByteArrayView kConflicts[] = {"conflict", "warn", "already in use"};
constexpr QByteArrayView kStarts[] = {"started", "listening", "registered"};
constexpr QByteArrayView kEnds[] = {"stopped", "exit", "terminated"};

} // namespace

LogLineTint lineColor(QByteArrayView text) {
    // The words are ASCII, and no other character becomes one of theirs in lower case.
    const QByteArray lowered = text.toByteArray().toLower();
    const auto holdsAny = [&lowered](std::span<const QByteArrayView> words) {
        return std::ranges::any_of(
            words, [&lowered](QByteArrayView word) { return lowered.contains(word); });
    };
    if (holdsAny(kErrors))
        return LogLineTint::Red;
    if (holdsAny(kConflicts))
        return LogLineTint::Orange;
    if (holdsAny(kStarts))
        return LogLineTint::Green;
    return holdsAny(kEnds) ? LogLineTint::Teal : LogLineTint::Plain;
}

QString LogLine::id() const {
    return QString::number(index) + u':' + QString::fromUtf8(text);
}

} // namespace zenlot
