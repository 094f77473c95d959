// The process tables of macOS.
//
// A socket there names its user but not its process, and a process must be asked for each of its
// descriptors, so nothing is known beforehand about the ports that a walk can find. Only the
// table of TCP sockets is taken when a snapshot begins; the rest is asked for when it is wanted.
//
//     DarwinProcessTables tables(calls);
//     PortScanner scanner(tables);
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/process_tables.h"

#include <memory>
#include <optional>

namespace zenlot {

class DarwinProcessTables final : public ProcessTables {
  public:
    // `calls` must outlive the tables and their snapshots. `currentUser` stands in for the owner of
    // a socket where the kernel's record is too short to name it.
    explicit DarwinProcessTables(const DarwinCalls& calls, UserId currentUser = currentUserId());

    std::unique_ptr<ProcessSnapshot> beginSnapshot(std::optional<std::int64_t> port) const override;

  private:
    const DarwinCalls& calls_;
    UserId currentUser_;
};

} // namespace zenlot
