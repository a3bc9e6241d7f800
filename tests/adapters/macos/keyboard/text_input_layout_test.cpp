#include "adapters/macos/keyboard/text_input_layout.hpp"

#include <gtest/gtest.h>

#include "fakes/fake_text_input.hpp"

namespace velotap::test {
namespace {

using Translation = FakeTextInput::Translation;

class TextInputLayoutTest : public ::testing::Test {
 protected:
  TextInputLayoutTest() {
    input_.translate = [](const std::string& table, UInt16 key) {
      return Translation{
          0, std::u16string(table.begin(), table.end()) + static_cast<char16_t>(u'0' + key),
          std::nullopt};
    };
  }

  FakeCoreFoundation cf_;
  FakeTextInput input_{cf_};
  TextInputLayout layout_{cf_.api(), input_.api()};
};

TEST_F(TextInputLayoutTest, theCurrentLayoutIsTakenWhenItHasATable) {
  const auto translator = layout_.current();
  ASSERT_NE(translator, nullptr);
  EXPECT_EQ(translator->translate(5), "US5");
  EXPECT_EQ(translator->translate(6), "US6");
}

TEST_F(TextInputLayoutTest, anInputMethodGivesWayToTheAsciiLayout) {
  input_.currentTable.reset();
  input_.asciiTable = "AS";
  const auto translator = layout_.current();
  ASSERT_NE(translator, nullptr);
  EXPECT_EQ(translator->translate(1), "AS1");
}

TEST_F(TextInputLayoutTest, aMissingSourceIsPassedOver) {
  input_.currentMissing = true;
  input_.asciiTable = "AS";
  ASSERT_NE(layout_.current(), nullptr);
  EXPECT_EQ(layout_.current()->translate(1), "AS1");
}

TEST_F(TextInputLayoutTest, withoutAnyTableThereIsNoTranslator) {
  input_.currentTable.reset();
  input_.asciiTable.reset();
  EXPECT_EQ(layout_.current(), nullptr);
  input_.asciiMissing = true;
  EXPECT_EQ(layout_.current(), nullptr);
}

TEST_F(TextInputLayoutTest, aPropertyThatIsNoDataIsNoTable) {
  input_.tableIsNoData = true;
  EXPECT_EQ(layout_.current(), nullptr);
}

TEST_F(TextInputLayoutTest, theTranslatorOutlivesItsSource) {
  const auto translator = layout_.current();
  input_.currentTable = "DE";
  EXPECT_EQ(translator->translate(1), "US1");
  EXPECT_EQ(layout_.current()->translate(1), "DE1");
}

TEST_F(TextInputLayoutTest, anErrorOrNoCharacterIsNothing) {
  const auto translator = layout_.current();
  input_.translate = [](const std::string&, UInt16) { return Translation{-25340, u"x", {}}; };
  EXPECT_EQ(translator->translate(0), std::nullopt);
  input_.translate = [](const std::string&, UInt16) { return Translation{0, u"", {}}; };
  EXPECT_EQ(translator->translate(0), std::nullopt);
}

TEST_F(TextInputLayoutTest, fourUnitsFitAndMoreThanThatIsNotBelieved) {
  const auto translator = layout_.current();
  input_.translate = [](const std::string&, UInt16) { return Translation{0, u"abcd", {}}; };
  EXPECT_EQ(translator->translate(0), "abcd");
  input_.translate = [](const std::string&, UInt16) { return Translation{0, u"abcd", 5}; };
  EXPECT_EQ(translator->translate(0), std::nullopt);
}

TEST_F(TextInputLayoutTest, changesAreToldUntilTheObservationEnds) {
  int told = 0;
  Observation watching = layout_.observeChanges([&] { ++told; });
  cf_.notify(FakeTextInput::kChanged);
  cf_.notify("something else");
  EXPECT_EQ(told, 1);
  watching.reset();
  cf_.notify(FakeTextInput::kChanged);
  EXPECT_EQ(told, 1);
}

TEST_F(TextInputLayoutTest, anObserverMayEndItselfWhileItIsTold) {
  int told = 0;
  Observation watching;
  watching = layout_.observeChanges([&] {
    watching.reset();
    ++told;
  });
  cf_.notify(FakeTextInput::kChanged);
  cf_.notify(FakeTextInput::kChanged);
  EXPECT_EQ(told, 1);
}

}  // namespace
}  // namespace velotap::test
