// What kernels tell, Linux in netlink messages and files, macOS in tables, and the packets of
// zenlot-bindwatch. The first byte chooses the decoder.
#include "bindwatch/bind_stream.h"
#include "fuzzing.h"
#include "inventory/darwin/process_records.h"
#include "inventory/darwin/tcp_pcb_list.h"
#include "inventory/linux/proc_files.h"
#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/proc_stat.h"
#include "inventory/linux/process_connector.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/unused_socket_watch.h"

#include <algorithm>
#include <vector>

namespace {

using namespace zenlot;

// A kernel that sends the input as datagrams of some length.
class InputTransport final : public NetlinkTransport {
  public:
    InputTransport(std::span<const std::byte> input, std::size_t length)
        : input_(input), length_(length) {}

    bool dump(std::span<const std::byte> /*request*/, const Consumer& consume) override {
        for (std::span<const std::byte> rest = input_; !rest.empty();) {
            const auto datagram = rest.first(std::min(rest.size(), length_));
            rest = rest.subspan(datagram.size());
            // Messages are copied to where they are aligned, as the kernel's are.
            const std::vector<std::byte> aligned(datagram.begin(), datagram.end());
            if (!consume(aligned))
                return true;
        }
        return false;
    }

  private:
    std::span<const std::byte> input_;
    std::size_t length_;
};

void readLinuxFiles(std::string_view text) {
    std::vector<KernelTcpSocket> sockets;
    std::vector<ListeningSocket> listeners;
    for (const AddressFamily family : {AddressFamily::ipv4, AddressFamily::ipv6}) {
        decodeProcNetTcp(text, family, SocketScope::held, sockets);
        decodeProcNetTcp(text, family, listeners);
    }
    decodeProcessStat(text);
    decodeStatm(text);
    decodeBootTime(text);
    decodeTotalMemory(text);
    decodeProcessStatus(text);
}

void readMacTables(std::span<const std::byte> bytes) {
    decodeTcpPcbList(bytes, 501);
    decodeSocketDescriptors(bytes);
    decodeTcpSocket(bytes);
    decodeProcessOwner(bytes);
    decodeTaskInfo(bytes);
    decodeCpuTime(bytes, bytes.first(std::min<std::size_t>(bytes.size(), 8)));
    decodeProcessIds(bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const auto bytes = fuzzing::bytesOf(data, size).subspan(2);
    switch (data[0] % 5) {
    case 0: {
        InputTransport transport(bytes, 16U + 64U * data[1]);
        dumpTcpSockets(transport, AddressFamily::ipv4, SocketScope::held, std::nullopt);
        dumpListeningSockets(transport, AddressFamily::ipv6, 3000);
        break;
    }
    case 1:
        decodeProcessEvent(bytes);
        decodeUnusedSocket(bytes);
        break;
    case 2:
        readLinuxFiles(fuzzing::textOf(data, size).substr(2));
        break;
    case 3:
        readMacTables(bytes);
        break;
    default:
        if (const auto packet = decodeBindPacket(bytes)) {
            ZENLOT_EXPECT(packet->events.size() <= kMostEventsOfPacket);
            for (const BindEvent& event : packet->events)
                ZENLOT_EXPECT(commandOf(event).size() <= sizeof(BindEvent));
        }
    }
    return 0;
}
