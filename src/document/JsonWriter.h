#pragma once

// Streams pretty-printed JSON text straight into a string, without building
// a tree first.
//
// Layout: two-space indent, `"key": value`, one element per line, `{}` and
// `[]` for empty containers. Doubles: integral ones below 2^53 as integers,
// the others in their shortest form that reads back the same ("0.8",
// "1e-05", "1e+21"), NaN and infinities as null. Strings: `"` and `\`
// escaped, the usual short escapes for \b \f \n \r \t, other control
// characters as \u00xx, every "/" as "\/", valid UTF-8 passed through and
// each invalid sequence replaced by U+FFFD.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

class JsonWriter {
public:
    explicit JsonWriter(std::size_t expectedSize = 0);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();

    // The name of the next object member. Member names are written as given
    // apart from the escapes that every string gets.
    void key(std::string_view name);

    void value(bool b);
    void value(double d);
    void value(std::int64_t i);
    void value(std::uint64_t u);
    void value(int i) { value(static_cast<std::int64_t>(i)); }
    void value(unsigned u) { value(static_cast<std::uint64_t>(u)); }
    void value(std::string_view s);
    void value(const char* s) { value(std::string_view(s)); }
    void value(const std::string& s) { value(std::string_view(s)); }

    const std::string& text() const { return out_; }
    std::string take() { return std::move(out_); }

private:
    // Before a value: the separator and indent in an array, nothing after a key.
    void beforeValue();
    void openContainer(char bracket);
    void closeContainer(char bracket);
    void newlineAndIndent();
    void writeDouble(double d);
    void writeString(std::string_view s);

    std::string out_;
    std::vector<char> empty_;  // per open container: nothing written in it yet
    bool afterKey_ = false;
};

}  // namespace orvane
