// The JSON form of the port inventory: an array of objects with the keys of OccupiedPort, all
// required, in the order of the fields. See record_json.h for how strict the decoding is.
#pragma once

#include "inventory/occupied_port.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// None when anything in the text is wrong.
std::optional<std::vector<OccupiedPort>> decodeOccupiedPorts(std::string_view json);

// Never fails. A name that is no UTF-8 is written with U+FFFD in the place of what is not.
std::string encodeOccupiedPorts(std::span<const OccupiedPort> ports);

} // namespace zenlot
