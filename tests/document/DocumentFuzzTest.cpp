#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <set>

#include "document/DocumentCodec.h"
#include "support/DeepEqual.h"
#include "support/GoldenPresets.h"

namespace orvane {
namespace {

using nlohmann::json;

// Keys that may be missing or null without failing the document.
const std::set<std::string> optionalKeys{
    "activeSceneId", "branding",    "progressBar", "teleprompter", "selectedSourceId",
    "cameraDeviceId", "screenId",   "windowId",    "windowTitle",  "windowOwner",
    "contentType",    "slidesResource", "logoImagePath", "imageUrl"};

bool isDigits(std::string_view s);

// "/scenes/2/sources/0/configuration/x" -> "scenes[2].sources[0].configuration.x"
std::string readerPath(const json::json_pointer& pointer) {
    std::string out;
    std::string text = pointer.to_string();
    std::size_t pos = 1;
    while (pos <= text.size() && !text.empty()) {
        std::size_t next = text.find('/', pos);
        std::string token = text.substr(pos, next == std::string::npos ? std::string::npos : next - pos);
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

bool isDigits(std::string_view s) {
    return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool parentIsSlide(const json::json_pointer& p) {
    const std::string parent = p.parent_pointer().to_string();
    const auto slash = parent.rfind('/');
    if (slash == std::string::npos || !isDigits(std::string_view(parent).substr(slash + 1))) return false;
    return std::string_view(parent).substr(0, slash).ends_with("/slides");
}

// "(document): ..." or "key[0].key.key[3]: ..." with a non-empty message.
bool hasPathShape(const std::string& error) {
    const auto colon = error.find(": ");
    if (colon == std::string::npos || colon + 2 >= error.size()) return false;
    const std::string_view path = std::string_view(error).substr(0, colon);
    if (path == "(document)") return true;
    bool expectName = true;
    for (std::size_t i = 0; i < path.size();) {
        if (expectName) {
            const auto start = i;
            while (i < path.size() && std::isalpha(static_cast<unsigned char>(path[i]))) ++i;
            if (i == start) return false;
            expectName = false;
        } else if (path[i] == '[') {
            const auto close = path.find(']', i);
            if (close == std::string_view::npos || !isDigits(path.substr(i + 1, close - i - 1))) return false;
            i = close + 1;
        } else if (path[i] == '.') {
            expectName = true;
            ++i;
        } else {
            return false;
        }
    }
    return !expectName;
}

json otherType(const json& value, std::mt19937& rng) {
    std::vector<json> choices{json(42), json("text"), json(true), json::array({1, 2, 3}), json::object({{"k", 1}}),
                              json(0.5)};
    for (;;) {
        json c = choices[rng() % choices.size()];
        const bool sameKind = (c.is_number() && value.is_number()) || c.type() == value.type();
        if (!sameKind) return c;
    }
}

class Mutator {
public:
    Mutator(std::uint32_t seed, const json& original) : rng_(seed), original_(original) {
        collect(original, json::json_pointer(), nodes_);
        for (const auto& n : nodes_)
            if (original.at(n).is_string()) strings_.push_back(n);
    }

    struct Mutation {
        std::string text;
        std::optional<std::string> mustFailAt;  // reader path that must be named
        std::string what;
    };

    Mutation next() {
        const auto& nodes = nodes_;
        json doc = original_;
        const auto& target = nodes[1 + rng_() % (nodes.size() - 1)];
        const std::string key = target.back();
        const bool member = isObjectMember(doc, target);
        const bool required = member && !optionalKeys.count(key) && !parentIsSlide(target);
        switch (rng_() % 7) {
            case 0:
                if (member) {
                    doc.at(target.parent_pointer()).erase(key);
                    return {doc.dump(), required ? std::optional(readerPath(target)) : std::nullopt,
                            "drop " + target.to_string()};
                }
                [[fallthrough]];
            case 1:
                doc.at(target) = nullptr;
                return {doc.dump(), required ? std::optional(readerPath(target)) : std::nullopt,
                        "null " + target.to_string()};
            case 2:
                doc.at(target) = otherType(doc.at(target), rng_);
                return {doc.dump(), std::nullopt, "retype " + target.to_string()};
            case 3: {
                const auto& s = strings_[rng_() % strings_.size()];
                doc.at(s) = "Bogus Value \xE2\x86\x97";
                return {doc.dump(2), std::nullopt, "unknown value " + s.to_string()};
            }
            case 4: {
                std::string text = doc.dump(2);
                text.resize(rng_() % text.size());
                return {text, std::string("(document)"), "cut"};
            }
            case 5: {
                std::string text = doc.dump(2);
                const char bad[] = {'\xFF', '\xC3', '\xE2', '\x80'};
                text.insert(text.begin() + static_cast<long>(rng_() % text.size()), bad[rng_() % 4]);
                return {text, std::nullopt, "invalid utf-8"};
            }
            default: {
                json nested = doc.at(target);
                const int depth = 1 + static_cast<int>(rng_() % 200);
                for (int i = 0; i < depth; ++i) nested = json::array({nested});
                doc.at(target) = nested;
                return {doc.dump(), std::nullopt, "nest " + std::to_string(depth) + " at " + target.to_string()};
            }
        }
    }

private:
    std::mt19937 rng_;
    const json& original_;
    std::vector<json::json_pointer> nodes_;
    std::vector<json::json_pointer> strings_;
};

TEST(DocumentFuzz, TenThousandMutationsReadWholeOrFailWithAPath) {
    const json original = json::parse(encodePreset(testing::makeGoldenPreset()));
    Mutator mutator(20261122, original);
    int accepted = 0, rejected = 0;
    for (int i = 0; i < 10000; ++i) {
        const auto m = mutator.next();
        auto decoded = decodePreset(m.text);
        if (decoded) {
            ++accepted;
            EXPECT_FALSE(m.mustFailAt) << m.what;
            // Whole, never partial: it writes and reads back to the same document.
            const std::string again = encodePreset(*decoded.value);
            auto back = decodePreset(again);
            ASSERT_TRUE(back) << m.what << ": " << back.error;
            EXPECT_TRUE(testing::deepEqual(*back.value, *decoded.value)) << m.what;
        } else {
            ++rejected;
            EXPECT_TRUE(hasPathShape(decoded.error)) << m.what << " -> " << decoded.error;
            if (m.mustFailAt) {
                EXPECT_EQ(decoded.error.substr(0, m.mustFailAt->size() + 2), *m.mustFailAt + ": ")
                    << m.what << " -> " << decoded.error;
            }
        }
    }
    // Both outcomes must actually occur, or the mutations test nothing.
    EXPECT_GT(accepted, 100);
    EXPECT_GT(rejected, 5000);
}

}  // namespace
}  // namespace orvane
