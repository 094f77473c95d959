#include "background_monitor/java_archive.h"

#include "background_monitor/settings_text.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>

namespace zenlot {
namespace {

constexpr int kMostEntries = 20'000;
constexpr std::size_t kMostSettings = 16;
constexpr std::size_t kLargestSettings = std::size_t{128} * 1024;
constexpr std::size_t kMostOfLibraries = 8192;
constexpr std::size_t kLongestEntryName = 256;

struct CloseArchive {
    void operator()(void* archive) const { ::unzClose(archive); }
};

// Where a program's own settings lie; those of the libraries in it lie deeper.
bool isOwnSettings(std::string_view name) {
    constexpr std::array<std::string_view, 4> kFolders{"BOOT-INF/classes/", "WEB-INF/classes/",
                                                       "META-INF/microprofile-", "config/"};
    for (const std::string_view folder : kFolders) {
        if (name.starts_with(folder)) {
            name.remove_prefix(folder.size());
            break;
        }
    }
    return name.find('/') == std::string_view::npos && settingsFormatOf(name) &&
           !name.ends_with(".xml");
}

} // namespace

JavaArchive readJavaArchive(const FileDescriptor& file) {
    JavaArchive archive;
    // The reader takes a path; this one is the file that was opened with care.
    const std::string path = "/proc/self/fd/" + std::to_string(file.get());
    const std::unique_ptr<std::remove_pointer_t<unzFile>, CloseArchive> reader(
        file ? ::unzOpen64(path.c_str()) : nullptr);
    if (!reader)
        return archive;
    int entries = 0;
    for (int state = ::unzGoToFirstFile(reader.get());
         state == UNZ_OK && ++entries <= kMostEntries && archive.settings.size() < kMostSettings;
         state = ::unzGoToNextFile(reader.get())) {
        unz_file_info64 info{};
        std::array<char, kLongestEntryName> name{};
        if (::unzGetCurrentFileInfo64(reader.get(), &info, name.data(), name.size() - 1, nullptr, 0,
                                      nullptr, 0) != UNZ_OK)
            continue;
        const std::string_view entry = name.data();
        if (entry.ends_with(".jar") && archive.libraries.size() < kMostOfLibraries)
            archive.libraries += std::string(entry.substr(entry.rfind('/') + 1)) + " ";
        if (info.uncompressed_size > kLargestSettings || !isOwnSettings(entry) ||
            ::unzOpenCurrentFile(reader.get()) != UNZ_OK)
            continue;
        // What it says of its size may be wrong.
        std::string text(kLargestSettings, '\0');
        const int length =
            ::unzReadCurrentFile(reader.get(), text.data(), static_cast<unsigned>(text.size()));
        ::unzCloseCurrentFile(reader.get());
        text.resize(static_cast<std::size_t>(std::max(length, 0)));
        archive.settings.push_back({name.data(), std::move(text)});
    }
    return archive;
}

} // namespace zenlot
