#include "support/MediaProbe.h"

#include <QJsonDocument>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>
#include <numbers>

namespace orvane::test {

namespace {

QByteArray run(const QString& program, const QStringList& args, QString* error) {
    QProcess process;
    process.start(program, args);
    if (!process.waitForFinished(60000) || process.exitCode() != 0) {
        if (error) *error = program + QStringLiteral(": ") + QString::fromLocal8Bit(process.readAllStandardError());
        return {};
    }
    return process.readAllStandardOutput();
}

}  // namespace

QJsonObject MediaProbe::probe(const QString& file, QString* error, const QStringList& extra) {
    QStringList args{"-v", "error", "-show_streams", "-show_format", "-of", "json"};
    args << extra << file;
    const QByteArray out = run(QStringLiteral("ffprobe"), args, error);
    return QJsonDocument::fromJson(out).object();
}

QJsonArray MediaProbe::streamsOfType(const QJsonObject& probe, const QString& codecType) {
    QJsonArray result;
    for (const QJsonValue& stream : probe.value("streams").toArray())
        if (stream.toObject().value("codec_type").toString() == codecType) result.append(stream);
    return result;
}

double MediaProbe::measuredBitRate(const QString& file, const QString& stream) {
    const QByteArray out =
        run(QStringLiteral("ffprobe"),
            {"-v", "error", "-select_streams", stream, "-show_entries", "packet=size,duration_time", "-of", "csv=p=0", file},
            nullptr);
    double bytes = 0, seconds = 0;
    for (const QByteArray& line : out.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() < 2) continue;
        // The order of the fields is ffprobe's own: duration_time, size.
        bytes += fields[1].toDouble();
        seconds += fields[0].toDouble();
    }
    return seconds > 0 ? bytes * 8 / seconds : 0;
}

std::vector<float> MediaProbe::audioSamples(const QString& file, int audioTrack) {
    const QByteArray out = run(QStringLiteral("ffmpeg"),
                               {"-v", "error", "-i", file, "-map", QStringLiteral("0:a:%1").arg(audioTrack), "-ac", "1",
                                "-ar", "44100", "-f", "f32le", "-"},
                               nullptr);
    std::vector<float> samples(static_cast<std::size_t>(out.size()) / sizeof(float));
    if (!samples.empty()) std::memcpy(samples.data(), out.constData(), samples.size() * sizeof(float));
    return samples;
}

QImage MediaProbe::videoFrame(const QString& file, double seconds, QSize size) {
    const QByteArray out = run(QStringLiteral("ffmpeg"),
                               {"-v", "error", "-ss", QString::number(seconds), "-i", file, "-map", "0:v:0",
                                "-frames:v", "1", "-f", "rawvideo", "-pix_fmt", "rgb24", "-"},
                               nullptr);
    if (out.size() != static_cast<qsizetype>(size.width()) * size.height() * 3) return {};
    QImage image(size, QImage::Format_RGB888);
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(image.scanLine(y), out.constData() + static_cast<qsizetype>(y) * size.width() * 3,
                    static_cast<std::size_t>(size.width()) * 3);
    return image;
}

std::vector<MediaProbe::FrameChange> MediaProbe::videoFrameChanges(const QString& file, QString* error) {
    // The movie source takes a file name inside a filter graph, where
    // spaces and colons would need escaping: it reads a plain-named link.
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("movie.mp4"));
    if (!folder.isValid() || !QFile::link(file, link)) {
        if (error) *error = QStringLiteral("no link to ") + file;
        return {};
    }
    const QByteArray out = run(QStringLiteral("ffprobe"),
                               {"-v", "error", "-f", "lavfi", "-i", QStringLiteral("movie=%1,signalstats").arg(link),
                                "-show_entries", "frame=pts_time:frame_tags=lavfi.signalstats.YDIF", "-of", "csv=p=0"},
                               error);
    std::vector<FrameChange> changes;
    for (const QByteArray& line : out.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() < 2) continue;
        changes.push_back({fields[0].toDouble(), fields[1].toDouble()});
    }
    return changes;
}

double MediaProbe::toneShare(const std::vector<float>& samples, double frequency_hz, double sampleRate_hz) {
    // Goertzel over blocks of a tenth of a second, so that a phase jump
    // between blocks does not count against the tone.
    const std::size_t block = static_cast<std::size_t>(sampleRate_hz / 10);
    const double omega = 2 * std::numbers::pi * frequency_hz / sampleRate_hz;
    const double coefficient = 2 * std::cos(omega);
    double tonePower = 0, totalPower = 0;
    for (std::size_t start = 0; start + block <= samples.size(); start += block) {
        double s1 = 0, s2 = 0, energy = 0;
        for (std::size_t i = start; i < start + block; ++i) {
            const double x = samples[i];
            const double s0 = x + coefficient * s1 - s2;
            s2 = s1;
            s1 = s0;
            energy += x * x;
        }
        // A pure sine of N samples: |X|^2 = (N A / 2)^2, energy N A^2 / 2.
        tonePower += s1 * s1 + s2 * s2 - coefficient * s1 * s2;
        totalPower += energy * static_cast<double>(block) / 2;
    }
    return totalPower > 0 ? tonePower / totalPower : 0;
}

double MediaProbe::rms(const std::vector<float>& samples) {
    if (samples.empty()) return 0;
    double sum = 0;
    for (float x : samples) sum += static_cast<double>(x) * x;
    return std::sqrt(sum / static_cast<double>(samples.size()));
}

}  // namespace orvane::test
