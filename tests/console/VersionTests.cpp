#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/version/VersionInfo.h"
#include "console/version/VersionManager.h"

namespace orvane {
namespace version_tests {

QString writeFile(QTemporaryDir& dir, const QByteArray& text) {
    const QString path = dir.filePath(QStringLiteral("version_info.json"));
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(text);
    return path;
}

const QByteArray kComplete = R"({"version":"2.1.0","build":"77","commit":"abc1234","timestamp":"20260115-093045",
"branch":"main","type":"release","tag":"v2.1.0"})";

TEST(ConsoleVersion, EmbeddedFileIsReadAtStart) {
    test::ensureApplication();
    test::LogCapture log;
    VersionManager manager;
    const std::string lines = log.text();
    ASSERT_TRUE(manager.versionInfo());
    EXPECT_FALSE(manager.isLoading());
    EXPECT_EQ(manager.versionInfo()->version, QStringLiteral(ORVANE_TEST_PROJECT_VERSION));
    EXPECT_FALSE(manager.versionInfo()->commit.isEmpty());
    EXPECT_NE(lines.find("📦 Versión cargada desde archivo: " ORVANE_TEST_PROJECT_VERSION " (Build "), std::string::npos)
        << lines;
}

TEST(ConsoleVersion, FileWithoutTagDecodesAndWithoutBranchFallsBack) {
    test::ensureApplication();
    QTemporaryDir dir;
    auto noTag = VersionInfo::fromJson(R"({"version":"1","build":"2","commit":"c","timestamp":"t","branch":"b","type":"beta"})");
    ASSERT_TRUE(noTag);
    EXPECT_FALSE(noTag->tag);

    test::LogCapture log;
    VersionManager manager(writeFile(dir, R"({"version":"1","build":"2","commit":"c","timestamp":"t","type":"beta"})"));
    const std::string lines = log.text();
    ASSERT_TRUE(manager.versionInfo());
    EXPECT_EQ(manager.versionInfo()->commit, QStringLiteral("unknown"));
    EXPECT_EQ(manager.versionInfo()->type, QStringLiteral("development"));
    EXPECT_NE(lines.find("❌ Error cargando version_info.json: "), std::string::npos) << lines;
}

TEST(ConsoleVersion, MissingFileUsesTheApplicationVersion) {
    test::ensureApplication();
    test::LogCapture log;
    VersionManager manager(QStringLiteral("/nonexistent/version_info.json"));
    EXPECT_NE(log.text().find("📦 version_info.json no encontrado, usando Info.plist"), std::string::npos);
    ASSERT_TRUE(manager.versionInfo());
    EXPECT_EQ(manager.versionInfo()->build, QStringLiteral("1"));
    EXPECT_EQ(manager.versionInfo()->branch, QStringLiteral("main"));
}

TEST(ConsoleVersion, TimestampsStatusAndDetails) {
    EXPECT_EQ(VersionInfo::formatTimestamp(QStringLiteral("20260115-093045")), QStringLiteral("15/01/2026 09:30:45"));
    EXPECT_EQ(VersionInfo::formatTimestamp(QStringLiteral("2026-01-15")), QStringLiteral("2026-01-15"));
    auto info = VersionInfo::fromJson(kComplete);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->detailedVersionString(),
              QStringLiteral("Version: 2.1.0\nBuild: 77\nCommit: abc1234\nTag: v2.1.0\nType: release\nBranch: main"));
    EXPECT_STREQ(info->statusIcon(), "checkmark.circle.fill");
    info->type = QStringLiteral("development");
    EXPECT_STREQ(info->statusIcon(), "questionmark.circle.fill");
    EXPECT_TRUE(info->clipboardText().startsWith(QStringLiteral("OrvanePro Version Information\n\n")));
    EXPECT_TRUE(info->clipboardText().endsWith(QStringLiteral("\n\nTimestamp: 20260115-093045")));
}

}  // namespace
}  // namespace orvane
