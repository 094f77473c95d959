#include "inventory/occupied_ports_json.h"

#include "inventory/record_json.h"

#include <array>

namespace zenlot {
namespace {

constexpr std::array<JsonField<OccupiedPort>, 7> kFields{{
    {"port", &OccupiedPort::port},
    {"proto", &OccupiedPort::proto},
    {"processName", &OccupiedPort::processName},
    {"displayName", &OccupiedPort::displayName},
    {"pid", &OccupiedPort::pid},
    {"user", &OccupiedPort::user},
    {"executablePath", &OccupiedPort::executablePath},
}};

} // namespace

std::optional<std::vector<OccupiedPort>> decodeOccupiedPorts(std::string_view json) {
    return decodeRecords<OccupiedPort>(json, kFields);
}

std::string encodeOccupiedPorts(std::span<const OccupiedPort> ports) {
    return encodeRecords<OccupiedPort>(ports, kFields);
}

} // namespace zenlot
