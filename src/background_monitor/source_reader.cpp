#include "background_monitor/source_reader.h"

#include "background_monitor/built_program.h"
#include "background_monitor/java_archive.h"
#include "background_monitor/manual_reader.h"
#include "background_monitor/port_text.h"
#include "background_monitor/settings_text.h"
#include "background_monitor/stage.h"
#include "background_monitor/text_file.h"
#include "background_monitor/written_ports.h"

#include <glob.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr off_t kLargestText = off_t{512} * 1024;
// Sources that hold settings for others are small.
constexpr std::size_t kLargestWithBlocks = std::size_t{64} * 1024;
constexpr off_t kLargestProjectFile = off_t{128} * 1024;
constexpr std::size_t kMostImportedFiles = 24;
constexpr std::size_t kMostBuiltFiles = 60;
constexpr std::size_t kMostSettingsFiles = 24;
constexpr off_t kLargestArchive = off_t{512} * 1024 * 1024;
constexpr std::size_t kLongestPath = 1000;
constexpr std::size_t kMostProjectFiles = 250;
constexpr std::size_t kMostProjectEntries = 4000;
constexpr int kDeepestProjectFolder = 4;
constexpr int kFarthestProjectRoot = 6;
constexpr std::chrono::milliseconds kLongestSearch{400};
// How likely a line has to say where to listen for its address to count.
constexpr int kSurely = 3;

constexpr std::array<std::string_view, 20> kManifests{
    ".git",         "package.json", "go.mod",           "Cargo.toml", "pyproject.toml",
    "setup.py",     "setup.cfg",    "requirements.txt", "Gemfile",    "composer.json",
    "pom.xml",      "build.gradle", "mix.exs",          "deno.json",  "CMakeLists.txt",
    "rebar.config", "cpanfile",     "DESCRIPTION",      "Rakefile",   "Makefile"};

// Folders that hold what others wrote, what was built, or what is no part of the running program.
constexpr std::array<std::string_view, 29> kSkippedFolders{
    "node_modules", "vendor",      "target", "dist",        "build",    "venv",
    "env",          "__pycache__", "test",   "tests",       "spec",     "docs",
    "doc",          "e2e",         "logs",   "coverage",    "examples", "fixtures",
    "migrations",   "public",      "static", "assets",      "deps",     "_build",
    "cache",        "nimcache",    "obj",    "third_party", "external"};

// What is read of a project: sources, settings, and files that say how it is started.
constexpr std::array<std::string_view, 49> kProjectEndings{
    ".js",  ".mjs",   ".cjs", ".ts",    ".mts", ".cts", ".tsx",    ".jsx",    ".py",  ".rb",
    ".ru",  ".php",   ".pl",  ".psgi",  ".pm",  ".lua", ".erl",    ".hrl",    ".ex",  ".exs",
    ".R",   ".r",     ".go",  ".rs",    ".c",   ".cc",  ".cpp",    ".h",      ".hpp", ".java",
    ".kt",  ".scala", ".clj", ".cs",    ".tcl", ".scm", ".lisp",   ".pro",    ".ml",  ".hs",
    ".nim", ".cr",    ".zig", ".swift", ".d",   ".sh",  ".coffee", ".groovy", ".awk"};
// Settings of other programs that happen to lie in the same folder.
constexpr std::array<std::string_view, 9> kForeignFiles{
    "docker-compose", "compose.y",  "package-lock", "tsconfig", "jest.config",
    "vitest.config",  "playwright", "cypress",      "nginx"};

// Sources that stand beside a program that was built from them.
constexpr std::array<std::string_view, 13> kBuiltFrom{".go",  ".rs",    ".c",   ".cc", ".cpp",
                                                      ".zig", ".nim",   ".cr",  ".ml", ".hs",
                                                      ".d",   ".swift", ".java"};

template <std::size_t Count>
bool endsWithAny(std::string_view name, const std::array<std::string_view, Count>& endings) {
    return std::ranges::any_of(endings,
                               [name](std::string_view ending) { return name.ends_with(ending); });
}

std::optional<std::string> readText(const fs::path& path, off_t largest = kLargestText) {
    return readTextFile(path, largest);
}

// The file that a script means by the name, with the endings that it may leave out.
std::optional<fs::path> importedFile(const fs::path& folder, const std::string& name) {
    for (const char* ending : {"", ".js", ".ts", ".mjs", ".cjs", ".py", ".rb", ".json", "/index.js",
                               "/index.ts", "/__main__.py", "/__init__.py", ".lua", ".pm"}) {
        fs::path path = folder / (name + ending);
        std::error_code error;
        if (fs::is_regular_file(path, error))
            return path;
    }
    return std::nullopt;
}

