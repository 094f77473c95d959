// The folder in which the background monitor publishes what it knows. The monitor makes it and
// writes it; the application only reads. A broadcast announces each new content, see
// monitoring/broadcast_names.h.
//
//     ports.json            array of OccupiedPort
//     conflicts.json        array of ConflictRecord
//     conflict-<port>.json  one ConflictRecord
//
// Nothing here fails loudly: where there is no folder there is no location, and a file that can't
// be read whole has no content. A plain value; any thread may use it.
//
//     const SharedContainer container(homeDirectories.stateHome);
//     if (const auto text = SharedContainer::read(container.portsFileURL())) ...
#pragma once

#include <QString>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zenlot {

inline constexpr std::string_view kContainerFolder = "group.dev.quorvane.zenlot";
inline constexpr std::string_view kPortsFile = "ports.json";
inline constexpr std::string_view kConflictsFile = "conflicts.json";
// Locked by the background monitor for as long as it minds the list of ports.
inline constexpr std::string_view kMonitorLockFile = ".monitor.lock";

class SharedContainer {
  public:
    // `stateHome` is the absolute path of the folder for the state of programs. One that is not
    // absolute, such as an empty one, holds no container.
    explicit SharedContainer(const QString& stateHome);

    // The container, none while there is no such folder. Asked afresh on every call, since the
    // monitor may make the folder at any time.
    std::optional<std::filesystem::path> containerURL() const;

    // Where the files are to be found, none without a container.
    std::optional<std::filesystem::path> portsFileURL() const;
    std::optional<std::filesystem::path> conflictsFileURL() const;
    std::optional<std::filesystem::path> conflictFileURL(std::int64_t port) const;

    // Where the monitor's lock lies, none without a container.
    std::optional<std::filesystem::path> lockFileURL() const;

    // The content of a file, none when there is no location or no such file, when it is no regular
    // file, may not be read, is larger than a record file may be (kMaxJsonBytes), or changes its
    // size meanwhile. It never waits for somebody else: a pipe is not a file.
    static std::optional<std::string> read(const std::optional<std::filesystem::path>& file);

  private:
    std::optional<std::filesystem::path> fileURL(std::string_view name) const;

    std::filesystem::path stateHome_;
};

} // namespace zenlot
