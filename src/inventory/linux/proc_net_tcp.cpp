#include "inventory/linux/proc_net_tcp.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace zenlot {
namespace {

// The columns of a line, split at runs of blanks.
enum Column : std::size_t {
    number,
    localAddress,
    remoteAddress,
    state,
    queues,
    timer,
    retransmits,
    uid,
    timeout,
    inode,
    columnCount
};

template <typename Number>
std::optional<Number> parse(std::string_view text, int base) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<std::uint16_t> portOf(std::string_view address) {
    const std::size_t colon = address.rfind(':');
    return colon == std::string_view::npos ? std::nullopt
                                           : parse<std::uint16_t>(address.substr(colon + 1), 16);
}

bool split(std::string_view line, std::array<std::string_view, columnCount>& columns) {
    for (std::string_view& column : columns) {
        const std::size_t start = line.find_first_not_of(' ');
        if (start == std::string_view::npos)
            return false;
        line.remove_prefix(start);
        column = line.substr(0, line.find(' '));
        line.remove_prefix(column.size());
    }
    return true;
}

// What is of use in a line; the state is in the language of the problem.
struct Line {
    std::string_view localAddress; // with its port
    TcpSocket socket;
    UserId ownerUid{0};
    std::uint64_t inode{0};
};

template <typename Call>
void forEachLine(std::string_view text, AddressFamily family, const Call& call) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));

        std::array<std::string_view, columnCount> columns;
        if (!split(line, columns))
            continue;
        const auto localPort = portOf(columns[localAddress]);
        const auto foreignPort = portOf(columns[remoteAddress]);
        const auto stateNumber = parse<unsigned>(columns[state], 16);
        const auto ownerUid = parse<UserId>(columns[uid], 10);
        const auto inodeNumber = parse<std::uint64_t>(columns[inode], 10);
        if (localPort && foreignPort && stateNumber && ownerUid && inodeNumber)
            call(Line{columns[localAddress],
                      {family, tcpStateFromKernel(*stateNumber), *localPort, *foreignPort},
                      *ownerUid,
                      *inodeNumber});
    }
}

// The address is written as numbers of 32 bits, whose bytes in memory are those of the address.
std::optional<IpAddress> addressOf(std::string_view addressAndPort, AddressFamily family) {
    constexpr std::size_t kDigits = 8;
    const std::string_view digits = addressAndPort.substr(0, addressAndPort.rfind(':'));
    IpAddress address;
    address.family = family;
    const std::size_t length = family == AddressFamily::ipv6 ? 16 : 4;
    if (digits.size() != 2 * length)
        return std::nullopt;
    for (std::size_t place = 0; place < length; place += sizeof(std::uint32_t)) {
        const auto word = parse<std::uint32_t>(digits.substr(2 * place, kDigits), 16);
        if (!word)
            return std::nullopt;
        std::memcpy(address.bytes.data() + place, &*word, sizeof *word);
    }
    return address;
}

} // namespace

void decodeProcNetTcp(std::string_view text, AddressFamily family, SocketScope scope,
                      std::vector<KernelTcpSocket>& sockets) {
    forEachLine(text, family, [scope, &sockets](const Line& line) {
        if (isInScope(scope, line.socket.state))
            sockets.push_back({line.socket, line.ownerUid, line.inode});
    });
}

void decodeProcNetTcp(std::string_view text, AddressFamily family,
                      std::vector<ListeningSocket>& sockets) {
    forEachLine(text, family, [family, &sockets](const Line& line) {
        const auto address = addressOf(line.localAddress, family);
        if (address && isInScope(SocketScope::listening, line.socket.state))
            sockets.push_back(
                {*address, false, line.socket.localPort, line.ownerUid, line.inode, 0});
    });
}

} // namespace zenlot
