#include "inventory/linux/proc_files.h"
#include "inventory/linux/proc_net_tcp.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(ProcFilesTest, StatusNamesBothUsers) {
    const std::pair<const char*, std::optional<ProcessStatus>> cases[] = {
        {"State:\tS (sleeping)\nUid:\t1000\t0\t0\t0\nGid:\t5\t5\n", ProcessStatus{1000, 0, false}},
        {"Name:\tx\nState:\tZ (zombie)\nUid:\t7\t8\t8\t8\n", ProcessStatus{7, 8, true}},
        // The kernel escapes line breaks in the name, so that it can't pass for a line.
        {"Name:\tx\\nUid:\t1\nUid:\t4294967295\t3", ProcessStatus{4294967295, 3, false}},
        {"Uid:\t7\n", {}}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(decodeProcessStatus(text), expected) << text;
}

TEST(ProcFilesTest, ReadsProcessesFromAnyRoot) {
    const TemporaryFolder folder;
    folder.write("12/status", "State:\tR\nUid:\t5\t6\t6\t6\n");
    folder.write("self/status", "");
    folder.write("really (deleted)", "");
    const std::string real = (folder.path() / "really (deleted)").string();
    folder.link("12/fd/1", "socket:[4711]");
    folder.link("12/fd/3", "socket:[18446744073709551616]");
    folder.link("12/fd/4", "/srv/" + std::string(3000, 'x') + "/socket:[1]");
    folder.link("12/exe", "/opt/server (deleted)");
    folder.link("13/exe", real);
    const ProcFiles files(folder.path().string());
    EXPECT_EQ(files.pids().size(), 2U);
    EXPECT_EQ(files.pids().size(), 2U); // a second look starts afresh
    EXPECT_EQ(files.status(12), (ProcessStatus{5, 6, false}));
    EXPECT_EQ(files.status(13), std::nullopt);
    std::vector<std::uint64_t> inodes;
    for (const ProcessId pid : {12, 13})
        files.forEachSocketInode(pid, [&](std::uint64_t inode) { inodes.push_back(inode); });
    EXPECT_EQ(inodes, std::vector<std::uint64_t>{4711});
    EXPECT_EQ(files.executablePath(12), "/opt/server");
    EXPECT_EQ(files.executablePath(13), real);
    EXPECT_EQ(files.executablePath(14), "");
}

TEST(ProcNetTcpTest, KeepsTheListenersAndSkipsLinesThatMakeNoSense) {
    const std::string text = R"(  sl local rem st tx_queue rx_queue tr tm->when uid timeout inode
   0: 0100007F:1F90 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 31337 1
   1: 0100007F:1F90 0100007F:C001 01 00000000:00000000 00:00000000 00000000  1000        0 31338 1

   2: F:50 F:0 0A 0 0 0 0 0
   3: F:1FFFF F:0 0A 0 0 0 0 0 1
   4: F:50 F:0 0A 0 0 0 x 0 1
   5: F50 F:0 0A 0 0 0 0 0 1
   6: F:50 F:0 0A 0 0 0 0 0 99999999999999999999
   7: F:50 F:0 0A 0 0 0 33 0 5)";
    std::vector<KernelTcpSocket> sockets;
    decodeProcNetTcp(text, AddressFamily::ipv6, SocketScope::listening, sockets);
    const std::vector<KernelTcpSocket> expected{
        {{AddressFamily::ipv6, TcpState::listen, 8080, 0}, 1000, 31337},
        {{AddressFamily::ipv6, TcpState::listen, 80, 0}, 33, 5}};
    EXPECT_EQ(sockets, expected);
    const std::string ipv6 = "1: 0000000000000000FFFF00000100007F:1F90 F:0 0A 0 0 0 1000 0 31337\n"
                             "2: 00000000000000000000000000000000:1F91 F:0 01 0 0 0 1000 0 31338\n"
                             "3: 0000000000000000FFFF00000100007:1F92 F:0 0A 0 0 0 1000 0 31339\n"
                             "4: 0000000000000000FFFF00000100007x:1F93 F:0 0A 0 0 0 1000 0 31340\n";
    std::vector<ListeningSocket> listening;
    decodeProcNetTcp(text, AddressFamily::ipv4, listening);
    decodeProcNetTcp(ipv6, AddressFamily::ipv6, listening);
    const std::vector<ListeningSocket> addresses{
        {*IpAddress::parse("127.0.0.1"), false, 8080, 1000, 31337, 0},
        {*IpAddress::parse("::ffff:127.0.0.1"), false, 8080, 1000, 31337, 0}};
    EXPECT_EQ(listening, addresses);
    for (std::size_t length = 0; length < text.size(); ++length)
        decodeProcNetTcp(text.substr(0, length), AddressFamily::ipv4, SocketScope::listening,
                         sockets);
}

} // namespace
} // namespace zenlot
