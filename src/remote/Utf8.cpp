#include "remote/Utf8.h"

#include <cstdint>
#include <cstring>

namespace orvane {

bool isValidUtf8(std::string_view bytes) {
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* end = p + bytes.size();
    while (p < end) {
        // Requests are nearly all ASCII: skip it eight bytes at a time.
        if (end - p >= 8) {
            std::uint64_t word;
            std::memcpy(&word, p, sizeof word);
            if ((word & 0x8080808080808080ull) == 0) {
                p += 8;
                continue;
            }
        }
        const unsigned char lead = *p;
        if (lead < 0x80) {
            ++p;
            continue;
        }
        int extra;
        std::uint32_t cp;
        std::uint32_t minimum;
        if ((lead & 0xE0) == 0xC0) {
            extra = 1, cp = lead & 0x1F, minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2, cp = lead & 0x0F, minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3, cp = lead & 0x07, minimum = 0x10000;
        } else {
            return false;
        }
        if (end - p <= extra) return false;
        for (int i = 1; i <= extra; ++i) {
            if ((p[i] & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (p[i] & 0x3F);
        }
        if (cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
        p += extra + 1;
    }
    return true;
}

}  // namespace orvane
