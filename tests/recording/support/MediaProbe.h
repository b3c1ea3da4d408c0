#pragma once

#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace orvane::test {

// What ffprobe and ffmpeg read from a recorded file.
class MediaProbe {
public:
    // `ffprobe -show_streams -show_format` as JSON; an empty object when
    // ffprobe fails (then `error` says why).
    static QJsonObject probe(const QString& file, QString* error = nullptr, const QStringList& extra = {});
    static QJsonArray streamsOfType(const QJsonObject& probe, const QString& codecType);
    // Bits a second of one stream ("a:1" for the second audio track): its
    // packets' sizes over their summed durations; 0 when ffprobe fails.
    static double measuredBitRate(const QString& file, const QString& stream);
    // One audio track decoded to mono float samples at 44.1 kHz.
    static std::vector<float> audioSamples(const QString& file, int audioTrack);
    // The video frame shown at `seconds`, as RGB.
    static QImage videoFrame(const QString& file, double seconds, QSize size);
    // Each video frame's time and how much it differs from the frame before
    // (ffprobe's signalstats YDIF: the mean absolute difference of the grey
    // levels, 0 to 255; 0 for the first frame). Empty when ffprobe fails.
    struct FrameChange {
        double seconds = 0;
        double difference = 0;
    };
    static std::vector<FrameChange> videoFrameChanges(const QString& file, QString* error = nullptr);
    // Share of a signal's power at one frequency (Goertzel over the whole
    // signal): about 1 for a pure tone at that frequency, about 0 elsewhere.
    static double toneShare(const std::vector<float>& samples, double frequency_hz, double sampleRate_hz);
    static double rms(const std::vector<float>& samples);
};

}  // namespace orvane::test
