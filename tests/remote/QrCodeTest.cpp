#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <string>

#include "remote/QrCodeImage.h"
#include "support/TestApp.h"

using namespace orvane;

namespace qr_code_test {

// Decodes with zbarimg; empty when nothing was found.
QString decode(const QImage& image, const QTemporaryDir& dir, const QString& name) {
    const QString path = dir.filePath(name);
    if (!image.save(path, "PNG")) return {};
    QProcess zbar;
    zbar.start(QStringLiteral("zbarimg"), {QStringLiteral("--raw"), QStringLiteral("-q"), path});
    if (!zbar.waitForFinished(20000)) return {};
    return QString::fromUtf8(zbar.readAllStandardOutput()).trimmed();
}

// The code's side in modules, without the quiet zone.
int moduleCount(const QImage& image) { return image.width() / kQrPixelsPerModule - 2 * kQrQuietZoneModules; }

bool darkModule(const QImage& image, int column, int row) {
    const int centre = kQrPixelsPerModule / 2;
    return qGray(image.pixel((column + kQrQuietZoneModules) * kQrPixelsPerModule + centre,
                             (row + kQrQuietZoneModules) * kQrPixelsPerModule + centre)) < 128;
}

// The error correction level written in the format information, read from
// both of its copies: the two leading bits, unmasked with 1 0, give
// L 01, M 00, Q 11, H 10. Empty when the copies disagree.
QString correctionLevel(const QImage& image) {
    const int side = moduleCount(image);
    // Leading bit first: row 8 at columns 0 and 1; column 8 at rows side-1 and side-2.
    const bool first = darkModule(image, 0, 8), second = darkModule(image, 1, 8);
    if (first != darkModule(image, 8, side - 1) || second != darkModule(image, 8, side - 2)) return {};
    const int bits = ((first ? 1 : 0) ^ 1) << 1 | (second ? 1 : 0);
    return QStringLiteral("MLHQ").mid(bits, 1);
}

QImage codeFor(const QString& text) {
    testing::internal::CaptureStdout();
    QImage image = generateQRCode(text);
    testing::internal::GetCapturedStdout();
    return image;
}


TEST(QrCode, ByteModeAtLevelLInTheSmallestVersionThatHolds) {
    test::ensureApp();
    // 27 bytes: version 2 holds up to 32 bytes at level L but only 26 at M.
    const QString url = QStringLiteral("http://192.168.100.200:8999");
    ASSERT_EQ(url.toUtf8().size(), 27);
    const QImage code = codeFor(url);
    ASSERT_FALSE(code.isNull());
    EXPECT_EQ(moduleCount(code), 25);
    EXPECT_EQ(correctionLevel(code), QStringLiteral("L"));

    // The edge of version 2 at level L: 32 bytes fit, 33 need version 3.
    const QString full = QStringLiteral("http://192.168.100.200:8999/abcd");
    ASSERT_EQ(full.toUtf8().size(), 32);
    EXPECT_EQ(moduleCount(codeFor(full)), 25);
    EXPECT_EQ(moduleCount(codeFor(full + QLatin1Char('e'))), 29);

    // 20 characters that alphanumeric mode would fit in version 1 (up to 25
    // at L); as bytes they need version 2 (version 1 holds 17).
    const QString upper = QStringLiteral("HTTP://10.0.0.1:8999");
    ASSERT_EQ(upper.size(), 20);
    const QImage bytes = codeFor(upper);
    EXPECT_EQ(moduleCount(bytes), 25);
    EXPECT_EQ(correctionLevel(bytes), QStringLiteral("L"));
    // And a short one stays in version 1.
    EXPECT_EQ(moduleCount(codeFor(QStringLiteral("http://a:1"))), 21);

    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    EXPECT_EQ(decode(code, dir, QStringLiteral("v2.png")), url);
    EXPECT_EQ(decode(bytes, dir, QStringLiteral("bytes.png")), upper);
}

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

}  // namespace qr_code_test
