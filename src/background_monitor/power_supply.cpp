#include "background_monitor/power_supply.h"

#include <filesystem>
#include <fstream>

namespace zenlot {
namespace {

std::string firstWordOf(const std::filesystem::path& file) {
    std::string word;
    std::ifstream(file) >> word;
    return word;
}

} // namespace

PollPace::Power powerNow(const std::string& folder) {
    PollPace::Power power = PollPace::Power::mains;
    std::error_code error;
    for (std::filesystem::directory_iterator supply(folder, error), end; !error && supply != end;
         supply.increment(error)) {
        const std::filesystem::path& path = supply->path();
        // Mice and keyboards have batteries too.
        if (firstWordOf(path / "scope") == "Device")
            continue;
        if (firstWordOf(path / "type") == "Mains" && firstWordOf(path / "online") == "1")
            return PollPace::Power::mains;
        if (firstWordOf(path / "type") == "Battery" &&
            firstWordOf(path / "status") == "Discharging")
            power = PollPace::Power::battery;
    }
    return power;
}

} // namespace zenlot
