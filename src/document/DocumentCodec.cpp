#include "document/DocumentCodec.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "document/JsonDocument.h"
#include "document/JsonWriter.h"

namespace orvane {

namespace {

// Deeper than any real document; refusing deeper input keeps hostile files
// from exhausting the stack.
constexpr int maxNestingDepth = 64;

// ---------------------------------------------------------------- the keys

// What a missing key means when reading, and whether an empty value is
// written.
enum class Presence {
    required,  // missing or null fails the document; always written
    optional,  // a std::optional member: missing or null reads as no value;
               // written only when it holds one
    tolerant,  // missing or null keeps the member's default; always written
};

// One key of a record: its name in the file and the member it stores.
template <typename Record, typename Member, Presence presence>
struct RecordField {
    std::string_view key;
    Member Record::*member;
};

template <typename Record, typename Member>
constexpr RecordField<Record, Member, Presence::required> requiredKey(std::string_view key, Member Record::*member) {
    return {key, member};
}

template <typename Record, typename Member>
constexpr RecordField<Record, std::optional<Member>, Presence::optional> optionalKey(
    std::string_view key, std::optional<Member> Record::*member) {
    return {key, member};
}

template <typename Record, typename Member>
constexpr RecordField<Record, Member, Presence::tolerant> tolerantKey(std::string_view key, Member Record::*member) {
    return {key, member};
}

// Each record's keys in the order they are written, which is the order the
// record declares its members. The one table serves writing and reading.
template <typename T>
struct RecordFields;

template <>
struct RecordFields<CodableColor> {
    using R = CodableColor;
    static constexpr std::tuple fields{
        requiredKey("red", &R::red),
        requiredKey("green", &R::green),
        requiredKey("blue", &R::blue),
        requiredKey("alpha", &R::alpha)
    };
};

template <>
struct RecordFields<SceneTransitionConfig> {
    using R = SceneTransitionConfig;
    static constexpr std::tuple fields{
        requiredKey("enabled", &R::enabled),
        requiredKey("type", &R::type),
        requiredKey("duration", &R::duration)
    };
};

template <>
struct RecordFields<Slide> {
    using R = Slide;
    static constexpr std::tuple fields{
        tolerantKey("id", &R::id),
        tolerantKey("title", &R::title),
        tolerantKey("content", &R::content),
        optionalKey("imageUrl", &R::imageUrl),
        tolerantKey("imagePosition", &R::imagePosition),
        tolerantKey("imageSize", &R::imageSize),
        tolerantKey("order", &R::order),
        tolerantKey("textScale", &R::textScale),
        tolerantKey("textAlignment", &R::textAlignment),
        tolerantKey("backgroundColor", &R::backgroundColor)
    };
};

template <>
struct RecordFields<SlidesResource> {
    using R = SlidesResource;
    static constexpr std::tuple fields{
        requiredKey("id", &R::id),
        requiredKey("title", &R::title),
        requiredKey("slides", &R::slides),
        requiredKey("currentSlideIndex", &R::currentSlideIndex),
        requiredKey("backgroundColor", &R::backgroundColor),
        requiredKey("textColor", &R::textColor),
        requiredKey("accentColor", &R::accentColor),
        requiredKey("textScale", &R::textScale),
        requiredKey("textAlignment", &R::textAlignment)
    };
};

template <>
struct RecordFields<SourceConfiguration> {
    using R = SourceConfiguration;
    static constexpr std::tuple fields{
        requiredKey("position", &R::position),
        requiredKey("size", &R::size),
        optionalKey("cameraDeviceId", &R::cameraDeviceId),
        optionalKey("screenId", &R::screenId),
        optionalKey("windowId", &R::windowId),
        optionalKey("windowTitle", &R::windowTitle),
        optionalKey("windowOwner", &R::windowOwner),
        optionalKey("contentType", &R::contentType),
        optionalKey("slidesResource", &R::slidesResource),
        requiredKey("isBlurred", &R::isBlurred),
        requiredKey("brightness", &R::brightness),
        requiredKey("scale", &R::scale),
        requiredKey("horizontalOffset", &R::horizontalOffset),
        requiredKey("verticalOffset", &R::verticalOffset),
        requiredKey("backgroundColor", &R::backgroundColor),
        requiredKey("borderEnabled", &R::borderEnabled),
        requiredKey("borderColor", &R::borderColor),
        requiredKey("borderWidth", &R::borderWidth),
        requiredKey("borderGlow", &R::borderGlow),
        requiredKey("borderRadius", &R::borderRadius),
        requiredKey("shadowEnabled", &R::shadowEnabled),
        requiredKey("shadowColor", &R::shadowColor),
        requiredKey("shadowRadius", &R::shadowRadius),
        requiredKey("shadowX", &R::shadowX),
        requiredKey("shadowY", &R::shadowY),
        requiredKey("cameraShape", &R::cameraShape),
        requiredKey("cameraPosition", &R::cameraPosition),
        requiredKey("cameraSize", &R::cameraSize),
        requiredKey("isOverlay", &R::isOverlay),
        requiredKey("cameraBorderEnabled", &R::cameraBorderEnabled),
        requiredKey("cameraBorderColor", &R::cameraBorderColor),
        requiredKey("cameraBorderWidth", &R::cameraBorderWidth),
        requiredKey("cameraBorderGlow", &R::cameraBorderGlow),
        requiredKey("cameraBorderRadius", &R::cameraBorderRadius),
        requiredKey("cameraZoom", &R::cameraZoom),
        requiredKey("cameraWidth", &R::cameraWidth),
        requiredKey("cameraHeight", &R::cameraHeight),
        requiredKey("cameraHorizontalPosition", &R::cameraHorizontalPosition),
        requiredKey("cameraVerticalPosition", &R::cameraVerticalPosition),
        requiredKey("cameraBrightness", &R::cameraBrightness),
        requiredKey("cameraContrast", &R::cameraContrast)
    };
};

template <>
struct RecordFields<Source> {
    using R = Source;
    static constexpr std::tuple fields{
        requiredKey("id", &R::id),
        requiredKey("type", &R::type),
        requiredKey("name", &R::name),
        requiredKey("configuration", &R::configuration)
    };
};

template <>
struct RecordFields<StreamingScene> {
    using R = StreamingScene;
    static constexpr std::tuple fields{
        requiredKey("id", &R::id),
        requiredKey("name", &R::name),
        requiredKey("icon", &R::icon),
        requiredKey("sources", &R::sources),
        optionalKey("selectedSourceId", &R::selectedSourceId),
        requiredKey("brandingEnabled", &R::brandingEnabled),
        requiredKey("progressBarEnabled", &R::progressBarEnabled),
        requiredKey("backgroundColor", &R::backgroundColor),
        requiredKey("backgroundType", &R::backgroundType),
        requiredKey("gradientColors", &R::gradientColors),
        requiredKey("gradientDirection", &R::gradientDirection),
        requiredKey("layout", &R::layout),
        requiredKey("cinematicZoomEnabled", &R::cinematicZoomEnabled)
    };
};

template <>
struct RecordFields<BrandingConfig> {
    using R = BrandingConfig;
    static constexpr std::tuple fields{
        requiredKey("enabled", &R::enabled),
        requiredKey("text", &R::text),
        requiredKey("textColor", &R::textColor),
        requiredKey("textSize", &R::textSize),
        optionalKey("logoImagePath", &R::logoImagePath),
        requiredKey("logoWidth", &R::logoWidth),
        requiredKey("logoHeight", &R::logoHeight),
        requiredKey("position", &R::position),
        requiredKey("opacity", &R::opacity),
        requiredKey("showBackground", &R::showBackground),
        requiredKey("backgroundColor", &R::backgroundColor)
    };
};

template <>
struct RecordFields<ProgressStep> {
    using R = ProgressStep;
    static constexpr std::tuple fields{
        requiredKey("id", &R::id),
        requiredKey("title", &R::title),
        requiredKey("isCompleted", &R::isCompleted),
        requiredKey("order", &R::order)
    };
};

template <>
struct RecordFields<ProgressBarConfig> {
    using R = ProgressBarConfig;
    static constexpr std::tuple fields{
        requiredKey("enabled", &R::enabled),
        requiredKey("steps", &R::steps),
        requiredKey("orientation", &R::orientation),
        requiredKey("position", &R::position),
        requiredKey("size", &R::size),
        requiredKey("backgroundColor", &R::backgroundColor),
        requiredKey("completedColor", &R::completedColor),
        requiredKey("pendingColor", &R::pendingColor),
        requiredKey("textColor", &R::textColor),
        requiredKey("textSize", &R::textSize),
        requiredKey("opacity", &R::opacity)
    };
};

template <>
struct RecordFields<TeleprompterConfig> {
    using R = TeleprompterConfig;
    static constexpr std::tuple fields{
        requiredKey("enabled", &R::enabled),
        requiredKey("text", &R::text),
        requiredKey("fontSize", &R::fontSize),
        requiredKey("textColor", &R::textColor),
        requiredKey("backgroundColor", &R::backgroundColor),
        requiredKey("opacity", &R::opacity),
        requiredKey("scrollSpeed", &R::scrollSpeed),
        requiredKey("isScrolling", &R::isScrolling),
        requiredKey("position", &R::position),
        requiredKey("width", &R::width),
        requiredKey("height", &R::height),
        requiredKey("alwaysOnTop", &R::alwaysOnTop),
        requiredKey("hideFromScreenShare", &R::hideFromScreenShare)
    };
};

template <>
struct RecordFields<Preset> {
    using R = Preset;
    static constexpr std::tuple fields{
        requiredKey("id", &R::id),
        requiredKey("name", &R::name),
        requiredKey("scenes", &R::scenes),
        optionalKey("activeSceneId", &R::activeSceneId),
        optionalKey("branding", &R::branding),
        optionalKey("progressBar", &R::progressBar),
        requiredKey("hideProgramWhenPopout", &R::hideProgramWhenPopout),
        optionalKey("teleprompter", &R::teleprompter),
        requiredKey("sceneTransition", &R::sceneTransition)
    };
};

template <typename T>
concept Record = requires { RecordFields<T>::fields; };

// Calls `visit` on each key of T's table, in order.
template <Record T, typename Visit>
void forEachField(Visit&& visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, RecordFields<T>::fields);
}

// ---------------------------------------------------------------- writing

void write(JsonWriter& w, bool b) { w.value(b); }
void write(JsonWriter& w, double d) { w.value(d); }
void write(JsonWriter& w, int i) { w.value(i); }
void write(JsonWriter& w, std::uint32_t u) { w.value(u); }
void write(JsonWriter& w, const std::string& s) { w.value(s); }
void write(JsonWriter& w, const Uuid& id) { w.value(id.toString()); }

template <typename E>
    requires requires { EnumStrings<E>::table; }
void write(JsonWriter& w, E value) {
    w.value(toString(value));
}

void write(JsonWriter& w, const Point& p) {
    w.beginArray();
    w.value(p.x);
    w.value(p.y);
    w.endArray();
}

void write(JsonWriter& w, const Size& s) {
    w.beginArray();
    w.value(s.width);
    w.value(s.height);
    w.endArray();
}

template <Record T>
void write(JsonWriter& w, const T& record);
template <typename T>
void write(JsonWriter& w, const std::vector<T>& items);

template <typename R, typename M, Presence presence>
void writeField(JsonWriter& w, const R& record, const RecordField<R, M, presence>& field) {
    const M& value = record.*field.member;
    if constexpr (presence == Presence::optional) {
        if (!value) return;
        w.key(field.key);
        write(w, *value);
    } else {
        w.key(field.key);
        write(w, value);
    }
}

template <Record T>
void write(JsonWriter& w, const T& record) {
    w.beginObject();
    forEachField<T>([&](const auto& field) { writeField(w, record, field); });
    w.endObject();
}

template <typename T>
void write(JsonWriter& w, const std::vector<T>& items) {
    w.beginArray();
    for (const auto& item : items) write(w, item);
    w.endArray();
}

// Output sizes of one record type differ little from one call to the next;
// starting from the last size saves the string's regrowth.
template <typename T>
std::string encodeText(const T& record) {
    thread_local std::size_t lastSize = 256;
    JsonWriter w(lastSize + lastSize / 8);
    write(w, record);
    lastSize = w.text().size();
    return w.take();
}

// ---------------------------------------------------------------- reading

using Value = JsonDocument::Value;
using Type = JsonDocument::Type;
using NumberKind = JsonDocument::NumberKind;

struct DecodeFailure {
    std::string text;
};

// Walks the parsed document and keeps the JSON path of the value being read,
// for the one error message. The path is only spelled out on failure.
class Reader {
public:
    explicit Reader(const JsonDocument& document) : document_(document) {}

