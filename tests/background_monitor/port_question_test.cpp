// Which port settings, variables and sources name.
#include "background_monitor/port_question.h"
#include "background_monitor/port_text.h"

#include <gmock/gmock.h>

namespace zenlot {
namespace {

using testing::ElementsAre;
using enum SettingsFormat;

TEST(SettingsTextTest, KeysStandWithTheirBlocks) {
    const struct {
        const char* text;
        SettingsFormat format;
        std::vector<Setting> settings;
    } cases[]{
        {R"({"server": {"port": 80, "hosts": ["a", "b"]}, // x
             "Port": "81"})",
         braces,
         {{"server.port", "80"}, {"server.hosts", "a"}, {"server.hosts", "b"}, {"port", "81"}}},
        {"export default defineConfig({\n  server: { port: 80 },\n  x: f(1, 2),\n})",
         braces,
         {{"server.port", "80"}, {"x", "f(1, 2)"}}},
        {"server: {\n  port: 80,\n  hmr: x ? { port: 81 } : y,\n}",
         braces,
         {{"server.port", "80"},
          {"server.hmr", "x ?"},
          {"server.hmr.port", "81"},
          {"server", "y"}}},
        {"a:\n  b: 1 # x\n  c:\n  - d: 2\n    e: 3\n  - 4\nf: {g: 5}\n",
         indentation,
         {{"a.b", "1"}, {"a.c.d", "2"}, {"a.c.e", "3"}, {"a.c", "4"}, {"f.g", "5"}}},
        {"a: &own 1\nb:\n  c: *own\n  d: *none\n",
         indentation,
         {{"a", "1"}, {"b.c", "1"}, {"b.d", "*none"}}},
        {"a = 1\n[b.c]\nd = \"2\" # x\n; e = 3\n[f]\ng: 4",
         lines,
         {{"a", "1"}, {"b.c.d", "2"}, {"f.g", "4"}}},
        {"server.port=80\nport 81\nhttp {\n  server {\n    listen 82;\n  }\n}\n:83 {\n}\n",
         lines,
         {{"server.port", "80"}, {"port", "81"}, {"http.server.listen", "82"}, {"listen", ":83"}}},
        {"<?xml?><a b=\"1\"/><!-- c=\"2\" --><d><e f=\"3\"></e>\n<g> 4 </g></d><h>5",
         elements,
         {{"a.b", "1"}, {"d.e.f", "3"}, {"d.g", "4"}, {"h", "5"}}},
        {"{:db {:host \"x\" :port 1}\n :http/web {:port 2}}",
         keywords,
         {{"db.host", "x"}, {"db.port", "1"}, {"web.port", "2"}}},
        {"{\"a\": [[[{", braces, {}},
        {"}}}]]\"", braces, {}},
    };
    for (const auto& [text, format, settings] : cases)
        EXPECT_EQ(readSettings(text, format), settings) << text;
}

TEST(SettingsTextTest, VariablesAsDotenvReadsThem) {
    EXPECT_THAT(
        readVariables("# x\nA=1 # y\nexport B = 'a # b'\nC=\"2\"\nA=3\nnothing\n=4\nD=\n"),
        ElementsAre(Setting{"B", "a # b"}, Setting{"C", "2"}, Setting{"A", "3"}, Setting{"D", ""}));
}

