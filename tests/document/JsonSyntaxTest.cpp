// The document's own JSON reader and writer against nlohmann::json: the same
// texts accepted and refused, the same values read, the same bytes written.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "document/DocumentCodec.h"
#include "document/JsonDocument.h"
#include "support/DeepEqual.h"
#include "support/GoldenPresets.h"
#include "support/ReferenceCodec.h"

namespace orvane {
namespace json_syntax_test {

using namespace std::string_literals;
using nlohmann::json;
using testing::referenceDecodeRecord;
using testing::referenceEncodeRecord;

const std::string nestingError = "(document): nesting deeper than 64 levels";

// A failure of the text itself rather than of what it holds. The messages of
// the two parsers differ; only the "(document): " prefix is shared.
bool isSyntaxError(const std::string& error) {
    return error.rfind("(document): ", 0) == 0 && error != "(document): expected an object" &&
           error != nestingError;
}

// Both decoders read `text` the same way: same verdict; on failure the same
// message, or a syntax error on both sides.
template <typename T>
::testing::AssertionResult sameVerdict(const std::string& text) {
    const Decoded<T> mine = decodeRecord<T>(text);
    const Decoded<T> reference = referenceDecodeRecord<T>(text);
    if (bool(mine) != bool(reference))
        return ::testing::AssertionFailure() << "accepted: " << bool(mine) << " vs " << bool(reference)
                                             << "; errors: \"" << mine.error << "\" vs \"" << reference.error
                                             << "\"";
    if (!mine) {
        const bool bothSyntax = isSyntaxError(mine.error) && isSyntaxError(reference.error);
        if (!bothSyntax && mine.error != reference.error)
            return ::testing::AssertionFailure() << "\"" << mine.error << "\" vs \"" << reference.error << "\"";
    }
    return ::testing::AssertionSuccess();
}

bool documentParses(const std::string& text) {
    JsonDocument document;
    return document.parse(text, 64) == JsonDocument::Outcome::parsed;
}

std::string quoted(const std::string& s) { return "\"" + s + "\""; }

bool isNumberByte(char c) { return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E'; }

// The same text, except that a number outside strings may be written
// differently when it reads back as the same double and is not longer. The
// writer gives the shortest form that reads back the same; the library's
// formatting is sometimes a digit longer (or, as long, another neighbour of
// the same double) for doubles with 16 or 17 significant digits.
::testing::AssertionResult sameTextUpToShortestNumbers(const std::string& mine, const std::string& reference) {
    std::size_t i = 0, j = 0;
    bool inString = false;
    int rewritten = 0;
    while (i < mine.size() && j < reference.size()) {
        const char c = mine[i];
        if (inString || !isNumberByte(c) || !isNumberByte(reference[j])) {
            if (c != reference[j])
                return ::testing::AssertionFailure() << "texts differ at byte " << i << ":\n" << mine << "\n---\n"
                                                     << reference;
            if (inString && c == '\\') {
                if (i + 1 < mine.size() && j + 1 < reference.size() && mine[i + 1] == reference[j + 1]) {
                    i += 2;
                    j += 2;
                    continue;
                }
            } else if (c == '"') {
                inString = !inString;
            }
            ++i;
            ++j;
            continue;
        }
        std::size_t a = i, b = j;
        while (a < mine.size() && isNumberByte(mine[a])) ++a;
        while (b < reference.size() && isNumberByte(reference[b])) ++b;
        const std::string ours = mine.substr(i, a - i);
        const std::string theirs = reference.substr(j, b - j);
        if (ours != theirs) {
            if (std::strtod(ours.c_str(), nullptr) != std::strtod(theirs.c_str(), nullptr) ||
                ours.size() > theirs.size())
                return ::testing::AssertionFailure() << "number " << ours << " where the library wrote " << theirs;
            ++rewritten;
        }
        i = a;
        j = b;
    }
    if (i != mine.size() || j != reference.size())
        return ::testing::AssertionFailure() << "texts differ in length:\n" << mine << "\n---\n" << reference;
    return ::testing::AssertionSuccess() << rewritten << " numbers written shorter";
}

// ---------------------------------------------------------------- the table

struct SyntaxCase {
    std::string text;
    bool valid;  // as RFC 8259 (and the library) has it
};

std::vector<SyntaxCase> syntaxCases() {
    return {
        // strings and escapes
        {quoted("abc"), true},
        {quoted(""), true},
        {quoted("a\\\"b"), true},
        {quoted("\\\\\\/\\b\\f\\n\\r\\t"), true},
        {quoted("50\\/50"), true},
        {quoted("\\u0041"), true},
        {quoted("\\u00e9\\u00E9"), true},
        {quoted("\\u20AC\\u20ac"), true},
        {quoted("\\uD83D\\uDE00"), true},
        {quoted("\\udbff\\udfff"), true},
        {quoted("\\u0000"), true},
        {quoted("\\u001f"), true},
        {quoted("\x7F"), true},
        {quoted("\xC3\xA9"), true},
        {quoted("Diagonal \xE2\x86\x98"), true},
        {quoted("\xF0\x9F\x98\x80"), true},
        {quoted("\xF4\x8F\xBF\xBF"), true},
        {quoted("\xEF\xBF\xBF"), true},
        {quoted("\xED\x9F\xBF"), true},
        {quoted("abc"), true},
        {quoted("a\\u0000b"), true},
        {quoted("\\x41"), false},
        {quoted("\\'"), false},
        {quoted("\\U0041"), false},
        {quoted("\\u12"), false},
        {quoted("\\u12G4"), false},
        {quoted("\\uD800"), false},
        {quoted("\\uDC00"), false},
        {quoted("\\uDBFF"), false},
        {quoted("\\uD800\\u0041"), false},
        {quoted("\\uD800\\uD800"), false},
        {quoted("\\uD800x"), false},
        {quoted("\\uDE00\\uD83D"), false},
        {quoted("\\"), false},
        {"\"abc", false},
        {"\"abc\\\"", false},
        {quoted("a\nb"), false},
        {quoted("a\tb"), false},
        {quoted("a\rb"), false},
        {quoted("\x01"), false},
        {quoted("\x1F"), false},
        {quoted("a\0b"s), false},
        {"'abc'", false},
        // invalid UTF-8 inside strings
        {quoted("\x80"), false},
        {quoted("\xBF"), false},
        {quoted("\xC0\xAF"), false},
        {quoted("\xC1\xBF"), false},
        {quoted("\xE0\x80\xAF"), false},
        {quoted("\xE0\x9F\xBF"), false},
        {quoted("\xF0\x80\x80\xAF"), false},
        {quoted("\xF0\x8F\xBF\xBF"), false},
        {quoted("\xED\xA0\x80"), false},
        {quoted("\xED\xBF\xBF"), false},
        {quoted("\xED\xA0\xBD\xED\xB8\x80"), false},
        {quoted("\xF4\x90\x80\x80"), false},
        {quoted("\xF5\x80\x80\x80"), false},
        {quoted("\xF8\x88\x80\x80\x80"), false},
        {quoted("\xFE"), false},
        {quoted("\xFF"), false},
        {quoted("\xC3"), false},
        {quoted("\xC3x"), false},
        {quoted("\xE2\x86"), false},
        {quoted("\xF0\x9F\x98"), false},
        {quoted("\xC3\xA9\xA9"), false},
        // numbers
        {"0", true},
        {"-0", true},
        {"1", true},
        {"-1", true},
        {"1.5", true},
        {"-1.5e10", true},
        {"1E5", true},
        {"1e+5", true},
        {"1e-5", true},
        {"1E-05", true},
        {"0.0", true},
        {"0e0", true},
        {"-0.0e-0", true},
        {"123456789012345678901234567890", true},
        {"18446744073709551615", true},
        {"18446744073709551616", true},
        {"-9223372036854775808", true},
        {"-9223372036854775809", true},
        {"1.7976931348623157e308", true},
        {"1e308", true},
        {"1e-400", true},
        {"-1e-400", true},
        {"2.5e-324", true},
        {"0.000000000000000000000000000000001e-300", true},
        {"1e0000000000000000000000000000", true},
        {"1e400", false},
        {"-1e400", false},
        {"1.8e308", false},
        {"1000000000e300", false},
        {"1e99999999999999999999", false},
        {"01", false},
        {"-01", false},
        {"00", false},
        {"0.", false},
        {"1.", false},
        {".5", false},
        {"-.5", false},
        {"-", false},
        {"--1", false},
        {"+1", false},
        {"1e", false},
        {"1e+", false},
        {"1E-", false},
        {"1.e5", false},
        {"1.5e", false},
        {"0x10", false},
        {"1_000", false},
        {"NaN", false},
        {"Infinity", false},
        {"-Infinity", false},
        // literals
        {"true", true},
        {"false", true},
        {"null", true},
        {"tru", false},
        {"True", false},
        {"nul", false},
        {"nulll", false},
        {"falsey", false},
        {"undefined", false},
        // containers
        {"[]", true},
        {"{}", true},
        {"[1,2,3]", true},
        {"[[],{}]", true},
        {"{\"a\":1}", true},
        {"{\"a\":{\"b\":[true,null]}}", true},
        {"{\"a\":1,\"a\":2}", true},
        {"{\"\":0}", true},
        {"{\"a\\u0062\":0}", true},
        {"[1,]", false},
        {"[,1]", false},
        {"[,]", false},
        {"{\"a\":1,}", false},
        {"{,}", false},
        {"{\"a\"}", false},
        {"{\"a\":}", false},
        {"{\"a\" 1}", false},
        {"{\"a\"::1}", false},
        {"{1:2}", false},
        {"{a:1}", false},
        {"{'a':1}", false},
        {"[1 2]", false},
        {"[1]]", false},
        {"[[1]", false},
        {"{}}", false},
        {"{", false},
        {"[", false},
        {"]", false},
        {"}", false},
        {"{\"a\":1", false},
        {"[1,", false},
        // whitespace, byte order mark, the ends of the text
        {" \t\n\r1 \t\n\r", true},
        {"[ 1 , 2 ]", true},
        {"{ \"a\" : 1 }", true},
        {"\n\n{}\n", true},
        {"\xEF\xBB\xBF{}", true},
        {"\xEF\xBB\xBF 1", true},
        {"\xEF\xBB{}", false},
        {"\xEF{}", false},
        {"\xEF\xBB\xBF\xEF\xBB\xBF{}", false},
        {" \xEF\xBB\xBF{}", false},
        {"\f1", false},
        {"\v1", false},
        {"\xC2\xA0" "1", false},
        {"/* note */ 1", false},
        {"1 // note", false},
        {"", false},
        {" ", false},
        {"\n", false},
        {"1 2", false},
        {"[1]x", false},
        {"{} {}", false},
        {"\"a\" \"b\"", false},
        {"truefalse", false},
        {"\0"s, false},
        {"[\0]"s, false},
        {"1\0"s, true},
        {"{}\0garbage"s, true},
        {"[] \0 ]]]"s, true},
    };
}

TEST(JsonSyntax, TableMatchesTheLibrary) {
    int valid = 0, invalid = 0;
    for (const auto& c : syntaxCases()) {
        const bool library = json::accept(c.text);
        // The table's own verdicts are checked too, so it says what it means.
        EXPECT_EQ(library, c.valid) << "library on: " << c.text;
        EXPECT_EQ(documentParses(c.text), library) << c.text;
        (library ? valid : invalid)++;
    }
    EXPECT_GT(valid, 50);
    EXPECT_GT(invalid, 100);
}

// Each case as the title of a progress step, read by both decoders.
std::string asTitle(const std::string& value) {
    return "{\"id\": \"00000000-0000-4000-8000-000000000001\", \"title\": " + value +
           ", \"isCompleted\": false, \"order\": 0}";
}

TEST(JsonSyntax, EachCaseInsideARecordReadsAsBefore) {
    for (const auto& c : syntaxCases()) {
        const std::string text = asTitle(c.text);
        EXPECT_EQ(documentParses(text), json::accept(text)) << text;
        EXPECT_TRUE(sameVerdict<ProgressStep>(text)) << text;
        // At the root, where a record is expected.
        EXPECT_TRUE(sameVerdict<ProgressStep>(c.text)) << c.text;
    }
}

TEST(JsonSyntax, StringsReadAsTheLibraryReadsThem) {
    int strings = 0;
    for (const auto& c : syntaxCases()) {
        if (!json::accept(c.text)) continue;
        const json parsed = json::parse(c.text);
        if (!parsed.is_string()) continue;
        const auto step = decodeRecord<ProgressStep>(asTitle(c.text));
        ASSERT_TRUE(step) << c.text << ": " << step.error;
        EXPECT_EQ(step.value->title, parsed.get<std::string>()) << c.text;
        ++strings;
    }
    EXPECT_GT(strings, 15);
}

TEST(JsonSyntax, NumbersReadAsTheLibraryReadsThem) {
    int numbers = 0;
    for (const auto& c : syntaxCases()) {
        if (!json::accept(c.text)) continue;
        const json parsed = json::parse(c.text);
        if (!parsed.is_number()) continue;
        // As a double.
        const std::string transition = "{\"enabled\": true, \"type\": \"Fade\", \"duration\": " + c.text + "}";
        if (!json::accept(transition)) continue;  // a byte order mark or a NUL only works at the root
        ++numbers;
        const auto mine = decodeRecord<SceneTransitionConfig>(transition);
        const auto reference = referenceDecodeRecord<SceneTransitionConfig>(transition);
        ASSERT_TRUE(mine && reference) << c.text << ": " << mine.error << " / " << reference.error;
        EXPECT_EQ(std::signbit(mine.value->duration), std::signbit(reference.value->duration)) << c.text;
        EXPECT_EQ(mine.value->duration, reference.value->duration) << c.text;
        EXPECT_EQ(mine.value->duration, parsed.get<double>()) << c.text;
        // As an int and as an unsigned 32-bit id, with their range rules.
        const std::string step = "{\"id\": \"00000000-0000-4000-8000-000000000001\", \"title\": \"\", "
                                 "\"isCompleted\": false, \"order\": " +
                                 c.text + "}";
        EXPECT_TRUE(sameVerdict<ProgressStep>(step)) << step;
        const auto mineStep = decodeRecord<ProgressStep>(step);
        const auto referenceStep = referenceDecodeRecord<ProgressStep>(step);
        if (mineStep && referenceStep) {
            EXPECT_EQ(mineStep.value->order, referenceStep.value->order) << c.text;
        }
        SourceConfiguration configuration;
        std::string text = encodeRecord(configuration);
        text.insert(1, "\n  \"screenId\": " + c.text + ",");
        EXPECT_TRUE(sameVerdict<SourceConfiguration>(text)) << c.text;
        const auto mineConfig = decodeRecord<SourceConfiguration>(text);
        const auto referenceConfig = referenceDecodeRecord<SourceConfiguration>(text);
        if (mineConfig && referenceConfig) {
            EXPECT_EQ(mineConfig.value->screenId, referenceConfig.value->screenId) << c.text;
        }
    }
    EXPECT_GT(numbers, 20);
    // Integral floats are integers; fractions are not.
    const std::string base = "{\"id\": \"00000000-0000-4000-8000-000000000001\", \"title\": \"\", "
                             "\"isCompleted\": false, \"order\": ";
    for (const char* number : {"1.0", "1.5", "-2e0", "2147483647", "2147483648", "-2147483648", "-2147483649",
                               "2147483647.0", "2147483648.0", "1e10", "-0.0", "9223372036854775808"})
        EXPECT_TRUE(sameVerdict<ProgressStep>(base + number + "}")) << number;
    EXPECT_EQ(decodeRecord<ProgressStep>(base + "1.5}").error, "order: expected an integer");
    EXPECT_EQ(decodeRecord<ProgressStep>(base + "2147483648}").error, "order: integer out of range");
    const auto integral = decodeRecord<ProgressStep>(base + "1.0}");
    ASSERT_TRUE(integral) << integral.error;
    EXPECT_EQ(integral.value->order, 1);
}

TEST(JsonSyntax, DuplicateKeysKeepTheLastOccurrence) {
    const std::string text = "{\"enabled\": true, \"type\": \"Fade\", \"duration\": 1, \"type\": \"None\", "
                             "\"duration\": 2.5, \"enabled\": false}";
    const auto mine = decodeRecord<SceneTransitionConfig>(text);
    ASSERT_TRUE(mine) << mine.error;
    EXPECT_EQ(*mine.value, (SceneTransitionConfig{false, TransitionType::none, 2.5}));
    EXPECT_TRUE(sameVerdict<SceneTransitionConfig>(text));
    // A later null or wrong type counts, too.
    EXPECT_EQ(decodeRecord<SceneTransitionConfig>(text + "x").error.rfind("(document): ", 0), 0u);
    const std::string laterNull = "{\"enabled\": true, \"type\": \"Fade\", \"duration\": 1, \"duration\": null}";
    EXPECT_EQ(decodeRecord<SceneTransitionConfig>(laterNull).error, "duration: null value");
    EXPECT_TRUE(sameVerdict<SceneTransitionConfig>(laterNull));
}

TEST(JsonSyntax, KeysWithEscapesAndInAnyOrder) {
    const std::string text = "{\"dur\\u0061tion\": 0.25, \"\\u0074ype\": \"Cross Dissolve\", \"enabled\": false}";
    const auto mine = decodeRecord<SceneTransitionConfig>(text);
    ASSERT_TRUE(mine) << mine.error;
    EXPECT_EQ(*mine.value, (SceneTransitionConfig{false, TransitionType::crossDissolve, 0.25}));
    EXPECT_TRUE(sameVerdict<SceneTransitionConfig>(text));
}

TEST(JsonSyntax, NestingLimitAsBefore) {
    for (int depth : {1, 2, 63, 64, 65, 66, 200}) {
        const std::string arrays = std::string(static_cast<std::size_t>(depth), '[') +
                                   std::string(static_cast<std::size_t>(depth), ']');
        EXPECT_EQ(documentParses(arrays), depth <= 64) << depth;
        EXPECT_TRUE(sameVerdict<ProgressStep>(arrays)) << depth;
        // Inside a record the record's own object adds one level.
        EXPECT_TRUE(sameVerdict<ProgressStep>(asTitle(arrays))) << depth;
        // Unclosed, or closed wrongly: too deep wins over the syntax error.
        EXPECT_TRUE(sameVerdict<ProgressStep>(std::string(static_cast<std::size_t>(depth), '{'))) << depth;
        EXPECT_TRUE(sameVerdict<ProgressStep>("x" + arrays)) << depth;
        // Brackets after a NUL byte are not read but still count.
        EXPECT_TRUE(sameVerdict<ProgressStep>(asTitle("1") + "\0"s + arrays)) << depth;
        // Brackets inside strings do not count.
        EXPECT_TRUE(sameVerdict<ProgressStep>(asTitle(quoted(arrays)))) << depth;
    }
    EXPECT_EQ(decodeRecord<ProgressStep>(std::string(65, '[') + "x").error, nestingError);
    EXPECT_EQ(decodeRecord<ProgressStep>("\"\\\\\"" + std::string(65, '[')).error, nestingError);
}

// ---------------------------------------------------------------- differential fuzz

// Ids of keyless slides are fresh on every read; they are the one thing two
// reads of the same text may differ in.
void adoptFreshSlideIds(Preset& mine, const Preset& reference, const std::string& text) {
    for (std::size_t s = 0; s < mine.scenes.size() && s < reference.scenes.size(); ++s)
        for (std::size_t k = 0; k < mine.scenes[s].sources.size() && k < reference.scenes[s].sources.size(); ++k) {
            auto& deck = mine.scenes[s].sources[k].configuration.slidesResource;
            const auto& other = reference.scenes[s].sources[k].configuration.slidesResource;
            if (!deck || !other) continue;
            for (std::size_t i = 0; i < deck->slides.size() && i < other->slides.size(); ++i) {
                const std::string id = deck->slides[i].id.toString();
                if (id != other->slides[i].id.toString() && text.find(id) == std::string::npos)
                    deck->slides[i].id = other->slides[i].id;
            }
        }
}

TEST(JsonSyntax, TwoThousandByteMutationsReadAsBefore) {
    const std::string golden = encodePreset(testing::makeGoldenPreset());
    std::mt19937 rng(20261123);
    const std::vector<std::string> pieces{
        "{", "}", "[", "]", ",", ":", "\"", "\\", "/", " ", "\n", "\t", "0", "1", "9", "-", "+", ".", "e",
        "E", "t", "f", "n", "u", "null", "true", "\\u", "\\uD800", "\\uDC00", "\\u0041", "\x80", "\xC3", "\xE2",
        "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC0\xAF", "\x01", "\x7F", "\0"s, "1e400", "1e-400", "\xEF\xBB\xBF",
        "00", "0.5", ",\"x\": 1", "\"id\": null, \"id\""};
    int accepted = 0, rejected = 0;
    for (int i = 0; i < 2000; ++i) {
        std::string text = golden;
        const int edits = 1 + static_cast<int>(rng() % 3);
        for (int e = 0; e < edits; ++e) {
            const std::size_t at = rng() % (text.size() + 1);
            switch (rng() % 5) {
                case 0:  // insert
                    text.insert(at, pieces[rng() % pieces.size()]);
                    break;
                case 1:  // delete a few bytes
                    text.erase(at, 1 + rng() % 4);
                    break;
                case 2:  // replace one byte
                    if (at < text.size()) text[at] = pieces[rng() % pieces.size()][0];
                    break;
                case 3: {  // repeat a line, which repeats a key or an element
                    const std::size_t start = text.rfind('\n', at == 0 ? 0 : at - 1);
                    const std::size_t end = text.find('\n', at);
                    if (start != std::string::npos && end != std::string::npos)
                        text.insert(end, text.substr(start, end - start));
                    break;
                }
                default:  // cut
                    text.resize(at);
                    break;
            }
        }
        const auto mine = decodePreset(text);
        const auto reference = referenceDecodeRecord<Preset>(text);
        ASSERT_EQ(bool(mine), bool(reference)) << "mutation " << i << ": \"" << mine.error << "\" vs \""
                                               << reference.error << "\"\n"
                                               << text;
        if (mine) {
            ++accepted;
            Preset read = *mine.value;
            adoptFreshSlideIds(read, *reference.value, text);
            EXPECT_TRUE(testing::deepEqual(read, *reference.value)) << "mutation " << i;
            EXPECT_TRUE(sameTextUpToShortestNumbers(encodePreset(read), referenceEncodeRecord(*reference.value)))
                << "mutation " << i;
        } else {
            ++rejected;
            if (!(isSyntaxError(mine.error) && isSyntaxError(reference.error))) {
                EXPECT_EQ(mine.error, reference.error) << "mutation " << i;
            }
        }
    }
    RecordProperty("accepted", accepted);
    RecordProperty("rejected", rejected);
    EXPECT_GT(accepted, 100);
    EXPECT_GT(rejected, 500);
}

// ---------------------------------------------------------------- writing

TEST(JsonWriting, GoldenPresetAsBefore) {
    const Preset p = testing::makeGoldenPreset();
    EXPECT_EQ(encodePreset(p), referenceEncodeRecord(p));
    for (const auto& scene : p.scenes) EXPECT_EQ(encodeRecord(scene), referenceEncodeRecord(scene));
    EXPECT_EQ(encodeRecord(*p.branding), referenceEncodeRecord(*p.branding));
    EXPECT_EQ(encodeRecord(*p.progressBar), referenceEncodeRecord(*p.progressBar));
    EXPECT_EQ(encodeRecord(*p.teleprompter), referenceEncodeRecord(*p.teleprompter));
    const Slide slide;
    EXPECT_EQ(encodeRecord(slide), referenceEncodeRecord(slide));
    StreamingScene empty;
    empty.sources.clear();
    empty.gradientColors.clear();
    EXPECT_EQ(encodeRecord(empty), referenceEncodeRecord(empty));
}

// Strings from random bytes: quotes, backslashes, slashes, control
// characters, valid and broken UTF-8 of every length.
std::string randomText(std::mt19937& rng) {
    static const std::vector<std::string> pieces{
        "a", "Z", " ", "\"", "\\", "/", "\b", "\f", "\n", "\r", "\t", "\x01", "\x1F", "\x7F", "\0"s,
        "\xC3\xA9", "\xE2\x86\x98", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF", "\xEF\xBF\xBD", "\x80", "\xBF",
        "\xC0\xAF", "\xC1", "\xC3", "\xE0\x80", "\xE0\xA0", "\xED\xA0\x80", "\xED\x9F\xBF", "\xF0\x8F",
        "\xF0\x90\x80", "\xF4\x90\x80\x80", "\xF5", "\xFE", "\xFF", "\xE2\x86", "\xF0\x9F\x98"};
    std::string out;
    const int n = static_cast<int>(rng() % 12);
    for (int i = 0; i < n; ++i) {
        if (rng() % 4 == 0)
            out.push_back(static_cast<char>(rng() % 256));
        else
            out += pieces[rng() % pieces.size()];
    }
    return out;
}

// Doubles of every kind: random bit patterns, short decimals, integers
// around 2^53, tiny and huge magnitudes, signed zeros and non-finite values.
double randomDouble(std::mt19937_64& rng) {
    switch (rng() % 8) {
        case 0: {
            double d;
            const std::uint64_t bits = rng();
            std::memcpy(&d, &bits, sizeof d);
            return d;
        }
        case 1: return static_cast<double>(static_cast<std::int64_t>(rng() % 2000001) - 1000000) / 1000.0;
        case 2: return std::ldexp(1.0, 53) + static_cast<double>(static_cast<int>(rng() % 9) - 4);
        case 3: return std::pow(10.0, static_cast<double>(static_cast<int>(rng() % 60) - 30));
        case 4: return static_cast<double>(rng() % 100) * std::pow(10.0, static_cast<double>(rng() % 40) - 20);
        case 5: {
            const double edgeValues[] = {0.0, -0.0, 1e-5, 1e-4, 1e15, 1e16, 1e21, 0.1 + 0.2,
                                       1.0 / 3.0, -1e300, 5e-324, std::numeric_limits<double>::max(),
                                       std::numeric_limits<double>::infinity(), std::nan("")};
            return edgeValues[rng() % std::size(edgeValues)];
        }
        case 6: return static_cast<double>(static_cast<std::int64_t>(rng())) / static_cast<double>(1 + rng() % 1000);
        default: return std::uniform_real_distribution<double>(-1e6, 1e6)(rng);
    }
}

TEST(JsonWriting, RandomRecordsAsBefore) {
    std::mt19937 rng(7);
    std::mt19937_64 rng64(11);
    int differences = 0, shorter = 0;
    for (int i = 0; i < 3000; ++i) {
        SourceConfiguration c;
        c.brightness = randomDouble(rng64);
        c.scale = randomDouble(rng64);
        c.horizontalOffset = randomDouble(rng64);
        c.position = {randomDouble(rng64), randomDouble(rng64)};
        c.size = {randomDouble(rng64), randomDouble(rng64)};
        c.backgroundColor = {randomDouble(rng64), randomDouble(rng64), randomDouble(rng64), randomDouble(rng64)};
        c.cameraContrast = randomDouble(rng64);
        c.windowTitle = randomText(rng);
        c.windowOwner = randomText(rng);
        c.cameraDeviceId = randomText(rng);
        if (rng() % 2) c.screenId = static_cast<std::uint32_t>(rng());
        const std::string mine = encodeRecord(c);
        const std::string reference = referenceEncodeRecord(c);
        if (mine == reference) continue;
        const auto same = sameTextUpToShortestNumbers(mine, reference);
        if (same) {
            ++shorter;
            continue;
        }
        ++differences;
        ADD_FAILURE() << same.message();
        if (differences > 5) break;
    }
    RecordProperty("recordsWithShorterNumbers", shorter);
    EXPECT_EQ(differences, 0);
}

TEST(JsonWriting, RandomDoublesReadBackExactly) {
    std::mt19937_64 rng(5);
    for (int i = 0; i < 20000; ++i) {
        SceneTransitionConfig t;
        t.duration = randomDouble(rng);
        if (!std::isfinite(t.duration)) continue;
        const std::string text = encodeRecord(t);
        const auto back = decodeRecord<SceneTransitionConfig>(text);
        ASSERT_TRUE(back) << text << ": " << back.error;
        // Signed zero is written as the integer 0.
        EXPECT_TRUE(back.value->duration == t.duration) << text;
        EXPECT_EQ(json::parse(text)["duration"].get<double>(), t.duration) << text;
    }
}

TEST(JsonWriting, InvalidUtf8IsReplacedAsBefore) {
    Preset p = testing::makeGoldenPreset();
    p.name = "a\xC3(b\xE2\x82 \xF0\x9F\x98 \xED\xA0\x80 \xC0\xAF \xFF/";
    const std::string text = encodePreset(p);
    EXPECT_EQ(text, referenceEncodeRecord(p));
    EXPECT_NE(text.find("\"a\xEF\xBF\xBD(b\xEF\xBF\xBD \xEF\xBF\xBD \xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD "
                        "\xEF\xBF\xBD\xEF\xBF\xBD \xEF\xBF\xBD\\/\""),
              std::string::npos)
        << text;
    EXPECT_TRUE(decodePreset(text));
}

}  // namespace
}  // namespace orvane
