#include <gtest/gtest.h>

#include <string>

#include "remote/RemotePage.h"
#include "remote/Utf8.h"

using orvane::remotePageHtml;

// The page's behaviour is checked in a real browser (RemotePageBrowserTest);
// here only what it must carry as text.
TEST(RemotePage, CarriesTheDocumentStructure) {
    const std::string page(remotePageHtml());
    EXPECT_TRUE(orvane::isValidUtf8(page));
    EXPECT_EQ(page.rfind("<!DOCTYPE html>\n<html lang=\"en\">", 0), 0u);
    for (const char* part : {
             "<meta charset=\"UTF-8\">",
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1.0\">",
             "<title>OrvaneUI Remote</title>",
             "<div class=\"container\">",
             "<div class=\"header\">",
             "<div class=\"app-icon\">",
             "<svg width=\"32\" height=\"32\"",
             "xmlns=\"http://www.w3.org/2000/svg\"",
             "stop-color=\"#8b5cf6\"",
             "stop-color=\"#ec4899\"",
             "rx=\"6\"",
             "<path d=\"M12 10v12l8-6z\" fill=\"white\"/>",
             "<rect x=\"22\" y=\"12\" width=\"2\" height=\"8\" fill=\"white\"/>",
             "<rect x=\"25\" y=\"10\" width=\"2\" height=\"12\" fill=\"white\"/>",
             "<h1>OrvaneUI Remote</h1>",
             "<div id=\"status\" class=\"status disconnected\">Connecting...</div>",
             "<div class=\"section-title\">Scenes</div>",
             "<div id=\"scenes\" class=\"scenes-grid\"></div>",
             "<button id=\"liveButton\" class=\"live-button\">🔴 Go Live</button>",
             "<div class=\"section-title\">Quick Controls</div>",
             "<button id=\"blurButton\" class=\"control-button\">🔒 Toggle Blur</button>",
             "let currentActiveScene = null;",
             "setInterval(fetchScenes, 2000);",
             "'Failed to fetch scenes:'",
             "'Failed to switch scene:'",
             "'Failed to go live:'",
             "'Failed to toggle blur:'",
             "'✅ Connected to OrvaneUI'",
             "'❌ Connection failed'",
             "'🔴 LIVE!'",
             "'🔓 Remove Blur'",
             "linear-gradient(135deg, #ef4444 0%, #dc2626 100%)",
             "grid-template-columns: repeat(auto-fit, minmax(180px, 1fr));",
             "@media (max-width: 600px)",
             "font-family: -apple-system, BlinkMacSystemFont, 'Segoe UI', Roboto, sans-serif;",
             "background: linear-gradient(135deg, #212529 0%, #343a40 50%, #495057 100%);",
         })
        EXPECT_NE(page.find(part), std::string::npos) << part;
    // Names are never inserted as markup.
    EXPECT_EQ(page.find("innerHTML"), std::string::npos);
    EXPECT_EQ(page.find("insertAdjacentHTML"), std::string::npos);
    // No external resource of any kind.
    EXPECT_EQ(page.find("src="), std::string::npos);
    EXPECT_EQ(page.find("<link"), std::string::npos);
}
