// A folder that is gone, with all that is in it, at the end of the scope.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace zenlot {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "zenlot-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("can't make a temporary folder");
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream(path_ / name, std::ios::binary) << text;
    }

    void link(const std::string& name, const std::string& target) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::filesystem::create_symlink(target, path_ / name);
    }

  private:
    std::filesystem::path path_;
};

} // namespace zenlot
