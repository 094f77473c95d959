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

// Calls back with every folder below the root and its number, until the call returns false.
template <typename Call>
void forEachGroup(const fs::path& top, Call&& call) {
    std::error_code error;
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
            return;
        if (!call(folder->path(), status.st_ino))
            return;
    }
}

} // namespace

std::string unifiedControlGroups(const std::string& root) {
    std::error_code error;
    const fs::path unified = fs::path(root) / "unified";
    return fs::is_directory(unified, error) ? unified.string() : root;
}

std::optional<ControlGroup> findControlGroup(std::uint64_t id, const std::string& root) {
    std::optional<ControlGroup> found;
    forEachGroup(unifiedControlGroups(root), [&](const fs::path& folder, std::uint64_t number) {
        if (number == id)
            found = groupAt(folder);
        return !found;
    });
    return found;
}

std::map<std::uint64_t, std::string> controlGroupPaths(const std::string& unifiedRoot) {
    std::map<std::uint64_t, std::string> paths;
    forEachGroup(unifiedRoot, [&](const fs::path& folder, std::uint64_t number) {
        paths.emplace(number, folder.string().substr(unifiedRoot.size()));
        return true;
    });
    return paths;
}

} // namespace zenlot
