#include <gtest/gtest.h>

#include "support/QtTestEnvironment.h"

namespace {

// The display identity and watcher cases share no server: each starts the
// servers it needs, and stops or kills them itself.
::testing::Environment* const qtEnvironment =
    ::testing::AddGlobalTestEnvironment(new orvane::test::QtTestEnvironment(false));

}  // namespace
