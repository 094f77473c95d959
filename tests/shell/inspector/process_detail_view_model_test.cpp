#include "inspector_fixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <tuple>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class ProcessDetailViewModelTest : public testing::Test, protected InspectorFixture {
  protected:
    void show(const PortProcess& process) {
        viewModel.setProcess(process);
        viewModel.setShown(true);
        ASSERT_TRUE(waitForDetails());
    }

    static QString text(const DetailRowModel* model) {
        QStringList rows;
        for (const DetailRow& row : model->rows())
            rows << row.label + u'=' + row.value;
        return rows.join(u'|');
    }

    ProcessFacts& facts = inspector.machine.processes[7];
};

TEST_F(ProcessDetailViewModelTest, ShowsAllThereIs) {
    inspector.machine.memoryBytes = std::uint64_t{16} << 30;
    facts.task = TaskInfo{1,
                          ProcessState::sleeping,
                          1'741'158'451s,
                          std::uint64_t{3} << 30,
                          std::uint64_t{312} << 20,
                          36s};
    facts.parentName = "launchd";
    facts.descriptorCount = 12;
    facts.tcpSockets = {{AddressFamily::ipv4, TcpState::listen, 8080, 0},
                        {AddressFamily::ipv4, TcpState::established, 8080, 52000}};
    propertyLists.files = {
        {u"/opt/My.app/Contents/Info.plist"_s,
         {{u"CFBundleShortVersionString"_s, u"1.2"_s}, {u"CFBundleVersion"_s, u"34"_s}}}};
    applications.add(7, {u"org.running"_s, u"/opt/My.app"_s, {}, {}, false});
    show(row(7, "/opt/My.app/bin/server"));
    EXPECT_EQ(viewModel.title(), u"Server"_s);
    EXPECT_EQ(viewModel.subtitle(), u"PID 7 \u00B7 501"_s);
    EXPECT_EQ(viewModel.pid(), 7);
    EXPECT_EQ(viewModel.executablePath(), u"/opt/My.app/bin/server"_s);
    EXPECT_EQ(text(viewModel.identityRows()),
              u"Parent=launchd (1)|Port=8080|Protocol=TCP4|State=LISTEN|Address=*:8080|"
              "Started=Mar 5 07:07:31 2025|Elapsed=1:00:00|Flags=S"_s);
    EXPECT_EQ(text(viewModel.resourceRows()),
              u"Average CPU=1.0%|Memory=1.9%|Resident=312 MB|Virtual=3 GB|Open FDs=12"_s);
    EXPECT_EQ(text(viewModel.applicationRows()), u"Bundle ID=org.running|Version=1.2|Build=34"_s);
    EXPECT_EQ(viewModel.networkTitle(), u"Network (2)"_s);
    EXPECT_TRUE(viewModel.showsResources() && viewModel.showsNetwork() &&
                viewModel.showsApplication() && viewModel.showsCommand());
    const NetworkConnectionModel& connections = *viewModel.networkConnections();
    EXPECT_EQ(connections.index(1).data(NetworkConnectionModel::summaryRole).toString(),
              u"TCP4 *:8080 \u2192 *:52000 ESTABLISHED"_s);
    EXPECT_EQ(connections.index(0).data(NetworkConnectionModel::summaryRole).toString(),
              u"TCP4 *:8080 LISTEN"_s);
}

TEST_F(ProcessDetailViewModelTest, TellsWhereAServerComesFrom) {
    originSources.addProcess(5, {"npm run dev"});
    ProcessGlimpse& server =
        originSources.addServer(7, {"node", "server.js", "--token", "x"}, 8080, "0.0.0.0");
    server.parent = 5;
    server.controlGroup = "/system.slice/web.service";
    server.workingDirectory = "/srv/shop";
    server.isDirectoryDeleted = true;
    originSources.held[8] = originSources.held[7];
    originSources.addProcess(8, {"node"}).parent = 7;
    originSources.addresses = {{*IpAddress::parse("192.168.1.7"), "wlan0", true, "Caf"}};
    show(row(7));
    EXPECT_EQ(text(viewModel.projectRows()), u"Name=shop|Folder=/srv/shop (deleted)|Runs=server.js|"
                                             "Command line=node server.js --token ****"_s);
    EXPECT_EQ(text(viewModel.originRows()),
              u"Started by=npm run dev|Unit=web.service, of the system|Listens on=0.0.0.0|"
              "Open to=Everyone who can reach 192.168.1.7 (Wi-Fi \u201CCaf\u201D), unless a "
              "firewall stops "
              "them|Shared by=2 processes: 7, 8|Left behind=Perhaps: its folder is deleted, it has "
              "no terminal, nobody is connected"_s);
    EXPECT_TRUE(viewModel.showsProject() && viewModel.showsOrigin());
    show(row(9));
    EXPECT_FALSE(viewModel.showsProject() || viewModel.showsOrigin()) << "not the one on the port";
}

