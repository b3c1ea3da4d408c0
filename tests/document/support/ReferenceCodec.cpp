#include "support/ReferenceCodec.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace orvane::testing {

namespace {

using OrderedJson = nlohmann::ordered_json;
using Json = nlohmann::json;

// Deeper than any real document; refusing deeper input before parsing keeps
// hostile files from exhausting the stack.
constexpr int maxNestingDepth = 64;

// ---------------------------------------------------------------- writing

// Integral doubles are written without a fraction ("300", not "300.0");
// everything else in the shortest form that reads back the same.
OrderedJson number(double value) {
    constexpr double exactIntegerLimit = 9007199254740992.0;  // 2^53
    if (std::isfinite(value) && value == std::trunc(value) && std::fabs(value) < exactIntegerLimit)
        return OrderedJson(static_cast<std::int64_t>(value));
    return OrderedJson(value);
}

template <typename E>
    requires requires { EnumStrings<E>::table; }
OrderedJson toJson(E value) {
    return OrderedJson(std::string(toString(value)));
}

OrderedJson toJson(const Uuid& id) { return OrderedJson(id.toString()); }
OrderedJson toJson(const Point& p) { return OrderedJson::array({number(p.x), number(p.y)}); }
OrderedJson toJson(const Size& s) { return OrderedJson::array({number(s.width), number(s.height)}); }

OrderedJson toJson(const CodableColor& c) {
    OrderedJson j = OrderedJson::object();
    j["red"] = number(c.red);
    j["green"] = number(c.green);
    j["blue"] = number(c.blue);
    j["alpha"] = number(c.alpha);
    return j;
}

template <typename T>
OrderedJson toJson(const std::vector<T>& items);

OrderedJson toJson(const SceneTransitionConfig& t) {
    OrderedJson j = OrderedJson::object();
    j["enabled"] = t.enabled;
    j["type"] = toJson(t.type);
    j["duration"] = number(t.duration);
    return j;
}

OrderedJson toJson(const Slide& s) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(s.id);
    j["title"] = s.title;
    j["content"] = s.content;
    if (s.imageUrl) j["imageUrl"] = *s.imageUrl;
    j["imagePosition"] = toJson(s.imagePosition);
    j["imageSize"] = toJson(s.imageSize);
    j["order"] = s.order;
    j["textScale"] = number(s.textScale);
    j["textAlignment"] = toJson(s.textAlignment);
    j["backgroundColor"] = toJson(s.backgroundColor);
    return j;
}

OrderedJson toJson(const SlidesResource& r) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(r.id);
    j["title"] = r.title;
    j["slides"] = toJson(r.slides);
    j["currentSlideIndex"] = r.currentSlideIndex;
    j["backgroundColor"] = toJson(r.backgroundColor);
    j["textColor"] = toJson(r.textColor);
    j["accentColor"] = toJson(r.accentColor);
    j["textScale"] = number(r.textScale);
    j["textAlignment"] = toJson(r.textAlignment);
    return j;
}

