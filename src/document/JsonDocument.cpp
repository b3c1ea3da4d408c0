#include "document/JsonDocument.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace orvane {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Bytes that end the plain run of a string: the closing quote, the
// backslash, control characters and the bytes of multi-byte sequences.
struct StringStopTable {
    bool flags[256];
    constexpr StringStopTable() : flags{} {
        for (int c = 0; c < 256; ++c) flags[c] = c < 0x20 || c == '"' || c == '\\' || c >= 0x80;
    }
};
constexpr StringStopTable stringStop;

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

void appendUtf8(std::string& out, std::uint32_t codepoint) {
    if (codepoint < 0x80) {
        out.push_back(static_cast<char>(codepoint));
    } else if (codepoint < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (codepoint >> 6)));
        out.push_back(static_cast<char>(0x80 | (codepoint & 0x3F)));
    } else if (codepoint < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (codepoint >> 12)));
        out.push_back(static_cast<char>(0x80 | ((codepoint >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (codepoint & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (codepoint >> 18)));
        out.push_back(static_cast<char>(0x80 | ((codepoint >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((codepoint >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (codepoint & 0x3F)));
    }
}

// For a number that a double cannot hold (the conversion reported it out of
// range): whether it is too large, rather than too close to zero. The text
// has already been checked against the JSON number grammar.
bool beyondLargestDouble(const char* p, const char* end) {
    if (*p == '-') ++p;
    long long magnitude = 0;  // decimal exponent of the first significant digit, plus one
    bool significant = false;
    for (; p < end && isDigit(*p); ++p)
        if (significant || *p != '0') {
            significant = true;
            ++magnitude;
        }
    if (p < end && *p == '.')
        for (++p; p < end && isDigit(*p); ++p) {
            if (significant) continue;
            if (*p == '0')
                --magnitude;
            else
                significant = true;
        }
    long long exponent = 0;
    if (p < end && (*p == 'e' || *p == 'E')) {
        ++p;
        const bool negative = *p == '-';
        if (*p == '+' || *p == '-') ++p;
        for (; p < end && isDigit(*p); ++p)
            if (exponent < 1'000'000'000) exponent = exponent * 10 + (*p - '0');
        if (negative) exponent = -exponent;
    }
    return magnitude + exponent > 0;
}

std::uint64_t loadPrefix(const char* p, std::size_t size) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, size < 8 ? size : 8);
    return word;
}

}  // namespace

JsonDocument::Outcome JsonDocument::parse(std::string_view text, int maxDepth) {
    values_.clear();
    elements_.clear();
    members_.clear();
    unescaped_.clear();
    pendingElements_.clear();
    pendingMembers_.clear();
    error_.clear();
    values_.reserve(text.size() / 16 + 16);
    members_.reserve(text.size() / 32 + 16);

    begin_ = text.data();
    cur_ = begin_;
    end_ = begin_ + text.size();
    depth_ = 0;
    maxDepth_ = maxDepth;
    tooDeep_ = false;

    bool ok = true;
    if (text.size() >= std::numeric_limits<Index>::max()) ok = fail("text too large");
    if (ok && end_ - cur_ >= 1 && static_cast<unsigned char>(*cur_) == 0xEF) {
        // Only a complete byte order mark may start the text.
        if (end_ - cur_ >= 3 && static_cast<unsigned char>(cur_[1]) == 0xBB &&
            static_cast<unsigned char>(cur_[2]) == 0xBF)
            cur_ += 3;
        else
            ok = fail("incomplete byte order mark");
    }
    if (ok) {
        skipWhitespace();
        ok = parseValue();
    }
    if (ok) {
        skipWhitespace();
        if (cur_ != end_ && *cur_ != '\0') ok = fail("unexpected text after the value");
    }
    if (!ok) {
        if (tooDeep_ || exceedsDepth(text, maxDepth)) return Outcome::tooDeep;
        return Outcome::syntaxError;
    }
    // Text after a NUL byte is not parsed, but its brackets still count.
    if (cur_ != end_ && exceedsDepth(text, maxDepth)) return Outcome::tooDeep;
    return Outcome::parsed;
}

bool JsonDocument::fail(const char* what) {
    if (!error_.empty()) return false;
    std::size_t line = 1, column = 1;
    const char* at = cur_ < end_ ? cur_ : end_;
    for (const char* p = begin_; p < at; ++p) {
        if (*p == '\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    error_ = "syntax error at line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + what;
    return false;
}

JsonDocument::Index JsonDocument::push(const Value& value) {
    values_.push_back(value);
    return static_cast<Index>(values_.size() - 1);
}

void JsonDocument::skipWhitespace() {
    while (cur_ < end_) {
        const char c = *cur_;
        if (c != ' ' && c != '\n' && c != '\r' && c != '\t') return;
        ++cur_;
    }
}

bool JsonDocument::parseValue() {
    if (cur_ == end_) return fail("unexpected end of text, expected a value");
    switch (*cur_) {
        case '{': return parseObject();
        case '[': return parseArray();
        case '"': {
            Value v{};
            v.type = Type::string;
            if (!parseString(v.text.data, v.text.size)) return false;
            push(v);
            return true;
        }
        case 't': {
            Value v{};
            v.type = Type::boolean;
            v.flag = true;
            return parseLiteral("true", v);
        }
        case 'f': {
            Value v{};
            v.type = Type::boolean;
            return parseLiteral("false", v);
        }
        case 'n': {
            Value v{};
            v.type = Type::null;
            return parseLiteral("null", v);
        }
        default:
            if (*cur_ == '-' || isDigit(*cur_)) return parseNumber();
            return fail("unexpected character, expected a value");
    }
}

bool JsonDocument::parseLiteral(std::string_view word, Value value) {
    if (static_cast<std::size_t>(end_ - cur_) < word.size() || std::memcmp(cur_, word.data(), word.size()) != 0)
        return fail("invalid literal");
    cur_ += word.size();
    push(value);
    return true;
}

bool JsonDocument::parseObject() {
    if (++depth_ > maxDepth_) {
        tooDeep_ = true;
        return fail("nesting too deep");
    }
    Value object{};
    object.type = Type::object;
    const Index self = push(object);
    const std::size_t pending = pendingMembers_.size();
    ++cur_;
    skipWhitespace();
    if (cur_ < end_ && *cur_ == '}') {
        ++cur_;
    } else {
        for (;;) {
            if (cur_ == end_ || *cur_ != '"') return fail("expected a key string");
            Member member{};
            std::size_t keySize = 0;
            if (!parseString(member.key, keySize)) return false;
            if (keySize > std::numeric_limits<std::uint32_t>::max()) return fail("key too long");
            member.keySize = static_cast<std::uint32_t>(keySize);
            skipWhitespace();
            if (cur_ == end_ || *cur_ != ':') return fail("expected ':' after a key");
            ++cur_;
            skipWhitespace();
            member.value = static_cast<Index>(values_.size());
            if (!parseValue()) return false;
            pendingMembers_.push_back(member);
            skipWhitespace();
            if (cur_ == end_) return fail("unexpected end of text, expected ',' or '}'");
            if (*cur_ == ',') {
                ++cur_;
                skipWhitespace();
                continue;
            }
            if (*cur_ == '}') {
                ++cur_;
                break;
            }
            return fail("expected ',' or '}'");
        }
    }
    const std::size_t count = pendingMembers_.size() - pending;
    Value& done = values_[self];
    done.first = static_cast<Index>(members_.size());
    done.count = static_cast<std::uint32_t>(count);
    members_.insert(members_.end(), pendingMembers_.begin() + static_cast<std::ptrdiff_t>(pending),
                    pendingMembers_.end());
    pendingMembers_.resize(pending);
    markRepeatedKeys(done, members_.data() + done.first, count);
    --depth_;
    return true;
}

// Sets the object's flag when a key occurs twice. A 256-bit filter over a
// cheap hash of each key keeps the exact comparisons to the rare keys whose
// hash was seen before.
void JsonDocument::markRepeatedKeys(Value& object, const Member* members, std::size_t count) const {
    if (count < 2) return;
    std::uint64_t seen[4] = {0, 0, 0, 0};
    for (std::size_t i = 0; i < count; ++i) {
        const Member& m = members[i];
        std::uint64_t h = loadPrefix(m.key, m.keySize) ^ (static_cast<std::uint64_t>(m.keySize) << 56);
        if (m.keySize > 8) h ^= static_cast<std::uint64_t>(static_cast<unsigned char>(m.key[m.keySize - 1])) << 13;
        h *= 0x9E3779B97F4A7C15ull;
        const unsigned bit = static_cast<unsigned>(h >> 56);
        const std::uint64_t mask = std::uint64_t{1} << (bit & 63);
        if (seen[bit >> 6] & mask) {
            for (std::size_t j = 0; j < i; ++j)
                if (members[j].name() == m.name()) {
                    object.flag = true;
                    return;
                }
        }
        seen[bit >> 6] |= mask;
    }
}

bool JsonDocument::parseArray() {
    if (++depth_ > maxDepth_) {
        tooDeep_ = true;
        return fail("nesting too deep");
    }
    Value array{};
    array.type = Type::array;
    const Index self = push(array);
    const std::size_t pending = pendingElements_.size();
    ++cur_;
    skipWhitespace();
    if (cur_ < end_ && *cur_ == ']') {
        ++cur_;
    } else {
        for (;;) {
            const Index element = static_cast<Index>(values_.size());
            if (!parseValue()) return false;
            pendingElements_.push_back(element);
            skipWhitespace();
            if (cur_ == end_) return fail("unexpected end of text, expected ',' or ']'");
            if (*cur_ == ',') {
                ++cur_;
                skipWhitespace();
                continue;
            }
            if (*cur_ == ']') {
                ++cur_;
                break;
            }
            return fail("expected ',' or ']'");
        }
    }
    Value& done = values_[self];
    done.first = static_cast<Index>(elements_.size());
    done.count = static_cast<std::uint32_t>(pendingElements_.size() - pending);
    elements_.insert(elements_.end(), pendingElements_.begin() + static_cast<std::ptrdiff_t>(pending),
                     pendingElements_.end());
    pendingElements_.resize(pending);
    --depth_;
    return true;
}

// At a byte >= 0x80 inside a string: steps over one well-formed UTF-8
// sequence or fails.
bool JsonDocument::checkUtf8Sequence() {
    const auto lead = static_cast<unsigned char>(*cur_);
    int needed = 0;
    unsigned char low = 0x80, high = 0xBF;  // range of the first continuation byte
    if (lead >= 0xC2 && lead <= 0xDF) {
        needed = 1;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        needed = 2;
        if (lead == 0xE0) low = 0xA0;       // overlong
        if (lead == 0xED) high = 0x9F;      // surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        needed = 3;
        if (lead == 0xF0) low = 0x90;       // overlong
        if (lead == 0xF4) high = 0x8F;      // beyond U+10FFFF
    } else {
        return fail("invalid UTF-8 byte in a string");
    }
    if (end_ - cur_ <= needed) return fail("incomplete UTF-8 sequence in a string");
    for (int k = 1; k <= needed; ++k) {
        const auto c = static_cast<unsigned char>(cur_[k]);
        if (c < low || c > high) return fail("invalid UTF-8 sequence in a string");
        low = 0x80;
        high = 0xBF;
    }
    cur_ += needed + 1;
    return true;
}

bool JsonDocument::parseString(const char*& data, std::size_t& size) {
    ++cur_;  // the opening quote
    const char* start = cur_;
    for (;;) {
        while (cur_ < end_ && !stringStop.flags[static_cast<unsigned char>(*cur_)]) ++cur_;
        if (cur_ == end_) return fail("unexpected end of text in a string");
        const char c = *cur_;
        if (c == '"') {
            data = start;
            size = static_cast<std::size_t>(cur_ - start);
            ++cur_;
            return true;
        }
        if (c == '\\') return parseEscapedString(start, data, size);
        if (static_cast<unsigned char>(c) < 0x20) return fail("control character in a string");
        if (!checkUtf8Sequence()) return false;
    }
}

// The slow path of parseString from the first backslash on: the string is
// rebuilt without its escapes in the document's own storage.
bool JsonDocument::parseEscapedString(const char* start, const char*& data, std::size_t& size) {
    std::string out(start, cur_);
    for (;;) {
        const char* run = cur_;
        while (cur_ < end_ && !stringStop.flags[static_cast<unsigned char>(*cur_)]) ++cur_;
        out.append(run, cur_);
        if (cur_ == end_) return fail("unexpected end of text in a string");
        const char c = *cur_;
        if (c == '"') {
            ++cur_;
            break;
        }
        if (static_cast<unsigned char>(c) < 0x20) return fail("control character in a string");
        if (c != '\\') {
            const char* sequence = cur_;
            if (!checkUtf8Sequence()) return false;
            out.append(sequence, cur_);
            continue;
        }
        if (end_ - cur_ < 2) return fail("unexpected end of text in an escape");
        const char kind = cur_[1];
        cur_ += 2;
        switch (kind) {
            case '"': out.push_back('"'); break;
            case '\\': out.push_back('\\'); break;
            case '/': out.push_back('/'); break;
            case 'b': out.push_back('\b'); break;
            case 'f': out.push_back('\f'); break;
            case 'n': out.push_back('\n'); break;
            case 'r': out.push_back('\r'); break;
            case 't': out.push_back('\t'); break;
            case 'u': {
                auto readHex4 = [this](std::uint32_t& value) {
                    if (end_ - cur_ < 4) return false;
                    value = 0;
                    for (int k = 0; k < 4; ++k) {
                        const int d = hexDigit(cur_[k]);
                        if (d < 0) return false;
                        value = value * 16 + static_cast<std::uint32_t>(d);
                    }
                    cur_ += 4;
                    return true;
                };
                std::uint32_t codepoint = 0;
                if (!readHex4(codepoint)) return fail("'\\u' must be followed by four hex digits");
                if (codepoint >= 0xDC00 && codepoint <= 0xDFFF)
                    return fail("a low surrogate must follow a high surrogate");
                if (codepoint >= 0xD800 && codepoint <= 0xDBFF) {
                    if (end_ - cur_ < 2 || cur_[0] != '\\' || cur_[1] != 'u')
                        return fail("a high surrogate must be followed by a low surrogate");
                    cur_ += 2;
                    std::uint32_t low = 0;
                    if (!readHex4(low)) return fail("'\\u' must be followed by four hex digits");
                    if (low < 0xDC00 || low > 0xDFFF)
                        return fail("a high surrogate must be followed by a low surrogate");
                    codepoint = 0x10000 + ((codepoint - 0xD800) << 10) + (low - 0xDC00);
                }
                appendUtf8(out, codepoint);
                break;
            }
            default:
                cur_ -= 1;
                return fail("invalid escape in a string");
        }
    }
    unescaped_.push_back(std::move(out));
    data = unescaped_.back().data();
    size = unescaped_.back().size();
    return true;
}

bool JsonDocument::parseNumber() {
    const char* start = cur_;
    const bool negative = *cur_ == '-';
    if (negative) ++cur_;
    if (cur_ == end_ || !isDigit(*cur_)) return fail("expected a digit");
    std::uint64_t magnitude = 0;
    bool overflow = false;
    if (*cur_ == '0') {
        ++cur_;
    } else {
        constexpr std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
        for (; cur_ < end_ && isDigit(*cur_); ++cur_) {
            const auto digit = static_cast<std::uint64_t>(*cur_ - '0');
            if (magnitude > (limit - digit) / 10) overflow = true;
            magnitude = magnitude * 10 + digit;
        }
    }
    bool floating = false;
    if (cur_ < end_ && *cur_ == '.') {
        ++cur_;
        if (cur_ == end_ || !isDigit(*cur_)) return fail("expected a digit after the decimal point");
        while (cur_ < end_ && isDigit(*cur_)) ++cur_;
        floating = true;
    }
    if (cur_ < end_ && (*cur_ == 'e' || *cur_ == 'E')) {
        ++cur_;
        if (cur_ < end_ && (*cur_ == '+' || *cur_ == '-')) ++cur_;
        if (cur_ == end_ || !isDigit(*cur_)) return fail("expected a digit in the exponent");
        while (cur_ < end_ && isDigit(*cur_)) ++cur_;
        floating = true;
    }
    Value v{};
    v.type = Type::number;
    if (!floating && !overflow) {
        if (!negative) {
            v.numberKind = NumberKind::unsignedInteger;
            v.u = magnitude;
            push(v);
            return true;
        }
        if (magnitude <= std::uint64_t{1} << 63) {
            v.numberKind = NumberKind::signedInteger;
            v.i = static_cast<std::int64_t>(~magnitude + 1);
            push(v);
            return true;
        }
    }
    // Fractions, exponents and integers beyond 64 bits.
    v.numberKind = NumberKind::floating;
    double value = 0;
    const auto result = std::from_chars(start, cur_, value);
    if (result.ec == std::errc::result_out_of_range) {
        if (beyondLargestDouble(start, cur_)) return fail("number too large for a double");
        value = negative ? -0.0 : 0.0;
    } else if (result.ec != std::errc() || result.ptr != cur_) {
        return fail("invalid number");
    }
    v.f = value;
    push(v);
    return true;
}

const JsonDocument::Value* JsonDocument::find(const Value& object, std::string_view key, std::uint32_t& hint) const {
    const Member* members = members_.data() + object.first;
    const std::uint32_t count = object.count;
    if (object.flag) {
        // A repeated key: its last occurrence counts.
        for (std::uint32_t i = count; i-- > 0;)
            if (members[i].name() == key) return &values_[members[i].value];
        return nullptr;
    }
    for (std::uint32_t k = 0; k < count; ++k) {
        std::uint32_t i = hint + k;
        if (i >= count) i -= count;
        const Member& m = members[i];
        if (m.keySize == key.size() && std::memcmp(m.key, key.data(), key.size()) == 0) {
            hint = i + 1;
            return &values_[m.value];
        }
    }
    return nullptr;
}

bool JsonDocument::exceedsDepth(std::string_view text, int maxDepth) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
            continue;
        }
        if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > maxDepth) return true;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return false;
}

}  // namespace orvane
