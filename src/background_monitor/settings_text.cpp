#include "background_monitor/settings_text.h"

#include "background_monitor/port_text.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kMostSettings = 2000;
constexpr std::size_t kLongestValue = 300;
constexpr std::size_t kDeepest = 32;

constexpr std::array<std::pair<std::string_view, SettingsFormat>, 17> kFormats{{
    {".json", SettingsFormat::braces},
    {".json5", SettingsFormat::braces},
    {".jsonc", SettingsFormat::braces},
    {".hcl", SettingsFormat::braces},
    {".edn", SettingsFormat::keywords},
    {".yaml", SettingsFormat::indentation},
    {".yml", SettingsFormat::indentation},
    {".toml", SettingsFormat::lines},
    {".ini", SettingsFormat::lines},
    {".cfg", SettingsFormat::lines},
    {".cnf", SettingsFormat::lines},
    {".conf", SettingsFormat::lines},
    {".config", SettingsFormat::lines},
    {".properties", SettingsFormat::lines},
    {".xml", SettingsFormat::elements},
    {"Caddyfile", SettingsFormat::lines},
    {"rc", SettingsFormat::lines},
}};

// Keys whose value is a port or an address with one.
constexpr std::array<std::string_view, 27> kPortKeys{
    "port",       "http_port",      "httpport",       "http-port",      "listen_port",
    "listenport", "listen-port",    "server_port",    "serverport",     "server-port",
    "listen",     "bind",           "addr",           "address",        "listen_addr",
    "listenaddr", "listen-addr",    "listen_address", "listen-address", "listenaddress",
    "listener",   "applicationurl", "urls",           "bind_address",   "bind_addr",
    "local_port", "dev_addr"};

// Blocks that say where the program itself listens.
constexpr std::array<std::string_view, 16> kOwnBlocks{
    "connector", "server", "servers",   "http",    "https", "web", "app",     "api",
    "listen",    "main",   "devserver", "service", "serve", "dev", "network", "profiles"};

// Blocks of a second port of the same program.
constexpr std::array<std::string_view, 9> kSecondBlocks{
    "metrics", "admin", "management", "debug", "preview", "hmr", "grpc", "actuator", "health"};

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (isBlank(text.front()) || text.front() == '\n'))
        text.remove_prefix(1);
    while (!text.empty() && (isBlank(text.back()) || text.back() == '\n'))
        text.remove_suffix(1);
    return text;
}

std::string_view unquoted(std::string_view text) {
    text = trimmed(text);
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'' || text.front() == '`') &&
        text.back() == text.front()) {
        text.remove_prefix(1);
        text.remove_suffix(1);
    }
    return text;
}

bool isKeyCharacter(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '_' || character == '-' ||
           character == '.' || character == '$' || character == '@';
}

class Settings {
  public:
    void push(std::string_view key) { blocks_.push_back(inSmallLetters(unquoted(key))); }
    void pop() {
        if (!blocks_.empty())
            blocks_.pop_back();
    }
    void clear() { blocks_.clear(); }
    std::size_t depth() const { return blocks_.size(); }

    void add(std::string_view key, std::string_view value) {
        value = unquoted(value);
        if (all.size() >= kMostSettings || value.empty() || value.size() > kLongestValue ||
            blocks_.size() > kDeepest)
            return;
        std::string path;
        for (const std::string& block : blocks_) {
            if (!block.empty())
                path += block + ".";
        }
        path += inSmallLetters(unquoted(key));
        while (path.ends_with('.'))
            path.pop_back();
        all.push_back({std::move(path), std::string(value)});
    }

    std::vector<Setting> all;

  private:
    std::vector<std::string> blocks_;
};

// Walks over text with nested braces; a value goes up to the end of its line or of its block.
class BracesReader {
  public:
    explicit BracesReader(std::string_view text) : text_(text) {}

    std::vector<Setting> read() {
        while (place_ < text_.size())
            step();
        return std::move(settings_.all);
    }