OrderedJson toJson(const SourceConfiguration& c) {
    OrderedJson j = OrderedJson::object();
    j["position"] = toJson(c.position);
    j["size"] = toJson(c.size);
    if (c.cameraDeviceId) j["cameraDeviceId"] = *c.cameraDeviceId;
    if (c.screenId) j["screenId"] = *c.screenId;
    if (c.windowId) j["windowId"] = *c.windowId;
    if (c.windowTitle) j["windowTitle"] = *c.windowTitle;
    if (c.windowOwner) j["windowOwner"] = *c.windowOwner;
    if (c.contentType) j["contentType"] = toJson(*c.contentType);
    if (c.slidesResource) j["slidesResource"] = toJson(*c.slidesResource);
    j["isBlurred"] = c.isBlurred;
    j["brightness"] = number(c.brightness);
    j["scale"] = number(c.scale);
    j["horizontalOffset"] = number(c.horizontalOffset);
    j["verticalOffset"] = number(c.verticalOffset);
    j["backgroundColor"] = toJson(c.backgroundColor);
    j["borderEnabled"] = c.borderEnabled;
    j["borderColor"] = toJson(c.borderColor);
    j["borderWidth"] = number(c.borderWidth);
    j["borderGlow"] = number(c.borderGlow);
    j["borderRadius"] = number(c.borderRadius);
    j["shadowEnabled"] = c.shadowEnabled;
    j["shadowColor"] = toJson(c.shadowColor);
    j["shadowRadius"] = number(c.shadowRadius);
    j["shadowX"] = number(c.shadowX);
    j["shadowY"] = number(c.shadowY);
    j["cameraShape"] = toJson(c.cameraShape);
    j["cameraPosition"] = toJson(c.cameraPosition);
    j["cameraSize"] = toJson(c.cameraSize);
    j["isOverlay"] = c.isOverlay;
    j["cameraBorderEnabled"] = c.cameraBorderEnabled;
    j["cameraBorderColor"] = toJson(c.cameraBorderColor);
    j["cameraBorderWidth"] = number(c.cameraBorderWidth);
    j["cameraBorderGlow"] = number(c.cameraBorderGlow);
    j["cameraBorderRadius"] = number(c.cameraBorderRadius);
    j["cameraZoom"] = number(c.cameraZoom);
    j["cameraWidth"] = number(c.cameraWidth);
    j["cameraHeight"] = number(c.cameraHeight);
    j["cameraHorizontalPosition"] = number(c.cameraHorizontalPosition);
    j["cameraVerticalPosition"] = number(c.cameraVerticalPosition);
    j["cameraBrightness"] = number(c.cameraBrightness);
    j["cameraContrast"] = number(c.cameraContrast);
    return j;
}

OrderedJson toJson(const Source& s) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(s.id);
    j["type"] = toJson(s.type);
    j["name"] = s.name;
    j["configuration"] = toJson(s.configuration);
    return j;
}

OrderedJson toJson(const StreamingScene& s) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(s.id);
    j["name"] = s.name;
    j["icon"] = s.icon;
    j["sources"] = toJson(s.sources);
    if (s.selectedSourceId) j["selectedSourceId"] = toJson(*s.selectedSourceId);
    j["brandingEnabled"] = s.brandingEnabled;
    j["progressBarEnabled"] = s.progressBarEnabled;
    j["backgroundColor"] = toJson(s.backgroundColor);
    j["backgroundType"] = toJson(s.backgroundType);
    j["gradientColors"] = toJson(s.gradientColors);
    j["gradientDirection"] = toJson(s.gradientDirection);
    j["layout"] = toJson(s.layout);
    j["cinematicZoomEnabled"] = s.cinematicZoomEnabled;
    return j;
}

OrderedJson toJson(const BrandingConfig& b) {
    OrderedJson j = OrderedJson::object();
    j["enabled"] = b.enabled;
    j["text"] = b.text;
    j["textColor"] = toJson(b.textColor);
    j["textSize"] = number(b.textSize);
    if (b.logoImagePath) j["logoImagePath"] = *b.logoImagePath;
    j["logoWidth"] = number(b.logoWidth);
    j["logoHeight"] = number(b.logoHeight);
    j["position"] = toJson(b.position);
    j["opacity"] = number(b.opacity);
    j["showBackground"] = b.showBackground;
    j["backgroundColor"] = toJson(b.backgroundColor);
    return j;
}

OrderedJson toJson(const ProgressStep& s) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(s.id);
    j["title"] = s.title;
    j["isCompleted"] = s.isCompleted;
    j["order"] = s.order;
    return j;
}

OrderedJson toJson(const ProgressBarConfig& p) {
    OrderedJson j = OrderedJson::object();
    j["enabled"] = p.enabled;
    j["steps"] = toJson(p.steps);
    j["orientation"] = toJson(p.orientation);
    j["position"] = toJson(p.position);
    j["size"] = number(p.size);
    j["backgroundColor"] = toJson(p.backgroundColor);
    j["completedColor"] = toJson(p.completedColor);
    j["pendingColor"] = toJson(p.pendingColor);
    j["textColor"] = toJson(p.textColor);
    j["textSize"] = number(p.textSize);
    j["opacity"] = number(p.opacity);
    return j;
}

