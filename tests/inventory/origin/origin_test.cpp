#include "inventory/origin/bind_obstacle.h"
#include "inventory/origin/container_words.h"
#include "inventory/origin/control_group_name.h"
#include "inventory/origin/fake_origin_sources.h"
#include "inventory/origin/masked_command.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/origin/program_kind.h"
#include "inventory/origin/project_finder.h"
#include "inventory/origin/reach.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zenlot {
namespace {

using Words = std::vector<std::string>;

// Words are parted by "|", so that they may hold blanks.
Words wordsOf(const std::string& text) {
    Words words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, '|');)
        words.push_back(word);
    return words;
}

TEST(OriginTest, ProgramsAreCalledAsPeopleCallThem) {
    const struct {
        std::string commandLine;
        std::string name;
        ProgramKind kind;
        std::string spoken;
    } cases[] = {
        {"node|/srv/shop/node_modules/.bin/vite|--port|4000", "node", ProgramKind::other, "vite"},
        {"node|/srv/shop/node_modules/.bin/next|dev|-p|80", "node", ProgramKind::other, "next dev"},
        {"python3|-m|http.server|8000", "python3", ProgramKind::other, "http.server"},
        {"python|manage.py|runserver", "python", ProgramKind::other, "manage.py runserver"},
        {"node|/srv/shop/server.js", "node", ProgramKind::other, "server.js"},
        {"nginx: master process /usr/sbin/nginx", "nginx", ProgramKind::other, "nginx"},
        {"npm run dev", "npm run dev", ProgramKind::scriptRunner, "npm run dev"},
        {"node|/usr/bin/npm|run|dev", "node", ProgramKind::scriptRunner, "npm run dev"},
        {"make|serve|API_TOKEN=abc", "make", ProgramKind::scriptRunner,
         "make serve API_TOKEN=****"},
        {"node|/srv/node_modules/.bin/nodemon|app.js", "node", ProgramKind::watcher,
         "nodemon app.js"},
        {"node|--watch|app.js", "node", ProgramKind::watcher, "node --watch app.js"},
        {"-zsh", "zsh", ProgramKind::shell, ""},
        {"bash|--norc|-i", "bash", ProgramKind::shell, ""},
        {"sh|-c|vite", "sh", ProgramKind::shellScript, ""},
        {"/bin/bash|./start", "bash", ProgramKind::shellScript, ""},
        {"tmux|new|-s|work", "tmux: server", ProgramKind::multiplexer, ""},
        {"/usr/libexec/gnome-terminal-server", "gnome-terminal-", ProgramKind::terminal, ""},
        {"/usr/share/code/code|--type=utility", "code", ProgramKind::editor, ""},
        {"sshd: ada@pts/3", "sshd", ProgramKind::remoteLogin, ""},
        {"/lib/systemd/systemd|--user", "systemd", ProgramKind::serviceManager, ""},
        {"/opt/My Code/tool|x", "tool", ProgramKind::other, ""},
        {"node|/srv/code/code.js", "node", ProgramKind::other, ""},
        {"", "kworker/0:1", ProgramKind::other, ""},
    };
    for (const auto& [commandLine, name, kind, spoken] : cases) {
        ProcessGlimpse process;
        process.name = name;
        process.commandLine = wordsOf(commandLine);
        EXPECT_EQ(kindOf(process), kind) << commandLine;
        const bool isRunner = kind == ProgramKind::scriptRunner || kind == ProgramKind::watcher;
        if (!spoken.empty()) {
            EXPECT_EQ(isRunner ? spokenRunner(process) : spokenCommand(process), spoken)
                << commandLine;
        }
    }
}