// One search through the files of one attempt.
class FileSearch {
  public:
    FileSearch(const Attempt& attempt, std::span<const std::uint16_t> held,
               const AddressQuestion& hasAddress)
        : attempt_(attempt), held_(held), hasAddress_(hasAddress),
          folder_(attempt.workingDirectory),
          deadline_(std::chrono::steady_clock::now() + kLongestSearch) {}

    std::vector<PortAnswer> answers() {
        readSources();
        readSettingsFiles();
        readVariableFiles();
        if (std::ranges::any_of(sites_, [this](const PortSite& site) { return isElsewhere(site); }))
            return {};
        std::vector<PortAnswer> all = whatSitesSay();
        std::vector<Setting> variables = attempt_.environment;
        variables.insert(variables.end(), variables_.begin(), variables_.end());
        all.push_back({PortSource::settings,
                       attempt_.runtime->publishesPorts
                           ? publishedPorts()
                           : portsOfSettings(settings_, variables, attempt_.runtime->programs)});
        // A tool's own configuration may be a program; what counts there is as good as settings.
        for (PortAnswer answer :
             answersOfSites(configSites_, attempt_.environment, variables_, {})) {
            if (answer.source == PortSource::source)
                answer.source = PortSource::settings;
            all.push_back(std::move(answer));
        }
        if (!namesOneOf(all, PortSource::source, inBuilt_.ports))
            all.push_back({PortSource::source, inBuilt_.ports});
        const std::vector<std::uint16_t> called = inNamedPlaces();
        if (!names(all, PortSource::source))
            all.push_back({PortSource::source, called});
        all.push_back({PortSource::environmentFile, inVariableFiles()});
        addBuiltsVariables(all);
        narrow(all, called);
        const bool mayNamePortItself = attempt_.runtime->mayNamePortItself;
        if (mayNamePortItself || !attempt_.config.empty())
            all.push_back({PortSource::mention, mentionedNearby()});
        if (mayNamePortItself) {
            // What is merely installed has no project, but for a tool that runs scripts.
            if ((!isUnknown() || isInstalledTool()) && !decidingAnswer(all))
                all.push_back({PortSource::project, mentionedInProject()});
            for (const auto& [library, port] : attempt_.runtime->libraries) {
                if (usesLibrary(library))
                    all.push_back({PortSource::habit, {port}});
            }
            all.push_back({PortSource::spelled, spelledNearby()});
            if (!decidingAnswer(all)) {
                for (PortAnswer& answer : answersInManual(attempt_, held_, deadline_))
                    all.push_back(std::move(answer));
            }
        } else if (hasUnheldHabit() && !decidingAnswer(all)) {
            // Something in its project makes it another port than the usual one.
            all.push_back({PortSource::project, mentionedInProject()});
        }
        return all;
    }

  private:
    bool isElsewhere(const PortSite& site) const {
        return site.likelihood >= kSurely && !site.addresses.empty() &&
               std::ranges::none_of(site.addresses, hasAddress_);
    }

    bool isUnknown() const {
        return std::ranges::find(attempt_.runtime->programs, kAnyProgram) !=
               attempt_.runtime->programs.end();
    }

    bool hasUnheldHabit() const {
        return attempt_.wanted.source == WantedPort::Source::usual &&
               std::ranges::find(held_, attempt_.wanted.port) == held_.end();
    }

    // A script that a package brought, which works on what lies where it is started.
    bool isInstalledTool() const {
        return !attempt_.script.empty() && isInstalledScript(attempt_.script);
    }

    // Where a source or settings name several held ports, the one counts whose name the line that
    // listens holds: `listen(ports.trpc)` beside `{ web: 3000, trpc: 4000 }`. So it does where a
    // source names only free ones, elsewhere than on the line that listens.
    void narrow(std::vector<PortAnswer>& answers, std::span<const std::uint16_t> called) const {
        const auto isHeld = [this](std::uint16_t port) {
            return std::ranges::find(held_, port) != held_.end();
        };
        const bool listensByName = std::ranges::none_of(sites_, [](const PortSite& site) {
            return site.likelihood > kSurely && !site.ports.empty();
        });
        for (PortAnswer& answer : answers) {
            const auto held = std::ranges::count_if(answer.ports, isHeld);
            const bool isOfSource = answer.source == PortSource::source && !answer.ports.empty();
            if (isOfSource && held == 0 && listensByName && !called.empty())
                answer.ports.assign(called.begin(), called.end());
            if ((!isOfSource && answer.source != PortSource::settings) || held < 2)
                continue;
            std::vector<std::uint16_t> both;
            std::ranges::copy_if(answer.ports, std::back_inserter(both),
                                 [&called](std::uint16_t port) {
                                     return std::ranges::find(called, port) != called.end();
                                 });
            if (!both.empty())
                answer.ports = std::move(both);
        }
    }

