// What the path of a control group says of the processes in it.
//
//     /system.slice/nginx.service                                        system unit nginx.service
//     /user.slice/user-1000.slice/user@1000.service/app.slice/web.service  user unit web.service
//     /system.slice/docker-3f2a….scope                                   container 3f2a…
#pragma once

#include "inventory/origin/origin.h"

#include <optional>
#include <string_view>

namespace zenlot {

// A service or a socket. None for scopes, which hold logins, terminals and applications, and which
// nobody calls by their names.
std::optional<Unit> unitOfControlGroup(std::string_view path);

std::optional<Container> containerOfControlGroup(std::string_view path);

} // namespace zenlot
