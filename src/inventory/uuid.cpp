#include "inventory/uuid.h"

#include <uuid/uuid.h>

namespace zenlot {

Uuid Uuid::random() {
    Uuid uuid;
    uuid_generate_random(uuid.bytes.data());
    return uuid;
}

std::string Uuid::text() const {
    std::array<char, UUID_STR_LEN> text{};
    uuid_unparse_upper(bytes.data(), text.data());
    return text.data();
}

} // namespace zenlot
