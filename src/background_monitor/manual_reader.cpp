#include "background_monitor/manual_reader.h"

#include "background_monitor/built_program.h"
#include "background_monitor/port_text.h"
#include "background_monitor/text_file.h"
#include "background_monitor/written_ports.h"
#include "inventory/programs/invocation.h"

#include <fcntl.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr off_t kLargestPackageFile = off_t{1024} * 1024;
constexpr std::size_t kLargestManual = std::size_t{1024} * 1024;
constexpr std::size_t kMostPackageFiles = 200;
constexpr std::size_t kMostPackageEntries = 3000;
constexpr int kDeepestPackageFolder = 4;
constexpr std::size_t kLongestToolName = 60;

constexpr std::array<std::string_view, 8> kPackageEndings{".js", ".mjs", ".cjs", ".json",
                                                          ".py", ".rb",  ".pl",  ".pm"};
constexpr std::array<std::string_view, 7> kSkippedOfPackage{
    "node_modules", "test", "tests", "docs", "examples", "__pycache__", "locale"};
constexpr std::array<std::string_view, 3> kManuals{"/usr/share/man", "/usr/local/share/man",
                                                   "/usr/local/man"};

bool isPackageSource(std::string_view name) {
    return std::ranges::any_of(kPackageEndings,
                               [name](std::string_view ending) { return name.ends_with(ending); });
}

struct CloseCompressed {
    void operator()(gzFile file) const { ::gzclose(file); }
};