  private:
    void step() {
        const char character = text_[place_];
        if (startsComment()) {
            skipComment();
        } else if (character == '{' || character == '[') {
            settings_.push(std::exchange(pending_, {}));
            word_ = {};
            ++place_;
        } else if (character == '}' || character == ']') {
            addBareWord();
            settings_.pop();
            ++place_;
        } else if (character == '"' || character == '\'' || character == '`') {
            word_ = quoted();
        } else if (isKeyCharacter(character)) {
            const std::size_t start = place_;
            while (place_ < text_.size() && isKeyCharacter(text_[place_]))
                ++place_;
            word_ = text_.substr(start, place_ - start);
        } else if ((character == ':' || character == '=') && !word_.empty()) {
            ++place_;
            takeValue(std::exchange(word_, {}));
        } else {
            if (character == ',')
                addBareWord();
            ++place_;
        }
    }

    // An entry of a list.
    void addBareWord() {
        if (!word_.empty() && settings_.depth() > 0)
            settings_.add({}, word_);
        word_ = {};
    }

    bool startsComment() const {
        const std::string_view rest = text_.substr(place_, 2);
        return rest == "//" || rest == "/*" ||
               (rest.front() == '#' && (place_ == 0 || text_[place_ - 1] == '\n'));
    }

    void skipComment() {
        const bool isBlock = text_.substr(place_, 2) == "/*";
        const std::size_t end = text_.find(isBlock ? "*/" : "\n", place_);
        place_ = end == std::string_view::npos ? text_.size() : end + (isBlock ? 2 : 1);
    }

    std::string_view quoted() {
        const char quote = text_[place_];
        const std::size_t start = ++place_;
        while (place_ < text_.size() && text_[place_] != quote && text_[place_] != '\n')
            place_ += text_[place_] == '\\' ? 2 : 1;
        place_ = std::min(place_, text_.size());
        const std::string_view word = text_.substr(start, place_ - start);
        place_ = std::min(place_ + 1, text_.size());
        return word;
    }

    void takeValue(std::string_view key) {
        while (place_ < text_.size() && isBlank(text_[place_]))
            ++place_;
        if (place_ >= text_.size())
            return;
        const char first = text_[place_];
        if (first == '{' || first == '[') {
            pending_ = key;
            return;
        }
        const std::size_t start = place_;
        int depth = 0;
        for (; place_ < text_.size(); ++place_) {
            const char character = text_[place_];
            if (character == '"' || character == '\'' || character == '`') {
                quoted();
                --place_;
                continue;
            }
            depth += character == '(' ? 1 : 0;
            if (character == '{') { // a function or an object that is handed over
                // `hmr: host ? { port: 81 } : undefined`
                if (text_.substr(start, place_ - start).find('?') != std::string_view::npos)
                    pending_ = key;
                break;
            }
            if (depth == 0 && (character == ',' || character == ';' || character == '}' ||
                               character == ']' || character == '\n'))
                break;
            if (character == ')' && --depth < 0)
                break;
        }
        settings_.add(key, text_.substr(start, place_ - start));
    }

    std::string_view text_;
    std::size_t place_{0};
    std::string_view word_;
    std::string_view pending_;
    Settings settings_;
};

// EDN's `{:http {:port 4990}}` as `{, http: {, port: 4990}}`.
std::string withColonsBehind(std::string_view text) {
    std::string braces;
    for (std::size_t place = 0; place < text.size();) {
        const bool isKeyword = text[place] == ':' && place + 1 < text.size() &&
                               isKeyCharacter(text[place + 1]) &&
                               (place == 0 || !isKeyCharacter(text[place - 1]));
        if (!isKeyword) {
            braces += text[place++];
            continue;
        }
        std::size_t end = ++place;
        while (end < text.size() && (isKeyCharacter(text[end]) || text[end] == '/'))
            ++end;
        braces += ", " + std::string(text.substr(place, end - place)) + ": ";
        place = end;
    }
    return braces;
}

std::string_view withoutComment(std::string_view line, std::string_view mark) {
    const std::size_t comment = line.find(mark);
    const bool isComment =
        comment == 0 || (comment != std::string_view::npos &&
                         (isBlank(line[comment - 1]) || line[comment - 1] == ';'));
    return isComment ? line.substr(0, comment) : line;
}