TEST_F(ProcessDetailViewModelTest, LeavesOutWhatIsNotKnown) {
    PortProcess bare;
    bare.id = Uuid::random();
    bare.port = 22;
    bare.proto = "TCP6";
    show(bare);
    EXPECT_EQ(viewModel.title(), u"Unknown"_s);
    EXPECT_EQ(viewModel.subtitle(), QString());
    EXPECT_EQ(text(viewModel.identityRows()), u"Port=22|Protocol=TCP6"_s);
    EXPECT_FALSE(viewModel.showsResources() || viewModel.showsNetwork() ||
                 viewModel.showsApplication() || viewModel.showsCommand());
}

TEST_F(ProcessDetailViewModelTest, EveryLoadBeginsAnew) {
    const QAbstractItemModelTester tester(viewModel.identityRows());
    EXPECT_FALSE(viewModel.isLoading());
    const PortProcess first = row(7);
    show(first);
    viewModel.setProperty("networkExpanded", true);
    viewModel.setProperty("identityExpanded", false);
    viewModel.setProcess(first);
    EXPECT_TRUE(viewModel.hasDetails()) << "the row is shown already";
    EXPECT_TRUE(viewModel.property("networkExpanded").toBool());

    viewModel.setProcess(row(7));
    EXPECT_TRUE(viewModel.isLoading());
    EXPECT_FALSE(viewModel.hasDetails());
    EXPECT_EQ(viewModel.identityRows()->rowCount(), 0);
    EXPECT_FALSE(viewModel.property("networkExpanded").toBool());
    EXPECT_TRUE(viewModel.property("identityExpanded").toBool());
    ASSERT_TRUE(waitForDetails());
    EXPECT_FALSE(viewModel.isLoading());

    viewModel.setProcess(std::nullopt);
    EXPECT_FALSE(viewModel.isLoading() || viewModel.hasDetails());
}

TEST_F(ProcessDetailViewModelTest, LoadsOnlyInViewAndAgainWhenItComesBack) {
    viewModel.setProcess(row(7));
    EXPECT_TRUE(viewModel.isLoading());
    facts.descriptorCount = 3;
    viewModel.setShown(true);
    ASSERT_TRUE(waitForDetails());
    EXPECT_EQ(viewModel.details()->openFileCount, 3) << "nothing was loaded before";
    viewModel.setShown(false);
    facts.descriptorCount = 4;
    viewModel.setShown(true);
    EXPECT_TRUE(viewModel.isLoading());
    ASSERT_TRUE(waitForDetails());
    EXPECT_EQ(viewModel.details()->openFileCount, 4);
}

TEST_F(ProcessDetailViewModelTest, LaterLoadWins) {
    std::latch& gate = inspector.gates.try_emplace(7, 1).first->second;
    facts.descriptorCount = 7;
    inspector.machine.processes[8].descriptorCount = 8;
    viewModel.setShown(true);
    viewModel.setProcess(row(7));
    viewModel.setProcess(row(8));
    const QSignalSpy changes(&viewModel, &ProcessDetailViewModel::contentChanged);
    gate.count_down();
    ASSERT_TRUE(waitForDetails());
    EXPECT_EQ(viewModel.details()->openFileCount, 8);
    EXPECT_EQ(changes.count(), 1) << "the answer that came first is not heard";
}

TEST_F(ProcessDetailViewModelTest, MayGoWhileItLoads) {
    std::latch& gate = inspector.gates.try_emplace(7, 1).first->second;
    {
        ProcessDetailViewModel shortLived(loader);
        shortLived.setProcess(row(7));
        shortLived.setShown(true);
        gate.count_down();
    }
    QCoreApplication::processEvents();
}

} // namespace
} // namespace zenlot
