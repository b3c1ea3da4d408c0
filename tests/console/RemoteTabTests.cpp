#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include "ConsoleTestSupport.h"
#include "console/controls/SymbolButton.h"
#include "console/controls/ToggleSwitch.h"
#include "console/sheets/QrCodeView.h"
#include "console/sidebar/RemoteTabView.h"
#include "console/sidebar/RightSidebarView.h"
#include "remote/WebServerManager.h"

namespace orvane {
namespace remote_tab_tests {

using test::Session;

struct RemoteFixture {
    Session s;
    std::unique_ptr<WebServerManager> server = std::make_unique<WebServerManager>();
    std::unique_ptr<RightSidebarView> sidebar;

    RemoteFixture() {
        sidebar = std::make_unique<RightSidebarView>(*s.streamManager);
        sidebar->setWebServer(server.get());
        sidebar->setSelectedTab(ConfigTab::remote);
        sidebar->resize(280, 800);
        sidebar->show();
    }
    ~RemoteFixture() {
        sidebar.reset();
        server->stopServer();
    }
    RemoteTabView* tab() const { return sidebar->remoteTab(); }
};

TEST(ConsoleRemoteTab, PortTextThatIsNoPortIsIgnored) {
    RemoteFixture f;
    QLineEdit* port = f.tab()->portField();
    EXPECT_EQ(port->text(), QStringLiteral("8999"));
    EXPECT_EQ(port->placeholderText(), QStringLiteral("8999"));
    // Each edit counts as a whole, as when the text is pasted.
    auto paste = [&](const QString& text) {
        port->selectAll();
        port->insert(text);
    };
    paste(QStringLiteral("70000"));
    EXPECT_EQ(f.server->serverPort(), 8999);
    paste(QStringLiteral("abc"));
    EXPECT_EQ(f.server->serverPort(), 8999);
    paste(QStringLiteral("9010"));
    EXPECT_EQ(f.server->serverPort(), 9010);
}

TEST(ConsoleRemoteTab, PortTextWithBlanksAroundItIsIgnored) {
    RemoteFixture f;
    QLineEdit* port = f.tab()->portField();
    for (const QString& text : {QStringLiteral(" 9010"), QStringLiteral("9010 "), QStringLiteral("\t9010")}) {
        port->selectAll();
        port->insert(text);
        EXPECT_EQ(f.server->serverPort(), 8999) << text.toStdString();
    }
    port->selectAll();
    port->insert(QStringLiteral("+9010"));
    EXPECT_EQ(f.server->serverPort(), 9010);
}

TEST(ConsoleRemoteTab, EnablingStartsTheServerAndShowsItsAddress) {
    RemoteFixture f;
    f.server->setServerPort(0);  // any free port
    EXPECT_FALSE(f.tab()->localServerRunning());
    EXPECT_TRUE(f.tab()->disabledBlock()->isVisible());
    EXPECT_FALSE(f.tab()->activeBlock()->isVisible());
    QTest::mouseClick(f.tab()->enableButton(), Qt::LeftButton);
    // The tab shows the wanted state at once and polls for the real one.
    EXPECT_TRUE(f.tab()->localServerRunning());
    EXPECT_TRUE(f.tab()->serverSwitch()->isChecked());
    EXPECT_TRUE(f.tab()->activeBlock()->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return f.server->isServerRunning(); }, 5000));
    EXPECT_FALSE(f.tab()->portField()->isEnabled());
    EXPECT_EQ(f.tab()->urlText()->text(), f.server->accessUrl());
    EXPECT_TRUE(f.tab()->urlText()->text().startsWith(QStringLiteral("http://")));

    QrCodeView* sheet = f.tab()->showQrCode();
    ASSERT_TRUE(sheet);
    EXPECT_TRUE(sheet->isVisible());
    sheet->close();

    // Switching off: a check or two later the poll reports it inactive.
    test::LogCapture log;
    QTest::mouseClick(f.tab()->serverSwitch(), Qt::LeftButton);
    EXPECT_FALSE(f.tab()->localServerRunning());
    EXPECT_TRUE(f.tab()->disabledBlock()->isVisible());
    QTest::qWait(3 * RemoteTabView::checkIntervalMs);
    EXPECT_FALSE(f.server->isServerRunning());
    EXPECT_TRUE(f.tab()->portField()->isEnabled());
    const std::string lines = log.text();
    EXPECT_NE(lines.find("✅ Server fully inactive"), std::string::npos) << lines;
}

TEST(ConsoleRemoteTab, ASidebarShownWithARunningServerShowsItActive) {
    Session s;
    WebServerManager server;
    server.setServerPort(0);
    server.startServer();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.isServerRunning(); }, 5000));
    RightSidebarView sidebar(*s.streamManager);
    sidebar.setWebServer(&server);
    EXPECT_FALSE(sidebar.remoteTab()->localServerRunning());
    sidebar.show();
    EXPECT_TRUE(sidebar.remoteTab()->localServerRunning());
    server.stopServer();
}

TEST(ConsoleRemoteTab, TheSwitchDrivesTheServerHandedOverLast) {
    RemoteFixture f;
    auto second = std::make_unique<WebServerManager>();
    second->setServerPort(0);  // any free port
    f.sidebar->setWebServer(second.get());
    f.tab()->setServerEnabled(true);
    EXPECT_TRUE(f.tab()->localServerRunning());
    ASSERT_TRUE(QTest::qWaitFor([&] { return second->isServerRunning(); }, 5000));
    EXPECT_FALSE(f.server->isServerRunning());
    EXPECT_TRUE(f.tab()->activeBlock()->isVisible());
    EXPECT_EQ(f.tab()->urlText()->text(), second->accessUrl());
    second->stopServer();
}

TEST(ConsoleRemoteTab, WithoutAServerTheSwitchFallsBackAfterTheChecks) {
    Session s;
    RightSidebarView sidebar(*s.streamManager);
    sidebar.show();
    RemoteTabView* tab = sidebar.remoteTab();
    test::LogCapture log;
    tab->setServerEnabled(true);
    EXPECT_TRUE(tab->localServerRunning());
    EXPECT_FALSE(tab->activeBlock()->isVisible());  // nothing to show without a server
    ASSERT_TRUE(QTest::qWaitFor([&] { return !tab->localServerRunning(); },
                                (RemoteTabView::checkLimit + 3) * RemoteTabView::checkIntervalMs));
    const std::string lines = log.text();
    EXPECT_NE(lines.find("🔍 Check attempt 11: serverRunning=false, hasLocalIP=false, localIP='nil'"),
              std::string::npos)
        << lines;
    EXPECT_NE(lines.find("⚠️ Timeout - syncing with real state: false"), std::string::npos);
}

}  // namespace
}  // namespace orvane
