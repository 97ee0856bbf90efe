#include "server/tlb/Guid.h"

#include <cstdio>

namespace Quorane_TLB {

std::string GuidToString(const Guid& guid) {
    char text[39];
    const auto& rest = guid.Rest;
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.First,
                  guid.Second, guid.Third, rest[0], rest[1], rest[2], rest[3], rest[4], rest[5], rest[6],
                  rest[7]);
    return text;
}

} // namespace Quorane_TLB