// What a manual says, be it compressed or not.
std::string readManual(const fs::path& path) {
    const FileDescriptor file = openedFile(path);
    if (!sizeOfFile(file, static_cast<off_t>(kLargestManual)))
        return {};
    // The duplicate becomes the reader's own.
    const std::unique_ptr<gzFile_s, CloseCompressed> reader(
        ::gzdopen(::fcntl(file.get(), F_DUPFD_CLOEXEC, 0), "rb"));
    if (!reader)
        return {};
    std::string text(kLargestManual, '\0');
    const int length = ::gzread(reader.get(), text.data(), static_cast<unsigned>(text.size()));
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

// "process.env.PORT", `os.environ["PORT"]`, `ENV.fetch('PORT')`; lines may be as long as they like.
bool asksForVariable(std::string_view text, std::string_view name) {
    constexpr std::size_t kBefore = 24;
    for (std::size_t place = text.find(name); place != std::string_view::npos;
         place = text.find(name, place + 1)) {
        const std::size_t from = place - std::min(place, kBefore);
        const std::string before = inSmallLetters(text.substr(from, place - from));
        const std::size_t end = place + name.size();
        const bool isWhole =
            end == text.size() || (text[end] != '_' && (text[end] < 'A' || text[end] > 'Z'));
        if (isWhole && before.find("env") != std::string::npos)
            return true;
    }
    return false;
}

class ManualSearch {
  public:
    ManualSearch(const Attempt& attempt, std::span<const std::uint16_t> held,
                 std::chrono::steady_clock::time_point deadline)
        : attempt_(attempt), held_(held), deadline_(deadline) {}

    std::vector<PortAnswer> search() {
        searchTool();
        return {{PortSource::environment, variables_}, {PortSource::manual, found_}};
    }

  private:
    void searchTool() {
        const std::string& script = attempt_.script;
        if (script.empty()) {
            if (!attempt_.inlineSource.empty())
                return;
            searchDocuments(fs::path(attempt_.executable).filename().string());
            if (found_.empty())
                found_ = searchProgram(openedFile(attempt_.executable), BinaryKind::program, held_)
                             .ports;
            return;
        }
        std::error_code error;
        const fs::path file = fs::canonical(fs::path(attempt_.workingDirectory) / script, error);
        if (error) {
            searchModule(script); // of `python -m`
        } else if (isInstalledScript(file.string()) || isInstalledScript(script)) {
            searchPackageOf(file);
            searchDocuments(fs::path(script).stem().string());
        }
    }

    static void addOnce(std::vector<std::uint16_t>& ports, std::uint16_t port) {
        if (std::ranges::find(ports, port) == ports.end())
            ports.push_back(port);
    }

    void add(std::string_view text) {
        for (const std::uint16_t port : describedPorts(text, held_))
            addOnce(found_, port);
    }

    void addSource(std::string_view text) {
        add(text);
        for (const Setting& variable : attempt_.environment) {
            const auto endpoint = parseEndpoint(variable.value);
            if (endpoint && speaksOfListening(inSmallLetters(variable.path)) &&
                asksForVariable(text, variable.path))
                addOnce(variables_, endpoint->port);
        }
    }

    void searchPackageOf(const fs::path& script) {
        constexpr std::string_view kFolder = "/node_modules/";
        const std::string path = script.string();
        const std::size_t packages = path.rfind(kFolder);
        if (packages != std::string::npos) {
            const std::size_t name = packages + kFolder.size();
            std::size_t end = path.find('/', name);
            if (path[name] == '@' && end != std::string::npos)
                end = path.find('/', end + 1);
            searchFolder(path.substr(0, end));
            return;
        }
        const auto text = readTextFile(script, kLargestPackageFile);
        if (!text)
            return;
        addSource(*text);
        // What stands in a folder for programs only calls the package.
        const std::string_view interpreter = std::string_view(*text).substr(0, text->find('\n'));
        if (interpreter.find("python") != std::string_view::npos) {
            for (const std::string& module : relativeImports(*text))
                searchModule(module);
            searchEntryPoint(*text);
        } else if (interpreter.find("ruby") != std::string_view::npos) {
            searchGem(script.stem().string());
        }
    }

    // What a script that was made for `'distributed==2022.12', 'console_scripts', 'dask-scheduler'`
    // stands for.
    void searchEntryPoint(std::string_view text) {
        const std::size_t version = text.find("==");
        if (version == std::string_view::npos || text.find("console_scripts") == std::string::npos)
            return;
        const std::size_t start = text.find_last_of("'\"", version);
        if (start != std::string_view::npos)
            searchModule(std::string(text.substr(start + 1, version - start - 1)));
    }

    void searchGem(const std::string& name) {
        const fs::path prefix = fs::path(attempt_.executable).parent_path().parent_path();
        for (const fs::path& place :
             {fs::path("/usr/share/rubygems-integration"), fs::path("/var/lib/gems"),
              prefix / "lib/ruby/gems", fs::path(attempt_.home) / ".local/share/gem/ruby"}) {
            std::error_code error;
            for (fs::directory_iterator version(place, error), end; !error && version != end;
                 version.increment(error)) {
                std::error_code ignored;
                for (fs::directory_iterator gem(version->path() / "gems", ignored), last;
                     !ignored && gem != last; gem.increment(ignored)) {
                    if (gem->path().filename().string().starts_with(name + "-"))
                        searchFolder(gem->path());
                }
            }
        }
    }

    // A module of Python that lies in one of the folders which belong to the interpreter or to the
    // script's own environment.
    void searchModule(const std::string& module) {
        const std::string package = module.substr(0, module.find('/'));
        if (package.empty() || package.size() > kLongestToolName || package == "sys" ||
            package == "re" || package == "os")
            return;
        std::vector<fs::path> places;
        for (const std::string& program : {attempt_.executable, attempt_.script}) {
            const fs::path libraries = fs::path(program).parent_path().parent_path() / "lib";
            std::error_code error;
            for (fs::directory_iterator entry(libraries, error), end; !error && entry != end;
                 entry.increment(error)) {
                if (entry->path().filename().string().starts_with("python"))
                    places.push_back(entry->path());
            }
        }
        for (const fs::path& place : places) {
            for (const char* packages : {"", "site-packages", "dist-packages"}) {
                std::error_code error;
                const fs::path folder = place / packages / package;
                const fs::path file = place / packages / (module + ".py");
                // The module itself knows best.
                const std::size_t before = found_.size();
                if (const auto text = readTextFile(file, kLargestPackageFile))
                    addSource(*text);
                if (found_.size() == before && fs::is_directory(folder, error))
                    searchFolder(folder);
            }
        }
    }

    void searchFolder(const fs::path& root) {
        std::size_t files = 0;
        walkFiles(
            root, {kMostPackageEntries, kDeepestPackageFolder, deadline_},
            [](const std::string& folder) { return !isOneOf(folder, kSkippedOfPackage); },
            [&](const fs::directory_entry& file) {
                if (!isPackageSource(file.path().filename().string()))
                    return true;
                if (++files > kMostPackageFiles)
                    return false;
                if (const auto text = readTextFile(file.path(), kLargestPackageFile))
                    addSource(*text);
                return true;
            });
    }

    void searchDocuments(const std::string& name) {
        if (name.empty() || name.size() > kLongestToolName)
            return;
        // What does several things has a manual for each.
        const std::string command = attempt_.arguments.empty() ? "" : attempt_.arguments.front();
        const bool isCommand = !command.empty() && command.size() < kLongestToolName &&
                               command.find_first_of("-./ ") == std::string::npos;
        if (isCommand && searchManual(name + "-" + command))
            return;
        searchManual(name);
        const fs::path settings("/etc");
        const std::string fileName = name + ".conf";
        for (const fs::path& file : {settings / fileName, settings / name / fileName}) {
            if (const auto text = readTextFile(file, kLargestPackageFile))
                add(*text);
        }
    }

    bool searchManual(const std::string& name) {
        bool isThere = false;
        for (const std::string_view manuals : kManuals) {
            for (const char* section : {"1", "8", "1ssl"}) {
                const fs::path folder = fs::path(manuals) / (std::string("man") + section[0]);
                for (const char* ending : {".gz", ""}) {
                    const std::string text = readManual(folder / (name + "." + section + ending));
                    isThere |= !text.empty();
                    add(text);
                }
            }
        }
        return isThere;
    }

    const Attempt& attempt_;
    std::span<const std::uint16_t> held_;
    std::chrono::steady_clock::time_point deadline_;
    std::vector<std::uint16_t> variables_;
    std::vector<std::uint16_t> found_;
};

} // namespace

std::vector<PortAnswer> answersInManual(const Attempt& attempt, std::span<const std::uint16_t> held,
                                        std::chrono::steady_clock::time_point deadline) {
    return ManualSearch(attempt, held, deadline).search();
}

} // namespace zenlot
