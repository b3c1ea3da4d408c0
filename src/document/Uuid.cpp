#include "document/Uuid.h"

#include <random>

namespace orvane {

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool isDashPosition(std::size_t i) { return i == 8 || i == 13 || i == 18 || i == 23; }

}  // namespace

Uuid Uuid::generate() {
    // One generator per thread, seeded from the OS once.
    thread_local std::mt19937_64 engine{[] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }()};
    Uuid id;
    std::uint64_t a = engine();
    std::uint64_t b = engine();
    for (int i = 0; i < 8; ++i) {
        id.bytes_[i] = static_cast<std::uint8_t>(a >> (i * 8));
        id.bytes_[8 + i] = static_cast<std::uint8_t>(b >> (i * 8));
    }
    id.bytes_[6] = static_cast<std::uint8_t>((id.bytes_[6] & 0x0F) | 0x40);  // version 4
    id.bytes_[8] = static_cast<std::uint8_t>((id.bytes_[8] & 0x3F) | 0x80);  // RFC 4122 variant
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid id;
    std::size_t byte = 0;
    for (std::size_t i = 0; i < 36;) {
        if (isDashPosition(i)) {
            if (text[i] != '-') return std::nullopt;
            ++i;
            continue;
        }
        const int hi = hexValue(text[i]);
        const int lo = hexValue(text[i + 1]);
        if (hi < 0 || lo < 0) return std::nullopt;
        id.bytes_[byte++] = static_cast<std::uint8_t>(hi * 16 + lo);
        i += 2;
    }
    return id;
}

std::string Uuid::toString() const {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string out;
    out.reserve(36);
    for (std::size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) out.push_back('-');
        out.push_back(digits[bytes_[i] >> 4]);
        out.push_back(digits[bytes_[i] & 0x0F]);
    }
    return out;
}

bool Uuid::isNil() const {
    for (auto b : bytes_)
        if (b != 0) return false;
    return true;
}

}  // namespace orvane

std::size_t std::hash<orvane::Uuid>::operator()(const orvane::Uuid& id) const noexcept {
    std::size_t h = 1469598103934665603ull;
    for (auto b : id.bytes()) h = (h ^ b) * 1099511628211ull;
    return h;
}
