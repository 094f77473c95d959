// Reads what lies below /proc, or below a copy of it, without allocating for each entry.
#pragma once

#include "inventory/linux/proc_stat.h"
#include "inventory/process_tables.h"
#include "posix/file_descriptor.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// What /proc/PID/status says of a process.
struct ProcessStatus {
    UserId realUid{0};
    UserId effectiveUid{0};
    bool hasEnded{false}; // its parent has not yet asked how

    friend bool operator==(const ProcessStatus&, const ProcessStatus&) = default;
};

// None when the text names no users.
std::optional<ProcessStatus> decodeProcessStatus(std::string_view text);

// The inode of the link "socket:[123]"; none of links to anything else.
std::optional<std::uint64_t> socketInode(std::string_view link);

class ProcFiles {
  public:
    explicit ProcFiles(const std::string& root = "/proc");

    // Every process, in the order of the folder.
    std::vector<ProcessId> pids() const;

    // Calls back with the inode of each socket that the process holds, in the order of its
    // descriptors, and returns how many descriptors of every kind there are. Nothing happens for a
    // process that is gone or may not be inspected, and the result is 0.
    std::int64_t forEachSocketInode(ProcessId pid,
                                    const std::function<void(std::uint64_t)>& call) const;

    // The same with what each descriptor is a link to, cut off after some hundred bytes.
    std::int64_t forEachDescriptor(ProcessId pid,
                                   const std::function<void(std::string_view)>& call) const;

    std::optional<ProcessStatus> status(ProcessId pid) const;

    // Whose rights the process has. Every process shows that, and it is asked for at little cost.
    std::optional<UserId> effectiveUid(ProcessId pid) const;

    // Of every process, other users' included, as long as it has a folder: also when it has ended
    // and its parent has not yet asked how.
    std::optional<ProcessStat> stat(ProcessId pid) const;

    // The path of the program as the kernel gives it, bytes and all; empty when unknown. The mark
    // that the kernel adds for a deleted program is taken off.
    std::string executablePath(ProcessId pid) const;

    // What the process is called, of every process as stat() has it; its threads, or it itself, may
    // have taken another name than that of the program. Bytes and all; empty when unknown.
    std::string commandName(ProcessId pid) const;

    // A whole file, named from the root; none when it can't be read.
    std::optional<std::string> read(const std::string& name) const;

    // What a link is to, bytes and all; empty when it can't be read.
    std::string link(const std::string& name) const;

    // Whether there is no such file, rather than one that can't be reached.
    bool isMissing(const std::string& name) const;

  private:
    template <typename Call>
    std::int64_t forEachLink(ProcessId pid, const Call& call) const;

    FileDescriptor root_;
};

} // namespace zenlot