OrderedJson toJson(const TeleprompterConfig& t) {
    OrderedJson j = OrderedJson::object();
    j["enabled"] = t.enabled;
    j["text"] = t.text;
    j["fontSize"] = number(t.fontSize);
    j["textColor"] = toJson(t.textColor);
    j["backgroundColor"] = toJson(t.backgroundColor);
    j["opacity"] = number(t.opacity);
    j["scrollSpeed"] = number(t.scrollSpeed);
    j["isScrolling"] = t.isScrolling;
    j["position"] = toJson(t.position);
    j["width"] = number(t.width);
    j["height"] = number(t.height);
    j["alwaysOnTop"] = t.alwaysOnTop;
    j["hideFromScreenShare"] = t.hideFromScreenShare;
    return j;
}

OrderedJson toJson(const Preset& p) {
    OrderedJson j = OrderedJson::object();
    j["id"] = toJson(p.id);
    j["name"] = p.name;
    j["scenes"] = toJson(p.scenes);
    if (p.activeSceneId) j["activeSceneId"] = toJson(*p.activeSceneId);
    if (p.branding) j["branding"] = toJson(*p.branding);
    if (p.progressBar) j["progressBar"] = toJson(*p.progressBar);
    j["hideProgramWhenPopout"] = p.hideProgramWhenPopout;
    if (p.teleprompter) j["teleprompter"] = toJson(*p.teleprompter);
    j["sceneTransition"] = toJson(p.sceneTransition);
    return j;
}

template <typename T>
OrderedJson toJson(const std::vector<T>& items) {
    OrderedJson j = OrderedJson::array();
    for (const auto& item : items) j.push_back(toJson(item));
    return j;
}

// Pretty output with every "/" escaped as "\/". A slash can only occur
// inside strings in JSON text, so escaping after dumping is exact.
std::string dumpEscaped(const OrderedJson& j) {
    const std::string text = j.dump(2, ' ', false, nlohmann::detail::error_handler_t::replace);
    std::string out;
    out.reserve(text.size() + 16);
    for (char c : text) {
        if (c == '/') out.push_back('\\');
        out.push_back(c);
    }
    return out;
}

// ---------------------------------------------------------------- reading

struct DecodeFailure {
    std::string text;
};

// Keeps the JSON path of the value being read, for the one error message.
class Reader {
public:
    [[noreturn]] void fail(const std::string& message) const { throw DecodeFailure{path() + ": " + message}; }

    void enterKey(const char* key) { segments_.push_back(std::string(segments_.empty() ? "" : ".") + key); }
    void enterIndex(std::size_t index) { segments_.push_back("[" + std::to_string(index) + "]"); }
    void leave() { segments_.pop_back(); }

    std::string path() const {
        if (segments_.empty()) return "(document)";
        std::string out;
        for (const auto& s : segments_) out += s;
        return out;
    }

private:
    std::vector<std::string> segments_;
};

void read(Reader& r, const Json& j, bool& out) {
    if (!j.is_boolean()) r.fail("expected a boolean");
    out = j.get<bool>();
}

void read(Reader& r, const Json& j, double& out) {
    if (!j.is_number()) r.fail("expected a number");
    out = j.get<double>();
}

template <typename Int>
    requires std::is_integral_v<Int> && (!std::is_same_v<Int, bool>)
