#pragma once

namespace orvane {

// What Qt and FFmpeg have to say goes through the console's own log, one
// whole line at a time, tagged as a warning, instead of being written to
// standard error in pieces that run into the console's lines. Qt's debug
// chatter and FFmpeg's notes below warnings are left out. Call once, early
// in main, before any thread starts.
class LibraryLog {
public:
    static void install();
};

}  // namespace orvane
