#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvane {

// A 128-bit identifier. Written as upper-case 8-4-4-4-12; read in either case.
class Uuid {
public:
    Uuid() = default;  // the nil id; real ids come from generate() or parse()

    static Uuid generate();  // random, version 4
    static std::optional<Uuid> parse(std::string_view text);

    std::string toString() const;
    bool isNil() const;
    const std::array<std::uint8_t, 16>& bytes() const { return bytes_; }

    friend bool operator==(const Uuid&, const Uuid&) = default;
    friend auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    std::array<std::uint8_t, 16> bytes_{};
};

}  // namespace orvane

template <>
struct std::hash<orvane::Uuid> {
    std::size_t operator()(const orvane::Uuid& id) const noexcept;
};
