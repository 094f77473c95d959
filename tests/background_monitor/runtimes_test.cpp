// How the rows of the table come to a port, and what command lines they are found by.
#include "background_monitor/wanted_port.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <sstream>

namespace zenlot {
namespace {

constexpr const char* kNothing = ""; // no server, or one that leaves the choice to the kernel
constexpr const char* kUnknown = "unknown";

struct Case {
    std::string row;
    std::string command; // words, with variables before them as a shell has them
    std::string wanted;  // port, or address:port
};

// Words that hold blanks have underscores here.
const Case kCases[]{
    {"Node script", "/usr/bin/node -r x --watch server.js", kUnknown},
    {"Node script", "PORT=4001 nodejs app.mjs --port=4002", "4002"},
    {"Node script", "node -e require('http')", kUnknown},
    {"Node script", "node node_modules/.bin/tsx src/main.ts", kNothing},
    {"Node script", "tsx watch src/main.ts --port 4003", "4003"},
    {"Node script", "node /usr/lib/node_modules/npm/bin/npm-cli.js run dev", kNothing},
    {"Node script", "bash -c node_server.js", kNothing},
    {"Node script", "node node_modules/.bin/ts-node -P x.json src/main.ts --port 4004", "4004"},
    {"Node script", "node node_modules/ts-node-dev/lib/wrap.js server.ts --port=4005", "4005"},
    {"Node script", "node --env-file .env server.js --redis-port 6379", kUnknown},
    {"Node script", "node server.js --listen-port 4006", "4006"},
    {"Node script", "node test.js --port 4006", "4006"},
    {"Node script", "node node_modules/.bin/jest --port 4006", kNothing},
    {"deno", "deno run -A main.ts", kUnknown},
    {"deno", "deno serve --port 4007 main.ts", "4007"},
    {"Vite", "deno run -A npm:vite@5 --port 4008", "4008"},
    {"Vite", "node node_modules/vite/bin/vite.js --port 4000 --host 127.0.0.1", "127.0.0.1:4000"},
    {"Vite", "node node_modules/.bin/vite --port 0", kNothing},
    {"Next.js", "node node_modules/.bin/next dev -p3011 -H ::1", "::1:3011"},
    {"Create React App", "PORT=3001 node x/node_modules/react-scripts/scripts/start.js", "3001"},
    {"http-server", "node node_modules/.bin/http-server -p 8082 -a localhost", "127.0.0.1:8082"},
    {"Python script", "python3.11 -X dev app.py -p 8123", "8123"},
    {"any program", "python3 /usr/lib/python3/dist-packages/tool.py", kUnknown},
    {"Python script", "python3 -m shop.web", kUnknown},
    {"Python script", "python3 serve.py", kUnknown},
    {"Python script", "python3 -m unittest", kNothing},
    {"http.server", "python3 -m http.server -b localhost -d 8 8123", "127.0.0.1:8123"},
    {"Flask", "FLASK_RUN_PORT=5005 /usr/bin/python3 /usr/bin/flask --app x run", "5005"},
    {"Flask", "python3 -m debugpy --listen 5678 -m flask run -p 5006", "5006"},
    {"Flask", "python3 -m coverage run -m flask run -p 5007", "5007"},
    {"Django", "python3 manage.py runserver [::1]:8001", "::1:8001"},
    {"uvicorn", "python3 /usr/bin/uvicorn app:app --host 0.0.0.0", "0.0.0.0:8000"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app -b 127.0.0.1:8002 -b :8003", "8003"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app --bind unix:/run/x.sock", kNothing},
    {"Waitress", "python3 venv/bin/waitress-serve --listen=*:8041 app:app", ":::8041"},
    {"Ruby script", "ruby3.1 -I lib -rjson app.rb", kUnknown},
    {"Perl script", "perl -I lib app.pl daemon --port 4567", "4567"},
    {"script of another language", "lua5.4 server.lua", kUnknown},
    {"script of another language", "/usr/lib/R/bin/exec/R --no-echo --file=app.R", kUnknown},
    {"script of another language", "/usr/lib/erlang/bin/beam.smp -- -eval x", kUnknown},
    {"Puma", "ruby /usr/bin/puma -b tcp://127.0.0.1:9293", "127.0.0.1:9293"},
    {"WEBrick", "ruby -run -e httpd . -p 8084", "8084"},
    {"PHP built-in server", "php8.2 -S localhost:8006 -t public", "127.0.0.1:8006"},
    {"Java", "java -Dserver.port=8085 -jar app.jar", "8085"},
    {"Java", "java --version", kNothing},
    {"Java", "java -cp x org.gradle.launcher.GradleMain bootRun", kNothing},
    {".NET", "ASPNETCORE_URLS=https://*:5001;http://*:5002 dotnet run", ":::5001"},
    {".NET", "dotnet watch run", "5000"},
    {"Docker", "docker run -p 127.0.0.1:8081:80/tcp nginx", "127.0.0.1:8081"},
    {"Docker", "docker compose up", kUnknown},
    {"Node script", "node ws.js", kUnknown},
    {"local-web-server", "node node_modules/.bin/ws -p 8001", "8001"},
    {"nginx", "nginx: master process /usr/sbin/nginx -c x", "80"},
    {"built program", "/home/ada/shop/target/debug/shop", kUnknown},
    {"built program", "PORT=8086 /tmp/go-build1/b001/exe/main", kUnknown},
    {"built program", "/home/ada/go/bin/api -addr 127.0.0.1:8087", "127.0.0.1:8087"},
    {"built program", "/home/ada/bin/echo --port 8089", "8089"},
    {"built program", "/home/ada/bin/shop serve -l :8090 -b 5000", "8090"},
    {"script of another language", "sbcl --noinform --load server.lisp", kUnknown},
    {"built program", "/opt/shop/server -http-port=8088 -Ddb.port=5432", "8088"},
    {"any program", "/usr/sbin/lighttpd -D -f lighttpd.conf", kUnknown},
    {"any program", "/usr/bin/grep -r 3000", kNothing},
    {"any program",
     "/usr/bin/kvd --listen-client-urls http://127.0.0.1:2381 --advertise-client-urls x",
     "127.0.0.1:2381"},
    {"any program",
     "/usr/bin/kvd --listen-client-urls http://:2381 --listen-peer-urls http://:2382", kUnknown},
    {"Varnish", "/usr/sbin/varnishd -a :8080 -b :8081", "8080"},
    {"websockify", "python3 -m websockify 6080 127.0.0.1:5900", "6080"},
    {"any program", "node node_modules/.bin/rollup -c -w", kUnknown},
    {"any program", "ruby /usr/bin/rake serve", kUnknown},
    {"any program", "/usr/bin/socat TCP-LISTEN:8008,fork TCP:localhost:80", "8008"},
    {"Redis Sentinel", "redis-server x.conf --sentinel", "26379"},
    {"gunicorn", "GUNICORN_CMD_ARGS=--bind=:8009 python3 venv/bin/gunicorn app:app", "8009"},
    {"gunicorn", "GUNICORN_CMD_ARGS=--bind=:8009 python3 venv/bin/gunicorn app:app -b :8010",
     "8010"},
    {"Java", "JAVA_TOOL_OPTIONS=-Dserver.port=8011 java -cp build:x shop.Main", "8011"},
    {"any program", "ruby /usr/bin/rake test", kNothing},
};

std::string text(const IpAddress& address) {
    for (const char* name : {"127.0.0.1", "0.0.0.0", "::1", "::"}) {
        if (IpAddress::parse(name) == address)
            return std::string(name) + ":";
    }
    return "?:";
}

std::string portOf(const Runtime& row, const Invocation& invocation,
                   const std::map<std::string, std::string>& environment = {}) {
    const auto wanted = wantedPort(row, invocation, [&environment](const std::string& name) {
        const auto found = environment.find(name);
        return found == environment.end() ? std::string() : found->second;
    });
    if (!wanted)
        return kNothing;
    return wanted->port == 0 ? kUnknown
                             : (wanted->addresses.empty() ? "" : text(wanted->addresses.front())) +
                                   std::to_string(wanted->port);
}

TEST(RuntimesTest, CommandLinesFindTheirRowsAndPorts) {
    const RuntimeTable table;
    for (const Case& example : kCases) {
        std::vector<std::string> words;
        std::map<std::string, std::string> environment;
        std::istringstream command(example.command);
        for (std::string word; command >> word;) {
            const std::size_t equals = word.find('=');
            if (words.empty() && equals != std::string::npos)
                environment[word.substr(0, equals)] = word.substr(equals + 1);
            else
                words.push_back(word);
        }
        auto invocation = identifyInvocation(words, words.front());
        for (const auto& [variable, value] : environment) {
            if (invocation && addsArguments(*invocation, variable))
                invocation->inherited = {value};
        }
        const Runtime* row = invocation ? table.find(*invocation) : nullptr;
        EXPECT_EQ(row ? portOf(*row, *invocation, environment) : kNothing, example.wanted)
            << example.command;
        if (example.wanted != kNothing) {
            EXPECT_EQ(row ? row->name : "none", example.row) << example.command;
        }
    }
}

// Nothing of the data is without effect, and none of it hides another.
TEST(RuntimesTest, EveryRowIsFoundAndSaysWhatItHolds) {
    const RuntimeTable table;
    EXPECT_GT(table.rows().size(), 70U);
    for (const Runtime& row : table.rows()) {
        SCOPED_TRACE(row.name);
        Invocation asked;
        for (const std::string& program : row.programs) {
            asked.tool = program;
            asked.arguments.assign(row.within.begin(),
                                   row.within.begin() + (row.within.empty() ? 0 : 1));
            EXPECT_EQ(table.find(asked)->name, row.name) << program;
        }
        for (const std::string& word : row.without) {
            asked.arguments = {word};
            EXPECT_EQ(portOf(row, asked), kNothing) << word;
        }
        asked.arguments.clear();
        if (!row.within.empty()) {
            EXPECT_EQ(portOf(row, asked), kNothing);
        }
        for (const std::string& word : row.within) {
            if (!row.defaultPorts.contains(word))
                asked.arguments = {word};
        }
        for (const auto& [word, port] : row.defaultPorts) {
            Invocation first = asked;
            if (!word.empty())
                first.arguments = {word};
            EXPECT_EQ(portOf(row, first), std::to_string(port)) << word;
        }
        for (const std::string& variable : row.environment) {
            const std::string port = portOf(row, asked, {{variable, "4001"}});
            EXPECT_EQ(port, row.mayNamePortItself ? kUnknown : "4001") << variable;
        }
        for (const std::string& flag : row.flags) {
            Invocation flagged = asked;
            flagged.arguments.push_back(flag + (row.publishesPorts ? "=4001:80" : "=4001"));
            EXPECT_EQ(portOf(row, flagged), "4001") << flag;
        }
    }
}

TEST(RuntimesTest, DebuggersThatAreWaitedFor) {
    const std::pair<const char*, const char*> cases[]{
        {"node --inspect=0.0.0.0:9230 server.js", "0.0.0.0:9230"},
        {"node --inspect-brk server.js", "127.0.0.1:9229"},
        {"node --inspect-port=9230 server.js --inspect", ""},
        {"java -agentlib:jdwp=transport=dt_socket,server=y,address=*:5005,suspend=n Shop",
         "*:5005"},
        {"java -agentlib:jdwp=transport=dt_socket,address=host:5005 Shop", ""},
        {"java -Dcom.sun.management.jmxremote.port=5006 Shop", "5006"},
        {"python3 -m debugpy --listen 5678 app.py --listen 1", "5678"},
    };
    for (const auto& [command, debugger] : cases) {
        std::istringstream text(command);
        const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
        EXPECT_EQ(identifyInvocation(words, words.front())->debugger, debugger) << command;
    }
}

} // namespace
} // namespace zenlot
