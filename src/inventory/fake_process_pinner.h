// A ProcessPinner for tests that kill nobody: it finds no process.
#pragma once

#include "inventory/force_quit.h"

namespace zenlot {

class NoProcessPinner final : public ProcessPinner {
  public:
    std::unique_ptr<PinnedProcess> pin(ProcessId /*pid*/) const override { return nullptr; }
};

} // namespace zenlot
