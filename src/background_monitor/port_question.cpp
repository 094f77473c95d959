#include "background_monitor/port_question.h"

#include "background_monitor/port_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace zenlot {
namespace {

constexpr int kLikeliest = 4;

void addAll(std::vector<std::uint16_t>& ports, std::span<const std::uint16_t> more) {
    for (const std::uint16_t port : more) {
        if (port != 0 && std::ranges::find(ports, port) == ports.end())
            ports.push_back(port);
    }
}

// Of several variables that are asked one after the other, the first that is set.
std::optional<std::uint16_t> valueOf(std::span<const std::string> names,
                                     std::span<const Setting> variables) {
    for (const std::string& name : names) {
        const auto variable = std::ranges::find(variables, name, &Setting::path);
        if (variable == variables.end())
            continue;
        if (const auto endpoint = parseEndpoint(variable->value))
            return endpoint->port;
    }
    return std::nullopt;
}

std::vector<std::uint16_t> bareNumbers(std::span<const std::string> arguments) {
    std::vector<std::uint16_t> ports;
    for (const std::string& word : arguments) {
        const auto endpoint = parseEndpoint(word);
        if (endpoint && endpoint->port >= 80 && word.find("://") == std::string::npos)
            addAll(ports, std::array{endpoint->port});
    }
    return ports;
}

std::vector<std::uint16_t> portsOfValue(const std::string& value,
                                        std::span<const Setting> variables) {
    const std::vector<std::string> names = variablesIn(value);
    if (const auto port = valueOf(names, variables))
        return {*port};
    if (!names.empty())
        return portsInValue(value);
    // Several addresses, set apart by blanks, commas or semicolons.
    std::vector<std::uint16_t> ports;
    for (std::size_t place = 0; place < value.size();) {
        const std::size_t end = std::min(value.find_first_of(" ,;\t", place), value.size());
        std::string_view word = std::string_view(value).substr(place, end - place);
        while (!word.empty() && (word.back() == '"' || word.back() == '\''))
            word.remove_suffix(1);
        while (!word.empty() && (word.front() == '"' || word.front() == '\''))
            word.remove_prefix(1);
        if (const auto endpoint = parseEndpoint(word))
            addAll(ports, std::array{endpoint->port});
        place = end + 1;
    }
    // A calculation, a function's argument.
    return ports.empty() && value.find('(') != std::string::npos ? portsInValue(value) : ports;
}

} // namespace

std::optional<PortAnswer> decidingAnswer(std::span<const PortAnswer> answers) {
    std::optional<PortAnswer> deciding;
    for (const PortAnswer& answer : answers) {
        if (answer.ports.empty())
            continue;
        if (!deciding || answer.source < deciding->source)
            deciding = answer;
        else if (answer.source == deciding->source)
            addAll(deciding->ports, answer.ports);
    }
    return deciding;
}

std::vector<PortAnswer> answersOfSites(std::span<const PortSite> sites,
                                       std::span<const Setting> environment,
                                       std::span<const Setting> environmentFile,
                                       std::span<const std::string> arguments) {
    PortAnswer byArgument{PortSource::argument, {}};
    PortAnswer byVariable{PortSource::environment, {}};
    PortAnswer byFile{PortSource::environmentFile, {}};
    PortAnswer byDefault{PortSource::source, {}};
    for (int likelihood = kLikeliest; likelihood > 0; --likelihood) {
        for (const PortSite& site : sites) {
            if (site.likelihood != likelihood)
                continue;
            if (site.readsArguments)
                addAll(byArgument.ports, bareNumbers(arguments));
            if (const auto set = valueOf(site.variables, environment))
                addAll(byVariable.ports, std::array{*set});
            else if (const auto written = valueOf(site.variables, environmentFile))
                addAll(byFile.ports, std::array{*written});
            else
                addAll(byDefault.ports, site.ports);
        }
        const bool isAnswered = !byArgument.ports.empty() || !byVariable.ports.empty() ||
                                !byFile.ports.empty() || !byDefault.ports.empty();
        if (isAnswered)
            break;
    }
    return {byArgument, byVariable, byFile, byDefault};
}

std::vector<std::uint16_t> portsOfSettings(std::span<const Setting> settings,
                                           std::span<const Setting> variables,
                                           std::span<const std::string> program) {
    int best = 1;
    std::vector<std::uint16_t> ports;
    for (const Setting& setting : settings) {
        const int likelihood = likelihoodOfSetting(setting, program);
        if (likelihood < best)
            continue;
        const std::vector<std::uint16_t> said = portsOfValue(setting.value, variables);
        if (said.empty())
            continue;
        if (likelihood > best)
            ports.clear();
        best = likelihood;
        addAll(ports, said);
    }
    return ports;
}

} // namespace zenlot