// "&web 4990" gives the value a name, and "*web" stands for it.
std::string_view resolved(std::string_view value,
                          std::map<std::string_view, std::string_view>& anchors) {
    if (value.starts_with('*')) {
        const auto anchor = anchors.find(value.substr(1));
        return anchor == anchors.end() ? value : anchor->second;
    }
    if (!value.starts_with('&'))
        return value;
    const std::size_t blank = std::min(value.find(' '), value.size());
    return anchors[value.substr(1, blank - 1)] = trimmed(value.substr(blank));
}

std::vector<Setting> readIndented(std::string_view text) {
    Settings settings;
    std::map<std::string_view, std::string_view> anchors;
    std::vector<std::size_t> indentations;
    forEachLine(text, [&](std::string_view line) {
        line = withoutComment(line, "#");
        std::size_t indentation = 0;
        while (indentation < line.size() && (line[indentation] == ' ' || line[indentation] == '-'))
            ++indentation;
        // The dash of a list belongs to the indentation of what follows it.
        const bool isEntry =
            indentation > 0 && line.substr(0, indentation).find('-') != std::string_view::npos;
        const std::string_view content = trimmed(line.substr(indentation));
        if (content.empty())
            return;
        const std::size_t from = isEntry ? line.find('-') + 1 : indentation;
        while (!indentations.empty() && indentations.back() >= from) {
            indentations.pop_back();
            settings.pop();
        }
        std::size_t colon = content.find(": ");
        if (colon == std::string_view::npos && content.ends_with(':'))
            colon = content.size() - 1;
        if (colon == std::string_view::npos) {
            if (isEntry)
                settings.add({}, content);
            return;
        }
        const std::string_view value = resolved(trimmed(content.substr(colon + 1)), anchors);
        const std::string_view key = content.substr(0, colon);
        if (value.empty() || value == "|" || value == ">") {
            settings.push(key);
            indentations.push_back(isEntry ? from : indentation);
        } else if (value.starts_with('{') || value.starts_with('[')) {
            for (const Setting& setting : BracesReader(value).read())
                settings.add(setting.path.empty() ? std::string(key)
                                                  : std::string(key) + "." + setting.path,
                             setting.value);
        } else {
            settings.add(key, value);
        }
    });
    return std::move(settings.all);
}

std::vector<Setting> readLines(std::string_view text) {
    Settings settings;
    forEachLine(text, [&settings](std::string_view line) {
        for (const std::string_view mark : {"#", ";", "!", "//"})
            line = withoutComment(line, mark);
        line = trimmed(line);
        while (line.ends_with(';'))
            line = trimmed(line.substr(0, line.size() - 1));
        if (line.starts_with('[') && line.ends_with(']')) {
            settings.clear();
            line.remove_prefix(line.find_first_not_of('[') == std::string_view::npos
                                   ? line.size()
                                   : line.find_first_not_of('['));
            settings.push(line.substr(0, line.find(']')));
            return;
        }
        if (line.ends_with('{')) {
            const std::string_view block = trimmed(line.substr(0, line.size() - 1));
            // A site of Caddy is called by its address.
            if (const auto endpoint = parseEndpoint(block.substr(0, block.find_first_of(" ,"))))
                settings.add("listen", block.substr(0, block.find_first_of(" ,")));
            settings.push(block.substr(0, block.find(' ')));
            return;
        }
        if (line == "}") {
            settings.pop();
            return;
        }
        const std::size_t end = line.find_first_of("=: \t");
        if (line.empty() || end == std::string_view::npos)
            return;
        if (end == 0) { // an address that stands alone
            if (parseEndpoint(line))
                settings.add("listen", line);
            return;
        }
        std::string_view value = trimmed(line.substr(end));
        while (!value.empty() && (value.front() == '=' || value.front() == ':'))
            value = trimmed(value.substr(1));
        settings.add(line.substr(0, end), value);
    });
    return std::move(settings.all);
}

