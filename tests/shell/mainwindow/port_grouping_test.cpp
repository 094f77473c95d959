#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "shell/mainwindow/port_grouping.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

OccupiedPort port(std::int64_t number, const std::string& path, const std::string& name = "") {
    return {number, "TCP4", name, name, number, "501", path};
}

class PortGroupingTest : public testing::Test {
  protected:
    PortGroupingTest() { QLocale::setDefault(QLocale(QLocale::English)); }
    ~PortGroupingTest() override { QLocale::setDefault(QLocale::c()); }

    // Each group as its name, its bundle and its ports.
    QStringList grouped(const std::vector<OccupiedPort>& ports) {
        QStringList lines;
        for (const AppPortGroup& group : groupPorts(ports, keys, cache)) {
            QString line = groupDisplayName(group) + u' ' +
                           QString::fromStdString(group.bundlePath.value_or("-"));
            for (const OccupiedPort& each : group.ports)
                line += u' ' + QString::number(each.port);
            lines << line;
        }
        return lines;
    }

    FakePropertyListReader reader;
    BundleKeyCache keys{reader};
    FakeRunningApplications applications;
    std::chrono::steady_clock::time_point now;
    ApplicationCache cache{applications, [this] { return now; }};
};

// The processes have the numbers of their ports here.
TEST_F(PortGroupingTest, TheProcessesOfOneApplicationFormOneGroup) {
    applications.addPart(9222, {u"org.Browser"_s, u"Browser"_s, u"browser"_s});
    applications.addPart(9223, {u"org.Browser"_s, u"Browser"_s, u"browser"_s});
    applications.addPart(4000, {u"/opt/one"_s, u"One"_s, {}});
    EXPECT_EQ(grouped({port(9223, "/usr/lib/b/helper"), port(9222, "/usr/lib/b/b"),
                       port(4000, "/opt/one/x"), port(3000, "/usr/bin/node", "Node"),
                       port(5173, "/usr/bin/node", "Node")}),
              (QStringList{u"Browser org.Browser 9222 9223"_s, u"Node - 3000"_s, u"Node - 5173"_s,
                           u"One /opt/one 4000"_s}));
}

TEST_F(PortGroupingTest, ProcessIsAskedAboutOnceAndSoonAgainWhileItIsNew) {
    OccupiedPort helper = port(9222, "/usr/lib/b/helper", "Helper");
    helper.startTime = 1;
    const auto groups = [&] { return grouped({helper}); };
    EXPECT_EQ(groups(), QStringList{u"Helper - 9222"_s});
    applications.addPart(9222, {u"org.Browser"_s, u"Browser"_s, {}});
    EXPECT_EQ(groups(), QStringList{u"Helper - 9222"_s});
    now += std::chrono::seconds(2);
    EXPECT_EQ(groups(), QStringList{u"Browser org.Browser 9222"_s});
    applications.addPart(9222, {u"org.Other"_s, u"Other"_s, {}});
    helper.startTime = 2; // another process with its number
    EXPECT_EQ(groups(), QStringList{u"Other org.Other 9222"_s});
}

TEST_F(PortGroupingTest, SinglePortsStandBetweenTheGroupsByName) {
    EXPECT_EQ(grouped({port(8001, "/bin/a"), port(8000, "/bin/b", "shadowed"),
                       port(8000, "/X/Quiet.app/q"), port(22, "/bin/c", "Zeta"),
                       port(23, "/bin/d", "beta"), port(24, "/bin/e", "Älpha")}),
              (QStringList{u"Älpha - 24"_s, u"beta - 23"_s, u"Port 8001 - 8001"_s,
                           u"Quiet /X/Quiet.app 8000"_s, u"Zeta - 22"_s}));
    EXPECT_TRUE(grouped({}).isEmpty());
    EXPECT_EQ(groupDisplayName({}), QString());
}

} // namespace
} // namespace zenlot
