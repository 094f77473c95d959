#include "ctl/diagnosis.h"

#include "ctl/port_table.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace zenlot {
namespace {

std::string_view nameOf(Finding::State state) {
    switch (state) {
    case Finding::State::works:
        return "works";
    case Finding::State::limited:
        return "limited";
    case Finding::State::missing:
        break;
    }
    return "missing";
}

void appendPadded(std::string& text, std::string_view word, std::size_t width) {
    text += word;
    text.append(width - word.size() + 2, ' ');
}

} // namespace

std::string diagnosisText(std::span<const Finding> findings) {
    constexpr std::size_t kLongestState = 7;
    std::size_t width = 0;
    for (const Finding& finding : findings)
        width = std::max(width, finding.subject.size());
    std::string text;
    for (const Finding& finding : findings) {
        appendPadded(text, finding.subject, width);
        appendPadded(text, nameOf(finding.state), kLongestState);
        text += terminalText(finding.detail) + '\n';
    }
    return text;
}

std::string diagnosisJson(std::span<const Finding> findings) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const Finding& finding : findings)
        array.push_back({{"subject", finding.subject},
                         {"state", nameOf(finding.state)},
                         {"detail", finding.detail}});
    return array.dump(2, ' ', true, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace zenlot
