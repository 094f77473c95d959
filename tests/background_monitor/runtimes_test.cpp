// Every row of the table, with the command lines that it is for.
#include "background_monitor/wanted_port.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
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
    {"Node script", "PORT=4001 node ./bin/www", kUnknown},
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
    {"bun", "bun run server.ts", kUnknown},
    {"Vite", "node node_modules/.bin/vite", "5173"},
    {"Vite", "node node_modules/vite/bin/vite.js --port 4000 --host 127.0.0.1", "127.0.0.1:4000"},
    {"Vite", "node node_modules/.bin/vite preview", "4173"},
    {"Vite", "node node_modules/.bin/vite build", kNothing},
    {"Vite", "node node_modules/.bin/vite --port 0", kNothing},
    {"Next.js", "PORT=3010 node node_modules/.bin/next dev", "3010"},
    {"Next.js", "node node_modules/.bin/next dev -p3011 -H ::1", "::1:3011"},
    {"Next.js", "node node_modules/.bin/next build", kNothing},
    {"Nuxt", "NITRO_PORT=3012 node node_modules/.bin/nuxi dev", "3012"},
    {"Astro", "node node_modules/.bin/astro dev", "4321"},
    {"webpack-dev-server", "node node_modules/.bin/webpack-dev-server", "8080"},
    {"webpack serve", "node node_modules/.bin/webpack serve --port 8090", "8090"},
    {"webpack serve", "node node_modules/.bin/webpack build", kNothing},
    {"Create React App", "PORT=3001 node x/node_modules/react-scripts/scripts/start.js", "3001"},
    {"Vue CLI", "node node_modules/.bin/vue-cli-service serve", "8080"},
    {"Angular CLI", "node node_modules/.bin/ng serve --port 4201", "4201"},
    {"Remix", "node node_modules/.bin/remix-serve build", kNothing},
    {"Remix", "node node_modules/.bin/remix dev", "3000"},
    {"Gatsby", "node node_modules/.bin/gatsby serve", "9000"},
    {"Eleventy", "node node_modules/.bin/eleventy --serve", "8080"},
    {"Storybook", "node node_modules/.bin/storybook dev -p 6007", "6007"},
    {"http-server", "node node_modules/.bin/http-server -p 8082 -a localhost", "127.0.0.1:8082"},
    {"serve", "node node_modules/.bin/serve -l tcp://0.0.0.0:5000", "0.0.0.0:5000"},
    {"live-server", "node node_modules/.bin/live-server", "8080"},
    {"json-server", "node node_modules/.bin/json-server db.json", "3000"},
    {"Nitro", "node node_modules/.bin/nitro dev", "3000"},
    {"Rsbuild", "node node_modules/.bin/rsbuild dev --port 3008", "3008"},
    {"Parcel", "node node_modules/.bin/parcel index.html", "1234"},
    {"Metro", "node node_modules/.bin/expo start --port 8083", "8083"},
    {"Strapi", "node node_modules/.bin/strapi develop", "1337"},
    {"Ghost", "node /opt/node_modules/ghost-cli/bin/ghost run", "2368"},
    {"Wrangler", "node node_modules/.bin/wrangler dev", "8787"},
    {"Docusaurus", "node node_modules/.bin/docusaurus start", "3000"},
    {"Python script", "python3.11 -X dev app.py -p 8123", "8123"},
    {"any program", "python3 /usr/lib/python3/dist-packages/tool.py", kUnknown},
    {"Python script", "python3 -m shop.web", kUnknown},
    {"Python script", "python3 -m unittest", kNothing},
    {"http.server", "python3 -m http.server -b localhost -d 8 8123", "127.0.0.1:8123"},
    {"Flask", "FLASK_RUN_PORT=5005 /usr/bin/python3 /usr/bin/flask --app x run", "5005"},
    {"Flask", "/usr/bin/python3 /usr/bin/flask shell", kNothing},
    {"Flask", "python3 -m debugpy --listen 5678 -m flask run -p 5006", "5006"},
    {"Flask", "python3 -m coverage run -m flask run -p 5007", "5007"},
    {"Django", "python3 manage.py runserver [::1]:8001", "::1:8001"},
    {"Django", "python3 manage.py migrate", kNothing},
    {"uvicorn", "python3 /usr/bin/uvicorn app:app --host 0.0.0.0", "0.0.0.0:8000"},
    {"FastAPI", "python3 venv/bin/fastapi dev main.py", "8000"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app -b 127.0.0.1:8002 -b :8003", "8003"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app --bind unix:/run/x.sock", kNothing},
    {"Hypercorn", "python3 venv/bin/hypercorn app:app", "8000"},
    {"Daphne", "python3 venv/bin/daphne -p 8004 app:app", "8004"},
    {"Waitress", "python3 venv/bin/waitress-serve --listen=*:8041 app:app", ":::8041"},
    {"Streamlit", "python3 venv/bin/streamlit run app.py --server.port 8502", "8502"},
    {"Jupyter", "python3 venv/bin/jupyter-lab --ip=0.0.0.0", "0.0.0.0:8888"},
    {"MkDocs", "python3 venv/bin/mkdocs serve -a localhost:8005", "127.0.0.1:8005"},
    {"Ruby script", "ruby3.1 -I lib -rjson app.rb", kUnknown},
    {"rackup", "ruby /usr/bin/bundle exec rackup -p 9294", "9294"},
    {"Perl script", "perl -I lib app.pl daemon --port 4567", "4567"},
    {"Plack", "perl /usr/bin/starman --listen 127.0.0.1:5001", "127.0.0.1:5001"},
    {"Mojolicious", "perl /usr/bin/morbo app.pl", "3000"},
    {"thin", "ruby /usr/bin/thin start -p 3002", "3002"},
    {"unicorn", "ruby /usr/bin/unicorn", "8080"},
    {"script of another language", "lua5.4 server.lua", kUnknown},
    {"script of another language", "/usr/lib/R/bin/exec/R --no-echo --file=app.R", kUnknown},
    {"script of another language", "/usr/lib/erlang/bin/beam.smp -- -eval x", kUnknown},
    {"Rails", "ruby bin/rails server -p 3005 -b 127.0.0.1", "127.0.0.1:3005"},
    {"Rails", "ruby bin/rails db:migrate", kNothing},
    {"Puma", "ruby /usr/bin/puma -b tcp://127.0.0.1:9293", "127.0.0.1:9293"},
    {"rackup", "ruby /usr/bin/rackup", "9292"},
    {"WEBrick", "ruby -run -e httpd . -p 8084", "8084"},
    {"Jekyll", "ruby /usr/bin/jekyll serve -P 4001", "4001"},
    {"PHP built-in server", "php8.2 -S localhost:8006 -t public", "127.0.0.1:8006"},
    {"PHP script", "php worker.php --port 8007", "8007"},
    {"Laravel", "php artisan serve", "8000"},
    {"Laravel", "php artisan migrate", kNothing},
    {"Symfony", "symfony server:start", "8000"},
    {"Java", "java -Dserver.port=8085 -jar app.jar", "8085"},
    {"Java", "java --version", kNothing},
    {"Java", "java -cp x org.gradle.launcher.GradleMain bootRun", kNothing},
    {".NET", "ASPNETCORE_URLS=https://*:5001;http://*:5002 dotnet run", ":::5001"},
    {".NET", "dotnet build", kNothing},
    {".NET", "dotnet watch run", "5000"},
    {"Docker", "docker run -p 127.0.0.1:8081:80/tcp nginx", "127.0.0.1:8081"},
    {"Docker", "docker compose up", kUnknown},
    {"Docker", "docker ps", kNothing},
    {"memcached", "memcached -p 11212", "11212"},
    {"local-web-server", "node node_modules/local-web-server/bin/ws", "8000"},
    {"Node script", "node ws.js", kUnknown},
    {"local-web-server", "node node_modules/.bin/ws -p 8001", "8001"},
    {"VitePress", "node node_modules/.bin/vitepress preview", "4173"},
    {"VitePress", "node node_modules/.bin/vitepress build", kNothing},
    {"Rspack", "node node_modules/.bin/rspack serve", "8080"},
    {"Rspack", "node node_modules/.bin/rspack build", kNothing},
    {"wsgiref", "python3 -m wsgiref.simple_server", "8000"},
    {"iperf3", "iperf3 -s", "5201"},
    {"iperf3", "iperf3 -c host", kNothing},
    {"rsync", "rsync --daemon --port=8873", "8873"},
    {"rsync", "rsync -a x host:y", kNothing},
    {"MariaDB", "mariadbd --port=3307", "3307"},
    {"PostgreSQL", "postgres -D data -p 5433", "5433"},
    {"Transmission", "transmission-daemon -f", "9091"},
    {"Mosquitto", "mosquitto", "1883"},
    {"BusyBox", "busybox httpd -f -p 127.0.0.1:8082", "127.0.0.1:8082"},
    {"BusyBox", "busybox ls", kNothing},
    {"Hugo", "hugo server", "1313"},
    {"Hugo", "hugo", kNothing},
    {"Phoenix", "PORT=4009 /usr/lib/erlang/bin/beam.smp -- -extra mix phx.server", "4009"},
    {"Caddy", "caddy file-server --listen :2015", "2015"},
    {"Redis", "redis-server --port 6380", "6380"},
    {"MongoDB", "mongod --port 27018", "27018"},
    {"MinIO", "minio server --address 127.0.0.1:9001 data", "127.0.0.1:9001"},
    {"Prometheus", "prometheus --web.listen-address=:9091", "9091"},
    {"nginx", "nginx: master process /usr/sbin/nginx -c x", "80"},
    {"built program", "/home/ada/shop/target/debug/shop", kUnknown},
    {"built program", "PORT=8086 /tmp/go-build1/b001/exe/main", kUnknown},
    {"built program", "/home/ada/go/bin/api -addr 127.0.0.1:8087", "127.0.0.1:8087"},
    {"built program", "/home/ada/bin/echo --port 8089", "8089"},
    {"built program", "/opt/shop/server -http-port=8088 -Ddb.port=5432", "8088"},
    {"any program", "/usr/sbin/lighttpd -D -f lighttpd.conf", kUnknown},
    {"any program", "/usr/bin/grep -r 3000", kNothing},
    {"any program",
     "/usr/bin/etcd --listen-client-urls http://127.0.0.1:2381 --advertise-client-urls x",
     "127.0.0.1:2381"},
    {"any program",
     "/usr/bin/etcd --listen-client-urls http://:2381 --listen-peer-urls http://:2382", kUnknown},
    {"Varnish", "/usr/sbin/varnishd -a :8080 -b :8081", "8080"},
    {"websockify", "python3 -m websockify 6080 127.0.0.1:5900", "6080"},
    {"any program", "node node_modules/.bin/rollup -c", kNothing},
    {"any program", "node node_modules/.bin/rollup -c -w", kUnknown},
    {"any program", "ruby /usr/bin/rake serve", kUnknown},
    {"any program", "ruby /usr/bin/rake test", kNothing},
    {"Browsersync", "node node_modules/.bin/browser-sync start --port 3007", "3007"},
};

