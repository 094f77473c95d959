// The two sources of the kernel's TCP sockets, one after the other: its socket diagnostics, and the
// text in /proc/net where they fail.
#pragma once

#include "inventory/linux/proc_files.h"
#include "inventory/process_tables.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace zenlot {

// A kernel that has no IPv6, or was told to go without, shows no file for it beside the other one.
inline bool isKnownToKernel(const ProcFiles& procFiles, AddressFamily family) {
    return family == AddressFamily::ipv4 || !procFiles.isMissing("net/tcp6") ||
           procFiles.isMissing("net/tcp");
}

// Appends the sockets of both families, IPv4 first, and returns the families of which neither
// source told. `dump` takes a family and returns its sockets or none, `decode` takes a text and its
// family and appends what it says.
template <typename Socket, typename Dump, typename Decode>
std::vector<AddressFamily> appendBothFamilies(const ProcFiles& procFiles,
                                              std::vector<Socket>& sockets, const Dump& dump,
                                              const Decode& decode) {
    std::vector<AddressFamily> silentFamilies;
    for (const AddressFamily family : {AddressFamily::ipv4, AddressFamily::ipv6}) {
        const char* const file = family == AddressFamily::ipv6 ? "net/tcp6" : "net/tcp";
        if (auto dumped = dump(family))
            std::ranges::move(*dumped, std::back_inserter(sockets));
        else if (const auto text = procFiles.read(file))
            decode(*text, family);
        else if (isKnownToKernel(procFiles, family))
            silentFamilies.push_back(family);
    }
    return silentFamilies;
}

} // namespace zenlot
