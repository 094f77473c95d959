// What works on this machine, what does not, and why: a line for each thing that Zenlot needs of
// kernel and desktop. Reports of faults begin with it.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zenlot {

struct Finding {
    enum class State : std::uint8_t { works, limited, missing };

    std::string subject;
    State state{State::works};
    std::string detail; // one sentence; from other programs in part, so as hostile as they are

    friend bool operator==(const Finding&, const Finding&) = default;
};

// One aligned line for each, for a terminal.
std::string diagnosisText(std::span<const Finding> findings);

// A JSON array of {"subject", "state", "detail"}, with the states "works", "limited", "missing".
std::string diagnosisJson(std::span<const Finding> findings);

} // namespace zenlot
