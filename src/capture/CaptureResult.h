#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <variant>

namespace orvane {

// A value or the text of what went wrong. Capture failures are values that
// end up in an errorMessage or a log line, never exceptions.
//
// A failure can be a refusal: the display server, or the user through it,
// declined to let us capture at all (a desktop portal that answers "no").
// The selection sheets then ask for permission rather than show the reason.
// X11 never declines; every X11 failure is a plain one.
template <typename T>
class CaptureResult {
public:
    CaptureResult(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    static CaptureResult failure(QString message) {
        return CaptureResult(std::in_place_index<1>, Failure{std::move(message), false});
    }
    static CaptureResult declined(QString message) {
        return CaptureResult(std::in_place_index<1>, Failure{std::move(message), true});
    }

    bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }
    // Only after ok() said yes.
    T& value() { return std::get<0>(state_); }
    const T& value() const { return std::get<0>(state_); }
    T takeValue() { return std::move(std::get<0>(state_)); }
    // Anything that is not a value is a failure with a text, also a result
    // left holding nothing because an assignment to it threw halfway.
    QString error() const {
        if (ok()) return QString();
        const Failure* failure = std::get_if<1>(&state_);
        return failure ? failure->message : QStringLiteral("No result");
    }
    // A failure because capture was refused, not because something broke.
    bool wasDeclined() const {
        const Failure* failure = std::get_if<1>(&state_);
        return failure && failure->declined;
    }

private:
    struct Failure {
        QString message;
        bool declined = false;
    };

    template <std::size_t I, typename A>
    CaptureResult(std::in_place_index_t<I> tag, A&& arg) : state_(tag, std::forward<A>(arg)) {}

    std::variant<T, Failure> state_;
};

}  // namespace orvane