    const JsonDocument& document() const { return document_; }

    [[noreturn]] void fail(const std::string& message) const { throw DecodeFailure{path() + ": " + message}; }

    void enterKey(std::string_view key) { enter({key, 0}); }
    void enterIndex(std::size_t index) { enter({{}, index}); }
    void leave() { --depth_; }

    std::string path() const {
        if (depth_ == 0) return "(document)";
        std::string out;
        for (std::size_t i = 0; i < depth_; ++i) {
            const Segment& s = segments_[i];
            if (!s.key.empty()) {
                if (i > 0) out += '.';
                out += s.key;
            } else {
                out += '[';
                out += std::to_string(s.index);
                out += ']';
            }
        }
        return out;
    }

private:
    struct Segment {
        std::string_view key;  // empty for an array index
        std::size_t index;
    };

    // The records nest ten levels at most (scenes[i].sources[j].configuration
    // .slidesResource.slides[k].backgroundColor.red); the bound is checked
    // all the same.
    static constexpr std::size_t maxDepth = 32;

    void enter(Segment segment) {
        if (depth_ == maxDepth) fail("nesting deeper than the records");
        segments_[depth_++] = segment;
    }

    const JsonDocument& document_;
    std::array<Segment, maxDepth> segments_;
    std::size_t depth_ = 0;
};

// An object being read, with where the next key search starts.
struct Object {
    const Value* value;
    std::uint32_t hint;
};

void read(Reader& r, const Value& v, bool& out) {
    if (v.type != Type::boolean) r.fail("expected a boolean");
    out = v.flag;
}

void read(Reader& r, const Value& v, double& out) {
    if (v.type != Type::number) r.fail("expected a number");
    out = v.number();
}

template <typename Int>
    requires std::is_integral_v<Int> && (!std::is_same_v<Int, bool>)
void read(Reader& r, const Value& v, Int& out) {
    if (v.type == Type::number) {
        switch (v.numberKind) {
            case NumberKind::unsignedInteger:
                if (v.u > static_cast<std::uint64_t>(std::numeric_limits<Int>::max())) r.fail("integer out of range");
                out = static_cast<Int>(v.u);
                return;
            case NumberKind::signedInteger:
                if (v.i < static_cast<std::int64_t>(std::numeric_limits<Int>::min()) ||
                    (v.i > 0 &&
                     static_cast<std::uint64_t>(v.i) > static_cast<std::uint64_t>(std::numeric_limits<Int>::max())))
                    r.fail("integer out of range");
                out = static_cast<Int>(v.i);
                return;
            case NumberKind::floating:
                if (v.f != std::trunc(v.f)) r.fail("expected an integer");
                if (!(v.f >= static_cast<double>(std::numeric_limits<Int>::min()) &&
                      v.f <= static_cast<double>(std::numeric_limits<Int>::max())))
                    r.fail("integer out of range");
                out = static_cast<Int>(v.f);
                return;
        }
    }
    r.fail("expected an integer");
}

void read(Reader& r, const Value& v, std::string& out) {
    if (v.type != Type::string) r.fail("expected a string");
    out.assign(v.string());
}

void read(Reader& r, const Value& v, Uuid& out) {
    if (v.type != Type::string) r.fail("expected a UUID string");
    auto parsed = Uuid::parse(v.string());
    if (!parsed) r.fail("invalid UUID \"" + std::string(v.string()) + "\"");
    out = *parsed;
}

template <typename E>
    requires requires { EnumStrings<E>::table; }
void read(Reader& r, const Value& v, E& out) {
    if (v.type != Type::string) r.fail("expected a string");
    auto value = enumFromString<E>(v.string());
    if (!value) r.fail("unknown value \"" + std::string(v.string()) + "\"");
    out = *value;
}

void readPair(Reader& r, const Value& v, double& a, double& b) {
    if (v.type != Type::array || v.count != 2) r.fail("expected an array of two numbers");
    const Value& first = r.document().value(r.document().element(v, 0));
    const Value& second = r.document().value(r.document().element(v, 1));
    if (first.type != Type::number || second.type != Type::number) r.fail("expected an array of two numbers");
    a = first.number();
    b = second.number();
}

void read(Reader& r, const Value& v, Point& out) { readPair(r, v, out.x, out.y); }
void read(Reader& r, const Value& v, Size& out) { readPair(r, v, out.width, out.height); }

template <Record T>
void read(Reader& r, const Value& v, T& record);
template <typename T>
void read(Reader& r, const Value& v, std::vector<T>& out);

// A required key: missing, null or of the wrong type fails the document.
// An optional key: missing or null gives no value; present must be valid.
// A tolerant key: missing or null keeps the default; present must be valid.
template <typename R, typename M, Presence presence>
void readField(Reader& r, Object& object, R& record, const RecordField<R, M, presence>& field) {
    M& out = record.*field.member;
    const Value* v = r.document().find(*object.value, field.key, object.hint);
    if constexpr (presence == Presence::required) {
        r.enterKey(field.key);
        if (!v) r.fail("missing key");
        if (v->type == Type::null) r.fail("null value");
        read(r, *v, out);
    } else {
        if (!v || v->type == Type::null) {
            if constexpr (presence == Presence::optional) out.reset();
            return;
        }
        r.enterKey(field.key);
        if constexpr (presence == Presence::optional) {
            typename M::value_type value{};
            read(r, *v, value);
            out = std::move(value);
        } else {
            read(r, *v, out);
        }
    }
    r.leave();
}

template <Record T>
void read(Reader& r, const Value& v, T& record) {
    if (v.type != Type::object) r.fail("expected an object");
    Object object{&v, 0};
    forEachField<T>([&](const auto& field) { readField(r, object, record, field); });
}

template <typename T>
void read(Reader& r, const Value& v, std::vector<T>& out) {
    if (v.type != Type::array) r.fail("expected an array");
    out.clear();
    out.reserve(v.count);
    for (std::uint32_t i = 0; i < v.count; ++i) {
        r.enterIndex(i);
        const Value& item = r.document().value(r.document().element(v, i));
        if (item.type == Type::null) r.fail("null value");
        T value{};
        read(r, item, value);
        out.push_back(std::move(value));
        r.leave();
    }
}

template <typename T>
Decoded<T> decodeText(std::string_view text) {
    Decoded<T> result;
    // One document per thread, reused so that its arrays keep their
    // capacity; a rare huge text gets one of its own, freed afterwards.
    constexpr std::size_t reuseLimit = 4 << 20;
    thread_local JsonDocument reused;
    JsonDocument own;
    JsonDocument& document = text.size() <= reuseLimit ? reused : own;
    switch (document.parse(text, maxNestingDepth)) {
        case JsonDocument::Outcome::tooDeep:
            result.error = "(document): nesting deeper than " + std::to_string(maxNestingDepth) + " levels";
            return result;
        case JsonDocument::Outcome::syntaxError:
            result.error = "(document): " + document.errorMessage();
            return result;
        case JsonDocument::Outcome::parsed:
            break;
    }
    try {
        Reader reader(document);
        T value{};
        read(reader, document.value(document.root()), value);
        result.value = std::move(value);
    } catch (const DecodeFailure& failure) {
        result.error = failure.text;
    }
    return result;
}

}  // namespace

