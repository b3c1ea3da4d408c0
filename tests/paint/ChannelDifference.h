#pragma once

#include <QtGlobal>
#include <algorithm>
#include <cstdlib>

namespace orvane::test {

// The per-channel differences between pixels of two 32-bit pictures: the
// worst and the mean over every channel added.
class ChannelDifference {
public:
    void add(quint32 a, quint32 b) {
        for (int shift = 0; shift < 32; shift += 8) {
            const int delta = std::abs(int((a >> shift) & 0xff) - int((b >> shift) & 0xff));
            worst_ = std::max(worst_, delta);
            sum_ += delta;
            ++channels_;
        }
    }

    int worst() const { return worst_; }
    double mean() const { return channels_ ? double(sum_) / double(channels_) : 0.0; }

    // The worst channel difference of one pair of pixels.
    static int worstOf(quint32 a, quint32 b) {
        ChannelDifference d;
        d.add(a, b);
        return d.worst();
    }

private:
    int worst_ = 0;
    long long sum_ = 0;
    long long channels_ = 0;
};

}  // namespace orvane::test
