#include "inventory/linux/fake_netlink_transport.h"
#include "inventory/linux/linux_origin_sources.h"
#include "inventory/origin/bind_obstacle.h"
#include "inventory/origin/origin_collector.h"
#include "support/child_process.h"
#include "support/connection.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>

namespace zenlot {
namespace {

// A made-up machine: a tree like /proc, and control groups.
class MadeUpMachine {
  public:
    void add(ProcessId pid, ProcessId parent, const std::string& name,
             const std::string& commandLine, const std::string& group = "/", ProcessId session = 0,
             std::uint64_t socket = 0) const {
        const std::string folder = std::to_string(pid) + "/";
        const std::string start = std::to_string(1000 + pid);
        proc_.write(folder + "stat", std::to_string(pid) + " (" + name + ") S " +
                                         std::to_string(parent) + " 1 " +
                                         std::to_string(session == 0 ? pid : session) +
                                         " 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 " + start + " 0 0");
        proc_.write(folder + "comm", name + "\n");
        std::string words = commandLine;
        for (char& letter : words)
            letter = letter == '|' ? '\0' : letter;
        proc_.write(folder + "cmdline", words + '\0');
        proc_.write(folder + "cgroup", "3:cpu:/\n0::" + group + "\n");
        if (socket != 0)
            proc_.link(folder + "fd/3", "socket:[" + std::to_string(socket) + "]");
    }
    void listen(const std::string& lines) const { proc_.write("net/tcp", lines); }
    const TemporaryFolder& proc() const { return proc_; }
    std::unique_ptr<LinuxOriginSources> sources() const {
        return std::make_unique<LinuxOriginSources>(proc_.path().string(),
                                                    std::make_unique<SilentNetlinkTransport>(),
                                                    groups_.path().string());
    }

