#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <string>

#include "remote/QrCodeImage.h"
#include "support/TestApp.h"

using namespace orvane;

namespace {

// Decodes with zbarimg; empty when nothing was found.
QString decode(const QImage& image, const QTemporaryDir& dir, const QString& name) {
    const QString path = dir.filePath(name);
    if (!image.save(path, "PNG")) return {};
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"), {QStringLiteral("--raw"), QStringLiteral("-q"), path});
    if (!zbar.waitForFinished(20000)) return {};
    return QString::fromUtf8(zbar.readAllStandardOutput()).trimmed();
}

}  // namespace

TEST(QrCode, DecodesToTheExactAccessUrl) {
    test::ensureApp();
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (const QString& url : {QStringLiteral("http://192.168.1.20:8999"), QStringLiteral("http://10.1.2.3:65535"),
                              QStringLiteral("http://localhost:8999")}) {
        testing::internal::CaptureStdout();
        const QImage image = generateQRCode(url);
        testing::internal::GetCapturedStdout();
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(decode(image, dir, QStringLiteral("code.png")), url);
    }
}

TEST(QrCode, FifteenPixelsAModuleAtThreeHundredLogical) {
    test::ensureApp();
    testing::internal::CaptureStdout();
    const QImage image = generateQRCode(QStringLiteral("http://192.168.1.20:8999"));
    testing::internal::GetCapturedStdout();
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.width(), image.height());
    EXPECT_EQ(image.width() % kQrPixelsPerModule, 0);
    const int modules = image.width() / kQrPixelsPerModule - 2 * kQrQuietZoneModules;
    EXPECT_EQ((modules - 17) % 4, 0) << modules;  // a real QR size: 21, 25, 29, ...
    EXPECT_NEAR(image.deviceIndependentSize().width(), 300.0, 1e-9);
    EXPECT_NEAR(image.deviceIndependentSize().height(), 300.0, 1e-9);
    // Every module is a solid 15 by 15 block: the top-left finder's corner.
    const int origin = kQrQuietZoneModules * kQrPixelsPerModule;
    for (int y = origin; y < origin + kQrPixelsPerModule; ++y)
        for (int x = origin; x < origin + kQrPixelsPerModule; ++x) ASSERT_EQ(qGray(image.pixel(x, y)), 0);
    EXPECT_EQ(qGray(image.pixel(origin - 1, origin)), 255);
}

TEST(QrCode, TrailingWhitespaceGivesTheSameCode) {
    test::ensureApp();
    testing::internal::CaptureStdout();
    const QImage plain = generateQRCode(QStringLiteral("http://192.168.1.20:8999"));
    const QImage padded = generateQRCode(QStringLiteral("  http://192.168.1.20:8999\n"));
    testing::internal::GetCapturedStdout();
    ASSERT_FALSE(plain.isNull());
    EXPECT_EQ(plain, padded);
}

TEST(QrCode, LogsTheDiagnosticLines) {
    test::ensureApp();
    testing::internal::CaptureStdout();
    generateQRCode(QStringLiteral("http://a:1\n"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "🔍 Raw input string: 'http://a:1\n'\n"
              "🔍 String length: 11\n"
              "🔍 String characters: [\"h\", \"t\", \"t\", \"p\", \":\", \"/\", \"/\", \"a\", \":\", \"1\", \"\n\"]\n"
              "🔍 After trimming: 'http://a:1'\n"
              "🔍 Trimmed length: 10\n"
              "✅ Generated QR code for URL: http://a:1\n"
              "   QR code size: 300x300\n");
}

TEST(QrCode, TextThatIsNotUnicodeGivesNoImage) {
    test::ensureApp();
    const QChar lone(static_cast<char16_t>(0xD800));  // an unpaired surrogate
    testing::internal::CaptureStdout();
    const QImage image = generateQRCode(QStringLiteral("http://a:1") + lone);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(image.isNull());
    EXPECT_NE(out.find("❌ Failed to convert URL to data: "), std::string::npos) << out;
}
