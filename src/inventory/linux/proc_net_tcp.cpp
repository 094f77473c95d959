#include "inventory/linux/proc_net_tcp.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
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

} // namespace

void decodeProcNetTcp(std::string_view text, AddressFamily family, SocketScope scope,
                      std::vector<KernelTcpSocket>& sockets) {
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
        if (!localPort || !foreignPort || !stateNumber || !ownerUid || !inodeNumber)
            continue;
        const TcpState socketState = tcpStateFromKernel(*stateNumber);
        if (isInScope(scope, socketState))
            sockets.push_back(
                {{family, socketState, *localPort, *foreignPort}, *ownerUid, *inodeNumber});
    }
}

} // namespace zenlot