void read(Reader& r, const Json& j, Int& out) {
    if (j.is_number_unsigned()) {
        const auto v = j.get<std::uint64_t>();
        if (v > static_cast<std::uint64_t>(std::numeric_limits<Int>::max())) r.fail("integer out of range");
        out = static_cast<Int>(v);
        return;
    }
    if (j.is_number_integer()) {
        const auto v = j.get<std::int64_t>();
        if (v < static_cast<std::int64_t>(std::numeric_limits<Int>::min()) ||
            (v > 0 && static_cast<std::uint64_t>(v) > static_cast<std::uint64_t>(std::numeric_limits<Int>::max())))
            r.fail("integer out of range");
        out = static_cast<Int>(v);
        return;
    }
    if (j.is_number_float()) {
        const double v = j.get<double>();
        if (v != std::trunc(v)) r.fail("expected an integer");
        if (!(v >= static_cast<double>(std::numeric_limits<Int>::min()) &&
              v <= static_cast<double>(std::numeric_limits<Int>::max())))
            r.fail("integer out of range");
        out = static_cast<Int>(v);
        return;
    }
    r.fail("expected an integer");
}

void read(Reader& r, const Json& j, std::string& out) {
    if (!j.is_string()) r.fail("expected a string");
    out = j.get<std::string>();
}

void read(Reader& r, const Json& j, Uuid& out) {
    if (!j.is_string()) r.fail("expected a UUID string");
    auto parsed = Uuid::parse(j.get_ref<const std::string&>());
    if (!parsed) r.fail("invalid UUID \"" + j.get<std::string>() + "\"");
    out = *parsed;
}

template <typename E>
    requires requires { EnumStrings<E>::table; }
void read(Reader& r, const Json& j, E& out) {
    if (!j.is_string()) r.fail("expected a string");
    auto value = enumFromString<E>(j.get_ref<const std::string&>());
    if (!value) r.fail("unknown value \"" + j.get<std::string>() + "\"");
    out = *value;
}

void readPair(Reader& r, const Json& j, double& a, double& b) {
    if (!j.is_array() || j.size() != 2 || !j[0].is_number() || !j[1].is_number())
        r.fail("expected an array of two numbers");
    a = j[0].get<double>();
    b = j[1].get<double>();
}

void read(Reader& r, const Json& j, Point& out) { readPair(r, j, out.x, out.y); }
void read(Reader& r, const Json& j, Size& out) { readPair(r, j, out.width, out.height); }

template <typename T>
void read(Reader& r, const Json& j, std::vector<T>& out);

void requireObject(Reader& r, const Json& j) {
    if (!j.is_object()) r.fail("expected an object");
}

// A required key: missing, null or of the wrong type fails the document.
template <typename T>
void field(Reader& r, const Json& object, const char* key, T& out) {
    r.enterKey(key);
    auto it = object.find(key);
    if (it == object.end()) r.fail("missing key");
    if (it->is_null()) r.fail("null value");
    read(r, *it, out);
    r.leave();
}

// An optional key: missing or null gives no value; present must be valid.
template <typename T>
void optionalField(Reader& r, const Json& object, const char* key, std::optional<T>& out) {
    auto it = object.find(key);
    if (it == object.end() || it->is_null()) {
        out.reset();
        return;
    }
    r.enterKey(key);
    T value{};
    read(r, *it, value);
    out = std::move(value);
    r.leave();
}

// A key of the tolerant slide: missing or null keeps the default.
template <typename T>
void tolerantField(Reader& r, const Json& object, const char* key, T& out) {
    auto it = object.find(key);
    if (it == object.end() || it->is_null()) return;
    r.enterKey(key);
    read(r, *it, out);
    r.leave();
}

void read(Reader& r, const Json& j, CodableColor& c) {
    requireObject(r, j);
    field(r, j, "red", c.red);
    field(r, j, "green", c.green);
    field(r, j, "blue", c.blue);
    field(r, j, "alpha", c.alpha);
}

void read(Reader& r, const Json& j, SceneTransitionConfig& t) {
    requireObject(r, j);
    field(r, j, "enabled", t.enabled);
    field(r, j, "type", t.type);
    field(r, j, "duration", t.duration);
}

void read(Reader& r, const Json& j, Slide& s) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, SlidesResource& d) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, SourceConfiguration& c) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, Source& s) {
    requireObject(r, j);
    field(r, j, "id", s.id);
    field(r, j, "type", s.type);
    field(r, j, "name", s.name);
    field(r, j, "configuration", s.configuration);
}

