// Writes the files of the shared container, see monitoring/shared_container.h. A reader sees the
// old content or the new one, never a part. Only the user may read them.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace zenlot {

class ContainerWriter {
  public:
    // Makes the container where it is missing.
    explicit ContainerWriter(const QString& stateHome);

    void make() const;

    // Removes what was half written by a writer that was killed. Nobody else may be writing.
    void sweep() const;

    // False when the file could not be written; the old one is then still there.
    bool replace(const std::string& name, std::string_view content) const;

    void remove(const std::string& name) const;

    const std::string& folder() const { return folder_; }

    // Of all files in the container.
    std::string path(const std::string& name) const { return folder_ + "/" + name; }

  private:
    std::string folder_;
};

} // namespace zenlot
