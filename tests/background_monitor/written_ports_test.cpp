#include "background_monitor/source_reader.h"
#include "background_monitor/stage.h"
#include "background_monitor/written_ports.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <minizip/zip.h>
#include <sys/stat.h>

namespace zenlot {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const AddressQuestion isOurs = [](const IpAddress& address) {
    return address == *IpAddress::parse("127.0.0.1");
};

TEST(WrittenPortsTest, LinesThatSayWhereToListen) {
    const std::pair<const char*, std::vector<PortSite>> cases[]{
        {"app.listen(3000, () => {})", {{4, {}, {3000}, false, {}}}},
        {"const port = process.env.PORT || 4000 // not 5000", {{3, {"PORT"}, {4000}, false, {}}}},
        {"  server: { port: 3005 },", {{3, {}, {3005}, false, {}}}},
        {"http.ListenAndServe(\":8080\", nil)", {{4, {}, {8080}, false, {}}}},
        {"let port: u16 = 8081u16;", {{3, {}, {8081}, false, {}}}},
        {"my $port = $ENV{WEB_PORT} // 3000;", {{3, {"ENV", "WEB_PORT"}, {3000}, false, {}}}},
        {"listen(3000, '10.0.0.1') // ::1",
         {{4, {}, {3000}, false, {*IpAddress::parse("10.0.0.1")}}}},
        {"x({ metricsPort: 9100, port: 3006 })", {{3, {}, {3006}, false, {}}}},
        {"METRICS_PORT = 9100", {{2, {}, {9100}, false, {}}}},
        {"origin = 'http://localhost:8081'", {}},
        {"new Server(server, { origin: 'http://localhost:8081' })", {}},
        {"app.Run(\"http://localhost:8081\")", {{4, {}, {8081}, false, {}}}},
        {"port = 5432 # postgres", {{3, {}, {5432}, false, {}}}},
        {"postgres_port = 5432", {}},
        {"proxy: { target: 'http://localhost:8080' }", {}},
        {"fetch('http://localhost:8080/port')", {}},
        {"# listen 3000\n// listen 3001\n-- port 3002\n%% port 3003", {}},
        {"port 99999 port 12 port 1.3000 port v3000 port 3000px", {}},
        {"timeout(3000)", {}},
        {"listen(socket, 128); // port", {}},
        {"start_server(handle_client, '127.0.0.1', 8888)",
         {{4, {}, {8888}, false, {*IpAddress::parse("127.0.0.1")}}}},
        {"client.listen(8888)", {}},
    };
    for (const auto& [text, sites] : cases)
        EXPECT_EQ(portSites(text), sites) << text;
}

TEST(StageTest, WhatCountsInOtherStagesOnlyIsTakenOut) {
    const struct {
        const char* stage;
        const char* text;
        const char* left;
    } cases[]{
        {"development", "{\n  production: { port: 1 },\n  development: { port: 2 },\n}\n",
         "{\n  development: { port: 2 },\n}\n"},
        {"prod",
         "exports.production = {\n  port: 1,\n\n  x: 2\n};\nexports.dev = {\n  port: 2\n};\n",
         "exports.production = {\n  port: 1,\n\n  x: 2\n};\n"},
        {"development",
         "class Config:\n    PORT = 1\nclass TestingConfig(Config):\n    PORT = 2\n\nx = 3\n",
         "class Config:\n    PORT = 1\nx = 3\n"},
        {"test", "configure :production do\n  set :port, 1\nend\nset :port, 2\n", "set :port, 2\n"},
        {"development",
         "if (process.env.NODE_ENV === 'production') {\n  listen(1)\n} else {\n  listen(2)\n}\n",
         "} else {\n  listen(2)\n}\n"},
        {"production", "local port = 1\ntest(2)\nlive reload\n", "local port = 1\nlive reload\n"},
        {"shop", "production: 1\nport: 2\n", "port: 2\n"},
    };
    for (const auto& [stage, text, left] : cases)
        EXPECT_EQ(withoutOtherStages(text, stage), left) << text;
    EXPECT_EQ(stageOfName("application-prod.yml", "development"), StageOfName::other);
    EXPECT_EQ(stageOfName("config.dev.js", "development"), StageOfName::own);
    EXPECT_EQ(stageOfName("default.yaml", "development"), StageOfName::none);
}

TEST(WrittenPortsTest, MentionsOfHeldPorts) {
    const std::uint16_t held[]{3000, 8080};
    const std::pair<const char*, std::vector<std::uint16_t>> cases[]{
        {"start the thing on 3000", {3000}},
        {"x = \"0.0.0.0:8080\"", {8080}},
        {"url = 'http://localhost:8080'", {}},
        {"listen 'http://localhost:8080'", {8080}},
        {"redis port 3000", {}},
        {"shop = host=127.0.0.1 port=3000", {}},
        {"timeout = 3000", {}},
        {"port 4000", {}},
        {"Config{Port: 3000, DSN: \"postgres://localhost:8080/x\"}", {3000}},
        {"pool({ port: 3000, database: 'x' })", {}},
    };
    for (const auto& [text, ports] : cases)
        EXPECT_EQ(mentionedPorts(text, held), ports) << text;
}

TEST(WrittenPortsTest, NamesAreFollowedFromTheLineThatListens) {
    const std::pair<const char*, std::vector<std::uint16_t>> cases[]{
        {"a.broker(x).listen(config.mqtt)\n{\"mqtt\": 4300, \"admin\": 4400}", {4300}},
        {"WHERE = ('localhost', 4300)\nXmlServer(WHERE).serve_forever()", {4300}},
        {"port => 4300\nOTHER = 4400\nlisten(port)", {4300}},
        {"listen(4400)\nmqtt: 4300", {}},
        {"client.connect(config.mqtt)\nmqtt: 4300", {}},
        {"port = 4400\nuse(port)\nport := 4300\nlisten(port)", {4300}},
        {"a: { port: 4400 }\nb: { port: 4300 }\nlisten(b.port)", {4400, 4300}},
        {"create_server(\n  app,\n  port=own['web_port'],\n)\n\"web_port\": 4300\nother = 4400",
         {4300}},
        {"start_server(handle_ws_client, '0.0.0.0', WS_PORT)\nWS_PORT = 4300\nESL_PORT = 4400",
         {4300}},
        {"where := flag.String(\"where\", \":4300\", \"x\")\nhttp.Server{\n  Addr: *where,\n}",
         {4300}},
        {"listen(http)\nhttp: { timeout: 4300 }\nhttp == 4400", {}},
        {"listen(port, `http://${host}`)\nurl: 'http://localhost:4300'", {}},
    };
    for (const auto& [text, ports] : cases)
        EXPECT_EQ(portsCalled(namesListenedOn(text), text), ports) << text;
}

TEST(WrittenPortsTest, NamesThatStandForNames) {
    std::vector<std::string> names{"web_port"};
    addNamesCalled(names, "\"web_port\": WEB_PORT,\nOTHER = web_port\nweb_port = f(x)\n");
    EXPECT_THAT(names, ElementsAre("web_port", "WEB_PORT"));
}

TEST(WrittenPortsTest, NumbersAloneCountLastAndNotForTimesAndSizes) {
    const std::uint16_t held[]{3000, 8080};
    const std::pair<const char*, std::vector<std::uint16_t>> cases[]{
        {"run_simple('127.0.0.1', 3000, app)", {3000}},
        {"setTimeout(f, 3000); maxSize = 8080", {}},
        {"redis = ('localhost', 3000)", {}},
        {"ask('http://localhost:3000')", {}},
    };
    for (const auto& [text, ports] : cases)
        EXPECT_EQ(spelledPorts(text, held), ports) << text;
    EXPECT_THAT(describedPorts("-p, --port n\n    which to listen on (3000)", held),
                ElementsAre(3000));
    EXPECT_THAT(describedPorts("port:void 0;return{port:8080}", held), ElementsAre(8080));
    EXPECT_THAT(describedPorts("of 3000 users, as on http://x:8080, port 30001", held), IsEmpty());
}

TEST(WrittenPortsTest, SettingsThatASourceNames) {
    EXPECT_THAT(relativeImports("x = { db: require('./db'), web: require(\"./web\") }"),
                ElementsAre("./db", "./web"));
    EXPECT_THAT(
        foldersOfVariables("const env = loadEnv('m', '..', '')\nenvDir: \"./env\"\nenvDir: d"),
        ElementsAre("..", "./env"));
    EXPECT_THAT(
        namedSettings("open('a/b.yaml', \"r\")\nread(`.env.test`) 'package.json' 'x y.json'"),
        ElementsAre("a/b.yaml", ".env.test"));
}

TEST(WrittenPortsTest, NumbersInPrograms) {
    const std::uint16_t held[]{8080, 4096, 40000};
    EXPECT_THAT(
        portsInBinary("GET:8080HTTP:40961 postgres://a:b@host:4096/x", BinaryKind::program, held),
        ElementsAre(8080));
    EXPECT_THAT(
        portsInBinary(std::string("\x11\x1f\x90\x03\0\0\x9c\x40", 8), BinaryKind::bytecode, held),
        ElementsAre(8080, 40000));
}

class SourceReaderTest : public testing::Test {
  protected:
    SourceReaderTest() {
        runtime.mayNamePortItself = true;
        attempt.runtime = &runtime;
        attempt.workingDirectory = (folder.path() / "app").string();
    }