std::string text(const IpAddress& address) {
    for (const char* name : {"127.0.0.1", "0.0.0.0", "::1", "::"}) {
        if (IpAddress::parse(name) == address)
            return std::string(name) + ":";
    }
    return "?:";
}

TEST(RuntimesTest, EveryRowFindsThePortOfItsCommandLines) {
    const RuntimeTable table;
    std::set<std::string> seen;
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
        const auto invocation = identifyInvocation(words, words.front());
        const Runtime* row = invocation ? table.find(*invocation) : nullptr;
        const auto wanted =
            row ? wantedPort(*row, *invocation,
                             [&environment](const std::string& name) { return environment[name]; })
                : std::nullopt;
        std::string found;
        if (wanted && wanted->port == 0)
            found = kUnknown;
        else if (wanted)
            found = (wanted->addresses.empty() ? "" : text(wanted->addresses.front())) +
                    std::to_string(wanted->port);
        EXPECT_EQ(found, example.wanted) << example.command;
        if (wanted) {
            EXPECT_EQ(row->name, example.row) << example.command;
            seen.insert(row->name);
        }
    }
    for (const Runtime& row : table.rows())
        EXPECT_TRUE(seen.contains(row.name)) << row.name << " has no example";
}

TEST(RuntimesTest, DebuggersThatAreWaitedFor) {
    const std::pair<const char*, const char*> cases[]{
        {"node --inspect=0.0.0.0:9230 server.js", "0.0.0.0:9230"},
        {"node --inspect-brk server.js", "127.0.0.1:9229"},
        {"node --inspect-port=9230 server.js --inspect", ""},
        {"java -agentlib:jdwp=transport=dt_socket,server=y,address=*:5005,suspend=n Shop",
         "*:5005"},
        {"java -agentlib:jdwp=transport=dt_socket,address=host:5005 Shop", ""},
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
