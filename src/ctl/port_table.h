// The list of ports as lines for a terminal, and for the shell in it.
#pragma once

#include "inventory/occupied_port.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace zenlot {

// The login name for a numeric user id in decimal; the text itself when there is none.
std::string loginName(const std::string& user);

using LoginNameQuery = std::function<std::string(const std::string& user)>;

// A heading and one line for each record, in the order given. Missing values show as "-". Names
// and paths come from other processes: what could move a terminal's cursor or change the reading
// order is shown as an escape.
std::string portTable(std::span<const OccupiedPort> ports,
                      const LoginNameQuery& nameOf = loginName);

// One line for each port, in ascending order: its number, a tab, and its owners, each of them once.
// A port of which no owner is known has its protocol there.
std::string portOffers(std::span<const OccupiedPort> ports);

// The text with control characters, line breaks, invisible formatting and ill-formed UTF-8 made
// visible, such as \u{1B}.
std::string terminalText(std::string_view text);

} // namespace zenlot
