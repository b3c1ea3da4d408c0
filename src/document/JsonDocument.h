#pragma once

// A parsed JSON text held as flat arrays: every value is one entry of
// values(), containers list their children in elements() or members().
// Strings are views into the parsed text, or into the document's own
// storage when they contained escapes, so the text must outlive the
// document's use.
//
// Parsing is strict RFC 8259: no trailing commas, no leading zeros, no
// unescaped control characters in strings, only the defined escapes, \u
// surrogates only in pairs, well-formed UTF-8 only (no overlong forms, no
// encoded surrogates). A UTF-8 byte order mark at the start is skipped. A NUL
// byte after the root value ends the text. Integers that fit 64 bits keep
// their integer kind; other numbers are doubles, rounded exactly, and a
// number too large for a double is an error. When a key repeats, the last
// occurrence counts.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

class JsonDocument {
public:
    using Index = std::uint32_t;

    enum class Type : std::uint8_t { null, boolean, number, string, array, object };
    enum class NumberKind : std::uint8_t { unsignedInteger, signedInteger, floating };

    struct Member {
        const char* key;
        std::uint32_t keySize;
        Index value;

        std::string_view name() const { return {key, keySize}; }
    };

    struct Value {
        Type type;
        NumberKind numberKind;  // numbers
        bool flag;              // booleans: the value; objects: some key repeats
        std::uint32_t count;    // arrays: elements; objects: members
        union {
            struct {
                const char* data;
                std::size_t size;
            } text;              // strings
            Index first;         // arrays and objects: the first child in elements() or members()
            std::uint64_t u;     // NumberKind::unsignedInteger
            std::int64_t i;      // NumberKind::signedInteger
            double f;            // NumberKind::floating
        };

        std::string_view string() const { return {text.data, text.size}; }
        bool isNumber() const { return type == Type::number; }
        double number() const {
            switch (numberKind) {
                case NumberKind::unsignedInteger: return static_cast<double>(u);
                case NumberKind::signedInteger: return static_cast<double>(i);
                case NumberKind::floating: break;
            }
            return f;
        }
    };

    enum class Outcome { parsed, syntaxError, tooDeep };

    // Parses `text`, replacing what the document held. Nesting deeper than
    // `maxDepth` containers is refused (Outcome::tooDeep) with or without
    // syntax errors elsewhere in the text.
    Outcome parse(std::string_view text, int maxDepth);

    // After Outcome::syntaxError: what went wrong and where.
    const std::string& errorMessage() const { return error_; }

    Index root() const { return 0; }
    const Value& value(Index index) const { return values_[index]; }
    Index element(const Value& array, std::uint32_t position) const { return elements_[array.first + position]; }
    const Member* membersBegin(const Value& object) const { return members_.data() + object.first; }

    // The value of `key` in `object`, or nullptr. `hint` is where the search
    // starts and, after a hit, the position after it: keys read in the order
    // they were written are found at once.
    const Value* find(const Value& object, std::string_view key, std::uint32_t& hint) const;

    // Whether any container in `text` lies deeper than `maxDepth`, counting
    // brackets outside strings whether or not the text is valid JSON.
    static bool exceedsDepth(std::string_view text, int maxDepth);

private:
    bool parseValue();
    bool parseObject();
    bool parseArray();
    bool parseString(const char*& data, std::size_t& size);
    bool parseEscapedString(const char* start, const char*& data, std::size_t& size);
    bool parseNumber();
    bool parseLiteral(std::string_view word, Value value);
    bool checkUtf8Sequence();
    void skipWhitespace();
    void markRepeatedKeys(Value& object, const Member* members, std::size_t count) const;
    bool fail(const char* what);
    Index push(const Value& value);

    // Parsing state.
    const char* begin_ = nullptr;
    const char* cur_ = nullptr;
    const char* end_ = nullptr;
    int depth_ = 0;
    int maxDepth_ = 0;
    bool tooDeep_ = false;
    std::vector<Index> pendingElements_;  // children of the arrays being parsed
    std::vector<Member> pendingMembers_;  // members of the objects being parsed

    std::vector<Value> values_;
    std::vector<Index> elements_;
    std::vector<Member> members_;
    std::deque<std::string> unescaped_;  // strings that contained escapes
    std::string error_;
};

}  // namespace orvane