    static bool names(std::span<const PortAnswer> answers, PortSource source) {
        return std::ranges::any_of(answers, [source](const PortAnswer& answer) {
            return answer.source == source && !answer.ports.empty();
        });
    }

    // Whether they name one of the ports already. A built program holds the ports of others as
    // well.
    static bool namesOneOf(std::span<const PortAnswer> answers, PortSource source,
                           std::span<const std::uint16_t> ports) {
        return std::ranges::any_of(answers, [source, ports](const PortAnswer& answer) {
            return answer.source == source &&
                   std::ranges::find_first_of(answer.ports, ports) != answer.ports.end();
        });
    }

    bool namesHeld(std::span<const PortAnswer> answers) const {
        const auto deciding = decidingAnswer(answers);
        return deciding &&
               std::ranges::find_first_of(deciding->ports, held_) != deciding->ports.end();
    }

    // A program may listen on several ports. Where those that it writes beside "listen" are free,
    // the one that it is told counts, which may have its name on another line.
    std::vector<PortAnswer> whatSitesSay() const {
        std::vector<PortAnswer> said =
            answersOfSites(sites_, attempt_.environment, variables_, attempt_.arguments);
        if (namesHeld(said))
            return said;
        std::vector<PortSite> asking;
        for (PortSite site : sites_) {
            site.ports.clear();
            if (site.likelihood >= kSurely)
                asking.push_back(std::move(site));
        }
        std::vector<PortAnswer> told =
            answersOfSites(asking, attempt_.environment, variables_, attempt_.arguments);
        return namesHeld(told) ? told : said;
    }

    bool hasTime() const { return std::chrono::steady_clock::now() < deadline_; }

    void readSources() {
        addSource(attempt_.inlineSource, folder_);
        if (!attempt_.runtime->mayNamePortItself)
            return;
        if (!attempt_.script.empty() && !isInstalledTool())
            readScript(attempt_.script);
        // A tool that carries other languages is given their scripts: `coffee server.coffee`.
        if (sources_.empty() && (isUnknown() || isInstalledTool())) {
            for (const std::string& word : attempt_.arguments) {
                if (endsWithAny(word, kProjectEndings) && word.size() < kLongestPath)
                    readScript(word);
            }
        }
        if (attempt_.program) {
            readBuiltFrom();
            searchBuilt();
        }
    }

    // The script and what it loads, breadth first.
    void readScript(const std::string& path) {
        fs::path script = folder_ / path;
        if (const auto file = importedFile(script.parent_path(), script.filename()))
            script = *file;
        scriptFolder_ = script.parent_path();
        if (script.extension() == ".class") {
            std::vector<std::string> words;
            for (const Setting& variable : attempt_.environment)
                words.push_back(variable.path);
            inBuilt_ = searchProgram(openedFile(script), BinaryKind::bytecode, held_, words);
            return;
        }
        std::deque<fs::path> files{script};
        std::set<fs::path> known{script};
        while (!files.empty() && hasTime()) {
            const fs::path file = std::move(files.front());
            files.pop_front();
            const auto text = readText(file);
            if (!text)
                continue;
            const auto format = settingsFormatOf(file.filename().string());
            if (format) {
                addSettings(*text, *format);
                texts_.push_back(*text);
                continue;
            }
            addSource(*text, file.parent_path());
            for (const std::string& name : relativeImports(*text)) {
                auto imported = importedFile(file.parent_path(), name);
                // Ruby and Perl look where they are told to, which mostly is this folder.
                if (!imported)
                    imported = importedFile(folder_ / "lib", name);
                if (imported && known.size() < kMostImportedFiles && known.insert(*imported).second)
                    files.push_back(*imported);
            }
        }
    }

    void addSource(const std::string& whole, const fs::path& folder) {
        const std::string text = withoutOtherStages(whole, attempt_.stage);
        for (PortSite& site : portSites(text))
            sites_.push_back(std::move(site));
        for (const std::string& name : namedSettings(text)) {
            if (namedFiles_.size() < kMostSettingsFiles) {
                namedFiles_.push_back(folder_ / name);
                namedFiles_.push_back(folder / name);
            }
        }
        // A package that reads the settings of the stage out of this folder.
        if (text.find("require('config')") != std::string::npos ||
            text.find("require(\"config\")") != std::string::npos ||
            text.find("from 'config'") != std::string::npos)
            namedFiles_.push_back(folder_ / "config");
        sources_ += inSmallLetters(text);
        texts_.push_back(text);
    }

