#include "inventory/linux/control_group.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr int kMostFolders = 5000;

ControlGroup groupAt(const fs::path& folder) {
    ControlGroup group{folder.filename().string(), {}};
    std::ifstream processes(folder / "cgroup.procs");
    for (ProcessId pid = 0; processes >> pid;)
        group.processes.push_back(pid);
    return group;
}

} // namespace

std::optional<ControlGroup> findControlGroup(std::uint64_t id, const std::string& root) {
    // Older systems have the unified hierarchy beside the others.
    const fs::path unified = fs::path(root) / "unified";
    std::error_code error;
    const fs::path top = fs::is_directory(unified, error) ? unified : fs::path(root);
    int folders = 0;
    fs::recursive_directory_iterator folder(top, fs::directory_options::skip_permission_denied,
                                            error);
    for (const fs::recursive_directory_iterator end; !error && folder != end;
         folder.increment(error)) {
        std::error_code ignored;
        if (!folder->is_directory(ignored))
            continue;
        struct stat status {};
        if (++folders > kMostFolders || ::stat(folder->path().c_str(), &status) != 0)
            return std::nullopt;
        if (status.st_ino == id)
            return groupAt(folder->path());
    }
    return std::nullopt;
}

} // namespace zenlot