  private:
    TemporaryFolder proc_;
    TemporaryFolder groups_;
};

std::string line(std::uint64_t inode, const char* port = "1F90", const char* state = "0A",
                 const char* address = "0100007F") {
    return "0: " + std::string(address) + ":" + port + " 00000000:0000 " + state +
           " 0:0 0:0 0 7 0 " + std::to_string(inode) + " 1\n";
}

std::vector<std::string> namesOf(const std::vector<Starter>& starters) {
    std::vector<std::string> names;
    for (const Starter& starter : starters)
        names.push_back(starter.name);
    return names;
}

TEST(LinuxOriginSourcesTest, TellsAServerFromItsTree) {
    const MadeUpMachine machine;
    machine.add(10, 1, "tmux: server", "tmux|new");
    machine.add(11, 10, "zsh", "-zsh");
    machine.add(12, 11, "npm run dev", "npm run dev", "/", 11);
    machine.add(13, 12, "sh", "sh|-c|vite", "/", 11);
    machine.add(14, 13, "node", "node|/srv/shop/node_modules/.bin/vite|--token|x", "/", 11, 500);
    machine.add(15, 14, "node", "node|worker", "/", 11, 500);
    machine.proc().write("14/environ", std::string("A=b\0TMUX=/tmp/t,9,3\0", 20));
    machine.proc().link("14/cwd", "/srv/shop (deleted)");
    machine.listen(line(500) + line(0, "1F90", "01") + line(501, "1F91"));
    const auto sources = machine.sources();
    const std::vector<Origin> origins = OriginCollector(*sources).originsOnPort(8080);
    ASSERT_EQ(origins.size(), 1U);
    const Origin& origin = origins.front();
    EXPECT_EQ(origin.process, (ProcessIdentity{14, 1014}));
    EXPECT_EQ(origin.program, "vite");
    EXPECT_EQ(origin.commandLine, "node /srv/shop/node_modules/.bin/vite --token ****");
    EXPECT_EQ(namesOf(origin.startedBy),
              (std::vector<std::string>{"sh", "npm run dev", "zsh", "tmux session $3"}));
    EXPECT_TRUE(origin.project && origin.project->isDeleted);
    EXPECT_EQ(origin.reach, Reach::thisMachine);
    EXPECT_EQ(origin.owners, (std::vector<ProcessIdentity>{{14, 1014}, {15, 1015}}));
    EXPECT_EQ(origin.clients, 1U);
    EXPECT_TRUE(origin.leftBehind.empty()) << "somebody is connected";

    // The same in a list, also of a row whose process is another one by now.
    const PortOwner rows[] = {{8080, {14, 1014}}, {8080, {14, 7}}};
    std::vector<std::string> listed;
    OriginCollector(*sources).readOrigins(
        rows, [&](const Origin& each) { listed.push_back(each.program); });
    EXPECT_EQ(listed, (std::vector<std::string>{"vite", ""}));
}

TEST(LinuxOriginSourcesTest, SaysWhyAServerLooksLeftBehind) {
    const struct {
        ProcessId parent;
        ProcessId session;
        std::string group;
        std::vector<LeftBehindReason> reasons;
    } cases[] = {
        {1,
         9,
         "/",
         {LeftBehindReason::noTerminal, LeftBehindReason::starterEnded,
          LeftBehindReason::sessionOver}},
        {1, 20, "/", {}},                        // a daemon has a session of its own
        {1, 9, "/system.slice/web.service", {}}, // a service has nobody else
        {11, 11, "/", {}},
    };
    for (const auto& [parent, session, group, reasons] : cases) {
        const MadeUpMachine machine;
        machine.add(11, 1, "zsh", "-zsh");
        machine.add(20, parent, "node", "node|a.js", group, session, 500);
        machine.listen(line(500));
        const auto sources = machine.sources();
        const auto origins = OriginCollector(*sources).originsOnPort(8080);
        ASSERT_EQ(origins.size(), 1U);
        EXPECT_EQ(origins.front().leftBehind, reasons) << parent << " " << session << group;
    }
}

TEST(LinuxOriginSourcesTest, FindsTheContainerBehindAHelper) {
    const std::string id(64, 'a');
    const MadeUpMachine machine;
    machine.add(20, 1, "docker-proxy",
                "docker-proxy|-host-port|8080|-container-ip|172.17.0.2|-container-port|80", "/", 0,
                500);
    machine.add(21, 1, "containerd-shim",
                "/usr/bin/containerd-shim-runc-v2|-namespace|moby|-id|" + id);
    machine.add(22, 21, "httpd", "httpd", "/docker/" + std::string(64, 'b'));
    machine.add(23, 21, "httpd", "httpd", "/docker/" + id);
    machine.proc().write("22/net/fib_trie", "  |-- 172.17.0.2\n     /24 link UNICAST\n");
    machine.proc().write("23/net/fib_trie", "  |-- 172.17.0.2\n     /32 host LOCAL\n");
    machine.listen(line(500));
    const auto sources = machine.sources();
    const auto origins = OriginCollector(*sources).originsOnPort(8080);
    ASSERT_EQ(origins.size(), 1U);
    ASSERT_TRUE(origins.front().container);
    EXPECT_EQ(origins.front().container->id, id);
    EXPECT_EQ(origins.front().container->engine, "docker");
    EXPECT_EQ(origins.front().container->innerPort, 80);
    EXPECT_EQ(origins.front().program, "httpd") << "rather than the helper";
}

// Beside the trees that were made up, the machine itself: this test's child listens.
TEST(LinuxOriginSourcesTest, AgreesWithTheKernel) {
    const TemporaryFolder folder;
    folder.write("shop/.git/HEAD", "ref: refs/heads/main\n");
    const Listener listener;
    const Connection connection(listener);
    const ChildProcess child([&] { return ::chdir((folder.path() / "shop").c_str()) == 0; });
    const LinuxOriginSources sources;
    std::vector<Origin> origins;
    do { // until the child stands in its folder
        origins = OriginCollector(sources).originsOnPort(listener.port());
        ASSERT_EQ(origins.size(), 1U);
    } while (sources.process(child.pid())->workingDirectory.find("shop") == std::string::npos);
    EXPECT_EQ(origins.front().process.pid, ::getpid());
    EXPECT_EQ(origins.front().owners.size(), 2U);
    EXPECT_EQ(origins.front().clients, 1U);
    EXPECT_EQ(origins.front().reach, Reach::thisMachine);
    const PortOwner row{listener.port(), {child.pid(), {}}};
    std::string branch;
    OriginCollector(sources).readOrigins(std::span(&row, 1), [&](const Origin& origin) {
        branch = origin.project.value_or(Project()).branch;
    });
    EXPECT_EQ(branch, "main");
}

TEST(LinuxOriginSourcesTest, TellsWhatStandsAgainstABind) {
    const Listener listener;
    const Connection connection(listener);
    const LinuxOriginSources sources;
    const auto obstacles = bindObstacles(sources, connection.clientPort());
    ASSERT_FALSE(obstacles.empty());
    EXPECT_EQ(obstacles.front().kind, BindObstacle::Kind::connection);
    EXPECT_EQ(obstacles.front().holder.pid, ::getpid());
    EXPECT_EQ(obstacles.front().foreignPort, listener.port());
}

} // namespace
} // namespace zenlot