    std::vector<std::uint16_t> ports() {
        answer = decidingAnswer(answersInFilesOf(attempt, held, isOurs));
        return answer ? answer->ports : std::vector<std::uint16_t>();
    }
    std::vector<std::uint16_t> ports(const std::string& script) {
        attempt.script = script;
        return ports();
    }

    const TemporaryFolder folder;
    std::vector<std::uint16_t> held{4300, 4400};
    Runtime runtime;
    Attempt attempt;
    std::optional<PortAnswer> answer;
};

TEST_F(SourceReaderTest, FollowsWhatAScriptLoadsFromItsOwnFolder) {
    folder.write("app/server.js", "const app = require('./lib/app');\nimport x from 'left-pad'\n");
    folder.write("app/lib/app.js", "require('../server');\nconst c = require('../config');\n");
    folder.write("app/config.json", R"({"port": 4100, "database": {"port": 5432}})");
    folder.write("app/own.py", "from pkg.web import app\n");
    folder.write("app/pkg/web.py", "app.run(port=4200)\n");
    EXPECT_THAT(ports("server"), ElementsAre(4100));
    EXPECT_THAT(ports((folder.path() / "app/own.py").string()), ElementsAre(4200));
    EXPECT_THAT(ports("missing.js"), IsEmpty());
    folder.write("app/elsewhere.js", "listen(4300, '10.0.0.1')\n");
    EXPECT_THAT(ports("elsewhere.js"), IsEmpty());
    runtime.configs = {"vite.config.js"};
    folder.write("app/vite.config.js", "export default { server: { port: 4300 } }");
    EXPECT_THAT(ports(""), ElementsAre(4300));
    // Nobody writes into it, so whoever opened it to read would wait.
    ASSERT_EQ(::mkfifo((folder.path() / "app/pipe.js").c_str(), 0600), 0);
    EXPECT_THAT(ports("pipe.js"), ElementsAre(4300));
}

TEST_F(SourceReaderTest, FilesWithVariablesAreReadOnlyByWhoLoadsThem) {
    folder.write("app/.env", "PORT=4100\n");
    folder.write("app/.env.local", "PORT=4101\n");
    folder.write("app/own.env", "PORT=4102\n");
    folder.write("app/plain.js", "listen(process.env.PORT || 4200)");
    folder.write("app/loads.js", "require('dotenv').config()\nlisten(process.env.PORT || 4200)");
    EXPECT_THAT(ports("plain.js"), ElementsAre(4200));
    EXPECT_THAT(ports("loads.js"), ElementsAre(4101));
    attempt.environmentFiles = {"own.env"};
    EXPECT_THAT(ports("plain.js"), ElementsAre(4102));
    attempt.environment = {{"PORT", "4103"}};
    EXPECT_THAT(ports("plain.js"), ElementsAre(4103));
}

// What a package says of itself is not what is run by it.
TEST_F(SourceReaderTest, InstalledToolsAreAskedForTheScriptsThatTheyAreGiven) {
    folder.write("app/node_modules/tool/bin/tool.js", "listen(4400)");
    folder.write("app/node_modules/tool/package.json", "{}");
    folder.write("app/server.coffee", "port = process.env.PORT or 4300");
    const std::string tool = "node_modules/tool/bin/tool.js";
    attempt.arguments = {"server.coffee"};
    EXPECT_THAT(ports(tool), ElementsAre(4300));
    attempt.arguments = {"serve"};
    EXPECT_THAT(ports(tool), ElementsAre(4300));
    EXPECT_EQ(answer->source, PortSource::project);
}

TEST_F(SourceReaderTest, ToolThatSaysNothingIsAskedForItsOwnDefault) {
    folder.write("app/node_modules/tool/bin/tool.js", "require('../lib')");
    folder.write("app/node_modules/tool/lib/index.js", "const defaults = { port: 4300 };");
    folder.write("app/node_modules/tool/test/index.js", "const defaults = { port: 4400 };");
    EXPECT_THAT(ports("node_modules/tool/bin/tool.js"), ElementsAre(4300));
    EXPECT_EQ(answer->source, PortSource::manual);
    folder.write("app/node_modules/tool/lib/min.js", "a=1;b=process.env.PORT||c;d=PORTS");
    attempt.environment = {{"PORT", "4500"}, {"TIMEOUT", "4400"}};
    EXPECT_THAT(ports("node_modules/tool/bin/tool.js"), ElementsAre(4500));
    attempt.environment.clear();
    folder.write("env/lib/python3.11/site-packages/mock/cli.py", "def main(port=4400): pass");
    folder.write("env/bin/mock", "#!/usr/bin/python3\nfrom mock.cli import main\n");
    EXPECT_THAT(ports((folder.path() / "env/bin/mock").string()), ElementsAre(4400));
    attempt.executable = (folder.path() / "env/bin/python3").string();
    EXPECT_THAT(ports("mock"), ElementsAre(4400)); // as a module
}

TEST_F(SourceReaderTest, ArgumentsAndSettingsThatNameSeveralPorts) {
    folder.write("app/ports.ts", "export const ports = { web: 4400, rpc: 4300 };\n");
    folder.write("app/own.ts", "import { ports } from './ports';\nlisten(ports.rpc)\n");
    EXPECT_THAT(ports("own.ts"), ElementsAre(4300));
    folder.write("app/all.json", R"({"rpc": {"port": 4300}, "queue": {"port": 4400}})");
    folder.write("app/rpc.js", "const { rpc } = require('./all');\nx.tcp().listen(rpc.port)\n");
    EXPECT_THAT(ports("rpc.js"), ElementsAre(4300));
    folder.write("app/own.js",
                 "module.exports = {\n  app: { port: 4300 },\n  queue: { port: 4400 },\n}\n");
    folder.write("app/main.js", "const OWN = require('./own')\nx.listen(OWN.app.port)\n");
    EXPECT_THAT(ports("main.js"), ElementsAre(4300));
    folder.write("app/shop/web/__init__.py", "");
    folder.write("app/shop/web/routes.py", "run_app(app, port=4300)\n");
    folder.write("app/main.py", "from shop.web import routes\n");
    EXPECT_THAT(ports("main.py"), ElementsAre(4300));
    EXPECT_EQ(answer->source, PortSource::source);
    attempt.script.clear();
    attempt.arguments = {"4300", "localhost:4400"}; // what comes in, and where it goes
    EXPECT_THAT(ports(), ElementsAre(4300));
    attempt.arguments = {"conf.lua"};
    folder.write("app/conf.lua", "return { port = 4300, redis = { port = 4400 } }\n");
    EXPECT_THAT(ports(), ElementsAre(4300));
    attempt.arguments.clear();
    runtime.programs = {"mysqld"};
    attempt.config = "conf.d";
    folder.write("app/conf.d/my.cnf", "[client]\nport = 4400\n[mysqld]\nport = 4300\n");
    EXPECT_THAT(ports(), ElementsAre(4300));
}

TEST_F(SourceReaderTest, SettingsOfTheStageAndThoseThatAreIncluded) {
    folder.write("app/server.js",
                 "const config = require('config');\nlisten(config.get('port'))\n");
    folder.write("app/config/default.yaml", "port: 4400\n");
    folder.write("app/config/production.yaml", "port: 4400\n");
    folder.write("app/config/development.yaml", "port: 4300\n");
    EXPECT_THAT(ports("server.js"), ElementsAre(4300));
    attempt.stage = "production";
    EXPECT_THAT(ports("server.js"), ElementsAre(4400));
    attempt.script.clear();
    attempt.config = "nginx.conf";
    folder.write("app/nginx.conf", "http {\n  include sites/*;\n}\n");
    folder.write("app/sites/shop",
                 "upstream x {\n  server :4400;\n}\nserver {\n  listen 4300;\n}\n");
    EXPECT_THAT(ports(), ElementsAre(4300));
}

TEST_F(SourceReaderTest, SettingsAmongJavasClassesAndInItsArchive) {
    folder.write("app/classes/application.yml", "server:\n  port: 4400\n");
    folder.write("app/classes/application-dev.yml", "server:\n  port: 4300\n");
    attempt.classPath = {"nowhere", "classes"};
    EXPECT_THAT(ports(), ElementsAre(4300));
    // `zip -0 shop.jar BOOT-INF/classes/application.properties`
    const std::string name = "BOOT-INF/classes/application.properties";
    const std::string text = "server.port=4400\n";
    const zipFile archive = ::zipOpen64((folder.path() / "app/shop.jar").c_str(), 0);
    ::zipOpenNewFileInZip(archive, name.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr,
                          Z_DEFLATED, Z_DEFAULT_COMPRESSION);
    ::zipWriteInFileInZip(archive, text.data(), static_cast<unsigned>(text.size()));
    ::zipCloseFileInZip(archive);
    ::zipClose(archive, nullptr);
    attempt.classPath = {"shop.jar"};
    EXPECT_THAT(ports(), ElementsAre(4400));
    attempt.classPath.clear();
    attempt.libraries = "spring-boot-3.1.jar x.jar ";
    runtime.libraries = {{"spring-boot-", 4300}};
    folder.write("app/classes/application.yml", "");
    folder.write("app/classes/application-dev.yml", "");
    EXPECT_THAT(ports(), ElementsAre(4300));
    EXPECT_EQ(answer->source, PortSource::habit);
    attempt.classPath = {"shop.jar"};
    folder.write("app/shop.jar", "PK\3\4 no archive");
    EXPECT_THAT(ports(), ElementsAre(4300));
}

TEST_F(SourceReaderTest, AProjectChangesWhatIsUsual) {
    folder.write("app/commands/runserver.py", "Command.default_port = '4300'\n");
    runtime.mayNamePortItself = false;
    attempt.wanted = {WantedPort::Source::usual, 8000, {}};
    EXPECT_THAT(ports("manage.py"), ElementsAre(4300));
    attempt.wanted.port = 4400; // held, so that nothing more is asked
    EXPECT_THAT(ports("manage.py"), IsEmpty());
}

TEST_F(SourceReaderTest, HeldPortsThatTheProjectMentionsComeLast) {
    folder.write("package.json", "{}");
    folder.write("lib/settings.py", "WEB = dict(listen=4300)\nredis = 'localhost:4400'\n");
    folder.write("docker-compose.yml", "ports:\n  - '4400:80'\n");
    folder.write("node_modules/x/index.js", "listen(4400)\n");
    folder.write("app/main.py", "import start\n");
    EXPECT_THAT(ports("main.py"), ElementsAre(4300));
    EXPECT_EQ(answer->source, PortSource::project);
    attempt.arguments = {"serve", "4400"};
    EXPECT_THAT(ports("main.py"), ElementsAre(4400));
    EXPECT_EQ(answer->source, PortSource::mention);
    // Half a search may have missed the right one.
    attempt.arguments.clear();
    for (int file = 0; file < 300; ++file)
        folder.write("lib/many" + std::to_string(file) + ".py", "x\n");
    EXPECT_THAT(ports("main.py"), IsEmpty());
}

TEST_F(SourceReaderTest, BuiltProgramReadsTheSettingsThatItKnowsByName) {
    runtime.environment = {"PORT"};
    folder.write("server", std::string("\x7f"
                                       "config.toml\0:4400\0",
                                       19));
    folder.write("app/config.toml", "[server]\nport = 4300\n");
    folder.write("app/other.toml", "port = 4400\n");
    attempt.program = std::make_shared<const FileDescriptor>(
        ::open((folder.path() / "server").c_str(), O_RDONLY | O_CLOEXEC));
    EXPECT_THAT(ports(), ElementsAre(4300));
}

TEST_F(SourceReaderTest, SourcesOfABuiltProgramButNotOfTheOneBesideIt) {
    attempt.executable = "/tmp/build/api";
    folder.write("server", "\x7f");
    attempt.program = std::make_shared<const FileDescriptor>(
        ::open((folder.path() / "server").c_str(), O_RDONLY | O_CLOEXEC));
    folder.write("app/go.mod", "module shop\n");
    folder.write("app/cmd/api/main.go", "package main\n");
    folder.write("app/cmd/worker/main.go", "http.ListenAndServe(\":4400\", nil)\n");
    folder.write("app/internal/config/config.go", "return Config{Port: 4300}\n");
    EXPECT_THAT(ports(), ElementsAre(4300));
    // Of many sources most are about something else.
    folder.write("app/main.go", "listen(4300)\n");
    for (int file = 0; file < 80; ++file)
        folder.write("app/far/away" + std::to_string(file) + ".go", "listen(4400)\n");
    EXPECT_THAT(ports(), ElementsAre(4300));
}

TEST(SourceReaderBoundsTest, NothingIsReadFromANetwork) {
    const char* mounts = "1 0 8:1 / / rw - ext4 /dev/a rw\n"
                         "2 1 0:5 / /home/ada/far rw shared:1 - nfs4 server:/x rw\n";
    EXPECT_FALSE(liesOnNetwork("/home/ada/farm", mounts));
    EXPECT_TRUE(liesOnNetwork("/home/ada/far/app", mounts));
    EXPECT_FALSE(liesOnNetwork("/home/ada", ""));
}

TEST(SourceReaderBoundsTest, ReadsLargeProgramsWholly) {
    const TemporaryFolder folder;
    Runtime runtime;
    runtime.mayNamePortItself = true;
    Attempt attempt;
    attempt.runtime = &runtime;
    const std::uint16_t held[]{8080, 1808};
    // Wherever it lies, and not as a part of another number.
    for (const std::size_t place : {0, 1'048'572, 1'048'574, 1'048'576, 2'097'150}) {
        folder.write("server", std::string(place, '\x7f') + ":18080 :8080" +
                                   std::string(2'097'152 - place, '\x7f'));
        attempt.program = std::make_shared<const FileDescriptor>(
            ::open((folder.path() / "server").c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_EQ(decidingAnswer(answersInFilesOf(attempt, held, isOurs)),
                  (PortAnswer{PortSource::source, {8080}}))
            << place;
    }
}

} // namespace
} // namespace zenlot
