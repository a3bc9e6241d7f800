#include "adapters/linux/workspace/kwin_script.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(KwinScript, callsTheReceiver) {
  const std::string script = kwinScriptText(":1.42");
  EXPECT_NE(script.find("callDBus(\":1.42\", \"/app/norwend/velotap/Front\", "
                        "\"app.norwend.velotap.Front\", \"Activated\""),
            std::string::npos);
  EXPECT_EQ(script.find('@'), std::string::npos) << "a mark was left";
}

TEST(KwinScript, knowsBothGenerationsOfNames) {
  const std::string script = kwinScriptText(":1.1");
  EXPECT_NE(script.find("workspace.windowActivated.connect"), std::string::npos);
  EXPECT_NE(script.find("workspace.clientActivated.connect"), std::string::npos);
}

}  // namespace
}  // namespace velotap
