#include "background_monitor/stage.h"

#include "background_monitor/port_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <optional>

namespace zenlot {
namespace {

// Names of one stage stand side by side, and those of development first.
constexpr std::array<std::array<std::string_view, 3>, 4> kStages{{
    {"development", "dev", "local"},
    {"production", "prod", "live"},
    {"test", "testing", "ci"},
    {"staging", "stage", "qa"},
}};

std::optional<std::size_t> stageNumber(std::string_view word) {
    for (std::size_t number = 0; number < kStages.size(); ++number) {
        if (isOneOf(word, kStages[number]))
            return number;
    }
    return std::nullopt;
}

bool isLetter(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0;
}

StageOfName stageOfWord(std::string_view word, std::string_view stage) {
    if (word == stage && !word.empty())
        return StageOfName::own;
    const auto number = stageNumber(word);
    if (!number)
        return StageOfName::none;
    return number == stageNumber(stage) ? StageOfName::own : StageOfName::other;
}

// What a line in small letters begins to define, behind what may stand before it:
// `"production": {`, `class TestingConfig(Config):`, `configure :production do`.
std::string_view definedName(std::string_view line) {
    constexpr std::array<std::string_view, 8> kBefore{
        "class ", "configure :", "config.", "exports.", "module.", "- ", "[", "env."};
    for (bool isFurther = true; isFurther;) {
        isFurther = false;
        while (!line.empty() && std::string_view(" \t\"':").find(line.front()) != line.npos)
            line.remove_prefix(1);
        for (const std::string_view before : kBefore) {
            if (line.starts_with(before)) {
                line.remove_prefix(before.size());
                isFurther = true;
            }
        }
    }
    std::size_t end = 0;
    while (end < line.size() && isLetter(line[end]))
        ++end;
    std::string_view name = line.substr(0, end);
    for (const std::string_view ending : {"config", "settings"}) {
        if (name.size() > ending.size() && name.ends_with(ending))
            name.remove_suffix(ending.size());
    }
    std::string_view rest = line.substr(end);
    while (!rest.empty() && std::string_view(" \t\"'").find(rest.front()) != rest.npos)
        rest.remove_prefix(1);
    const bool isDefined =
        !rest.empty() && (std::string_view(":={(]").find(rest.front()) != std::string_view::npos ||
                          rest.starts_with("do"));
    return isDefined ? name : std::string_view();
}

// `if (process.env.NODE_ENV === 'production') {`
std::string_view comparedName(std::string_view line) {
    const std::size_t equals = line.find("==");
    if (line.find("if") > equals || equals == std::string_view::npos ||
        line.find('?') != std::string_view::npos)
        return {};
    const std::size_t quote = line.find_first_of("\"'", equals);
    if (quote == std::string_view::npos)
        return {};
    const std::size_t end = line.find(line[quote], quote + 1);
    return end == std::string_view::npos ? std::string_view()
                                         : line.substr(quote + 1, end - quote - 1);
}

std::size_t indentationOf(std::string_view line) {
    return std::min(line.find_first_not_of(" \t"), line.size());
}

bool isBlankLine(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

// "}", "},", "end"
bool closesBlock(std::string_view line) {
    line.remove_prefix(indentationOf(line));
    return line.starts_with('}') || line.starts_with(']') || line.starts_with("end");
}

} // namespace

StageOfName stageOfName(std::string_view name, std::string_view stage) {
    const std::string small = inSmallLetters(name);
    auto found = StageOfName::none;
    for (std::size_t start = 0; start < small.size();) {
        const std::size_t end = std::min(small.find_first_of("-_.", start), small.size());
        const StageOfName word =
            stageOfWord(std::string_view(small).substr(start, end - start), stage);
        if (word == StageOfName::own)
            return word;
        if (word == StageOfName::other)
            found = word;
        start = end + 1;
    }
    return found;
}

std::string withoutOtherStages(std::string_view text, std::string_view stage) {
    std::string kept;
    kept.reserve(text.size());
    std::optional<std::size_t> skippedBelow; // the indentation of a block for another stage
    forEachLine(text, [&](std::string_view line) {
        if (skippedBelow) {
            const std::size_t indentation = indentationOf(line);
            if (isBlankLine(line) || indentation > *skippedBelow)
                return;
            const bool isEnd = indentation == *skippedBelow && closesBlock(line);
            skippedBelow.reset();
            if (isEnd && line.find("else") == std::string_view::npos)
                return;
        }
        const std::string small = inSmallLetters(line);
        const bool isOther = stageOfWord(definedName(small), stage) == StageOfName::other ||
                             stageOfWord(comparedName(small), stage) == StageOfName::other;
        if (isOther) {
            skippedBelow = indentationOf(line);
            return;
        }
        kept.append(line).push_back('\n');
    });
    return kept;
}

} // namespace zenlot