std::string encodePreset(const Preset& preset) { return encodeText(preset); }

Decoded<Preset> decodePreset(std::string_view json) { return decodeText<Preset>(json); }

template <typename T>
std::string encodeRecord(const T& record) {
    return encodeText(record);
}

template <typename T>
Decoded<T> decodeRecord(std::string_view json) {
    return decodeText<T>(json);
}

#define ORVANE_CODEC_RECORD(T)                              \
    template std::string encodeRecord<T>(const T&);        \
    template Decoded<T> decodeRecord<T>(std::string_view)

ORVANE_CODEC_RECORD(Preset);
ORVANE_CODEC_RECORD(StreamingScene);
ORVANE_CODEC_RECORD(Source);
ORVANE_CODEC_RECORD(SourceConfiguration);
ORVANE_CODEC_RECORD(CodableColor);
ORVANE_CODEC_RECORD(SceneTransitionConfig);
ORVANE_CODEC_RECORD(BrandingConfig);
ORVANE_CODEC_RECORD(ProgressBarConfig);
ORVANE_CODEC_RECORD(ProgressStep);
ORVANE_CODEC_RECORD(TeleprompterConfig);
ORVANE_CODEC_RECORD(SlidesResource);
ORVANE_CODEC_RECORD(Slide);

#undef ORVANE_CODEC_RECORD

}  // namespace orvane