void read(Reader& r, const Json& j, StreamingScene& s) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, BrandingConfig& b) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, ProgressStep& s) {
    requireObject(r, j);
    field(r, j, "id", s.id);
    field(r, j, "title", s.title);
    field(r, j, "isCompleted", s.isCompleted);
    field(r, j, "order", s.order);
}

void read(Reader& r, const Json& j, ProgressBarConfig& p) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, TeleprompterConfig& t) {
    requireObject(r, j);
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

void read(Reader& r, const Json& j, Preset& p) {
    requireObject(r, j);
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
void read(Reader& r, const Json& j, std::vector<T>& out) {
    if (!j.is_array()) r.fail("expected an array");
    out.clear();
    out.reserve(j.size());
    for (std::size_t i = 0; i < j.size(); ++i) {
        r.enterIndex(i);
        if (j[i].is_null()) r.fail("null value");
        T item{};
        read(r, j[i], item);
        out.push_back(std::move(item));
        r.leave();
    }
}

// Refuses nesting deeper than maxNestingDepth without parsing, skipping
// over string contents.
bool nestingWithinLimit(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            else if (c == '"') inString = false;
            continue;
        }
        if (c == '"') inString = true;
        else if (c == '[' || c == '{') {
            if (++depth > maxNestingDepth) return false;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return true;
}

// The library's parse messages start with its own "[json.exception...] "
// tag, which says nothing to a user.
std::string plainParseMessage(const char* what) {
    std::string message(what);
    if (auto pos = message.find("] "); pos != std::string::npos) message.erase(0, pos + 2);
    return message;
}

template <typename T>
Decoded<T> decodeText(std::string_view text) {
    Decoded<T> result;
    if (!nestingWithinLimit(text)) {
        result.error = "(document): nesting deeper than " + std::to_string(maxNestingDepth) + " levels";
        return result;
    }
    Json root;
    try {
        root = Json::parse(text.begin(), text.end());
    } catch (const Json::parse_error& e) {
        result.error = "(document): " + plainParseMessage(e.what());
        return result;
    }
    try {
        Reader reader;
        T value{};
        read(reader, root, value);
        result.value = std::move(value);
    } catch (const DecodeFailure& failure) {
        result.error = failure.text;
    }
    return result;
}

}  // namespace

template <typename T>
std::string referenceEncodeRecord(const T& record) {
    return dumpEscaped(toJson(record));
}

// The earlier reader let the library's "number overflow" error (thrown as
// out_of_range, not parse_error) escape; here it is a parse failure like the
// others, which is how the differential tests count it.
template <typename T>
Decoded<T> referenceDecodeRecord(std::string_view json) {
    try {
        return decodeText<T>(json);
    } catch (const Json::exception& e) {
        Decoded<T> result;
        result.error = "(document): " + plainParseMessage(e.what());
        return result;
    }
}

#define ORVANE_REFERENCE_RECORD(T)                                  \
    template std::string referenceEncodeRecord<T>(const T&);        \
    template Decoded<T> referenceDecodeRecord<T>(std::string_view)

ORVANE_REFERENCE_RECORD(Preset);
ORVANE_REFERENCE_RECORD(StreamingScene);
ORVANE_REFERENCE_RECORD(Source);
ORVANE_REFERENCE_RECORD(SourceConfiguration);
ORVANE_REFERENCE_RECORD(CodableColor);
ORVANE_REFERENCE_RECORD(SceneTransitionConfig);
ORVANE_REFERENCE_RECORD(BrandingConfig);
ORVANE_REFERENCE_RECORD(ProgressBarConfig);
ORVANE_REFERENCE_RECORD(ProgressStep);
ORVANE_REFERENCE_RECORD(TeleprompterConfig);
ORVANE_REFERENCE_RECORD(SlidesResource);
ORVANE_REFERENCE_RECORD(Slide);

#undef ORVANE_REFERENCE_RECORD

}  // namespace orvane::testing
