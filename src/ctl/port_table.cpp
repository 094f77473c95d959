#include "ctl/port_table.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <map>
#include <vector>

namespace zenlot {
namespace {

constexpr std::array<const char*, 6> kHeadings{"PORT", "PROTO", "PID", "USER", "NAME", "PATH"};
constexpr std::size_t kColumnGap = 2;
// Ports and process ids are read by their last digit.
constexpr std::array<bool, 6> kAlignRight{true, false, true, false, false, false};

using Row = std::array<std::string, kHeadings.size()>;

// Calls back with each code point and the bytes it was made of; ill-formed bytes come one by one
// as a negative code point.
template <typename Call>
void forEachCodePoint(std::string_view text, Call&& call) {
    const auto length = static_cast<std::int32_t>(text.size());
    for (std::int32_t offset = 0; offset < length;) {
        const std::int32_t start = offset;
        UChar32 codePoint{};
// The macro narrows its own integers.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
        U8_NEXT(text.data(), offset, length, codePoint);
#pragma GCC diagnostic pop
        call(codePoint, text.substr(static_cast<std::size_t>(start),
                                    static_cast<std::size_t>(offset - start)));
    }
}

bool isHarmless(UChar32 codePoint) {
    if (codePoint < 0)
        return false;
    switch (u_charType(codePoint)) {
    case U_CONTROL_CHAR:
    case U_FORMAT_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_SURROGATE:
    case U_UNASSIGNED:
    case U_PRIVATE_USE_CHAR:
        return false;
    default:
        return true;
    }
}

// Terminal cells that a text fills.
std::size_t widthOf(std::string_view text) {
    std::size_t cells = 0;
    forEachCodePoint(text, [&cells](UChar32 codePoint, std::string_view) {
        const int type = u_charType(codePoint);
        if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK)
            return;
        const int width = u_getIntPropertyValue(codePoint, UCHAR_EAST_ASIAN_WIDTH);
        cells += width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
    });
    return cells;
}

std::string orDash(std::string text) {
    return text.empty() ? "-" : std::move(text);
}

} // namespace

std::string loginName(const std::string& user) {
    uid_t uid{};
    const auto [end, error] = std::from_chars(user.data(), user.data() + user.size(), uid);
    if (error != std::errc() || end != user.data() + user.size())
        return user;
    std::array<char, std::size_t{16} * 1024> buffer;
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(uid, &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return user;
    return found->pw_name;
}

std::string terminalText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    forEachCodePoint(text, [&result](UChar32 codePoint, std::string_view bytes) {
        if (isHarmless(codePoint)) {
            result += bytes;
            return;
        }
        const unsigned value = codePoint < 0 ? static_cast<unsigned char>(bytes.front())
                                             : static_cast<unsigned>(codePoint);
        std::array<char, 16> escape{};
        std::snprintf(escape.data(), escape.size(), codePoint < 0 ? "\\x%02X" : "\\u{%X}", value);
        result += escape.data();
    });
    return result;
}

std::string portTable(std::span<const OccupiedPort> ports, const LoginNameQuery& nameOf) {
    std::vector<Row> rows;
    rows.reserve(ports.size() + 1);
    Row& headings = rows.emplace_back();
    std::copy(kHeadings.begin(), kHeadings.end(), headings.begin());

    std::map<std::string, std::string> names; // Asking for a name may read a file, or the network.
    for (const OccupiedPort& port : ports) {
        auto [name, isNew] = names.try_emplace(port.user);
        if (isNew)
            name->second = port.user.empty() ? std::string() : nameOf(port.user);
        rows.push_back({std::to_string(port.port), port.proto,
                        port.pid == 0 ? "-" : std::to_string(port.pid),
                        orDash(terminalText(name->second)), orDash(terminalText(port.displayName)),
                        orDash(terminalText(port.executablePath))});
    }

    std::array<std::size_t, kHeadings.size()> widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], widthOf(row[column]));
    }

    std::string table;
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string padding(widths[column] - widthOf(row[column]), ' ');
            if (kAlignRight[column])
                table += padding;
            table += row[column];
            if (column + 1 == row.size())
                break;
            if (!kAlignRight[column])
                table += padding;
            table.append(kColumnGap, ' ');
        }
        table += '\n';
    }
    return table;
}

std::string portOffers(std::span<const OccupiedPort> ports) {
    std::map<std::int64_t, std::vector<std::string>> owners;
    for (const OccupiedPort& port : ports) {
        const std::string owner = port.pid == 0 ? port.proto
                                                : terminalText(port.displayName) + " (PID " +
                                                      std::to_string(port.pid) + ")";
        std::vector<std::string>& known = owners[port.port];
        if (std::find(known.begin(), known.end(), owner) == known.end())
            known.push_back(owner);
    }
    std::string lines;
    for (const auto& [port, names] : owners) {
        lines += std::to_string(port);
        char separator = '\t';
        for (const std::string& name : names) {
            lines += separator;
            lines += separator == ',' ? " " + name : name;
            separator = ',';
        }
        lines += '\n';
    }
    return lines;
}

} // namespace zenlot
