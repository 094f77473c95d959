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

struct JavaArchive {
    std::vector<ArchivedFile> settings;
    std::string libraries; // the names of those that are packed into it, a blank between
};

// Empty for what is no archive.
JavaArchive readJavaArchive(const FileDescriptor& file);

} // namespace zenlot
