// A 128-bit random identifier that tells rows apart.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace zenlot {

struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    // A new version 4 identifier.
    static Uuid random();

    // The canonical form in upper case, such as 6F9619FF-8B86-4011-B42D-00CF4FC964FF.
    std::string text() const;

    friend bool operator==(const Uuid&, const Uuid&) = default;
};

} // namespace zenlot
