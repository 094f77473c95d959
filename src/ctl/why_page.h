// One page on a port: which server listens there, where it comes from and whom it lets in; or why
// nobody can have the port although nobody listens.
#pragma once

#include "ctl/port_table.h"
#include "inventory/origin/bind_obstacle.h"
#include "inventory/origin/origin.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

struct WhyAnswer {
    std::uint16_t port{0};
    std::vector<Origin> origins;         // of those who listen
    std::vector<BindObstacle> obstacles; // asked for when nobody does
};

// For a terminal: aligned lines, in which nothing that others have written can move the cursor.
std::string whyPage(const WhyAnswer& answer, const LoginNameQuery& nameOf = loginName);

// The same for scripts: an object with "port", "origins" and "obstacles". What is not known is left
// out.
std::string whyJson(const WhyAnswer& answer);

// What people know of the chain that started a server, the nearest first: "npm run dev ← zsh ←
// tmux".
std::string startersText(std::span<const Starter> starters);

} // namespace zenlot
