// Touches that may be taps, and whether they clicked.
#pragma once

#include <gtest/gtest.h>

#include "engine_fixture.hpp"

namespace velotap::test {

class TapSession : public EngineTest {
 protected:
  bool clicked() {
    const Lines made = posted.take();
    EXPECT_TRUE(made.empty() || made == kMiddleClick);
    return !made.empty();
  }
};

}  // namespace velotap::test
