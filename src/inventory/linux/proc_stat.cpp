#include "inventory/linux/proc_stat.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace zenlot {
namespace {

// Takes the next word off the text; empty at its end.
std::string_view nextWord(std::string_view& text) {
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t\n")));
    const std::string_view word = text.substr(0, text.find_first_of(" \t\n"));
    text.remove_prefix(word.size());
    return word;
}

template <typename Number>
std::optional<Number> nextNumber(std::string_view& text) {
    const std::string_view word = nextWord(text);
    Number number{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size() && !word.empty()
               ? std::optional(number)
               : std::nullopt;
}

void skipWords(std::string_view& text, int count) {
    for (; count > 0; --count)
        nextWord(text);
}

// The number that follows `key` at the start of a line.
template <typename Number>
std::optional<Number> numberOfLine(std::string_view text, std::string_view key) {
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.starts_with(key)) {
            line.remove_prefix(key.size());
            return nextNumber<Number>(line);
        }
    }
    return std::nullopt;
}

// Far beyond any real time, and far below what a sum or a change of units could overflow.
std::int64_t bounded(std::int64_t time) {
    return std::clamp(time, std::int64_t{0}, std::int64_t{1'000'000'000'000'000});
}

ProcessState stateOf(std::string_view letter) {
    if (letter.size() != 1)
        return ProcessState::unknown;
    switch (letter.front()) {
    case 'R':
        return ProcessState::runnable;
    case 'S':
    case 'D': // sleeps, and not even a signal wakes it
    case 'I': // a thread of the kernel that has nothing to do
        return ProcessState::sleeping;
    case 'T':
    case 't': // by a debugger
        return ProcessState::stopped;
    case 'Z':
        return ProcessState::zombie;
    default:
        return ProcessState::unknown;
    }
}

} // namespace

std::optional<ProcessStat> decodeProcessStat(std::string_view text) {
    const std::size_t nameStart = text.find('(') + 1;
    const std::size_t nameEnd = text.rfind(')');
    if (nameEnd == std::string_view::npos || nameStart == 0 || nameStart > nameEnd)
        return std::nullopt;
    std::string name(text.substr(nameStart, nameEnd - nameStart));
    text.remove_prefix(nameEnd + 1);
    const ProcessState state = stateOf(nextWord(text));
    const auto parentPid = nextNumber<ProcessId>(text);
    skipWords(text, 1); // process group
    const auto sessionLeader = nextNumber<ProcessId>(text);
    const auto terminal = nextNumber<std::int64_t>(text);
    skipWords(text, 6); // group in the foreground to major faults of children
    const auto userTicks = nextNumber<std::int64_t>(text);
    const auto systemTicks = nextNumber<std::int64_t>(text);
    skipWords(text, 6); // times of children to interval timer
    const auto startTicks = nextNumber<std::int64_t>(text);
    if (!parentPid || !sessionLeader || !terminal || !userTicks || !systemTicks || !startTicks)
        return std::nullopt;
    return ProcessStat{std::move(name),      state,
                       *parentPid,           bounded(*userTicks) + bounded(*systemTicks),
                       bounded(*startTicks), *sessionLeader,
                       *terminal != 0};
}

std::optional<MemoryPages> decodeStatm(std::string_view text) {
    const auto virtualPages = nextNumber<std::uint64_t>(text);
    const auto residentPages = nextNumber<std::uint64_t>(text);
    if (!virtualPages || !residentPages)
        return std::nullopt;
    return MemoryPages{*virtualPages, *residentPages};
}

std::optional<std::int64_t> decodeBootTime(std::string_view text) {
    const auto seconds = numberOfLine<std::int64_t>(text, "btime ");
    return seconds ? std::optional(bounded(*seconds)) : std::nullopt;
}

std::optional<std::uint64_t> decodeTotalMemory(std::string_view text) {
    return numberOfLine<std::uint64_t>(text, "MemTotal:");
}

} // namespace zenlot
