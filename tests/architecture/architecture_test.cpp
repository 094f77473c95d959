// Holds the plan of the house and compares it with what is built: which room may link which, and
// that no file includes from a room that its own does not link.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>

namespace zenlot {
namespace {

using Names = std::set<std::string>;

// Each room with everything that it may link, from the ground floor up. Rooms on one floor do not
// know each other; only the programs on top see the rooms of a platform.
const std::map<std::string, Names> kPlan{
    {"posix", {}},
    {"inventory",
     {"zenlot_posix", "nlohmann_json::nlohmann_json", "ICU::uc", "PkgConfig::Uuid",
      "Threads::Threads"}},
    {"inventory/linux", {"zenlot_inventory"}},
    {"inventory/darwin", {"zenlot_inventory"}},
    {"text", {"Qt6::Core"}},
    {"workers", {"Qt6::Core"}},
    {"localization", {"Qt6::Core"}},
    {"platform", {"Qt6::Core"}},
    {"platform/linux",
     {"zenlot_platform", "zenlot_text", "zenlot_workers", "nlohmann_json::nlohmann_json",
      "PkgConfig::Libplist", "Qt6::DBus"}},
    {"platform/linux/windowsystem",
     {"zenlot_platform", "zenlot_platform_linux", "PkgConfig::Xcb", "Qt6::DBus", "Qt6::Gui"}},
    {"platform/linux/statusarea",
     {"zenlot_platform", "zenlot_platform_linux", "zenlot_platform_linux_windowsystem",
      "PkgConfig::Xcb", "Qt6::DBus", "Qt6::Svg", "Qt6::Widgets"}},
    {"updates", {"Qt6::Core", "zenlot_workers", "Qt6::Network"}},
    {"settings", {"zenlot_platform", "zenlot_text", "Qt6::Core"}},
    {"monitoring",
     {"zenlot_inventory", "zenlot_platform", "zenlot_settings", "Qt6::Core", "zenlot_workers",
      "QCoro6::Core"}},
    {"bindwatch", {"zenlot_posix"}},
    {"bindwatch/kernel", {"zenlot_bindwatch", "PkgConfig::Libbpf"}},
    {"background_monitor",
     {"zenlot_bindwatch", "zenlot_inventory", "zenlot_inventory_linux", "zenlot_monitoring",
      "zenlot_platform", "zenlot_platform_linux", "zenlot_settings", "PkgConfig::Systemd",
      "Qt6::Core", "Qt6::DBus"}},
    {"shell/style", {"Qt6::Quick", "Qt6::Svg"}},
    {"settings/window",
     {"zenlot_bindwatch", "zenlot_monitoring", "zenlot_platform", "zenlot_settings",
      "zenlot_shell_style", "zenlot_text", "Qt6::Quick"}},
    {"shell/processicon",
     {"zenlot_platform", "zenlot_shell_style", "zenlot_workers", "Qt6::Quick"}},
    {"shell/backgrounditems", {"zenlot_platform", "zenlot_shell_style", "Qt6::Quick"}},
    {"shell/inspector",
     {"zenlot_inventory", "zenlot_platform", "zenlot_shell_processicon", "zenlot_shell_style",
      "zenlot_text", "Qt6::Quick", "zenlot_workers"}},
    {"shell/logviewer",
     {"zenlot_settings", "zenlot_shell_style", "zenlot_text", "Qt6::Quick", "zenlot_workers"}},
    {"shell/model", {"Qt6::Core"}},
    {"shell/intents", {"zenlot_inventory", "zenlot_text", "Qt6::Core"}},
    {"shell/mainwindow",
     {"zenlot_inventory", "zenlot_platform", "zenlot_settings", "zenlot_monitoring",
      "zenlot_shell_model", "zenlot_shell_processicon", "zenlot_shell_style", "zenlot_text",
      "zenlot_workers", "Qt6::Quick", "QCoro6::Core", "ICU::uc"}},
    {"shell/menubar",
     {"zenlot_inventory", "zenlot_platform", "zenlot_settings", "zenlot_monitoring",
      "zenlot_shell_model", "zenlot_shell_style", "zenlot_text", "ICU::uc", "Qt6::Widgets"}},
    {"shell/onboarding",
     {"zenlot_monitoring", "zenlot_platform", "zenlot_settings", "zenlot_shell_style",
      "Qt6::Multimedia", "Qt6::Quick"}},
    {"shell/updater", {"zenlot_platform", "zenlot_shell_style", "zenlot_updates", "Qt6::Quick"}},
    {"shell/app",
     {"zenlot_inventory",
      "zenlot_inventory_linux",
      "zenlot_platform",
      "zenlot_platform_linux",
      "zenlot_platform_linux_windowsystem",
      "zenlot_platform_linux_statusarea",
      "zenlot_shell_menubar",
      "zenlot_settings",
      "zenlot_settings_window",
      "zenlot_settings_windowplugin",
      "zenlot_shell_logviewer",
      "zenlot_shell_logviewerplugin",
      "zenlot_shell_onboarding",
      "zenlot_shell_onboardingplugin",
      "zenlot_monitoring",
      "zenlot_shell_backgrounditems",
      "zenlot_shell_backgrounditemsplugin",
      "zenlot_shell_inspector",
      "zenlot_shell_inspectorplugin",
      "zenlot_shell_mainwindow",
      "zenlot_shell_mainwindowplugin",
      "zenlot_shell_model",
      "zenlot_shell_processicon",
      "zenlot_shell_processiconplugin",
      "zenlot_shell_styleplugin",
      "zenlot_shell_updater",
      "zenlot_shell_updaterplugin",
      "zenlot_updates",
      "zenlot_workers",
      "QCoro6::Core",
      "Qt6::DBus",
      "Qt6::Qml",
      "Qt6::Quick"}},
    {"ctl", {"zenlot_inventory", "ICU::uc"}},
    {"ctl_linux", {"zenlot_ctl", "zenlot_inventory_linux", "PkgConfig::Systemd"}},
    {"automation",
     {"zenlot_inventory", "zenlot_monitoring", "zenlot_shell_intents", "zenlot_text", "Qt6::DBus",
      "zenlot_workers"}},
};

std::map<std::string, Names> builtRooms() {
    std::map<std::string, Names> rooms;
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

// What a room sees: itself, what it links, and what those link in turn.
Names visibleFrom(const std::string& target, const std::map<std::string, Names>& rooms) {
    Names visible{target};
    for (const auto& [room, links] : rooms) {
        if (targetOf(room) != target)
            continue;
        for (const std::string& link : links)
            visible.merge(visibleFrom(link, rooms));
    }
    return visible;
}

TEST(ArchitectureTest, RoomsLinkOnlyWhatThePlanAllows) {
    const auto rooms = builtRooms();
    EXPECT_GE(rooms.size(), 8U);
    for (const auto& [room, links] : rooms) {
        ASSERT_TRUE(kPlan.contains(room)) << room << " is not in the plan";
        for (const std::string& link : links)
            EXPECT_TRUE(kPlan.at(room).contains(link)) << room << " links " << link;
    }
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

TEST(ArchitectureTest, InventoryKnowsNoToolkit) {
    const std::filesystem::path source(ZENLOT_SOURCE_FOLDER);
    for (const char* folder : {"inventory", "ctl"}) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(source / folder)) {
            std::ifstream file(entry.path());
            for (std::string line; std::getline(file, line);)
                EXPECT_FALSE(includedBy(line).value_or("").starts_with('Q')) << entry.path();
        }
    }
}

} // namespace
} // namespace zenlot
