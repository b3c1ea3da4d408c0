#include "LibraryLog.h"

#include <QString>
#include <QtGlobal>

extern "C" {
#include <libavutil/log.h>
}

#include <cstdarg>
#include <cstdio>
#include <string>

#include "document/Log.h"

namespace orvane {

namespace {

void logQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtDebugMsg) return;
    const char* tag = type == QtInfoMsg ? "ℹ️ Qt: " : "⚠️ Qt: ";
    logLine(tag + message.toStdString());
    if (type == QtFatalMsg) std::abort();
}

// FFmpeg hands over a line in several calls; each thread's pieces are
// gathered until the newline.
void logFfmpegMessage(void* context, int level, const char* format, va_list arguments) {
    thread_local std::string pending;
    thread_local int printPrefix = 1;
    if (level > AV_LOG_WARNING) return;
    char piece[1024];
    av_log_format_line2(context, level, format, arguments, piece, sizeof piece, &printPrefix);
    pending += piece;
    for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
        std::string line = pending.substr(0, end);
        pending.erase(0, end + 1);
        if (!line.empty()) logLine("⚠️ FFmpeg: " + line);
    }
}

}  // namespace

void LibraryLog::install() {
    qInstallMessageHandler(logQtMessage);
    av_log_set_callback(logFfmpegMessage);
}

}  // namespace orvane
