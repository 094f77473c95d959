#include "background_monitor/source_reader.h"

#include "background_monitor/written_ports.h"
#include "inventory/linux/file_descriptor.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr off_t kLargestText = off_t{512} * 1024;
constexpr off_t kLargestProgram = off_t{64} * 1024 * 1024;
constexpr std::size_t kMostFiles = 16;

// O_NONBLOCK: opening a pipe would otherwise wait for its writer.
FileDescriptor opened(const fs::path& path) {
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
}

// A regular file, mapped rather than copied: a program may be large.
class MappedFile {
  public:
    explicit MappedFile(const FileDescriptor& file) {
        struct stat status {};
        if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
            status.st_size <= 0 || status.st_size > kLargestProgram)
            return;
        const auto size = static_cast<std::size_t>(status.st_size);
        void* start = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
        if (start != MAP_FAILED)
            content_ = {static_cast<const char*>(start), size};
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;
    ~MappedFile() {
        if (!content_.empty())
            ::munmap(const_cast<char*>(content_.data()), content_.size());
    }

    std::string_view content() const { return content_; }

  private:
    std::string_view content_;
};

std::optional<std::string> readText(const fs::path& path) {
    // A text may be edited right now, and a mapping of a file that shrinks would end the program.
    const FileDescriptor file = opened(path);
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > kLargestText)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    const ssize_t length = ::read(file.get(), text.data(), text.size());
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    // What holds a zero is no text.
    if (text.find('\0') != std::string::npos)
        return std::nullopt;
    return text;
}

// The file that a script means by the name, with the endings that it may leave out.
std::optional<fs::path> importedFile(const fs::path& folder, const std::string& name) {
    for (const char* ending : {"", ".js", ".ts", ".mjs", ".cjs", ".py", ".rb", ".json", "/index.js",
                               "/index.ts", "/__init__.py"}) {
        fs::path path = folder / (name + ending);
        std::error_code error;
        if (fs::is_regular_file(path, error))
            return path;
    }
    return std::nullopt;
}

void append(std::vector<WrittenPort>& all, const std::vector<WrittenPort>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

// The script and what it loads, breadth first.
std::vector<WrittenPort> portsInScripts(const fs::path& script) {
    std::vector<WrittenPort> ports;
    std::vector<fs::path> files{script};
    std::set<fs::path> known{script};
    for (std::size_t place = 0; place < files.size(); ++place) {
        const fs::path file = files[place];
        const auto text = readText(file);
        if (!text)
            continue;
        append(ports, portsInText(*text));
        for (const std::string& name : relativeImports(*text)) {
            const auto imported = importedFile(file.parent_path(), name);
            if (imported && files.size() < kMostFiles && known.insert(*imported).second)
                files.push_back(*imported);
        }
    }
    return ports;
}

std::vector<std::uint16_t> likeliest(const std::vector<WrittenPort>& ports) {
    std::vector<std::uint16_t> result;
    if (ports.empty())
        return result;
    const int best = std::ranges::max_element(ports, {}, &WrittenPort::likelihood)->likelihood;
    for (const WrittenPort& port : ports) {
        if (port.likelihood == best && std::ranges::find(result, port.port) == result.end())
            result.push_back(port.port);
    }
    return result;
}

} // namespace

std::vector<std::uint16_t> portsInFilesOf(const Attempt& attempt,
                                          std::span<const std::uint16_t> held) {
    const fs::path folder = attempt.workingDirectory;
    std::vector<WrittenPort> ports = portsInText(attempt.inlineSource);
    for (const std::string& config : attempt.runtime->configs) {
        if (const auto text = readText(folder / config))
            append(ports, portsInText(*text));
    }
    if (!attempt.config.empty()) {
        if (const auto text = readText(folder / attempt.config))
            append(ports, portsInText(*text));
    }
    if (ports.empty() && attempt.program)
        return portsInBinary(MappedFile(*attempt.program).content(), BinaryKind::program, held);
    if (!attempt.runtime->mayNamePortItself || attempt.script.empty())
        return likeliest(ports);

    fs::path script = folder / attempt.script;
    if (const auto file = importedFile(script.parent_path(), script.filename()))
        script = *file;
    if (script.extension() == ".class")
        return portsInBinary(MappedFile(opened(script)).content(), BinaryKind::bytecode, held);
    append(ports, portsInScripts(script));
    return likeliest(ports);
}

} // namespace zenlot