// `<server port="80">` is "server.port", and so is `<server><port>80</port></server>`.
std::vector<Setting> readElements(std::string_view text) {
    Settings settings;
    std::string_view element;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text.substr(place, 4) == "<!--") {
            place = std::min(text.find("-->", place), text.size() - 1);
        } else if (text.substr(place, 2) == "</" || text.substr(place, 2) == "/>") {
            settings.pop();
        } else if (text[place] == '<') {
            std::size_t end = ++place;
            while (end < text.size() && isKeyCharacter(text[end]))
                ++end;
            element = text.substr(place, end - place);
            if (!element.empty())
                settings.push(element);
        } else if (text[place] == '>') {
            const std::size_t end = std::min(text.find('<', place), text.size());
            settings.add({}, text.substr(place + 1, end - place - 1));
        } else if (text[place] == '=' && place + 1 < text.size() && text[place + 1] == '"') {
            std::size_t start = place;
            while (start > 0 && isKeyCharacter(text[start - 1]))
                --start;
            const std::size_t end = std::min(text.find('"', place + 2), text.size());
            settings.add(text.substr(start, place - start),
                         text.substr(place + 2, end - place - 2));
            place = end;
        }
    }
    return std::move(settings.all);
}

} // namespace

std::optional<SettingsFormat> settingsFormatOf(std::string_view fileName) {
    for (const auto& [ending, format] : kFormats) {
        if (fileName.ends_with(ending))
            return format;
    }
    return std::nullopt;
}

bool isSettingsFile(std::string_view fileName) {
    return settingsFormatOf(fileName) || fileName.ends_with(".lua");
}

bool isSettingsProgram(std::string_view fileName) {
    constexpr std::array<std::string_view, 6> kEndings{".js", ".mjs", ".cjs",
                                                       ".ts", ".mts", ".cts"};
    return std::ranges::any_of(
        kEndings, [fileName](std::string_view ending) { return fileName.ends_with(ending); });
}

std::vector<Setting> readSettings(std::string_view text, SettingsFormat format) {
    switch (format) {
    case SettingsFormat::braces:
        return BracesReader(text).read();
    case SettingsFormat::keywords:
        return BracesReader(withColonsBehind(text)).read();
    case SettingsFormat::indentation:
        return readIndented(text);
    case SettingsFormat::lines:
        return readLines(text);
    case SettingsFormat::elements:
        return readElements(text);
    }
    return {};
}

std::vector<Setting> readVariables(std::string_view text) {
    std::vector<Setting> variables;
    forEachLine(text, [&variables](std::string_view line) {
        line = trimmed(line);
        if (line.starts_with("export "))
            line = trimmed(line.substr(7));
        const std::size_t equals = line.find('=');
        if (line.starts_with('#') || equals == std::string_view::npos || equals == 0)
            return;
        const std::string name(trimmed(line.substr(0, equals)));
        std::string_view value = trimmed(line.substr(equals + 1));
        const bool isQuoted = !value.empty() && (value.front() == '"' || value.front() == '\'');
        if (isQuoted)
            value = value.substr(1, value.find(value.front(), 1) - 1);
        else
            value = trimmed(value.substr(0, value.find('#')));
        std::erase_if(variables, [&name](const Setting& other) { return other.path == name; });
        if (variables.size() < kMostSettings && value.size() <= kLongestValue)
            variables.push_back({name, std::string(value)});
    });
    return variables;
}

int likelihoodOfSetting(const Setting& setting, std::span<const std::string> program) {
    const std::string_view path = setting.path;
    const std::size_t dot = path.rfind('.');
    const std::string_view key = path.substr(dot + 1);
    // What has no scheme may be listened on under this name, too.
    const bool isAddress = key == "url" && setting.value.find("://") == std::string::npos;
    if (!isAddress && !isOneOf(key, kPortKeys))
        return 0;
    // A database's own block is called like others' blocks about it.
    if (dot != std::string_view::npos &&
        std::ranges::find(program, path.substr(0, dot)) != program.end())
        return 3;
    if (speaksOfOthers(path))
        return 0;
    int likelihood = isAddress || key == "address" || key == "addr" || key == "bind" ? 2 : 3;
    for (std::string_view rest = dot == std::string_view::npos ? "" : path.substr(0, dot);
         !rest.empty();) {
        const std::string_view block = rest.substr(0, rest.find('.'));
        rest.remove_prefix(std::min(rest.size(), block.size() + 1));
        if (isOneOf(block, kSecondBlocks))
            return 1;
        if (!isOneOf(block, kOwnBlocks))
            likelihood = std::min(likelihood, 2);
    }
    return likelihood;
}

} // namespace zenlot
