// Reads what settings files say, by structure: each value with the keys of the blocks that it
// stands in, so that "port" of a block "redis" is not taken for "port" of "server". Pure.
//
//     const auto format = settingsFormatOf("config/app.yml");
//     for (const Setting& setting : readSettings(text, *format)) ...
//
// The readers are lenient: what makes no sense to them says nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

struct Setting {
    std::string path; // the keys in small letters, the outermost first, joined by dots
    std::string value;

    friend bool operator==(const Setting&, const Setting&) = default;
};

enum class SettingsFormat : std::uint8_t {
    braces,      // JSON and its kin, objects in JavaScript
    keywords,    // EDN
    indentation, // YAML
    lines,       // TOML, INI, properties, and what servers read: "port 6379", "listen 8080;"
    elements,    // XML
};

// By the name of the file; none for what is no settings file.
std::optional<SettingsFormat> settingsFormatOf(std::string_view fileName);

// Whether a file with such a name may hold settings, be they written as a program.
bool isSettingsFile(std::string_view fileName);

// Whether it may be a module that exports settings; most modules do something else.
bool isSettingsProgram(std::string_view fileName);

std::vector<Setting> readSettings(std::string_view text, SettingsFormat format);

// The variables in a file as dotenv reads it; of a name that stands there twice the last.
std::vector<Setting> readVariables(std::string_view text);

// How likely the setting is the port that the file's own program listens on: 0 for not at
// all, 3 for a plain "port" at the top or in a block such as "server" or one that is called like
// the program.
int likelihoodOfSetting(const Setting& setting, std::span<const std::string> program = {});

} // namespace zenlot
