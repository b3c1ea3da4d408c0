#include <gtest/gtest.h>

#include <QSignalSpy>

#include "support/FakeCaptureBackend.h"
#include "support/ManagerFetch.h"
#include "support/QStringPrinter.h"

namespace orvane {
namespace capture_managers_test {

TEST(WindowCaptureManager, PublishesTheSelectableWindowsAndKeepsThemOnFailure) {
    test::FakeCaptureBackend backend;
    backend.windowList = {{1, "b", QString("beta"), 0, QRect(0, 0, 10, 10)},
                          {2, "Dock", QString("Panel"), 20, QRect(0, 0, 10, 10)},
                          {3, "A", QString("Alpha"), 0, QRect(0, 0, 10, 10)}};
    WindowCaptureManager manager(backend);
    manager.fetchAvailableWindows();
    EXPECT_TRUE(manager.isLoading());
    ASSERT_TRUE(test::waitUntil([&] { return !manager.isLoading(); }));
    ASSERT_EQ(manager.availableWindows().size(), 2);
    EXPECT_EQ(manager.availableWindows()[0].id, 3u);
    EXPECT_TRUE(manager.errorMessage().isNull());

    backend.listingError = "The X server did not answer";
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_EQ(manager.errorMessage(), "Error loading windows: The X server did not answer");
    EXPECT_EQ(manager.availableWindows().size(), 2);  // the list keeps what it had
    EXPECT_FALSE(manager.needsPermission());

    manager.bringWindowToFront(3);
    EXPECT_EQ(backend.lastRaised, 3u);
}

TEST(ScreenCaptureManager, LaterFetchClearsAnEarlierError) {
    test::FakeCaptureBackend backend;
    backend.listingError = "Cannot connect to the X server";
    ScreenCaptureManager manager(backend);
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_EQ(manager.errorMessage(), "Error loading displays: Cannot connect to the X server");

    backend.listingError.clear();
    backend.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)}};
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_TRUE(manager.errorMessage().isNull());
    ASSERT_EQ(manager.availableDisplays().size(), 1);
    EXPECT_EQ(manager.availableDisplays()[0].displayName(), "Main Display");
}

TEST(ScreenCaptureManager, ADeclinedListingAsksForPermission) {
    test::FakeCaptureBackend backend;
    backend.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)}};
    ScreenCaptureManager manager(backend);
    ASSERT_TRUE(test::fetchAndWait(manager));
    ASSERT_EQ(manager.availableDisplays().size(), 1);

    backend.listingError = "The portal request was cancelled";
    backend.listingDeclined = true;
    QSignalSpy permission(&manager, &ScreenCaptureManager::needsPermissionChanged);
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_TRUE(manager.needsPermission());
    EXPECT_EQ(permission.count(), 1);
    EXPECT_EQ(manager.errorMessage(),
              "Screen recording permission is required. Please grant permission and restart the app.");
    EXPECT_EQ(manager.availableDisplays().size(), 1);  // the list keeps what it had

    // Any other failure shows its reason and does not ask for permission.
    backend.listingDeclined = false;
    backend.listingError = "Cannot connect to the X server";
    manager.fetchAvailableDisplays();
    EXPECT_FALSE(manager.needsPermission());  // cleared as the fetch starts
    ASSERT_TRUE(test::waitUntil([&] { return !manager.isLoading(); }));
    EXPECT_FALSE(manager.needsPermission());
    EXPECT_EQ(manager.errorMessage(), "Error loading displays: Cannot connect to the X server");
}

TEST(WindowCaptureManager, ADeclinedListingAsksForPermissionUntilAFetchSucceeds) {
    test::FakeCaptureBackend backend;
    backend.listingError = "Screen sharing was not allowed";
    backend.listingDeclined = true;
    WindowCaptureManager manager(backend);
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_TRUE(manager.needsPermission());
    EXPECT_EQ(manager.errorMessage(),
              "Screen recording permission is required. Please grant permission and restart the app.");

    backend.listingError.clear();
    backend.listingDeclined = false;
    backend.windowList = {{3, "A", QString("Alpha"), 0, QRect(0, 0, 10, 10)}};
    ASSERT_TRUE(test::fetchAndWait(manager));
    EXPECT_FALSE(manager.needsPermission());
    EXPECT_TRUE(manager.errorMessage().isNull());
    EXPECT_EQ(manager.availableWindows().size(), 1);
}

TEST(ScreenCaptureManager, GoingAwayWhileListingIsSafe) {
    test::FakeCaptureBackend backend;
    backend.displayList = {{71, 960, 1080, "Main Display", QRect(0, 0, 960, 1080)}};
    auto manager = std::make_unique<ScreenCaptureManager>(backend);
    int published = 0;
    QObject::connect(manager.get(), &ScreenCaptureManager::availableDisplaysChanged, [&] { ++published; });
    manager->fetchAvailableDisplays();
    manager->fetchAvailableDisplays();
    manager.reset();  // waits for both listings
    QCoreApplication::processEvents();
    EXPECT_EQ(published, 0);  // nothing reaches the manager that is gone
}

}  // namespace
}  // namespace orvane
