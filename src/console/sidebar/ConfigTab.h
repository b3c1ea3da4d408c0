#pragma once

#include <QString>
#include <array>

namespace orvane {

// The tabs of the configuration sidebar, in their order.
enum class ConfigTab { scene, recording, preset, remote };

inline constexpr std::array<ConfigTab, 4> allConfigTabs{ConfigTab::scene, ConfigTab::recording, ConfigTab::preset,
                                                        ConfigTab::remote};

inline QString configTabTitle(ConfigTab tab) {
    switch (tab) {
        case ConfigTab::scene: return QStringLiteral("Scene");
        case ConfigTab::recording: return QStringLiteral("Recording");
        case ConfigTab::preset: return QStringLiteral("Preset");
        case ConfigTab::remote: return QStringLiteral("Remote");
    }
    return {};
}

inline const char* configTabSymbol(ConfigTab tab) {
    switch (tab) {
        case ConfigTab::scene: return "video.fill";
        case ConfigTab::recording: return "record.circle";
        case ConfigTab::preset: return "slider.horizontal.3";
        case ConfigTab::remote: return "appletvremote.gen1";
    }
    return "";
}

}  // namespace orvane
