#include "slides/MarkdownStyle.h"

#include <algorithm>

namespace orvane {

MarkdownStyle MarkdownStyle::stage(QSizeF size, double textScale) {
    MarkdownStyle st;
    st.r = std::min(size.width() / 1920.0, size.height() / 1080.0);
    st.f = std::max(st.r, 0.8);
    st.s = textScale;
    st.spacing = 16 * std::max(st.r, 0.7);
    st.paragraphLineSpacing = 4 * std::max(st.r, 0.6);
    return st;
}

MarkdownStyle MarkdownStyle::preview(QSizeF size, double textScale) {
    MarkdownStyle st;
    st.r = std::min(size.width() / 400.0, size.height() / 300.0);
    st.f = std::max(st.r, 0.6);
    st.s = textScale;
    st.spacing = 12 * std::max(st.r, 0.5);
    st.h1 = 32, st.h2 = 24, st.h3 = 18;
    st.h1Pad = st.h2Pad = st.h3Pad = 0;
    st.paragraph = 14;
    st.paragraphLineSpacing = 0;
    st.bulletMarker = 14;
    st.bulletMarkerBold = false;
    st.bulletSpacing = 8;
    st.bulletText = 14;
    st.code = 12, st.codePadding = 12, st.codeRadius = 6;
    st.dividerPadding = 6;
    return st;
}

}  // namespace orvane
