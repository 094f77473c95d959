#include "background_monitor/source_reader.h"
#include "background_monitor/written_ports.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace zenlot {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(WrittenPortsTest, NumbersWhereAPortToListenOnStands) {
    const std::pair<const char*, std::vector<WrittenPort>> cases[]{
        {"app.listen(3000, () => {})", {{3000, 3}}},
        {"const port = process.env.PORT || 4000 // not 5000", {{4000, 2}}},
        {"  server: { port: 3005 },", {{3005, 3}}},
        {"http.ListenAndServe(\":8080\", nil)", {{8080, 3}}},
        {"origin = 'http://localhost:8081'", {{8081, 1}}},
        {"port = 5432 # postgres", {}},
        {"proxy: { target: 'http://localhost:8080' }", {}},
        {"# listen 3000\n// listen 3001", {}},
        {"port 99999 port 12 port 1.3000 port v3000 port 3000px", {}},
        {"timeout(3000)", {}},
        {"x = 'host:4000'\napp.run(port=4000)", {{4000, 3}}},
    };
    for (const auto& [text, ports] : cases)
        EXPECT_EQ(portsInText(text), ports) << text;
}

TEST(WrittenPortsTest, NumbersInPrograms) {
    const std::uint16_t held[]{8080, 4096, 40000};
    EXPECT_THAT(portsInBinary("GET:8080HTTP:40961", BinaryKind::program, held), ElementsAre(8080));
    EXPECT_THAT(
        portsInBinary(std::string("\x11\x1f\x90\x03\0\0\x9c\x40", 8), BinaryKind::bytecode, held),
        ElementsAre(8080, 40000));
}

TEST(SourceReaderTest, FollowsWhatAScriptLoadsFromItsOwnFolder) {
    const TemporaryFolder folder;
    folder.write("app/server.js", "const app = require('./lib/app');\nimport x from 'left-pad'\n");
    folder.write("app/lib/app.js", "require('../server');\nconst c = require('../config');\n");
    folder.write("app/config.json", R"({"port": 4100, "database": {"port": 5432}})"
                                    "\n");
    folder.write("app/own.py", "from pkg.web import app\n");
    folder.write("app/pkg/web.py", "app.run(port=4200)\n");
    folder.write("app/vite.config.js", "export default { server: { port: 4300 } }");
    Runtime runtime;
    runtime.mayNamePortItself = true;
    Attempt attempt;
    attempt.runtime = &runtime;
    attempt.workingDirectory = (folder.path() / "app").string();
    const auto ports = [&](const std::string& script) {
        attempt.script = script;
        return portsInFilesOf(attempt, {});
    };
    EXPECT_THAT(ports("server"), IsEmpty()); // the port stands on a line with a database
    folder.write("app/config.json", "{\n\"port\": 4100,\n\"database\": {\n\"url\": \"x:5432\"}}");
    EXPECT_THAT(ports("server"), ElementsAre(4100));
    EXPECT_THAT(ports((folder.path() / "app/own.py").string()), ElementsAre(4200));
    EXPECT_THAT(ports("missing.js"), IsEmpty());
    runtime.configs = {"vite.config.js"};
    EXPECT_THAT(ports(""), ElementsAre(4300));
    // Nobody writes into it, so whoever opened it to read would wait.
    ASSERT_EQ(::mkfifo((folder.path() / "app/pipe.js").c_str(), 0600), 0);
    EXPECT_THAT(ports("pipe.js"), ElementsAre(4300));
}

TEST(SourceReaderTest, ReadsLargeProgramsWholly) {
    const TemporaryFolder folder;
    Runtime runtime;
    Attempt attempt;
    attempt.runtime = &runtime;
    const std::uint16_t held[]{8080, 1808};
    // Wherever it lies, and not as a part of another number.
    for (const std::size_t place : {0, 1'048'572, 1'048'574, 1'048'576, 2'097'150}) {
        folder.write("server", std::string(place, '\x7f') + ":18080 :8080" +
                                   std::string(2'097'152 - place, '\x7f'));
        attempt.program = std::make_shared<const FileDescriptor>(
            ::open((folder.path() / "server").c_str(), O_RDONLY | O_CLOEXEC));
        EXPECT_THAT(portsInFilesOf(attempt, held), ElementsAre(8080)) << place;
    }
}

} // namespace
} // namespace zenlot
