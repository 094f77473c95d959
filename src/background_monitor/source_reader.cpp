#include "background_monitor/source_reader.h"

#include "background_monitor/written_ports.h"
#include "inventory/linux/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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
constexpr std::size_t kPiece = std::size_t{1024} * 1024;
// More than the longest thing that is looked for.
constexpr std::size_t kOverlap = 16;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Only a regular file is opened: opening a device may do something, and a terminal may become the
// program's own. It may have become another one since it was looked at.
FileDescriptor opened(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return {};
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

// Up to `length` bytes from that place on; fewer at the end of the file.
std::size_t readAt(const FileDescriptor& file, off_t place, char* start, std::size_t length) {
    std::size_t filled = 0;
    while (filled < length) {
        const ssize_t count = ::pread(file.get(), start + filled, length - filled,
                                      place + static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    return filled;
}

// The size of a regular file; none for other things and for larger ones.
std::optional<off_t> sizeOf(const FileDescriptor& file, off_t largest) {
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > largest)
        return std::nullopt;
    return status.st_size;
}

// Piece by piece, since a program may be large. It is not mapped into memory: whoever builds it
// anew may make it shorter meanwhile, which would end this program.
std::vector<std::uint16_t> portsInBuilt(const FileDescriptor& file, BinaryKind kind,
                                        std::span<const std::uint16_t> held) {
    const off_t size = sizeOf(file, kLargestProgram).value_or(0);
    std::string piece;
    std::vector<std::uint16_t> open(held.begin(), held.end());
    std::vector<std::uint16_t> found;
    for (off_t place = 0; place < size && !open.empty();) {
        piece.resize(kPiece);
        piece.resize(readAt(file, place, piece.data(), kPiece));
        const bool isLast = piece.size() < kPiece;
        // No number is cut in two, and what may have been cut is in the next piece as well.
        std::size_t end = piece.size();
        while (!isLast && end > kPiece - kOverlap && isDigit(piece[end - 1]))
            --end;
        for (const std::uint16_t port :
             portsInBinary(std::string_view(piece).substr(0, end), kind, open)) {
            found.push_back(port);
            std::erase(open, port);
        }
        if (isLast)
            break;
        place += static_cast<off_t>(end - kOverlap);
    }
    return found;
}

std::optional<std::string> readText(const fs::path& path) {
    const FileDescriptor file = opened(path);
    const auto size = sizeOf(file, kLargestText);
    if (!size)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(*size), '\0');
    text.resize(readAt(file, 0, text.data(), text.size()));
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
        return portsInBuilt(*attempt.program, BinaryKind::program, held);
    if (!attempt.runtime->mayNamePortItself || attempt.script.empty())
        return likeliest(ports);

    fs::path script = folder / attempt.script;
    if (const auto file = importedFile(script.parent_path(), script.filename()))
        script = *file;
    if (script.extension() == ".class")
        return portsInBuilt(opened(script), BinaryKind::bytecode, held);
    append(ports, portsInScripts(script));
    return likeliest(ports);
}

} // namespace zenlot