    // What a built program was built from, where that lies in its project.
    void readBuiltFrom() {
        const fs::path root = projectRoot();
        if (root.empty() || root == root.root_path() || root == attempt_.home)
            return;
        const std::string program = fs::path(attempt_.executable).stem().string();
        std::vector<fs::path> files;
        const bool isWhole = walkFiles(
            root, {kMostProjectEntries, kDeepestProjectFolder, deadline_ - kLongestSearch / 2},
            [](const std::string& folder) {
                return !folder.starts_with('.') && !isOneOf(folder, kSkippedFolders);
            },
            [&](const fs::directory_entry& file) {
                const std::string name = file.path().filename().string();
                if (endsWithAny(name, kBuiltFrom) && !name.ends_with("_test.go") &&
                    !isOfAnotherProgram(file.path(), program))
                    files.push_back(file.path());
                return true;
            });
        // Of many sources most are about something else.
        const bool isSmall = isWhole && files.size() <= kMostBuiltFiles;
        std::size_t count = 0;
        for (const fs::path& file : files) {
            const fs::path folder = file.parent_path();
            const bool isNear = folder == root || folder == root / "src" || folder == folder_ ||
                                folder == root / "cmd" || folder.parent_path() == root / "cmd";
            if (!isSmall && !isNear)
                continue;
            if (++count > kMostBuiltFiles || !hasTime())
                return;
            if (const auto text = readText(file))
                addSource(*text, folder);
        }
    }

    // In "cmd/worker" or "src/bin/worker.rs", where another one of these is called like the
    // program.
    static bool isOfAnotherProgram(const fs::path& file, const std::string& program) {
        constexpr std::array<std::string_view, 5> kPrograms{"cmd", "bin", "crates", "apps",
                                                            "services"};
        for (fs::path place = file; place.has_relative_path(); place = place.parent_path()) {
            const fs::path parent = place.parent_path();
            std::error_code error;
            if (isOneOf(parent.filename().string(), kPrograms))
                return place.stem() != program &&
                       (fs::exists(parent / program, error) ||
                        fs::exists(parent / (program + place.extension().string()), error));
        }
        return false;
    }

