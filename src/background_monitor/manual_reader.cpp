#include "background_monitor/manual_reader.h"

#include "background_monitor/invocation.h"
#include "background_monitor/text_file.h"
#include "background_monitor/written_ports.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
    // The descriptor becomes the reader's own.
    const std::unique_ptr<gzFile_s, CloseCompressed> reader(::gzdopen(::dup(file.get()), "rb"));
    if (!reader)
        return {};
    std::string text(kLargestManual, '\0');
    const int length = ::gzread(reader.get(), text.data(), static_cast<unsigned>(text.size()));
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

class ManualSearch {
  public:
    ManualSearch(const Attempt& attempt, std::span<const std::uint16_t> held,
                 std::chrono::steady_clock::time_point deadline)
        : attempt_(attempt), held_(held), deadline_(deadline) {}

    std::vector<std::uint16_t> search() {
        const std::string& script = attempt_.script;
        if (script.empty()) {
            if (attempt_.inlineSource.empty())
                searchDocuments(fs::path(attempt_.executable).filename().string());
            return std::move(found_);
        }
        std::error_code error;
        const fs::path file = fs::canonical(fs::path(attempt_.workingDirectory) / script, error);
        if (error) {
            searchModule(script); // of `python -m`
        } else if (isInstalledScript(file.string()) || isInstalledScript(script)) {
            searchPackageOf(file);
            searchDocuments(fs::path(script).stem().string());
        }
        return std::move(found_);
    }

  private:
    bool hasTime() const { return std::chrono::steady_clock::now() < deadline_; }

    void add(std::string_view text) {
        for (const std::uint16_t port : describedPorts(text, held_)) {
            if (std::ranges::find(found_, port) == found_.end())
                found_.push_back(port);
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
        add(*text);
        // What stands in a folder for programs only calls the package.
        constexpr std::string_view kPython = "python";
        if (text->substr(0, text->find('\n')).find(kPython) != std::string::npos) {
            for (const std::string& module : relativeImports(*text))
                searchModule(module);
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
                if (fs::is_directory(folder, error))
                    searchFolder(folder);
                else if (const auto text =
                             readTextFile(folder.string() + ".py", kLargestPackageFile))
                    add(*text);
            }
        }
    }

    void searchFolder(const fs::path& root) {
        std::deque<std::pair<fs::path, int>> folders{{root, 0}};
        std::size_t files = 0;
        std::size_t entries = 0;
        while (!folders.empty() && hasTime()) {
            const auto [folder, depth] = std::move(folders.front());
            folders.pop_front();
            std::error_code error;
            for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
                 entry.increment(error)) {
                if (++entries > kMostPackageEntries || files >= kMostPackageFiles || !hasTime())
                    return;
                const std::string name = entry->path().filename().string();
                std::error_code ignored;
                if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
                    if (depth < kDeepestPackageFolder &&
                        std::ranges::find(kSkippedOfPackage, name) == kSkippedOfPackage.end())
                        folders.emplace_back(entry->path(), depth + 1);
                } else if (isPackageSource(name)) {
                    ++files;
                    if (const auto text = readTextFile(entry->path(), kLargestPackageFile))
                        add(*text);
                }
            }
        }
    }

    void searchDocuments(const std::string& name) {
        if (name.empty() || name.size() > kLongestToolName)
            return;
        for (const std::string_view manuals : kManuals) {
            for (const char section : {'1', '8'}) {
                const std::string ending = std::string(".") + section;
                const fs::path folder = fs::path(manuals) / (std::string("man") + section);
                add(readManual(folder / (name + ending + ".gz")));
                add(readManual(folder / (name + ending)));
            }
        }
        for (const std::string& file :
             {"/etc/" + name + ".conf", "/etc/" + name + "/" + name + ".conf"}) {
            if (const auto text = readTextFile(file, kLargestPackageFile))
                add(*text);
        }
    }

    const Attempt& attempt_;
    std::span<const std::uint16_t> held_;
    std::chrono::steady_clock::time_point deadline_;
    std::vector<std::uint16_t> found_;
};

} // namespace

std::vector<std::uint16_t> portsInManual(const Attempt& attempt,
                                         std::span<const std::uint16_t> held,
                                         std::chrono::steady_clock::time_point deadline) {
    return ManualSearch(attempt, held, deadline).search();
}

} // namespace zenlot
