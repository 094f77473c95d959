// Which port a server wanted, by precedence and not by likelihood: of everything that may name it,
// what stands highest decides. Pure.
//
//     const auto answer = decidingAnswer(std::move(answers));
//
// A source that names a port that is free ends the question, and so does one that names several of
// which more than one is held: a missing alert is a pity, a wrong one is a harm.
#pragma once

#include "background_monitor/settings_text.h"
#include "background_monitor/written_ports.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

// The highest first.
enum class PortSource : std::uint8_t {
    argument,
    environment,     // a variable that the program asks for
    environmentFile, // the same, set in a file such as .env
    settings,        // a file with settings
    lastUse,         // where the same command listened the last time
    source,          // what stands in the source, or counts there when nothing else is said
    mention,         // of the held ports those that arguments, variables or named files mention
    project,         // of the held ports those that the other files of its project mention
    habit,           // what the tool takes when nobody says otherwise
    spelled,         // of the held ports those that stand as a number in its own files
    manual,          // of the held ports those that its manual or its package tell of
};

struct PortAnswer {
    PortSource source{PortSource::habit};
    std::vector<std::uint16_t> ports;

    friend bool operator==(const PortAnswer&, const PortAnswer&) = default;
};

// Whether somebody has said which port it has to be.
constexpr bool isExplicit(PortSource source) {
    return source < PortSource::mention;
}

// Of the highest source that names a port at all, every port that it names; none when none does.
std::optional<PortAnswer> decidingAnswer(std::span<const PortAnswer> answers);

// What the sites of a program's own sources say, given its environment, the files that add to it,
// and its arguments: answers from `environment`, `environmentFile`, `source` and `argument`. Only
// the likeliest sites that say anything count.
std::vector<PortAnswer> answersOfSites(std::span<const PortSite> sites,
                                       std::span<const Setting> environment,
                                       std::span<const Setting> environmentFile,
                                       std::span<const std::string> arguments);

// What settings say, the likeliest ones. Variables in their values are looked up; `program` are the
// names of the program that reads them.
std::vector<std::uint16_t> portsOfSettings(std::span<const Setting> settings,
                                           std::span<const Setting> variables,
                                           std::span<const std::string> program = {});

} // namespace zenlot
