#include "inventory/process_names.h"

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>

namespace zenlot {
namespace {

constexpr std::string_view kAppSuffix = ".app";
constexpr std::string_view kFrameworkSuffix = ".framework";
constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD"; // U+FFFD

// No system opens a longer path, so none needs to be tried: a command line may be megabytes long.
constexpr std::size_t kLongestPathBytes = 4096;

// Independent of the locale, unlike their namesakes in <cctype>.
constexpr bool isAscii(char character) {
    return static_cast<unsigned char>(character) < 0x80;
}
constexpr bool isLower(char character) {
    return character >= 'a' && character <= 'z';
}
constexpr bool isUpper(char character) {
    return character >= 'A' && character <= 'Z';
}

bool isAllAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isAscii);
}

// The length in bytes of the first character as people see it, with the marks that belong to it;
// 0 when that can't be told.
std::size_t firstCharacterLength(std::string_view text) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), error));
    if (U_FAILURE(error))
        return 0;
    UText source = UTEXT_INITIALIZER;
    utext_openUTF8(&source, text.data(), static_cast<std::int64_t>(text.size()), &error);
    const std::unique_ptr<UText, decltype(&utext_close)> closing(&source, utext_close);
    characters->setText(&source, error);
    if (U_FAILURE(error))
        return 0;
    const std::int32_t end = characters->next();
    return end == icu::BreakIterator::DONE ? 0 : static_cast<std::size_t>(end);
}

std::string withUpperCaseFirst(std::string_view text) {
    if (text.empty())
        return {};
    // What follows an ASCII letter may still combine with it, unless it is ASCII too.
    if (isAllAscii(text.substr(0, 2))) {
        std::string result(text);
        if (isLower(result.front()))
            result.front() = static_cast<char>(result.front() - 'a' + 'A');
        return result;
    }
    if (text.size() > std::size_t{std::numeric_limits<std::int32_t>::max()})
        return std::string(text);
    const std::size_t length = firstCharacterLength(text);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    UErrorCode error = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper("", 0, icu::StringPiece(text.data(), static_cast<int32_t>(length)),
                              sink, nullptr, error);
    if (U_FAILURE(error))
        return std::string(text);
    result += text.substr(length);
    return result;
}

} // namespace

std::string processNameOf(std::string_view executablePath) {
    return std::string(executablePath.substr(executablePath.rfind('/') + 1));
}

std::string makeDisplayName(std::string_view executablePath, std::string_view processName) {
    for (std::string_view path = executablePath; !path.empty();) {
        const std::size_t slash = path.rfind('/');
        std::string_view component = path.substr(slash + 1);
        for (const std::string_view suffix : {kAppSuffix, kFrameworkSuffix}) {
            if (component.ends_with(suffix)) {
                component.remove_suffix(suffix.size());
                return splitCamelCase(component);
            }
        }
        path = slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
    }
    return splitCamelCase(withUpperCaseFirst(processName));
}

// A space goes between a lower-case and an upper-case letter and, in a run of upper-case letters,
// before the one that a lower-case letter follows. The first rule never parts two letters that the
// second looks at, so one pass does for both.
std::string splitCamelCase(std::string_view text) {
    std::string spaced;
    spaced.reserve(text.size() + text.size() / 4);
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (index > 0 && isUpper(text[index])) {
            const bool isFollowedByLower = index + 1 < text.size() && isLower(text[index + 1]);
            if (isLower(text[index - 1]) || (isUpper(text[index - 1]) && isFollowedByLower))
                spaced += ' ';
        }
        spaced += text[index];
    }
    return spaced;
}

std::optional<std::string> enclosingAppBundlePath(std::string_view executablePath) {
    std::string_view path = executablePath;
    while (true) {
        while (path.ends_with('/'))
            path.remove_suffix(1);
        // Neither the root nor a lone relative name lies in a bundle.
        const std::size_t slash = path.rfind('/');
        if (slash == std::string_view::npos)
            return std::nullopt;
        if (path.ends_with(kAppSuffix))
            return std::string(path);
        path = path.substr(0, slash);
    }
}

bool isExistingFile(const std::string& path) {
    // A zero byte would end the path early, at another file.
    if (path.find('\0') != std::string::npos)
        return false;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::string resolveCommandExecutable(std::string_view command, const FileQuery& isFile) {
    const std::string_view firstPiece = command.substr(0, command.find(' '));
    if (!command.starts_with('/'))
        return std::string(firstPiece);
    // Words joined by single spaces are what stands in the command line.
    for (std::size_t end = firstPiece.size(); end < command.size();) {
        end = std::min(command.find(' ', end + 1), command.size());
        if (end > kLongestPathBytes)
            break;
        std::string candidate(command.substr(0, end));
        if (isFile(candidate))
            return candidate;
    }
    return std::string(firstPiece);
}

std::string sanitizedUtf8(std::string_view bytes) {
    std::string text(bytes);
    if (isAllAscii(bytes))
        return text;
    const auto* const source = reinterpret_cast<const std::uint8_t*>(bytes.data());
    text.clear();
    for (std::size_t next = 0; next < bytes.size();) {
        const std::size_t start = next;
        UChar32 codePoint{0};
        U8_NEXT(source, next, bytes.size(), codePoint);
        text += codePoint < 0 ? kReplacementCharacter : bytes.substr(start, next - start);
    }
    return text;
}

} // namespace zenlot
