// Compares what is built with the rules of the house: which rooms see a platform, that no file
// includes from a room that its own does not link, and the picture of the floors. That a room links
// only rooms below it holds since CMake would not know others yet.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>

namespace zenlot {
namespace {

using Names = std::set<std::string>;

using Rooms = std::map<std::string, Names>; // with what each of them links

Rooms builtRooms() {
    Rooms rooms;
    std::ifstream file(ZENLOT_ROOMS_FILE);
    for (std::string line; std::getline(file, line);) {
        const std::size_t colon = line.find(": ");
        std::istringstream links(line.substr(colon + 2));
        Names& names = rooms[line.substr(0, colon)];
        for (std::string link; links >> link;)
            names.insert(link);
    }
    return rooms;
}

std::string targetOf(std::string room) {
    std::ranges::replace(room, '/', '_');
    return "zenlot_" + room;
}

// The room of a target, or of its QML; none for what others made.
std::optional<std::string> roomOf(const std::string& target, const Rooms& rooms) {
    for (const auto& [room, links] : rooms) {
        if (target == targetOf(room) || target == targetOf(room) + "plugin")
            return room;
    }
    return std::nullopt;
}

// A room stands on the floor above the highest that it links.
int floorOf(const std::string& room, const Rooms& rooms) {
    int floor = 0;
    for (const std::string& link : rooms.at(room)) {
        if (const auto below = roomOf(link, rooms))
            floor = std::max(floor, floorOf(*below, rooms) + 1);
    }
    return floor;
}

// The picture: each floor with its rooms, and behind each what it links directly.
std::string drawnFloors(const Rooms& rooms) {
    std::map<int, Names, std::greater<>> floors;
    for (const auto& [room, links] : rooms)
        floors[floorOf(room, rooms)].insert(room);
    std::ostringstream picture;
    for (const auto& [floor, names] : floors) {
        std::string label = std::to_string(floor);
        for (const std::string& room : names) {
            Names below;
            Names ofOthers;
            for (const std::string& link : rooms.at(room)) {
                const auto linked = roomOf(link, rooms);
                (linked ? below : ofOthers).insert(linked.value_or(link));
            }
            std::string line = (std::exchange(label, "") + "   ").substr(0, 3) + room;
            line.resize(std::max<std::size_t>(line.size() + 2, 33), ' ');
            for (const Names& each : {below, ofOthers}) {
                for (const std::string& name : each) {
                    if (line.size() + name.size() > 100) {
                        picture << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
                        line = std::string(33, ' ');
                    }
                    line += name + ' ';
                }
            }
            picture << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
        }
    }
    return picture.str();
}

// What a room sees: itself, what it links, and what those link in turn.
Names visibleFrom(const std::string& target, const Rooms& rooms) {
    Names visible{target};
    for (const auto& [room, links] : rooms) {
        if (targetOf(room) != target)
            continue;
        for (const std::string& link : links)
            visible.merge(visibleFrom(link, rooms));
    }
    return visible;
}

TEST(ArchitectureTest, OnlyProgramsSeeThePlatform) {
    const Rooms rooms = builtRooms();
    EXPECT_GE(rooms.size(), 8U);
    for (const auto& [room, links] : rooms) {
        if (room == "shell/app" || room == "background_monitor" ||
            room.starts_with("platform/linux") || room.ends_with("linux"))
            continue;
        for (const std::string& link : links)
            EXPECT_FALSE(link.starts_with("zenlot_platform_linux") ||
                         link == "zenlot_inventory_linux" || link == "zenlot_inventory_darwin")
                << room << " links " << link;
    }
}

// Whoever adds a link draws it, and sees what the house looks like then.
TEST(ArchitectureTest, ThePictureOfTheFloorsIsTrue) {
    std::ostringstream text;
    text << std::ifstream(ZENLOT_ARCHITECTURE).rdbuf();
    const std::string picture = drawnFloors(builtRooms());
    EXPECT_NE(text.str().find("```\n" + picture + "```\n"), std::string::npos)
        << "docs/architecture.md should have:\n"
        << picture;
}

// What stands between the brackets or quotes of an include; none for any other line.
std::optional<std::string> includedBy(const std::string& line) {
    const std::size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line.compare(hash, 8, "#include") != 0)
        return std::nullopt;
    const std::size_t start = line.find_first_of("\"<", hash);
    const std::size_t end = line.find_first_of("\">", start + 1);
    return start == std::string::npos ? std::nullopt
                                      : std::optional(line.substr(start + 1, end - start - 1));
}

TEST(ArchitectureTest, FilesIncludeOnlyFromRoomsTheirOwnLinks) {
    const auto rooms = builtRooms();
    const std::filesystem::path source(ZENLOT_SOURCE_FOLDER);
    int checked = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(source)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const std::string room =
            std::filesystem::relative(entry.path().parent_path(), source).generic_string();
        // A program's own file stands beside its room and may see the platform.
        if (!rooms.contains(room) || entry.path().filename() == "main.cpp")
            continue;
        const Names visible = visibleFrom(targetOf(room), rooms);
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            const std::string included = includedBy(line).value_or("");
            const std::string from = included.substr(0, included.rfind('/'));
            if (!rooms.contains(from))
                continue;
            ++checked;
            EXPECT_TRUE(visible.contains(targetOf(from)))
                << entry.path() << " includes from " << from;
        }
    }
    EXPECT_GT(checked, 20);
}

} // namespace
} // namespace zenlot
