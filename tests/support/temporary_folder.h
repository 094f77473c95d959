// A folder that is gone, with all that is in it, at the end of the scope.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
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

    std::string read(const std::string& name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(no file)";
    }

    // Of all that is in a folder, hidden or not.
    std::set<std::string> names(const std::string& folder = std::string()) const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_ / folder))
            names.insert(entry.path().filename());
        return names;
    }

    void link(const std::string& name, const std::string& target) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::filesystem::create_symlink(target, path_ / name);
    }

  private:
    std::filesystem::path path_;
};

} // namespace zenlot