    // The settings beside a built program, or beside where it runs, that it knows by name; which
    // variables it knows; and the addresses in it.
    void searchBuilt() {
        std::vector<fs::path> files;
        std::vector<std::string> words{".env"};
        const fs::path beside = fs::path(attempt_.executable).parent_path();
        for (const fs::path& folder : {folder_, folder_ / "config", folder_ / "conf",
                                       folder_ / "configs", folder_ / "etc", beside}) {
            std::error_code error;
            for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
                 entry.increment(error)) {
                const std::string name = entry->path().filename().string();
                if (files.size() < kMostSettingsFiles && settingsFormatOf(name) &&
                    name.size() < kLongestBuiltWord) {
                    files.push_back(entry->path());
                    words.push_back(name);
                }
            }
        }
        for (const Setting& variable : attempt_.environment) {
            if (variable.path.size() < kLongestBuiltWord)
                words.push_back(variable.path);
        }
        inBuilt_ = searchProgram(*attempt_.program, BinaryKind::program, held_, words);
        for (const fs::path& file : files) {
            if (inBuilt_.words.contains(file.filename().string()))
                namedFiles_.push_back(file);
        }
        if (inBuilt_.words.contains(".env"))
            sources_ += "dotenv";
    }

    // A built program whose source is not there: it knows the name of a variable that is set. What
    // is written in it may still be what counts, so both are named.
    void addBuiltsVariables(std::vector<PortAnswer>& all) const {
        if (!sites_.empty())
            return;
        PortAnswer answer{PortSource::environment, {}};
        for (const Setting& variable : attempt_.environment) {
            const std::string& name = variable.path;
            // A name of one's own says what it is for.
            constexpr std::string_view kEnding = "_PORT";
            const bool isOwn = name.ends_with(kEnding) && !speaksOfOthers(inSmallLetters(name));
            if (!inBuilt_.words.contains(name) ||
                (!isOwn && std::ranges::find(attempt_.runtime->environment, name) ==
                               attempt_.runtime->environment.end()))
                continue;
            if (const auto endpoint = parseEndpoint(variable.value)) {
                if (answer.ports.empty())
                    answer.ports = inBuilt_.ports;
                answer.ports.push_back(endpoint->port);
            }
        }
        all.push_back(std::move(answer));
    }

    // What a tool that reads such files by itself takes from them.
    std::vector<std::uint16_t> inVariableFiles() const {
        for (const std::string& name : attempt_.runtime->environment) {
            const auto variable = std::ranges::find(variables_, name, &Setting::path);
            if (variable == variables_.end() || !attempt_.runtime->readsEnvironmentFile)
                continue;
            if (const auto endpoint = parseEndpoint(variable->value))
                return {endpoint->port};
        }
        return {};
    }

    // Whether the path leads through the block of another stage.
    bool isOfOtherStage(std::string_view path) const {
        while (!path.empty()) {
            const std::string_view block = path.substr(0, path.find('.'));
            path.remove_prefix(std::min(path.size(), block.size() + 1));
            if (block.find_first_of("-_") == std::string_view::npos &&
                stageOfName(block, attempt_.stage) == StageOfName::other)
                return true;
        }
        return false;
    }

    void addSettings(const std::string& text, SettingsFormat format) {
        for (Setting& setting : readSettings(text, format)) {
            if (!isOfOtherStage(setting.path))
                settings_.push_back(std::move(setting));
        }
    }

    // What "include sites-enabled/*;" names.
    void readIncluded(const fs::path& from, SettingsFormat format) {
        std::vector<std::string> patterns;
        for (const Setting& setting : settings_) {
            const std::string_view key =
                std::string_view(setting.path).substr(setting.path.rfind('.') + 1);
            if (key == "include" || key == "includeoptional" || key == "include_dir")
                patterns.push_back(key == "include_dir" ? setting.value + "/*" : setting.value);
        }
        for (const std::string& pattern : patterns) {
            const fs::path path = from.parent_path() / pattern;
            if (!included_.insert(path).second)
                continue;
            for (const fs::path& file : filesLike(path)) {
                const auto text =
                    known_.insert(file).second && hasTime() ? readText(file) : std::nullopt;
                if (text)
                    addSettings(*text, format);
            }
        }
    }

    static std::vector<fs::path> filesLike(const fs::path& pattern) {
        std::vector<fs::path> files;
        glob_t found{};
        if (::glob(pattern.c_str(), 0, nullptr, &found) == 0) {
            for (std::size_t place = 0;
                 place < std::min<std::size_t>(found.gl_pathc, kMostSettingsFiles); ++place)
                files.emplace_back(found.gl_pathv[place]);
        }
        ::globfree(&found);
        return files;
    }

    void readConfig(const fs::path& file) {
        const auto text = known_.insert(file).second && hasTime() ? readText(file) : std::nullopt;
        if (!text)
            return;
        const std::string name = file.filename().string();
        if (const auto format = settingsFormatOf(name)) {
            for (const std::uint16_t port : portsMentionedIn(*text, name))
                mentionedBySettings_.push_back(port);
            addSettings(*text, *format);
            readIncluded(file, *format);
            return;
        }
        nearby_ += *text + "\n";
        const bool isObject = (file.extension().string().find('s') != std::string::npos &&
                               file.extension() != ".exs") || // .js, .ts, .mjs, ...
                              file.extension() == ".lua";
        if (isObject)
            addSettings(*text, SettingsFormat::braces);
        if (!isObject || settings_.empty()) {
            for (PortSite& site : portSites(*text))
                configSites_.push_back(std::move(site));
        }
    }

    void readConfigOrFolder(const fs::path& path) {
        std::error_code error;
        if (!fs::is_directory(path, error)) {
            readConfig(path);
            return;
        }
        readFolder(path);
    }

    bool saysPort() const {
        return !portsOfSettings(settings_, {}, attempt_.runtime->programs).empty();
    }

    // What is written for the stage comes before what counts in all of them.
    void readFolder(const fs::path& path) {
        std::vector<fs::path> general;
        std::size_t count = 0;
        std::error_code error;
        for (fs::directory_iterator entry(path, error), end;
             !error && entry != end && count < kMostSettingsFiles; entry.increment(error)) {
            const fs::path& file = entry->path();
            const std::string name = file.filename().string();
            if (!isSettingsFile(name) && !isSettingsProgram(name))
                continue;
            ++count;
            const StageOfName stage = stageOfName(file.stem().string(), attempt_.stage);
            if (stage == StageOfName::own)
                readConfig(file);
            else if (stage == StageOfName::none)
                general.push_back(file);
        }
        if (!saysPort())
            std::ranges::for_each(general, [this](const fs::path& file) { readConfig(file); });
    }

    // What Java's machine finds beside the classes.
    void readClassPath() {
        sources_ += attempt_.libraries;
        for (const std::string& entry : attempt_.classPath) {
            const fs::path path = folder_ / entry;
            std::error_code error;
            if (fs::is_directory(path, error)) {
                readFolder(path);
                continue;
            }
            const FileDescriptor archive = openedFile(path);
            if (!sizeOfFile(archive, kLargestArchive))
                continue;
            const JavaArchive contents = readJavaArchive(archive);
            sources_ += contents.libraries;
            const auto stageOf = [this](const ArchivedFile& file) {
                return stageOfName(fs::path(file.name).stem().string(), attempt_.stage);
            };
            for (const StageOfName wanted : {StageOfName::own, StageOfName::none}) {
                for (const ArchivedFile& file : contents.settings) {
                    if (stageOf(file) == wanted && (wanted == StageOfName::own || !saysPort()))
                        addSettings(file.text, *settingsFormatOf(file.name));
                }
            }
        }
    }

    void readSettingsFiles() {
        // What the arguments name comes before what lies there.
        if (!attempt_.config.empty())
            readConfigOrFolder(folder_ / attempt_.config);
        if (attempt_.runtime->mayNamePortItself || attempt_.runtime->configFlags.empty()) {
            for (const std::string& word : attempt_.arguments) {
                const std::string name = word.substr(word.find('=') + 1);
                const bool isModule = isSettingsProgram(name) &&
                                      name.find("config", name.rfind('/') + 1) != std::string::npos;
                if ((isSettingsFile(name) || isModule) && name.size() < kLongestPath)
                    readConfig(folder_ / name);
                else if (isUnknown() && !name.empty() && name.size() < kLongestPath &&
                         !name.starts_with('-') && !endsWithAny(name, kProjectEndings))
                    nearby_ += readText(folder_ / name, kLargestProjectFile).value_or("") + "\n";
            }
        }
        for (const fs::path& file : namedFiles_) {
            if (!file.filename().string().starts_with(".env"))
                readConfigOrFolder(file);
        }
        if (!saysPort())
            readClassPath();
        if (saysPort() || !configSites_.empty())
            return;
        for (const std::string& config : attempt_.runtime->configs) {
            readConfig(folder_ / config);
            if (!scriptFolder_.empty())
                readConfig(scriptFolder_ / config);
        }
    }

    // As dotenv reads them: what comes first stays.
    void readVariableFiles() {
        std::vector<fs::path> files;
        for (const std::string& name : attempt_.environmentFiles)
            files.insert(files.begin(), folder_ / name);
        for (const fs::path& file : namedFiles_) {
            if (file.filename().string().starts_with(".env"))
                files.push_back(file);
        }
        const bool loads = attempt_.runtime->readsEnvironmentFile ||
                           sources_.find("dotenv") != std::string::npos ||
                           sources_.find("environ.env") != std::string::npos ||
                           sources_.find("decouple") != std::string::npos;
        if (loads) {
            for (const char* name : {".env.development.local", ".env.local", ".env.development",
                                     ".flaskenv", ".env"}) {
                files.push_back(folder_ / name);
                if (!scriptFolder_.empty())
                    files.push_back(scriptFolder_ / name);
                for (const std::string& folder : foldersOfVariables(nearby_))
                    files.push_back(folder_ / folder / name);
            }
        }
        for (const fs::path& file : files) {
            const auto text = readText(file);
            if (!text)
                continue;
            for (Setting& variable : readVariables(*text)) {
                if (std::ranges::find(variables_, variable.path, &Setting::path) ==
                    variables_.end())
                    variables_.push_back(std::move(variable));
            }
        }
    }

    // Of the services in a file for containers, those that are mapped to ports of the machine.
    std::vector<std::uint16_t> publishedPorts() const {
        std::vector<std::uint16_t> ports;
        for (const Setting& setting : settings_) {
            const bool isShort = setting.path.ends_with(".ports");
            if (!isShort && !setting.path.ends_with(".published"))
                continue;
            const std::string_view value = setting.value;
            if (const auto endpoint = parseEndpoint(isShort ? publishedEndpoint(value) : value))
                ports.push_back(endpoint->port);
        }
        return ports;
    }

    bool usesLibrary(const std::string& library) const {
        return sources_.find(library) != std::string::npos;
    }

    // Of the held ports those that the names stand for which its own lines listen on.
    std::vector<std::uint16_t> inNamedPlaces() const {
        std::vector<std::string> called;
        for (const std::string& text : texts_) {
            for (std::string& name : namesListenedOn(text))
                called.push_back(std::move(name));
        }
        for (const std::string& text : texts_)
            addNamesCalled(called, text);
        std::vector<std::uint16_t> found;
        const auto add = [this, &found](std::uint16_t port) {
            if (std::ranges::find(held_, port) != held_.end())
                found.push_back(port);
        };
        // "rpc.port" of settings where `listen(rpc.port)` stands.
        const auto addBlocks = [&](std::span<const Setting> settings) {
            for (const Setting& setting : settings) {
                if (isCalled(setting.path, called))
                    std::ranges::for_each(portsInValue(setting.value), add);
            }
        };
        addBlocks(settings_);
        for (const std::string& text : texts_) {
            if (found.empty() && text.size() <= kLargestWithBlocks)
                addBlocks(readSettings(text, SettingsFormat::braces));
        }
        if (!found.empty())
            return found;
        for (const std::string& text : texts_)
            std::ranges::for_each(portsCalled(called, text), add);
        return found;
    }

    // Whether a key and each block that it stands in is one of the names. What the outermost of
    // several blocks is called elsewhere nobody knows.
    static bool isCalled(std::string_view path, std::span<const std::string> names) {
        constexpr std::string_view kExported = "module.exports.";
        if (path.starts_with(kExported))
            path.remove_prefix(kExported.size());
        const auto isUnnamed = [names](std::string_view key) {
            return std::ranges::none_of(
                names, [key](const std::string& name) { return inSmallLetters(name) == key; });
        };
        if (std::ranges::count(path, '.') >= 2)
            path.remove_prefix(path.find('.') + 1);
        bool isBlock = false;
        for (std::size_t dot = path.find('.'); dot != std::string_view::npos;
             dot = path.find('.')) {
            if (isUnnamed(path.substr(0, dot)))
                return false;
            path.remove_prefix(dot + 1);
            isBlock = true;
        }
        return isBlock && !isUnnamed(path);
    }

    // Of the held ports those that stand as a number in its own files, or in variables called like
    // one.
    std::vector<std::uint16_t> spelledNearby() const {
        std::vector<std::uint16_t> found;
        for (const std::string& text : texts_) {
            for (const std::uint16_t port : spelledPorts(text, held_))
                found.push_back(port);
        }
        for (const std::uint16_t port : spelledPorts(nearby_, held_))
            found.push_back(port);
        // Whether it asks for them nobody knows here.
        for (const Setting& variable : attempt_.environment) {
            constexpr std::string_view kEnding = "_PORT";
            const auto endpoint = parseEndpoint(variable.value);
            if (endpoint && variable.path.ends_with(kEnding) &&
                !speaksOfOthers(inSmallLetters(variable.path)) &&
                std::ranges::find(held_, endpoint->port) != held_.end())
                found.push_back(endpoint->port);
        }
        return found;
    }

    // Of the held ports those that arguments, variables called like one and named files mention.
    std::vector<std::uint16_t> mentionedNearby() const {
        std::vector<std::uint16_t> found;
        const auto add = [this, &found](std::uint16_t port) {
            if (std::ranges::find(held_, port) != held_.end() &&
                std::ranges::find(found, port) == found.end())
                found.push_back(port);
        };
        const std::vector<std::string>& arguments = attempt_.arguments;
        // Beside a port alone, an address with one is where something is passed on to.
        std::vector<std::uint16_t> withHost;
        for (std::size_t place = 0; place < arguments.size(); ++place) {
            const std::string& word = arguments[place];
            if (const auto value = tellingValue(arguments, place))
                add(parseEndpoint(*value)->port);
            const bool isRequest = word.find("http://") != std::string::npos ||
                                   word.find("https://") != std::string::npos;
            if (isRequest || speaksOfOthers(inSmallLetters(word)))
                continue;
            const auto endpoint = parseEndpoint(word);
            for (const std::uint16_t port : portsInValue(word)) {
                if (endpoint && !endpoint->host.empty())
                    withHost.push_back(port);
                else
                    add(port);
            }
        }
        if (found.empty())
            std::ranges::for_each(withHost, add);
        if (!found.empty())
            return found;
        for (const std::span<const Setting> variables :
             {std::span<const Setting>(attempt_.environment),
              std::span<const Setting>(variables_)}) {
            for (const Setting& variable : variables) {
                const std::string name = inSmallLetters(variable.path);
                const auto endpoint = parseEndpoint(variable.value);
                if (endpoint && !speaksOfOthers(name) && name.find("port") != std::string::npos &&
                    sources_.find(name) != std::string::npos)
                    add(endpoint->port);
            }
        }
        if (!found.empty())
            return found;
        found = mentionedPorts(nearby_, held_);
        found.insert(found.end(), mentionedBySettings_.begin(), mentionedBySettings_.end());
        return found;
    }

    // The folder with a manifest or a repository, at or above the working directory or what is run;
    // the folder itself where there is none.
    fs::path projectRoot() const {
        const fs::path script = (folder_ / attempt_.script).parent_path();
        for (const fs::path& start :
             {folder_, script.lexically_normal(), fs::path(attempt_.executable).parent_path()}) {
            if (isInstalledTool() && start != folder_)
                break;
            fs::path folder = start;
            for (int distance = 0; distance < kFarthestProjectRoot; ++distance) {
                if (folder.empty() || folder == folder.root_path() || folder == attempt_.home)
                    break;
                std::error_code error;
                for (const std::string_view manifest : kManifests) {
                    if (fs::exists(folder / manifest, error))
                        return folder;
                }
                folder = folder.parent_path();
            }
        }
        return folder_;
    }

    std::vector<std::uint16_t> mentionedInProject() const {
        std::vector<std::uint16_t> found;
        const fs::path root = projectRoot();
        if (root.empty() || root == root.root_path() || root == attempt_.home || root == "/tmp")
            return found;
        std::size_t files = 0;
        const bool isWhole = walkFiles(
            root, {kMostProjectEntries, kDeepestProjectFolder, deadline_},
            [](const std::string& folder) {
                return !folder.starts_with('.') && !isOneOf(folder, kSkippedFolders);
            },
            [&](const fs::directory_entry& file) {
                std::error_code ignored;
                const std::string name = file.path().filename().string();
                if (file.is_symlink(ignored) || !isReadOfProject(name))
                    return true;
                if (++files > kMostProjectFiles)
                    return false;
                if (const auto text = readText(file.path(), kLargestProjectFile)) {
                    for (const std::uint16_t port : portsMentionedIn(*text, name)) {
                        if (std::ranges::find(found, port) == found.end())
                            found.push_back(port);
                    }
                }
                return true;
            });
        if (!isWhole)
            found.clear(); // half a search may have missed the right one
        return found;
    }

    static bool isReadOfProject(const std::string& name) {
        const auto isForeign = [&name](std::string_view beginning) {
            return name.starts_with(beginning);
        };
        if (std::ranges::any_of(kForeignFiles, isForeign) || name.ends_with(".min.js") ||
            name.ends_with(".d.ts") || name.find(".test.") != std::string::npos ||
            name.find(".spec.") != std::string::npos || name.find("_test.") != std::string::npos)
            return false;
        return endsWithAny(name, kProjectEndings) || settingsFormatOf(name) ||
               name.starts_with(".env") || name == ".Rprofile" || name == "Procfile" ||
               name == "Makefile" || name == "Rakefile";
    }

    // In settings the block counts as well.
    std::vector<std::uint16_t> portsMentionedIn(const std::string& text,
                                                const std::string& name) const {
        const auto format = settingsFormatOf(name);
        if (!format || name == "package.json")
            return mentionedPorts(text, held_);
        const std::vector<Setting> settings = readSettings(text, *format);
        std::vector<std::uint16_t> found;
        for (const std::uint16_t port : portsOfSettings(settings, {}, attempt_.runtime->programs)) {
            if (std::ranges::find(held_, port) != held_.end())
                found.push_back(port);
        }
        if (!found.empty())
            return found;
        for (const Setting& setting : settings) {
            if (speaksOfOthers(setting.path))
                continue;
            const std::string line = setting.path + " = " + setting.value;
            for (const std::uint16_t port : mentionedPorts(line, held_))
                found.push_back(port);
        }
        return found;
    }

    const Attempt& attempt_;
    std::span<const std::uint16_t> held_;
    const AddressQuestion& hasAddress_;
    fs::path folder_;
    fs::path scriptFolder_;
    std::chrono::steady_clock::time_point deadline_;
    std::vector<PortSite> sites_;
    std::vector<PortSite> configSites_;
    std::string sources_;            // in small letters
    std::string nearby_;             // the text of files that are named
    std::vector<std::string> texts_; // of what it runs and loads
    std::vector<fs::path> namedFiles_;
    std::set<fs::path> known_;
    std::set<fs::path> included_;
    std::vector<Setting> settings_;
    std::vector<std::uint16_t> mentionedBySettings_;
    std::vector<Setting> variables_; // of files
    FoundInProgram inBuilt_;
};

} // namespace