TEST(PortQuestionTest, SettingsOfTheServerItselfCount) {
    const std::vector<Setting> variables{{"PORT", "4000"}};
    const std::pair<std::vector<Setting>, std::vector<std::uint16_t>> cases[]{
        {{{"redis.port", "6379"}, {"server.port", "3000"}}, {3000}},
        {{{"spring.kafka.bootstrap-servers", "x:9092"}}, {}},
        {{{"management.server.port", "9000"}, {"port", "3000"}}, {3000}},
        {{{"management.server.port", "9000"}}, {9000}},
        {{{"http.server.listen", "127.0.0.1:3000 default_server"}}, {3000}},
        {{{"profiles.shop.applicationurl", "https://x:5001;http://x:5000"},
          {"iissettings.iisexpress.sslport", "44300"}},
         {5001, 5000}},
        {{{"server.port", "${PORT:3000}"}}, {4000}},
        {{{"server.port", "${OTHER:-3000}"}}, {3000}},
        {{{"server.port", "process.env.PORT || 3000"}}, {4000}},
        {{{"server.port", "Number(3000)"}}, {3000}},
        {{{"shop.port", "3000"}, {"stock.port", "3001"}}, {3000, 3001}},
        {{{"tcp.port", "3000"}, {"ws.url", "127.0.0.1:3001"}}, {3000, 3001}},
        {{{"tcp.port", "3000"}, {"ws.url", "ws://127.0.0.1:3001"}}, {3000}},
        {{{"connector.port", "3000"}, {"connect.port", "3001"}}, {3000}},
        {{{"port", "none"}, {"timeout", "3000"}}, {}},
    };
    for (const auto& [settings, ports] : cases)
        EXPECT_EQ(portsOfSettings(settings, variables), ports) << settings[0].path;
}

TEST(PortQuestionTest, SourcesAskForVariablesArgumentsAndFilesFirst) {
    const std::vector<Setting> inherited{{"PORT", "4000"}, {"API_PORT", "4001"}};
    const std::vector<Setting> file{{"PORT", "5000"}, {"WEB_PORT", "5001"}};
    const std::vector<std::string> arguments{"--workers", "4", "6000"};
    using enum PortSource;
    const struct {
        PortSource from;
        std::uint16_t port;
        const char* text;
    } cases[]{
        {environment, 4000, "const port = process.env.PORT || 3000;"},
        {environment, 4000, "const { X, PORT = 3000 } = process.env;\napp.listen(PORT)"},
        {environment, 4001, "app.run(host='0.0.0.0', port=int(os.environ.get('API_PORT', 3000)))"},
        {environment, 4001, "port = int(os.getenv('API_PORT', 3000))"},
        {environmentFile, 5001, "set :port, ENV.fetch(\"WEB_PORT\") { 3000 }"},
        {source, 4990, "port = os.getenv('X', 4990)"},
        {environmentFile, 5001, "port := os.Getenv(\"WEB_PORT\")"},
        {environment, 4001, "let port = std::env::var(\"API_PORT\").unwrap_or(\"3000\".into());"},
        {environment, 4000, "var port = Environment.GetEnvironmentVariable(\"PORT\") ?? \"3000\";"},
        {environment, 4000, "my $port = $ENV{PORT} // 3000;"},
        {argument, 6000, "const port = process.argv[2] || 3000"},
        {source, 3000, "app.listen(3000)\nconst apiPort = process.env.API_PORT || 8080"},
        {source, 3000, "const redisPort = process.env.REDIS_PORT || 6379\nlisten(3000)"},
        {source, 0, "const x = process.env.PORT_OF_NOBODY"},
    };
    for (const auto& [from, port, text] : cases) {
        const auto answer =
            decidingAnswer(answersOfSites(portSites(text), inherited, file, arguments));
        EXPECT_EQ(answer && !answer->ports.empty() ? answer->ports.front() : 0, port) << text;
        EXPECT_EQ(answer ? answer->source : from, from) << text;
    }
}

TEST(PortQuestionTest, TheHighestSourceDecides) {
    EXPECT_EQ(decidingAnswer({}), std::nullopt);
    const std::vector<PortAnswer> answers{{PortSource::habit, {1}},
                                          {PortSource::settings, {2}},
                                          {PortSource::environment, {}},
                                          {PortSource::settings, {3, 2}}};
    EXPECT_EQ(decidingAnswer(answers), (PortAnswer{PortSource::settings, {2, 3}}));
}

TEST(PortTextTest, PortsOfContainersAndOtherSockets) {
    EXPECT_EQ(publishedEndpoint("127.0.0.1:8080:80/tcp"), "127.0.0.1:8080");
    EXPECT_EQ(publishedEndpoint("80"), "");
    for (const char* word : {"unix:/run/x", "--bind=unix:/run/x", "--uds", "fd://3"})
        EXPECT_TRUE(namesOtherSocket(word)) << word;
    EXPECT_FALSE(namesOtherSocket("--bind=:8080"));
}

} // namespace
} // namespace zenlot
