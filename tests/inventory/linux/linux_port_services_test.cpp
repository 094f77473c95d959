#include "inventory/linux/linux_port_services.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>
#include <sys/stat.h>

#include <cstring>

namespace zenlot {
namespace {

// A kernel in which one socket listens on port 80, of the control group with that number.
class OneSocket final : public NetlinkTransport {
  public:
    explicit OneSocket(std::uint64_t controlGroup) : controlGroup_(controlGroup) {}

    bool dump(std::span<const std::byte> /*request*/, const Consumer& consume) override {
        struct {
            nlmsghdr header;
            inet_diag_msg body;
            rtattr attribute;
            std::uint32_t controlGroup[2];
            nlmsghdr end;
            int number;
        } content{};
        content.header.nlmsg_len = offsetof(decltype(content), end);
        content.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
        content.body.idiag_family = AF_INET6;
        content.body.idiag_state = TCP_LISTEN;
        content.body.id.idiag_sport = htons(80);
        content.body.idiag_inode = 31337;
        content.attribute.rta_len = sizeof content.attribute + sizeof content.controlGroup;
        content.attribute.rta_type = INET_DIAG_CGROUP_ID;
        std::memcpy(content.controlGroup, &controlGroup_, sizeof controlGroup_);
        content.end.nlmsg_len = sizeof content.end + sizeof content.number;
        content.end.nlmsg_type = NLMSG_DONE;
        return !consume(std::as_bytes(std::span(&content, 1)));
    }

  private:
    std::uint64_t controlGroup_;
};

TEST(LinuxPortServicesTest, NamesTheServiceOfTheSystemThatListens) {
    struct Case {
        const char* name;
        std::string unit;
        const char* processes; // in the group
        const char* groupOfProcess;
        std::uint16_t port;
        std::string service;
    };
    const Case cases[] = {
        {"of the system", "nginx.service", "42\n", "0::/system.slice/nginx.service\n", 80,
         "nginx.service"},
        {"nobody listens", "nginx.service", "42\n", "0::/system.slice/nginx.service\n", 81, ""},
        {"of a user", "nginx.service", "42\n",
         "0::/user.slice/user-7.slice/user@7.service/app.slice/nginx.service\n", 80, ""},
        {"started and gone", "docker-1a.scope", "", "", 80, "docker-1a.scope"},
        {"ended meanwhile", "nginx.service", "43\n", "", 80, "nginx.service"},
        {"no text", "a\xff.service", "", "", 80, "a\uFFFD.service"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const TemporaryFolder folder;
        const std::filesystem::path group = folder.path() / "groups/system.slice" / each.unit;
        folder.write("groups/system.slice/" + each.unit + "/cgroup.procs", each.processes);
        folder.write("proc/42/cgroup", each.groupOfProcess);
        struct stat status {};
        ASSERT_EQ(::stat(group.c_str(), &status), 0);
        const LinuxPortServices services(std::make_unique<OneSocket>(status.st_ino),
                                         (folder.path() / "groups").string(),
                                         (folder.path() / "proc").string());
        EXPECT_EQ(services.serviceOnPort(each.port), each.service);
        const LinuxPortServices unseen(std::make_unique<OneSocket>(0),
                                       (folder.path() / "groups").string(),
                                       (folder.path() / "proc").string());
        EXPECT_EQ(unseen.serviceOnPort(80), "") << "a kernel that does not tell of groups";
    }
}

} // namespace
} // namespace zenlot
