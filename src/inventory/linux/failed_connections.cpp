#include "inventory/linux/failed_connections.h"

#include <algorithm>
#include <charconv>

namespace zenlot {
namespace {

// Takes the next word off a line.
std::string_view nextWord(std::string_view& line) {
    line.remove_prefix(std::min(line.size(), line.find_first_not_of(' ')));
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

std::string_view nextLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

} // namespace

std::optional<std::uint64_t> decodeOutNoRoutes(std::string_view snmp) {
    std::string_view names = nextLine(snmp);
    std::string_view values = nextLine(snmp);
    while (!names.empty()) {
        const std::string_view name = nextWord(names);
        const std::string_view value = nextWord(values);
        if (name != "OutNoRoutes")
            continue;
        std::uint64_t count{0};
        const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), count);
        const bool isNumber = error == std::errc() && end == value.data() + value.size();
        return isNumber ? std::optional(count) : std::nullopt;
    }
    return std::nullopt;
}

FailedConnections::FailedConnections(const std::string& procRoot) : procFiles_(procRoot) {
    sinceLastTime();
}

std::uint64_t FailedConnections::sinceLastTime() {
    const auto text = procFiles_.read("self/net/snmp");
    const std::uint64_t now = text ? decodeOutNoRoutes(*text).value_or(last_) : last_;
    const std::uint64_t since = now >= last_ ? now - last_ : 0;
    last_ = now;
    return since;
}

} // namespace zenlot
