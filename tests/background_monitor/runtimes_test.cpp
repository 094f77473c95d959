// Every row of the table, with the command lines that it is for.
#include "background_monitor/wanted_port.h"

#include <gtest/gtest.h>

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
    {"Node script", "PORT=4001 node ./bin/www", "4001"},
    {"Node script", "PORT=4001 nodejs app.mjs --port=4002", "4002"},
    {"Node script", "node -e require('http')", kUnknown},
    {"Node script", "node node_modules/.bin/tsx src/main.ts", kNothing},
    {"Node script", "tsx watch src/main.ts --port 4003", "4003"},
    {"Node script", "node /usr/lib/node_modules/npm/bin/npm-cli.js run dev", kNothing},
    {"Node script", "bash -c node_server.js", kNothing},
    {"deno", "deno run -A main.ts", "8000"},
    {"bun", "bun run server.ts", "3000"},
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
    {"Parcel", "node node_modules/.bin/parcel index.html", "1234"},
    {"Metro", "node node_modules/.bin/expo start --port 8083", "8083"},
    {"Strapi", "node node_modules/.bin/strapi develop", "1337"},
    {"Ghost", "node /opt/node_modules/ghost-cli/bin/ghost run", "2368"},
    {"Wrangler", "node node_modules/.bin/wrangler dev", "8787"},
    {"Docusaurus", "node node_modules/.bin/docusaurus start", "3000"},
    {"Python script", "python3.11 -X dev app.py -p 8123", "8123"},
    {"Python script", "python3 /usr/lib/python3/dist-packages/tool.py", kNothing},
    {"http.server", "python3 -m http.server -b localhost -d 8 8123", "127.0.0.1:8123"},
    {"Flask", "FLASK_RUN_PORT=5005 /usr/bin/python3 /usr/bin/flask --app x run", "5005"},
    {"Flask", "/usr/bin/python3 /usr/bin/flask shell", kNothing},
    {"Django", "python3 manage.py runserver [::1]:8001", "::1:8001"},
    {"Django", "python3 manage.py migrate", kNothing},
    {"uvicorn", "python3 /usr/bin/uvicorn app:app --host 0.0.0.0", "0.0.0.0:8000"},
    {"FastAPI", "python3 venv/bin/fastapi dev main.py", "8000"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app -b 127.0.0.1:8002 -b :8003", "8003"},
    {"gunicorn", "python3 venv/bin/gunicorn app:app --bind unix:/run/x.sock", "8000"},
    {"Hypercorn", "python3 venv/bin/hypercorn app:app", "8000"},
    {"Daphne", "python3 venv/bin/daphne -p 8004 app:app", "8004"},
    {"Waitress", "python3 venv/bin/waitress-serve --listen=*:8041 app:app", ":::8041"},
    {"Streamlit", "python3 venv/bin/streamlit run app.py --server.port 8502", "8502"},
    {"Jupyter", "python3 venv/bin/jupyter-lab --ip=0.0.0.0", "0.0.0.0:8888"},
    {"MkDocs", "python3 venv/bin/mkdocs serve -a localhost:8005", "127.0.0.1:8005"},
    {"Ruby script", "ruby3.1 -I lib -rjson app.rb", "4567"},
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
    {".NET", "ASPNETCORE_URLS=https://*:5001;http://*:5002 dotnet run", ":::5001"},
    {".NET", "dotnet build", kNothing},
    {"Hugo", "hugo server", "1313"},
    {"Hugo", "hugo", kNothing},
    {"Phoenix", "PORT=4009 /usr/lib/erlang/bin/beam.smp -- -extra mix phx.server", "4009"},
    {"Caddy", "caddy file-server --listen :2015", "2015"},
    {"Redis", "redis-server --port 6380", "6380"},
    {"PostgreSQL", "postgres -D data -p 5433", "5433"},
    {"MongoDB", "mongod --port 27018", "27018"},
    {"MinIO", "minio server --address 127.0.0.1:9001 data", "127.0.0.1:9001"},
    {"Prometheus", "prometheus --web.listen-address=:9091", "9091"},
    {"nginx", "nginx", "80"},
    {"built program", "/home/ada/shop/target/debug/shop", kUnknown},
    {"built program", "PORT=8086 /tmp/go-build1/b001/exe/main", "8086"},
    {"built program", "/home/ada/go/bin/api -addr 127.0.0.1:8087", "127.0.0.1:8087"},
    {"built program", "/usr/bin/gnome-shell", kNothing},
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
        const auto invocation = identifyInvocation(words, words.front(), "/home/ada");
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

} // namespace
} // namespace zenlot
