// Finds the project that a folder belongs to, by what lies in it and in the folders around it.
// Reads a few small files, and starts no tool.
#pragma once

#include "inventory/origin/origin.h"

#include <optional>
#include <string>

namespace zenlot {

// None where neither a repository nor a manifest is found. May wait for a network's file system.
std::optional<Project> findProject(const std::string& workingDirectory);

// Of a folder that is gone, around which there may be other projects by now.
Project deletedProject(const std::string& workingDirectory);

} // namespace zenlot
