#include "document/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <system_error>

namespace orvane {

namespace {

constexpr char replacementCharacter[] = "\xEF\xBF\xBD";  // U+FFFD

// How a byte >= 0x80 and those after it read as UTF-8: the number of bytes
// that begin a well-formed sequence (0 when the first byte cannot start
// one), and whether they make up the whole sequence.
struct Utf8Scan {
    std::size_t length;
    bool complete;
};

Utf8Scan scanUtf8(const unsigned char* s, std::size_t available) {
    const unsigned char lead = s[0];
    std::size_t needed = 0;
    unsigned char low = 0x80, high = 0xBF;  // range of the first continuation byte
    if (lead >= 0xC2 && lead <= 0xDF) {
        needed = 1;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        needed = 2;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        needed = 3;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return {0, false};  // not a lead byte at all
    }
    std::size_t accepted = 1;
    for (std::size_t k = 1; k <= needed; ++k) {
        if (accepted >= available) return {accepted, false};
        const unsigned char c = s[accepted];
        const unsigned char lo = k == 1 ? low : 0x80;
        const unsigned char hi = k == 1 ? high : 0xBF;
        if (c < lo || c > hi) return {accepted, false};
        ++accepted;
    }
    return {accepted, true};
}

// Bytes that leave the plain copying loop: control characters, the quote,
// the backslash, the slash and every byte of a multi-byte sequence.
constexpr bool needsAttention(unsigned char c) { return c < 0x20 || c == '"' || c == '\\' || c == '/' || c >= 0x80; }

struct AttentionTable {
    bool flags[256];
    constexpr AttentionTable() : flags{} {
        for (int c = 0; c < 256; ++c) flags[c] = needsAttention(static_cast<unsigned char>(c));
    }
};
constexpr AttentionTable attention;

// Positions the digits of `value` (finite, non-zero, positive) as the
// shortest round-trip decimal: `digits` without a point, `point` the
// position of the decimal point relative to the first digit.
int shortestDigits(double value, char* digits, int& point) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    // "d.ddde+XX" or "de-XX"
    int count = 0;
    const char* p = buffer;
    for (; p < result.ptr && *p != 'e'; ++p)
        if (*p != '.') digits[count++] = *p;
    int exponent = 0;
    std::from_chars(p + (p[1] == '+' ? 2 : 1), result.ptr, exponent);
    point = exponent + 1;
    return count;
}

char* appendExponent(char* out, int e) {
    if (e < 0) {
        e = -e;
        *out++ = '-';
    } else {
        *out++ = '+';
    }
    if (e < 10) {
        *out++ = '0';
        *out++ = static_cast<char>('0' + e);
    } else if (e < 100) {
        *out++ = static_cast<char>('0' + e / 10);
        *out++ = static_cast<char>('0' + e % 10);
    } else {
        *out++ = static_cast<char>('0' + e / 100);
        *out++ = static_cast<char>('0' + e / 10 % 10);
        *out++ = static_cast<char>('0' + e % 10);
    }
    return out;
}

}  // namespace

JsonWriter::JsonWriter(std::size_t expectedSize) {
    out_.reserve(expectedSize);
    empty_.reserve(16);
}

void JsonWriter::newlineAndIndent() {
    out_.push_back('\n');
    out_.append(2 * empty_.size(), ' ');
}

void JsonWriter::beforeValue() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (empty_.empty()) return;  // the root value
    if (!empty_.back()) out_.push_back(',');
    empty_.back() = false;
    newlineAndIndent();
}

void JsonWriter::openContainer(char bracket) {
    beforeValue();
    out_.push_back(bracket);
    empty_.push_back(true);
}

void JsonWriter::closeContainer(char bracket) {
    const bool wasEmpty = empty_.back();
    empty_.pop_back();
    if (!wasEmpty) newlineAndIndent();
    out_.push_back(bracket);
}

void JsonWriter::beginObject() { openContainer('{'); }
void JsonWriter::endObject() { closeContainer('}'); }
void JsonWriter::beginArray() { openContainer('['); }
void JsonWriter::endArray() { closeContainer(']'); }

void JsonWriter::key(std::string_view name) {
    if (!empty_.back()) out_.push_back(',');
    empty_.back() = false;
    newlineAndIndent();
    writeString(name);
    out_.append(": ", 2);
    afterKey_ = true;
}

void JsonWriter::value(bool b) {
    beforeValue();
    if (b)
        out_.append("true", 4);
    else
        out_.append("false", 5);
}

