#include "settings/gesture_settings_undo.hpp"

#include <gtest/gtest.h>

namespace velotap {
namespace {

TEST(GestureSettingsUndo, RestoresWhatTheChangeChangedAndNobodySince) {
  const GestureSettingsUndo undo{.before = {{"a", true}, {"b", true}, {"c", false}, {"d", true}},
                                 .after = {{"a", false}, {"b", false}, {"c", false}, {"d", true}}};
  EXPECT_EQ(undo.restoring({{"a", false}, {"b", true}, {"c", false}, {"d", false}, {"e", true}}),
            (TriggerValues{{"a", true}}));
}

TEST(GestureSettingsUndo, LeavesKeysAloneThatItDoesNotKnow) {
  EXPECT_TRUE(GestureSettingsUndo{}.restoring({{"a", true}}).empty());
  const GestureSettingsUndo undo{.before = {{"a", true}}, .after = {{"a", false}}};
  EXPECT_TRUE(undo.restoring({}).empty());
}

}  // namespace
}  // namespace velotap