std::vector<PortAnswer> answersInFilesOf(const Attempt& attempt,
                                         std::span<const std::uint16_t> held,
                                         const AddressQuestion& hasAddress) {
    std::ifstream mounts("/proc/self/mountinfo");
    std::ostringstream mountInfo;
    mountInfo << mounts.rdbuf();
    for (const std::string& path : {attempt.workingDirectory, attempt.script, attempt.executable}) {
        if (liesOnNetwork(path, mountInfo.str()))
            return {};
    }
    return FileSearch(attempt, held, hasAddress).answers();
}

bool liesOnNetwork(const std::string& path, std::string_view mountInfo) {
    constexpr std::array<std::string_view, 11> kNetworks{
        "nfs", "nfs4",  "cifs",   "smb3",       "smbfs",      "ceph",
        "afs", "ncpfs", "autofs", "fuse.sshfs", "fuse.rclone"};
    std::size_t longest = 0;
    bool isNetwork = false;
    std::istringstream lines{std::string(mountInfo)};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        for (int field = 0; field < 5 && words >> word; ++field) {
        }
        const std::string mountPoint = word;
        const std::size_t separator = line.find(" - ");
        if (separator == std::string::npos)
            continue;
        const std::string type =
            line.substr(separator + 3, line.find(' ', separator + 3) - separator - 3);
        const bool isBelow =
            mountPoint == "/" || path == mountPoint || path.starts_with(mountPoint + "/");
        // Of several on one place the last is on top.
        if (isBelow && mountPoint.size() >= longest) {
            longest = mountPoint.size();
            isNetwork = isOneOf(type, kNetworks);
        }
    }
    return isNetwork;
}

} // namespace zenlot