void JsonWriter::value(std::int64_t i) {
    beforeValue();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, i);
    out_.append(buffer, result.ptr);
}

void JsonWriter::value(std::uint64_t u) {
    beforeValue();
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, u);
    out_.append(buffer, result.ptr);
}

void JsonWriter::value(double d) {
    constexpr double exactIntegerLimit = 9007199254740992.0;  // 2^53
    if (std::isfinite(d) && d == std::trunc(d) && std::fabs(d) < exactIntegerLimit) {
        value(static_cast<std::int64_t>(d));
        return;
    }
    beforeValue();
    writeDouble(d);
}

void JsonWriter::value(std::string_view s) {
    beforeValue();
    writeString(s);
}

// Plain notation for decimal points from 10^-4 to 10^15 ("0.0001",
// "123.5", "1000000000000000.0"), scientific outside with a signed exponent
// of at least two digits ("1e-05", "1.5e+16").
void JsonWriter::writeDouble(double d) {
    if (!std::isfinite(d)) {
        out_.append("null", 4);
        return;
    }
    char buffer[64];
    char* out = buffer;
    if (std::signbit(d)) {
        *out++ = '-';
        d = -d;
    }
    if (d == 0) {
        out_.append(buffer, out);
        out_.append("0.0", 3);
        return;
    }
    char digits[24];
    int n = 0;
    const int k = shortestDigits(d, digits, n);
    constexpr int minExponent = -4;
    constexpr int maxExponent = 15;
    if (k <= n && n <= maxExponent) {
        std::memcpy(out, digits, static_cast<std::size_t>(k));
        out += k;
        std::memset(out, '0', static_cast<std::size_t>(n - k));
        out += n - k;
        *out++ = '.';
        *out++ = '0';
    } else if (0 < n && n <= maxExponent) {
        std::memcpy(out, digits, static_cast<std::size_t>(n));
        out += n;
        *out++ = '.';
        std::memcpy(out, digits + n, static_cast<std::size_t>(k - n));
        out += k - n;
    } else if (minExponent < n && n <= 0) {
        *out++ = '0';
        *out++ = '.';
        std::memset(out, '0', static_cast<std::size_t>(-n));
        out += -n;
        std::memcpy(out, digits, static_cast<std::size_t>(k));
        out += k;
    } else {
        *out++ = digits[0];
        if (k > 1) {
            *out++ = '.';
            std::memcpy(out, digits + 1, static_cast<std::size_t>(k - 1));
            out += k - 1;
        }
        *out++ = 'e';
        out = appendExponent(out, n - 1);
    }
    out_.append(buffer, out);
}

void JsonWriter::writeString(std::string_view s) {
    static constexpr char hex[] = "0123456789abcdef";
    const auto* bytes = reinterpret_cast<const unsigned char*>(s.data());
    const std::size_t size = s.size();
    out_.push_back('"');
    std::size_t run = 0;  // start of the bytes not yet copied
    std::size_t i = 0;
    while (i < size) {
        const unsigned char c = bytes[i];
        if (!attention.flags[c]) {
            ++i;
            continue;
        }
        if (c >= 0x80) {
            const Utf8Scan scan = scanUtf8(bytes + i, size - i);
            if (scan.complete) {
                i += scan.length;
                continue;
            }
            out_.append(s.data() + run, i - run);
            out_.append(replacementCharacter, 3);
            // A broken sequence is dropped up to the byte that broke it,
            // which is then read again; a stray byte is dropped alone.
            i += scan.length == 0 ? 1 : scan.length;
            run = i;
            continue;
        }
        out_.append(s.data() + run, i - run);
        switch (c) {
            case '"': out_.append("\\\"", 2); break;
            case '\\': out_.append("\\\\", 2); break;
            case '/': out_.append("\\/", 2); break;
            case '\b': out_.append("\\b", 2); break;
            case '\f': out_.append("\\f", 2); break;
            case '\n': out_.append("\\n", 2); break;
            case '\r': out_.append("\\r", 2); break;
            case '\t': out_.append("\\t", 2); break;
            default: {
                const char escape[6] = {'\\', 'u', '0', '0', hex[c >> 4], hex[c & 0x0F]};
                out_.append(escape, 6);
            }
        }
        ++i;
        run = i;
    }
    out_.append(s.data() + run, size - run);
    out_.push_back('"');
}

}  // namespace orvane
