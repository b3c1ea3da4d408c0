#include <gtest/gtest.h>

#include "composition/CompositionIdentity.h"

namespace orvane {
namespace composition_identity_test {

TEST(CompositionIdentity, JoinsTheNineParts) {
    StreamingScene scene;
    scene.id = *Uuid::parse("11111111-2222-3333-4444-555555555555");
    Source a;
    a.id = *Uuid::parse("AAAAAAAA-0000-0000-0000-000000000001");
    Source b;
    b.id = *Uuid::parse("BBBBBBBB-0000-0000-0000-000000000002");
    scene.sources = {a, b};
    scene.gradientDirection = GradientDirection::topLeftToBottomRight;
    EXPECT_EQ(CompositionIdentity::key(scene, 1700000000.5),
              "11111111-2222-3333-4444-555555555555-none-true-2-AAAAAAAA-0000-0000-0000-000000000001-"
              "BBBBBBBB-0000-0000-0000-000000000002-gradient-3-Diagonal \u2198-1700000000.500000");
    scene.selectedSourceId = b.id;
    scene.brandingEnabled = false;
    scene.backgroundType = BackgroundType::solid;
    scene.sources.clear();
    EXPECT_EQ(CompositionIdentity::key(scene, 0),
              "11111111-2222-3333-4444-555555555555-BBBBBBBB-0000-0000-0000-000000000002-false-0--solid-3-"
              "Diagonal \u2198-0.000000");
}

TEST(CompositionIdentity, ChangesWithTheTimestamp) {
    StreamingScene scene;
    EXPECT_NE(CompositionIdentity::key(scene, 1), CompositionIdentity::key(scene, 2));
}

}  // namespace
}  // namespace orvane
