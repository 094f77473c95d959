#include "inventory/origin/project_finder.h"

#include "inventory/process_names.h"
#include "posix/regular_file.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, 10> kManifests{
    "package.json", "pyproject.toml",   "Cargo.toml",    "go.mod",  "pom.xml",
    "build.gradle", "build.gradle.kts", "composer.json", "mix.exs", "Gemfile"};
constexpr std::size_t kLargestFile = 4096;
constexpr int kMostFolders = 64;
constexpr std::size_t kShownCommitDigits = 8;

bool isThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// Without the line break at its end; empty when it can't be read.
std::string firstLine(const fs::path& path) {
    const auto file = openRegularFile(path.c_str());
    std::array<char, kLargestFile> buffer;
    const auto length = file ? readFully(file->descriptor, buffer) : std::nullopt;
    const std::string_view text(buffer.data(), length.value_or(0));
    return std::string(text.substr(0, text.find_first_of("\r\n")));
}

bool hasManifest(const fs::path& folder) {
    if (std::ranges::any_of(kManifests, [&](const char* name) { return isThere(folder / name); }))
        return true;
    // Projects of one kind are called as they please.
    std::error_code error;
    constexpr int kMostEntries = 500;
    int entries = 0;
    for (fs::directory_iterator entry(folder, error), end;
         !error && entry != end && ++entries < kMostEntries; entry.increment(error)) {
        if (entry->path().extension() == ".csproj")
            return true;
    }
    return false;
}

// A worktree has a file in place of the folder, which says where the rest is.
fs::path gitFolder(const fs::path& folder) {
    const fs::path git = folder / ".git";
    std::error_code error;
    if (fs::is_directory(git, error))
        return git;
    constexpr std::string_view kPrefix = "gitdir: ";
    const std::string line = firstLine(git);
    if (!line.starts_with(kPrefix))
        return {};
    return (folder / line.substr(kPrefix.size())).lexically_normal();
}

void readHead(Project& project, const fs::path& git) {
    constexpr std::string_view kReference = "ref: ";
    constexpr std::string_view kBranch = "refs/heads/";
    const std::string line = firstLine(git / "HEAD");
    if (line.starts_with(kReference)) {
        std::string_view reference = std::string_view(line).substr(kReference.size());
        if (reference.starts_with(kBranch))
            reference.remove_prefix(kBranch.size());
        project.head = Project::Head::branch;
        project.branch = sanitizedUtf8(reference);
    } else if (line.size() >= kShownCommitDigits &&
               line.find_first_not_of("0123456789abcdef") == std::string::npos) {
        project.head = Project::Head::detached;
        project.branch = line.substr(0, kShownCommitDigits);
    }
}

} // namespace

std::optional<Project> findProject(const std::string& workingDirectory) {
    if (!workingDirectory.starts_with('/'))
        return std::nullopt;
    fs::path manifestFolder;
    fs::path folder = workingDirectory;
    for (int count = 0; count < kMostFolders && folder.has_relative_path();
         ++count, folder = folder.parent_path()) {
        if (manifestFolder.empty() && hasManifest(folder))
            manifestFolder = folder;
        if (!isThere(folder / ".git"))
            continue;
        Project project;
        const bool isPart = !manifestFolder.empty() && manifestFolder != folder;
        const fs::path name =
            isPart ? manifestFolder.lexically_relative(folder.parent_path()) : folder.filename();
        project.name = sanitizedUtf8(name.string());
        project.folder = sanitizedUtf8((isPart ? manifestFolder : folder).string());
        if (const fs::path git = gitFolder(folder); !git.empty())
            readHead(project, git);
        return project;
    }
    if (manifestFolder.empty())
        return std::nullopt;
    Project project;
    project.name = sanitizedUtf8(manifestFolder.filename().string());
    project.folder = sanitizedUtf8(manifestFolder.string());
    return project;
}

Project deletedProject(const std::string& workingDirectory) {
    Project project;
    project.name = sanitizedUtf8(processNameOf(workingDirectory));
    project.folder = sanitizedUtf8(workingDirectory);
    project.isDeleted = true;
    return project;
}

} // namespace zenlot
