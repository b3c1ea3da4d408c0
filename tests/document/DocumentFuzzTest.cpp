// Ten thousand seeded mutations of the full preset. Each mutation knows what
// the reader must make of it: either a failure that names the mutated place,
// or a preset that writes back to exactly the mutated document (with the
// slide defaults filled in where a slide lost a key). Nothing in between: no
// default silently filled, no element silently skipped.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>
#include <set>

#include "document/DocumentCodec.h"
#include "support/DeepEqual.h"
#include "support/GoldenPresets.h"

namespace orvane {
namespace document_fuzz_test {

using nlohmann::json;

// Keys that may be missing or null without failing the document.
const std::set<std::string> optionalKeys{
    "activeSceneId",  "branding", "progressBar", "teleprompter", "selectedSourceId", "cameraDeviceId",
    "screenId",       "windowId", "windowTitle", "windowOwner",  "contentType",      "slidesResource",
    "logoImagePath",  "imageUrl"};

// String keys that hold free text: any string is a valid value. Every other
// string in the preset is a UUID or a stored enumeration string.
const std::set<std::string> freeTextKeys{"name",          "icon",          "title",         "content",
                                         "text",          "imageUrl",      "logoImagePath", "cameraDeviceId",
                                         "windowTitle",   "windowOwner"};

// What a slide takes for a key that is missing or null ("id" aside: a fresh one).
const json& slideDefaults() {
    static const json defaults = {
        {"title", ""},
        {"content", ""},
        {"imagePosition", "top"},
        {"imageSize", "medium"},
        {"order", 0},
        {"textScale", 1.0},
        {"textAlignment", "leading"},
        {"backgroundColor", {{"red", 0.1}, {"green", 0.1}, {"blue", 0.12}, {"alpha", 1.0}}}};
    return defaults;
}

bool isDigits(std::string_view s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "/scenes/2/sources/0/configuration/x" -> "scenes[2].sources[0].configuration.x"
std::string readerPath(const json::json_pointer& pointer) {
    std::string out;
    const std::string text = pointer.to_string();
    std::size_t pos = 1;
    while (pos <= text.size() && !text.empty()) {
        const std::size_t next = text.find('/', pos);
        const std::string token = text.substr(pos, next == std::string::npos ? std::string::npos : next - pos);
        if (isDigits(token))
            out += "[" + token + "]";
        else
            out += (out.empty() ? "" : ".") + token;
        if (next == std::string::npos) break;
        pos = next + 1;
    }
    return out;
}

void collect(const json& j, const json::json_pointer& at, std::vector<json::json_pointer>& out) {
    out.push_back(at);
    if (j.is_object())
        for (auto it = j.begin(); it != j.end(); ++it) collect(it.value(), at / it.key(), out);
    else if (j.is_array())
        for (std::size_t i = 0; i < j.size(); ++i) collect(j[i], at / i, out);
}

bool isObjectMember(const json& root, const json::json_pointer& p) {
    return !p.empty() && root.at(p.parent_pointer()).is_object();
}

// A member of a slide object: scenes/../slidesResource/slides/<n>/<key>.
bool parentIsSlide(const json::json_pointer& p) {
    if (p.empty()) return false;
    const std::string parent = p.parent_pointer().to_string();
    const auto slash = parent.rfind('/');
    if (slash == std::string::npos || !isDigits(std::string_view(parent).substr(slash + 1))) return false;
    return std::string_view(parent).substr(0, slash).ends_with("/slidesResource/slides");
}

// Levels of arrays and objects, the outermost counting one.
int nestingDepth(const json& j) {
    if (!j.is_structured()) return 0;
    int deepest = 0;
    for (const auto& child : j) deepest = std::max(deepest, nestingDepth(child));
    return 1 + deepest;
}

json otherType(const json& value, std::mt19937& rng) {
    const std::vector<json> choices{json(42), json("text"), json(true), json::array({1, 2, 3}),
                                    json::object({{"k", 1}}), json(0.5)};
    for (;;) {
        json c = choices[rng() % choices.size()];
        const bool sameKind = (c.is_number() && value.is_number()) || c.type() == value.type();
        if (!sameKind) return c;
    }
}

json randomValue(std::mt19937& rng, int depth = 0) {
    switch (rng() % (depth < 3 ? 7 : 5)) {
        case 0: return nullptr;
        case 1: return static_cast<int>(rng() % 1000) - 500;
        case 2: return "x\xE2\x86\x97/" + std::to_string(rng() % 100);
        case 3: return rng() % 2 == 0;
        case 4: return 0.25 * static_cast<double>(rng() % 17);
        case 5: return json::array({randomValue(rng, depth + 1), randomValue(rng, depth + 1)});
        default: return json::object({{"k" + std::to_string(rng() % 9), randomValue(rng, depth + 1)}});
    }
}

// Line and column (bytes, from 1) of a byte offset, as the parser counts them.
std::pair<std::size_t, std::size_t> lineAndColumn(const std::string& text, std::size_t offset) {
    std::size_t line = 1, column = 1;
    for (std::size_t i = 0; i < offset; ++i) {
        if (text[i] == '\n') {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
    return {line, column};
}

// What a mutation must lead to.
struct Mutation {
    enum class Kind {
        drop,
        null,
        retype,
        unknownValue,
        cut,
        invalidUtf8,
        nest,
        unknownKey,
    };
    enum class Expect {
        failAt,              // an error whose path is exactly `path`
        failAtOrContainer,   // `path`, or the array holding it when it is an element
        failAtOrInside,      // `path`, a place inside it, or the array holding it
        failInDocument,      // a "(document): " error
        accept,              // reads, and writes back as `expected`
    };

    Kind kind = Kind::drop;
    Expect expect = Expect::accept;
    std::string text;
    std::string what;
    json::json_pointer target;
    std::string path;           // reader path of the target
    json expected;              // for `accept`
    bool freshSlideId = false;  // for `accept`: the slide's id was dropped
    std::size_t line = 0, column = 0;  // for invalid UTF-8: where the byte went in
};

class Mutator {
public:
    Mutator(std::uint32_t seed, const json& original)
        : rng_(seed), original_(original), work_(original), originalPretty_(original.dump(2)) {
        collect(original, json::json_pointer(), nodes_);
        for (const auto& n : nodes_) {
            if (original.at(n).is_string()) strings_.push_back(n);
            if (original.at(n).is_object()) objects_.push_back(n);
        }
    }

    // The working copy, as it is between mutations.
    const json& working() const { return work_; }

    // Each mutation is made on the one working copy and undone once its
    // text is taken, so that only the accepted ones copy the whole document.
    Mutation next() {
        json& doc = work_;
        const json::json_pointer target = nodes_[1 + rng_() % (nodes_.size() - 1)];
        const std::string key = target.back();
        const bool member = isObjectMember(doc, target);
        const bool slideKey = member && parentIsSlide(target);
        const bool optional = member && optionalKeys.count(key) > 0;
        using Kind = Mutation::Kind;
        using Expect = Mutation::Expect;

        Mutation m;
        m.target = target;
        m.path = readerPath(target);
        switch (rng_() % 8) {
            case 0:
            case 1: {
                const bool drop = member && rng_() % 2 == 0;
                m.kind = drop ? Kind::drop : Kind::null;
                m.what = (drop ? "drop " : "null ") + target.to_string();
                json saved = std::move(doc.at(target));
                if (drop)
                    doc.at(target.parent_pointer()).erase(key);
                else
                    doc.at(target) = nullptr;
                m.text = doc.dump();
                if (optional) {
                    m.expect = Expect::accept;
                    m.expected = doc;
                    m.expected.at(target.parent_pointer()).erase(key);
                } else if (slideKey) {
                    m.expect = Expect::accept;
                    m.expected = doc;
                    json& slide = m.expected.at(target.parent_pointer());
                    if (key == "id") {
                        slide[key] = saved;  // replaced once the fresh id is known
                        m.freshSlideId = true;
                    } else {
                        slide[key] = slideDefaults().at(key);
                    }
                } else {
                    // A null in an array may be named by the array it breaks
                    // (a point that is no longer two numbers).
                    m.expect = member ? Expect::failAt : Expect::failAtOrContainer;
                }
                if (drop)
                    doc.at(target.parent_pointer())[key] = std::move(saved);
                else
                    doc.at(target) = std::move(saved);
                return m;
            }
            case 2: {
                m.kind = Kind::retype;
                m.what = "retype " + target.to_string();
                json saved = std::move(doc.at(target));
                doc.at(target) = otherType(saved, rng_);
                m.text = doc.dump();
                m.expect = Expect::failAtOrContainer;
                doc.at(target) = std::move(saved);
                return m;
            }
            case 3: {
                const auto& s = strings_[rng_() % strings_.size()];
                m.kind = Kind::unknownValue;
                m.target = s;
                m.path = readerPath(s);
                m.what = "unknown value " + s.to_string();
                json saved = std::move(doc.at(s));
                doc.at(s) = "Bogus Value \xE2\x86\x97";
                m.text = doc.dump(2);
                if (freeTextKeys.count(s.back())) {
                    m.expect = Expect::accept;
                    m.expected = doc;
                } else {
                    m.expect = Expect::failAt;
                }
                doc.at(s) = std::move(saved);
                return m;
            }
            case 4:
                m.kind = Kind::cut;
                m.what = "cut";
                m.text = originalPretty_;
                m.text.resize(rng_() % m.text.size());
                m.expect = Expect::failInDocument;
                return m;
            case 5: {
                // One byte that cannot stand where it lands: a stray
                // continuation byte, a lead byte without its continuation, or
                // a byte that is never UTF-8.
                m.kind = Kind::invalidUtf8;
                m.text = originalPretty_;
                const char bad[] = {'\xFF', '\xC3', '\xE2', '\x80'};
                const std::size_t at = rng_() % m.text.size();
                m.text.insert(m.text.begin() + static_cast<long>(at), bad[rng_() % 4]);
                std::tie(m.line, m.column) = lineAndColumn(m.text, at);
                m.what = "invalid utf-8 at byte " + std::to_string(at);
                m.expect = Expect::failInDocument;
                return m;
            }
            case 6: {
                m.kind = Kind::nest;
                json saved = doc.at(target);
                json nested = saved;
                const int depth = 1 + static_cast<int>(rng_() % 200);
                for (int i = 0; i < depth; ++i) nested = json::array({std::move(nested)});
                doc.at(target) = std::move(nested);
                m.text = doc.dump();
                m.what = "nest " + std::to_string(depth) + " at " + target.to_string();
                m.expect = nestingDepth(doc) > 64 ? Expect::failInDocument : Expect::failAtOrInside;
                doc.at(target) = std::move(saved);
                return m;
            }
            default: {
                // An unknown key in any object, the root included.
                const auto& object = objects_[rng_() % objects_.size()];
                m.kind = Kind::unknownKey;
                m.target = object;
                m.path = readerPath(object);
                const std::string name = "unknownKey" + std::to_string(rng_() % 5);
                doc.at(object)[name] = randomValue(rng_);
                m.what = "unknown key " + name + " in " + object.to_string();
                m.text = doc.dump(2);
                m.expect = Expect::accept;
                doc.at(object).erase(name);
                return m;
            }
        }
    }

private:
    std::mt19937 rng_;
    const json& original_;
    json work_;
    const std::string originalPretty_;
    std::vector<json::json_pointer> nodes_;
    std::vector<json::json_pointer> strings_;
    std::vector<json::json_pointer> objects_;
};

std::string errorPath(const std::string& error) {
    const auto colon = error.find(": ");
    return colon == std::string::npos ? std::string() : error.substr(0, colon);
}

// The path of the array that holds `path`, when `path` is an element.
std::optional<std::string> containerPath(const std::string& path) {
    if (path.empty() || path.back() != ']') return std::nullopt;
    return path.substr(0, path.rfind('['));
}

bool isInside(const std::string& path, const std::string& outer) {
    return path == outer ||
           (path.size() > outer.size() && path.starts_with(outer) && (path[outer.size()] == '[' || path[outer.size()] == '.'));
}

// Checks a failed read against what the mutation calls for.
void checkFailure(const Mutation& m, const std::string& error) {
    using Expect = Mutation::Expect;
    using Kind = Mutation::Kind;
    const std::string at = errorPath(error);
    ASSERT_FALSE(at.empty()) << m.what << " -> " << error;
    ASSERT_GT(error.size(), at.size() + 2) << m.what << " -> " << error << ": no message";
    switch (m.expect) {
        case Expect::failAt:
            EXPECT_EQ(at, m.path) << m.what << " -> " << error;
            break;
        case Expect::failAtOrContainer:
            EXPECT_TRUE(at == m.path || at == containerPath(m.path)) << m.what << " -> " << error;
            break;
        case Expect::failAtOrInside:
            EXPECT_TRUE(isInside(at, m.path) || at == containerPath(m.path)) << m.what << " -> " << error;
            break;
        case Expect::failInDocument:
            EXPECT_EQ(at, "(document)") << m.what << " -> " << error;
            if (m.kind == Kind::invalidUtf8) {
                // The parser names the line of the bad byte, and a column at
                // most four bytes before it (the start of the multi-byte
                // sequence or of the "false" it broke) or one after (the
                // continuation byte it left stranded).
                static const std::regex where(R"(^\(document\): syntax error at line (\d+), column (\d+): .+)");
                std::smatch match;
                ASSERT_TRUE(std::regex_match(error, match, where)) << m.what << " -> " << error;
                EXPECT_EQ(std::stoul(match[1]), m.line) << m.what << " -> " << error;
                const long column = static_cast<long>(std::stoul(match[2]));
                EXPECT_GE(column, static_cast<long>(m.column) - 4) << m.what << " -> " << error;
                EXPECT_LE(column, static_cast<long>(m.column) + 1) << m.what << " -> " << error;
            }
            break;
        case Expect::accept:
            ADD_FAILURE() << m.what << " must read, but failed with " << error;
            break;
    }
}

// Checks a preset read from a mutation that had to be accepted.
void checkAccepted(const Mutation& m, const Preset& decoded, const json& original, const std::string& originalText) {
    const std::string written = encodePreset(decoded);
    if (m.kind == Mutation::Kind::unknownKey) {
        // Unknown keys leave no trace: the same bytes as before.
        EXPECT_EQ(written, originalText) << m.what;
        return;
    }
    json actual = json::parse(written);
    json expected = m.expected;
    if (m.freshSlideId) {
        const std::string fresh = actual.at(m.target).get<std::string>();
        EXPECT_TRUE(std::regex_match(fresh, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}")))
            << m.what << " -> " << fresh;
        EXPECT_NE(fresh, original.at(m.target).get<std::string>()) << m.what;
        expected.at(m.target) = fresh;
    }
    EXPECT_EQ(actual, expected) << m.what << "\n" << json::diff(expected, actual).dump();
    // Whole, never partial: it writes and reads back to the same document.
    auto back = decodePreset(written);
    ASSERT_TRUE(back) << m.what << ": " << back.error;
    EXPECT_TRUE(testing::deepEqual(*back.value, decoded)) << m.what;
}

TEST(DocumentFuzz, TenThousandMutationsReadWholeOrFailWhereTheyHit) {
    const std::string originalText = encodePreset(testing::makeGoldenPreset());
    const json original = json::parse(originalText);
    Mutator mutator(20261122, original);
    using Kind = Mutation::Kind;
    std::map<Kind, int> accepted, rejected;
    int acceptedSlideDefaults = 0, acceptedOptionalGone = 0;
    for (int i = 0; i < 10000; ++i) {
        const auto m = mutator.next();
        const auto decoded = decodePreset(m.text);
        if (decoded) {
            ++accepted[m.kind];
            ASSERT_EQ(m.expect, Mutation::Expect::accept) << m.what << " read, but must fail";
            if (m.kind == Kind::drop || m.kind == Kind::null) {
                if (parentIsSlide(m.target) && !optionalKeys.count(m.target.back()))
                    ++acceptedSlideDefaults;
                else
                    ++acceptedOptionalGone;
            }
            checkAccepted(m, *decoded.value, original, originalText);
        } else {
            ++rejected[m.kind];
            checkFailure(m, decoded.error);
        }
        if (::testing::Test::HasFatalFailure()) return;
    }
    // Each mutation was undone: every one of them started from the original.
    EXPECT_EQ(mutator.working(), original);
    // Every kind of mutation occurred, and the accepted ones in each way.
    for (Kind kind : {Kind::drop, Kind::null, Kind::retype, Kind::unknownValue, Kind::cut, Kind::invalidUtf8,
                      Kind::nest}) {
        EXPECT_GT(rejected[kind], 100) << static_cast<int>(kind);
    }
    EXPECT_EQ(accepted[Kind::retype] + accepted[Kind::cut] + accepted[Kind::invalidUtf8] + accepted[Kind::nest], 0);
    EXPECT_EQ(rejected[Kind::unknownKey], 0);
    EXPECT_GT(accepted[Kind::unknownKey], 1000);
    EXPECT_GT(accepted[Kind::unknownValue], 100);
    EXPECT_GT(acceptedSlideDefaults, 20);
    EXPECT_GT(acceptedOptionalGone, 20);
}

}  // namespace
}  // namespace orvane
