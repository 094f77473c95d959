// The helper of the system that the kernel tells of refused ports, as far as others have to know
// it.
#pragma once

namespace zenlot {

// There while it serves.
inline constexpr char kBindwatchSocket[] = "/run/zenlot/binds";
// How an administrator turns it on.
inline constexpr char kBindwatchCommand[] = "sudo systemctl enable --now zenlot-bindwatch.service";

} // namespace zenlot
