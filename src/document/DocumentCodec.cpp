#include "document/DocumentCodec.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "document/JsonDocument.h"
#include "document/JsonWriter.h"

namespace orvane {

namespace {

// Deeper than any real document; refusing deeper input keeps hostile files
// from exhausting the stack.
constexpr int maxNestingDepth = 64;

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

void write(JsonWriter& w, const CodableColor& c);
void write(JsonWriter& w, const SceneTransitionConfig& t);
void write(JsonWriter& w, const Slide& s);
void write(JsonWriter& w, const SlidesResource& r);
void write(JsonWriter& w, const SourceConfiguration& c);
void write(JsonWriter& w, const Source& s);
void write(JsonWriter& w, const StreamingScene& s);
void write(JsonWriter& w, const BrandingConfig& b);
void write(JsonWriter& w, const ProgressStep& s);
void write(JsonWriter& w, const ProgressBarConfig& p);
void write(JsonWriter& w, const TeleprompterConfig& t);
void write(JsonWriter& w, const Preset& p);
template <typename T>
void write(JsonWriter& w, const std::vector<T>& items);

template <typename V>
void member(JsonWriter& w, std::string_view key, const V& value) {
    w.key(key);
    write(w, value);
}

void write(JsonWriter& w, const CodableColor& c) {
    w.beginObject();
    member(w, "red", c.red);
    member(w, "green", c.green);
    member(w, "blue", c.blue);
    member(w, "alpha", c.alpha);
    w.endObject();
}

void write(JsonWriter& w, const SceneTransitionConfig& t) {
    w.beginObject();
    member(w, "enabled", t.enabled);
    member(w, "type", t.type);
    member(w, "duration", t.duration);
    w.endObject();
}

void write(JsonWriter& w, const Slide& s) {
    w.beginObject();
    member(w, "id", s.id);
    member(w, "title", s.title);
    member(w, "content", s.content);
    if (s.imageUrl) member(w, "imageUrl", *s.imageUrl);
    member(w, "imagePosition", s.imagePosition);
    member(w, "imageSize", s.imageSize);
    member(w, "order", s.order);
    member(w, "textScale", s.textScale);
    member(w, "textAlignment", s.textAlignment);
    member(w, "backgroundColor", s.backgroundColor);
    w.endObject();
}

void write(JsonWriter& w, const SlidesResource& r) {
    w.beginObject();
    member(w, "id", r.id);
    member(w, "title", r.title);
    member(w, "slides", r.slides);
    member(w, "currentSlideIndex", r.currentSlideIndex);
    member(w, "backgroundColor", r.backgroundColor);
    member(w, "textColor", r.textColor);
    member(w, "accentColor", r.accentColor);
    member(w, "textScale", r.textScale);
    member(w, "textAlignment", r.textAlignment);
    w.endObject();
}

void write(JsonWriter& w, const SourceConfiguration& c) {
    w.beginObject();
    member(w, "position", c.position);
    member(w, "size", c.size);
    if (c.cameraDeviceId) member(w, "cameraDeviceId", *c.cameraDeviceId);
    if (c.screenId) member(w, "screenId", *c.screenId);
    if (c.windowId) member(w, "windowId", *c.windowId);
    if (c.windowTitle) member(w, "windowTitle", *c.windowTitle);
    if (c.windowOwner) member(w, "windowOwner", *c.windowOwner);
    if (c.contentType) member(w, "contentType", *c.contentType);
    if (c.slidesResource) member(w, "slidesResource", *c.slidesResource);
    member(w, "isBlurred", c.isBlurred);
    member(w, "brightness", c.brightness);
    member(w, "scale", c.scale);
    member(w, "horizontalOffset", c.horizontalOffset);
    member(w, "verticalOffset", c.verticalOffset);
    member(w, "backgroundColor", c.backgroundColor);
    member(w, "borderEnabled", c.borderEnabled);
    member(w, "borderColor", c.borderColor);
    member(w, "borderWidth", c.borderWidth);
    member(w, "borderGlow", c.borderGlow);
    member(w, "borderRadius", c.borderRadius);
    member(w, "shadowEnabled", c.shadowEnabled);
    member(w, "shadowColor", c.shadowColor);
    member(w, "shadowRadius", c.shadowRadius);
    member(w, "shadowX", c.shadowX);
    member(w, "shadowY", c.shadowY);
    member(w, "cameraShape", c.cameraShape);
    member(w, "cameraPosition", c.cameraPosition);
    member(w, "cameraSize", c.cameraSize);
    member(w, "isOverlay", c.isOverlay);
    member(w, "cameraBorderEnabled", c.cameraBorderEnabled);
    member(w, "cameraBorderColor", c.cameraBorderColor);
    member(w, "cameraBorderWidth", c.cameraBorderWidth);
    member(w, "cameraBorderGlow", c.cameraBorderGlow);
    member(w, "cameraBorderRadius", c.cameraBorderRadius);
    member(w, "cameraZoom", c.cameraZoom);
    member(w, "cameraWidth", c.cameraWidth);
    member(w, "cameraHeight", c.cameraHeight);
    member(w, "cameraHorizontalPosition", c.cameraHorizontalPosition);
    member(w, "cameraVerticalPosition", c.cameraVerticalPosition);
    member(w, "cameraBrightness", c.cameraBrightness);
    member(w, "cameraContrast", c.cameraContrast);
    w.endObject();
}

void write(JsonWriter& w, const Source& s) {
    w.beginObject();
    member(w, "id", s.id);
    member(w, "type", s.type);
    member(w, "name", s.name);
    member(w, "configuration", s.configuration);
    w.endObject();
}

void write(JsonWriter& w, const StreamingScene& s) {
    w.beginObject();
    member(w, "id", s.id);
    member(w, "name", s.name);
    member(w, "icon", s.icon);
    member(w, "sources", s.sources);
    if (s.selectedSourceId) member(w, "selectedSourceId", *s.selectedSourceId);
    member(w, "brandingEnabled", s.brandingEnabled);
    member(w, "progressBarEnabled", s.progressBarEnabled);
    member(w, "backgroundColor", s.backgroundColor);
    member(w, "backgroundType", s.backgroundType);
    member(w, "gradientColors", s.gradientColors);
    member(w, "gradientDirection", s.gradientDirection);
    member(w, "layout", s.layout);
    member(w, "cinematicZoomEnabled", s.cinematicZoomEnabled);
    w.endObject();
}

void write(JsonWriter& w, const BrandingConfig& b) {
    w.beginObject();
    member(w, "enabled", b.enabled);
    member(w, "text", b.text);
    member(w, "textColor", b.textColor);
    member(w, "textSize", b.textSize);
    if (b.logoImagePath) member(w, "logoImagePath", *b.logoImagePath);
    member(w, "logoWidth", b.logoWidth);
    member(w, "logoHeight", b.logoHeight);
    member(w, "position", b.position);
    member(w, "opacity", b.opacity);
    member(w, "showBackground", b.showBackground);
    member(w, "backgroundColor", b.backgroundColor);
    w.endObject();
}

void write(JsonWriter& w, const ProgressStep& s) {
    w.beginObject();
    member(w, "id", s.id);
    member(w, "title", s.title);
    member(w, "isCompleted", s.isCompleted);
    member(w, "order", s.order);
    w.endObject();
}

void write(JsonWriter& w, const ProgressBarConfig& p) {
    w.beginObject();
    member(w, "enabled", p.enabled);
    member(w, "steps", p.steps);
    member(w, "orientation", p.orientation);
    member(w, "position", p.position);
    member(w, "size", p.size);
    member(w, "backgroundColor", p.backgroundColor);
    member(w, "completedColor", p.completedColor);
    member(w, "pendingColor", p.pendingColor);
    member(w, "textColor", p.textColor);
    member(w, "textSize", p.textSize);
    member(w, "opacity", p.opacity);
    w.endObject();
}

void write(JsonWriter& w, const TeleprompterConfig& t) {
    w.beginObject();
    member(w, "enabled", t.enabled);
    member(w, "text", t.text);
    member(w, "fontSize", t.fontSize);
    member(w, "textColor", t.textColor);
    member(w, "backgroundColor", t.backgroundColor);
    member(w, "opacity", t.opacity);
    member(w, "scrollSpeed", t.scrollSpeed);
    member(w, "isScrolling", t.isScrolling);
    member(w, "position", t.position);
    member(w, "width", t.width);
    member(w, "height", t.height);
    member(w, "alwaysOnTop", t.alwaysOnTop);
    member(w, "hideFromScreenShare", t.hideFromScreenShare);
    w.endObject();
}

void write(JsonWriter& w, const Preset& p) {
    w.beginObject();
    member(w, "id", p.id);
    member(w, "name", p.name);
    member(w, "scenes", p.scenes);
    if (p.activeSceneId) member(w, "activeSceneId", *p.activeSceneId);
    if (p.branding) member(w, "branding", *p.branding);
    if (p.progressBar) member(w, "progressBar", *p.progressBar);
    member(w, "hideProgramWhenPopout", p.hideProgramWhenPopout);
    if (p.teleprompter) member(w, "teleprompter", *p.teleprompter);
    member(w, "sceneTransition", p.sceneTransition);
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

    void enterKey(const char* key) { enter({key, 0}); }
    void enterIndex(std::size_t index) { enter({nullptr, index}); }
    void leave() { --depth_; }

    std::string path() const {
        if (depth_ == 0) return "(document)";
        std::string out;
        for (std::size_t i = 0; i < depth_; ++i) {
            const Segment& s = segments_[i];
            if (s.key) {
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
        const char* key;  // nullptr for an array index
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

template <typename T>
void read(Reader& r, const Value& v, std::vector<T>& out);

Object requireObject(Reader& r, const Value& v) {
    if (v.type != Type::object) r.fail("expected an object");
    return Object{&v, 0};
}

// A required key: missing, null or of the wrong type fails the document.
template <typename T>
void field(Reader& r, Object& object, const char* key, T& out) {
    r.enterKey(key);
    const Value* v = r.document().find(*object.value, key, object.hint);
    if (!v) r.fail("missing key");
    if (v->type == Type::null) r.fail("null value");
    read(r, *v, out);
    r.leave();
}

// An optional key: missing or null gives no value; present must be valid.
template <typename T>
void optionalField(Reader& r, Object& object, const char* key, std::optional<T>& out) {
    const Value* v = r.document().find(*object.value, key, object.hint);
    if (!v || v->type == Type::null) {
        out.reset();
        return;
    }
    r.enterKey(key);
    T value{};
    read(r, *v, value);
    out = std::move(value);
    r.leave();
}

// A key of the tolerant slide: missing or null keeps the default.
template <typename T>
void tolerantField(Reader& r, Object& object, const char* key, T& out) {
    const Value* v = r.document().find(*object.value, key, object.hint);
    if (!v || v->type == Type::null) return;
    r.enterKey(key);
    read(r, *v, out);
    r.leave();
}

void read(Reader& r, const Value& v, CodableColor& c) {
    Object j = requireObject(r, v);
    field(r, j, "red", c.red);
    field(r, j, "green", c.green);
    field(r, j, "blue", c.blue);
    field(r, j, "alpha", c.alpha);
}

void read(Reader& r, const Value& v, SceneTransitionConfig& t) {
    Object j = requireObject(r, v);
    field(r, j, "enabled", t.enabled);
    field(r, j, "type", t.type);
    field(r, j, "duration", t.duration);
}

void read(Reader& r, const Value& v, Slide& s) {
    Object j = requireObject(r, v);
    tolerantField(r, j, "id", s.id);
    tolerantField(r, j, "title", s.title);
    tolerantField(r, j, "content", s.content);
    optionalField(r, j, "imageUrl", s.imageUrl);
    tolerantField(r, j, "imagePosition", s.imagePosition);
    tolerantField(r, j, "imageSize", s.imageSize);
    tolerantField(r, j, "order", s.order);
    tolerantField(r, j, "textScale", s.textScale);
    tolerantField(r, j, "textAlignment", s.textAlignment);
    tolerantField(r, j, "backgroundColor", s.backgroundColor);
}

void read(Reader& r, const Value& v, SlidesResource& d) {
    Object j = requireObject(r, v);
    field(r, j, "id", d.id);
    field(r, j, "title", d.title);
    field(r, j, "slides", d.slides);
    field(r, j, "currentSlideIndex", d.currentSlideIndex);
    field(r, j, "backgroundColor", d.backgroundColor);
    field(r, j, "textColor", d.textColor);
    field(r, j, "accentColor", d.accentColor);
    field(r, j, "textScale", d.textScale);
    field(r, j, "textAlignment", d.textAlignment);
}

void read(Reader& r, const Value& v, SourceConfiguration& c) {
    Object j = requireObject(r, v);
    field(r, j, "position", c.position);
    field(r, j, "size", c.size);
    optionalField(r, j, "cameraDeviceId", c.cameraDeviceId);
    optionalField(r, j, "screenId", c.screenId);
    optionalField(r, j, "windowId", c.windowId);
    optionalField(r, j, "windowTitle", c.windowTitle);
    optionalField(r, j, "windowOwner", c.windowOwner);
    optionalField(r, j, "contentType", c.contentType);
    optionalField(r, j, "slidesResource", c.slidesResource);
    field(r, j, "isBlurred", c.isBlurred);
    field(r, j, "brightness", c.brightness);
    field(r, j, "scale", c.scale);
    field(r, j, "horizontalOffset", c.horizontalOffset);
    field(r, j, "verticalOffset", c.verticalOffset);
    field(r, j, "backgroundColor", c.backgroundColor);
    field(r, j, "borderEnabled", c.borderEnabled);
    field(r, j, "borderColor", c.borderColor);
    field(r, j, "borderWidth", c.borderWidth);
    field(r, j, "borderGlow", c.borderGlow);
    field(r, j, "borderRadius", c.borderRadius);
    field(r, j, "shadowEnabled", c.shadowEnabled);
    field(r, j, "shadowColor", c.shadowColor);
    field(r, j, "shadowRadius", c.shadowRadius);
    field(r, j, "shadowX", c.shadowX);
    field(r, j, "shadowY", c.shadowY);
    field(r, j, "cameraShape", c.cameraShape);
    field(r, j, "cameraPosition", c.cameraPosition);
    field(r, j, "cameraSize", c.cameraSize);
    field(r, j, "isOverlay", c.isOverlay);
    field(r, j, "cameraBorderEnabled", c.cameraBorderEnabled);
    field(r, j, "cameraBorderColor", c.cameraBorderColor);
    field(r, j, "cameraBorderWidth", c.cameraBorderWidth);
    field(r, j, "cameraBorderGlow", c.cameraBorderGlow);
    field(r, j, "cameraBorderRadius", c.cameraBorderRadius);
    field(r, j, "cameraZoom", c.cameraZoom);
    field(r, j, "cameraWidth", c.cameraWidth);
    field(r, j, "cameraHeight", c.cameraHeight);
    field(r, j, "cameraHorizontalPosition", c.cameraHorizontalPosition);
    field(r, j, "cameraVerticalPosition", c.cameraVerticalPosition);
    field(r, j, "cameraBrightness", c.cameraBrightness);
    field(r, j, "cameraContrast", c.cameraContrast);
}

void read(Reader& r, const Value& v, Source& s) {
    Object j = requireObject(r, v);
    field(r, j, "id", s.id);
    field(r, j, "type", s.type);
    field(r, j, "name", s.name);
    field(r, j, "configuration", s.configuration);
}

void read(Reader& r, const Value& v, StreamingScene& s) {
    Object j = requireObject(r, v);
    field(r, j, "id", s.id);
    field(r, j, "name", s.name);
    field(r, j, "icon", s.icon);
    field(r, j, "sources", s.sources);
    optionalField(r, j, "selectedSourceId", s.selectedSourceId);
    field(r, j, "brandingEnabled", s.brandingEnabled);
    field(r, j, "progressBarEnabled", s.progressBarEnabled);
    field(r, j, "backgroundColor", s.backgroundColor);
    field(r, j, "backgroundType", s.backgroundType);
    field(r, j, "gradientColors", s.gradientColors);
    field(r, j, "gradientDirection", s.gradientDirection);
    field(r, j, "layout", s.layout);
    field(r, j, "cinematicZoomEnabled", s.cinematicZoomEnabled);
}

void read(Reader& r, const Value& v, BrandingConfig& b) {
    Object j = requireObject(r, v);
    field(r, j, "enabled", b.enabled);
    field(r, j, "text", b.text);
    field(r, j, "textColor", b.textColor);
    field(r, j, "textSize", b.textSize);
    optionalField(r, j, "logoImagePath", b.logoImagePath);
    field(r, j, "logoWidth", b.logoWidth);
    field(r, j, "logoHeight", b.logoHeight);
    field(r, j, "position", b.position);
    field(r, j, "opacity", b.opacity);
    field(r, j, "showBackground", b.showBackground);
    field(r, j, "backgroundColor", b.backgroundColor);
}

void read(Reader& r, const Value& v, ProgressStep& s) {
    Object j = requireObject(r, v);
    field(r, j, "id", s.id);
    field(r, j, "title", s.title);
    field(r, j, "isCompleted", s.isCompleted);
    field(r, j, "order", s.order);
}

void read(Reader& r, const Value& v, ProgressBarConfig& p) {
    Object j = requireObject(r, v);
    field(r, j, "enabled", p.enabled);
    field(r, j, "steps", p.steps);
    field(r, j, "orientation", p.orientation);
    field(r, j, "position", p.position);
    field(r, j, "size", p.size);
    field(r, j, "backgroundColor", p.backgroundColor);
    field(r, j, "completedColor", p.completedColor);
    field(r, j, "pendingColor", p.pendingColor);
    field(r, j, "textColor", p.textColor);
    field(r, j, "textSize", p.textSize);
    field(r, j, "opacity", p.opacity);
}

void read(Reader& r, const Value& v, TeleprompterConfig& t) {
    Object j = requireObject(r, v);
    field(r, j, "enabled", t.enabled);
    field(r, j, "text", t.text);
    field(r, j, "fontSize", t.fontSize);
    field(r, j, "textColor", t.textColor);
    field(r, j, "backgroundColor", t.backgroundColor);
    field(r, j, "opacity", t.opacity);
    field(r, j, "scrollSpeed", t.scrollSpeed);
    field(r, j, "isScrolling", t.isScrolling);
    field(r, j, "position", t.position);
    field(r, j, "width", t.width);
    field(r, j, "height", t.height);
    field(r, j, "alwaysOnTop", t.alwaysOnTop);
    field(r, j, "hideFromScreenShare", t.hideFromScreenShare);
}

void read(Reader& r, const Value& v, Preset& p) {
    Object j = requireObject(r, v);
    field(r, j, "id", p.id);
    field(r, j, "name", p.name);
    field(r, j, "scenes", p.scenes);
    optionalField(r, j, "activeSceneId", p.activeSceneId);
    optionalField(r, j, "branding", p.branding);
    optionalField(r, j, "progressBar", p.progressBar);
    field(r, j, "hideProgramWhenPopout", p.hideProgramWhenPopout);
    optionalField(r, j, "teleprompter", p.teleprompter);
    field(r, j, "sceneTransition", p.sceneTransition);
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
