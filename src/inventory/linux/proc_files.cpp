#include "inventory/linux/proc_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>

namespace zenlot {
namespace {

constexpr std::size_t kDirectoryBytes = std::size_t{32} * 1024;

// Calls back with the name of every entry that is a decimal number: processes in /proc,
// descriptors in a process's folder.
template <typename Call>
void forEachNumber(const FileDescriptor& directory, Call&& call) {
    std::array<char, kDirectoryBytes> buffer;
    for (;;) {
        const ssize_t length = ::getdents64(directory.get(), buffer.data(), buffer.size());
        if (length <= 0)
            return;
        for (ssize_t offset = 0; offset < length;) {
            // The kernel aligns the entries, and the buffer starts a page's worth of stack.
            const char* entry = buffer.data() + offset;
            unsigned short entryLength{};
            std::memcpy(&entryLength, entry + offsetof(dirent64, d_reclen), sizeof entryLength);
            const char* name = entry + offsetof(dirent64, d_name);
            if (*name >= '0' && *name <= '9')
                call(name);
            offset += entryLength;
        }
    }
}

template <typename Number>
std::optional<Number> leadingNumber(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return std::nullopt;
    Number number{};
    const auto result = std::from_chars(text.data() + start, text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

// "PID/name", relative to the root.
std::array<char, 32> pathOf(ProcessId pid, const char* name) {
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "%d/%s", pid, name);
    return path;
}

std::optional<std::string> readAll(const FileDescriptor& file) {
    std::string text;
    std::array<char, std::size_t{16} * 1024> buffer;
    for (;;) {
        const ssize_t length = ::read(file.get(), buffer.data(), buffer.size());
        if (length < 0 && errno == EINTR)
            continue;
        if (length < 0)
            return std::nullopt;
        if (length == 0)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
}

} // namespace

std::optional<std::uint64_t> socketInode(std::string_view link) {
    constexpr std::string_view kPrefix = "socket:[";
    return link.starts_with(kPrefix) ? leadingNumber<std::uint64_t>(link.substr(kPrefix.size()))
                                     : std::nullopt;
}

std::optional<ProcessStatus> decodeProcessStatus(std::string_view text) {
    std::optional<ProcessStatus> status;
    bool hasEnded = false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (line.starts_with("State:\t")) {
            const char letter = line.size() > 7 ? line[7] : ' ';
            hasEnded = letter == 'Z' || letter == 'X';
        } else if (line.starts_with("Uid:\t")) {
            const std::string_view users = line.substr(5);
            const auto realUid = leadingNumber<UserId>(users);
            const std::size_t tab = users.find('\t');
            const auto effectiveUid = tab == std::string_view::npos
                                          ? std::nullopt
                                          : leadingNumber<UserId>(users.substr(tab));
            if (realUid && effectiveUid)
                status = ProcessStatus{*realUid, *effectiveUid, hasEnded};
            break; // State stands before Uid, and nothing of use behind it.
        }
    }
    return status;
}

ProcFiles::ProcFiles(const std::string& root)
    : root_(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

std::vector<ProcessId> ProcFiles::pids() const {
    std::vector<ProcessId> pids;
    // The folder is opened anew, since a descriptor's place in it is shared by all who read it.
    const FileDescriptor directory(::openat(root_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory)
        return pids;
    forEachNumber(directory, [&pids](const char* name) {
        if (const auto pid = leadingNumber<ProcessId>(name))
            pids.push_back(*pid);
    });
    return pids;
}

template <typename Call>
std::int64_t ProcFiles::forEachLink(ProcessId pid, const Call& call) const {
    const FileDescriptor directory(
        ::openat(root_.get(), pathOf(pid, "fd").data(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::int64_t count = 0;
    if (!directory)
        return count;
    forEachNumber(directory, [&](const char* name) {
        ++count;
        std::array<char, 64> link; // A socket's link is short; a longer one is a file's.
        const ssize_t length = ::readlinkat(directory.get(), name, link.data(), link.size());
        if (length > 0)
            call(std::string_view(link.data(), static_cast<std::size_t>(length)));
    });
    return count;
}

std::int64_t ProcFiles::forEachSocketInode(ProcessId pid,
                                           const std::function<void(std::uint64_t)>& call) const {
    return forEachLink(pid, [&call](std::string_view link) {
        if (const auto inode = socketInode(link))
            call(*inode);
    });
}

std::int64_t ProcFiles::forEachDescriptor(ProcessId pid,
                                          const std::function<void(std::string_view)>& call) const {
    return forEachLink(pid, call);
}

std::optional<ProcessStatus> ProcFiles::status(ProcessId pid) const {
    const auto text = read(pathOf(pid, "status").data());
    return text ? decodeProcessStatus(*text) : std::nullopt;
}

// The folder is owned so; of the files in it, some are the superuser's.
std::optional<UserId> ProcFiles::effectiveUid(ProcessId pid) const {
    struct stat status {};
    return ::fstatat(root_.get(), std::to_string(pid).c_str(), &status, 0) == 0
               ? std::optional<UserId>(status.st_uid)
               : std::nullopt;
}

std::optional<ProcessStat> ProcFiles::stat(ProcessId pid) const {
    const auto text = read(pathOf(pid, "stat").data());
    return text ? decodeProcessStat(*text) : std::nullopt;
}

std::string ProcFiles::executablePath(ProcessId pid) const {
    constexpr std::string_view kDeleted = " (deleted)";
    std::string path = link(pathOf(pid, "exe").data());
    // A program may really be called so.
    if (path.ends_with(kDeleted) && ::access(path.c_str(), F_OK) != 0)
        path.resize(path.size() - kDeleted.size());
    return path;
}

std::string ProcFiles::commandName(ProcessId pid) const {
    std::string name = read(pathOf(pid, "comm").data()).value_or(std::string());
    name.resize(std::min(name.size(), name.find('\n')));
    return name;
}

std::optional<std::string> ProcFiles::read(const std::string& name) const {
    const FileDescriptor file(::openat(root_.get(), name.c_str(), O_RDONLY | O_CLOEXEC));
    return file ? readAll(file) : std::nullopt;
}

std::string ProcFiles::link(const std::string& name) const {
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlinkat(root_.get(), name.c_str(), target.data(), target.size());
    return length <= 0 ? std::string()
                       : std::string(target.data(), static_cast<std::size_t>(length));
}

bool ProcFiles::isMissing(const std::string& name) const {
    return ::faccessat(root_.get(), name.c_str(), F_OK, 0) != 0 && errno == ENOENT;
}

} // namespace zenlot