TEST(OriginTest, SecretsInCommandLinesAreMasked) {
    const std::pair<const char*, const char*> cases[] = {
        {"server|--db-password|hunter2|--port|80", "server --db-password **** --port 80"},
        {"server|--token=abc|--token-file=/x", "server --token=**** --token-file=/x"},
        {"server|--password|--verbose", "server --password --verbose"},
        {"env|API_KEY=abc|A=b c", "env API_KEY=**** 'A=b c'"},
        {"x|postgres://ada:p@ss@db/shop?a=b", "x postgres://ada:****@db/shop?a=b"},
        {"x|http://a:b@c,redis://:d@e", "x http://a:****@c,redis://:****@e"},
        {"x|http://host:80/a@b", "x http://host:80/a@b"},
        {"x|ghp_0123456789abcdef", "x ****"},
        {"x|it's|", "x 'it'\\''s'"},
        {"\xff", "\xEF\xBF\xBD"},
        {"title   ", "'title   '"},
    };
    for (const auto& [words, masked] : cases)
        EXPECT_EQ(maskedCommand(wordsOf(words)), masked);
    EXPECT_LT(maskedCommand(Words(100, std::string(1000, 'x'))).size(), 10'000U);
}

TEST(OriginTest, ControlGroupsNameUnitsAndContainers) {
    const std::string id(64, 'a');
    const struct {
        std::string path;
        std::string unit;
        std::string engine; // of the container with that id
    } cases[] = {
        {"/system.slice/nginx.service", "nginx.service", ""},
        {"/system.slice/system-postgresql.slice/postgresql@15-main.service/worker",
         "postgresql@15-main.service", ""},
        {"/user.slice/user-7.slice/user@7.service/app.slice/web.service", "7:web.service", ""},
        {"/user.slice/user-7.slice/user@7.service/init.scope", "", ""},
        {"/user.slice/user-7.slice/user@7.service", "", ""},
        {"/user.slice/user-7.slice/session-3.scope", "", ""},
        {"/system.slice/docker-" + id + ".scope", "", "docker"},
        {"/docker/" + id, "", "docker"},
        {"/user.slice/user@7.service/user.slice/libpod-" + id + ".scope/container", "", "podman"},
        {"/system.slice/cups.socket", "cups.socket", ""},
        {"/", "", ""},
    };
    for (const auto& [path, name, engine] : cases) {
        const auto unit = unitOfControlGroup(path);
        EXPECT_EQ(unit ? (unit->manager == Unit::Manager::user
                              ? std::to_string(unit->user) + ":" + unit->name
                              : unit->name)
                       : "",
                  name)
            << path;
        const auto container = containerOfControlGroup(path);
        EXPECT_EQ(container ? container->engine : "", engine) << path;
        EXPECT_EQ(container ? container->id : id, id);
    }
}

TEST(OriginTest, HelpersOfContainersTellTheirPort) {
    const struct {
        std::string commandLine;
        std::string engine;
        std::uint16_t innerPort;
    } cases[] = {
        {"/usr/bin/docker-proxy|-proto|tcp|-host-ip|0.0.0.0|-host-port|8080|-container-ip|10.0.0.2|"
         "-container-port|80",
         "docker", 80},
        {"docker-proxy|-host-port|8081|-container-port|80", "", 0},
        {"pasta|--config-net|-t|127.0.0.1/8079-8081:79-81|-u|none", "podman", 80},
        {"pasta|-t|9000,8080", "podman", 8080},
        {"pasta|-t|none", "", 0},
        {"containers-rootlessport", "podman", 0},
        {"node|8080", "", 0},
        {"", "", 0},
    };
    for (const auto& [commandLine, engine, innerPort] : cases) {
        const auto published = publishedPortOf(wordsOf(commandLine), 8080);
        EXPECT_EQ(published ? published->engine : "", engine) << commandLine;
        EXPECT_EQ(published ? published->innerPort : 0, innerPort) << commandLine;
    }
    const auto watched = watchedContainer(wordsOf("/usr/bin/conmon|-c|12ab|-n|db"));
    EXPECT_TRUE(watched && watched->id == "12ab" && watched->name == "db");
    EXPECT_EQ(watchedContainer(wordsOf("bash|-c|conmon")), std::nullopt);
}

TEST(OriginTest, ProjectsAreFoundAroundTheFolder) {
    const TemporaryFolder folder;
    const std::string root = folder.path().string();
    const std::string name = folder.path().filename().string();
    folder.write("shop/.git/HEAD", "ref: refs/heads/fix/login\n");
    folder.write("shop/packages/web/package.json", "{}");
    folder.write("shop/packages/web/src/x", "");
    folder.write("shop-old/.git", "gitdir: ../shop/.git/worktrees/shop-old\n");
    folder.write("shop/.git/worktrees/shop-old/HEAD", "0123456789abcdef0123456789abcdef01234567\n");
    folder.write("tool/Tool.csproj", "");
    folder.write("broken/.git", "nonsense");
    folder.write("plain/x", "");
    const struct {
        const char* folder;
        const char* name;
        Project::Head head;
        const char* branch;
    } cases[] = {
        {"shop", "shop", Project::Head::branch, "fix/login"},
        {"shop/packages/web/src", "shop/packages/web", Project::Head::branch, "fix/login"},
        {"shop/packages", "shop", Project::Head::branch, "fix/login"},
        {"shop-old", "shop-old", Project::Head::detached, "01234567"},
        {"tool", "tool", Project::Head::none, ""},
        {"broken", "broken", Project::Head::none, ""},
        {"plain", "", Project::Head::none, ""},
    };
    for (const auto& [place, expected, head, branch] : cases) {
        const auto project = findProject(root + "/" + place).value_or(Project());
        EXPECT_EQ(project.name, expected);
        EXPECT_EQ(project.head, head) << place;
        EXPECT_EQ(project.branch, branch) << place;
    }
    EXPECT_EQ(deletedProject("/srv/shop-fix").name, "shop-fix");
}

TEST(OriginTest, LoopbackLetsNobodyElseIn) {
    const std::pair<std::vector<const char*>, Reach> cases[] = {
        {{"127.0.0.1", "::1", "127.1.2.3", "::ffff:127.0.0.1"}, Reach::thisMachine},
        {{"127.0.0.1", "::"}, Reach::network},
        {{"0.0.0.0"}, Reach::network},
        {{"192.168.1.7"}, Reach::network},
        {{}, Reach::unknown},
    };
    for (const auto& [addresses, reach] : cases) {
        std::vector<ListeningSocket> sockets;
        for (const char* address : addresses) {
            sockets.emplace_back().address = *IpAddress::parse(address);
            EXPECT_EQ(addressText(sockets.back().address), address);
        }
        EXPECT_EQ(reachOf(sockets), reach);
    }
}

TEST(OriginTest, ListsOfPortsHaveRanges) {
    EXPECT_TRUE(isInPortList("80,8080-8090", 8085));
    EXPECT_TRUE(isInPortList("80", 80));
    for (const char* list : {"", "80", "8086-8090", "x,-,8085x"})
        EXPECT_FALSE(isInPortList(list, 8085)) << list;
}

// So many are read by several threads.
TEST(OriginTest, LongListsKeepTheirOrder) {
    constexpr int kServers = 200;
    FakeOriginSources sources;
    std::vector<PortOwner> rows;
    for (int each = 0; each < kServers; ++each) {
        const auto port = static_cast<std::uint16_t>(4000 + each);
        sources.addServer(100 + each, {"server-" + std::to_string(each)}, port);
        rows.push_back({port, {100 + each, each % 10 == 0 ? 2 : 1}}); // some are others by now
    }
    std::vector<Origin> origins;
    OriginCollector(sources).readOrigins(rows,
                                         [&](const Origin& origin) { origins.push_back(origin); });
    ASSERT_EQ(origins.size(), rows.size());
    for (int each = 0; each < kServers; ++each)
        EXPECT_EQ(origins[static_cast<std::size_t>(each)].program,
                  each % 10 == 0 ? "" : "server-" + std::to_string(each));
}

} // namespace
} // namespace zenlot
