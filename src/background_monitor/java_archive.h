// The settings that lie in a Java archive, as Spring's and others' do. Only names that say so are
// unpacked, in bounded number and size.
#pragma once

#include "posix/file_descriptor.h"

#include <string>
#include <vector>

namespace zenlot {

struct ArchivedFile {
    std::string name; // with its folders
    std::string text;
};

// Empty for what is no archive.
std::vector<ArchivedFile> settingsInArchive(const FileDescriptor& archive);

} // namespace zenlot
