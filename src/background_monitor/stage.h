// The stage that a program runs in, such as "development" and "production", and what files say for
// other stages only. Pure.
//
//     withoutOtherStages("production: { port: 80 },\ndevelopment: { port: 3000 },\n",
//                        "development")      leaves the second line
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace zenlot {

// Variables that name the stage, the most usual first.
inline constexpr std::array<const char*, 12> kStageVariables{"NODE_ENV",
                                                             "APP_ENV",
                                                             "RAILS_ENV",
                                                             "RACK_ENV",
                                                             "FLASK_ENV",
                                                             "DJANGO_ENV",
                                                             "MIX_ENV",
                                                             "GO_ENV",
                                                             "SPRING_PROFILES_ACTIVE",
                                                             "ASPNETCORE_ENVIRONMENT",
                                                             "ENVIRONMENT",
                                                             "ENV"};

inline constexpr std::string_view kUsualStage = "development";

enum class StageOfName : std::uint8_t { none, own, other };

// What the name of a file, a block or a class tells: "application-prod.yml", "config.test.js",
// "Production". None for what names no stage at all.
StageOfName stageOfName(std::string_view name, std::string_view stage);

// The text without the blocks, by braces or by indentation, that count in other stages only.
std::string withoutOtherStages(std::string_view text, std::string_view stage);

} // namespace zenlot
