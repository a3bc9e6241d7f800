#include "adapters/linux/services/pkexec_prompt.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "adapters/linux/services/seat_trust.hpp"
#include "support/recording_urls.hpp"
#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

class PkexecPromptTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  PkexecPromptTest() {
    std::filesystem::create_directories(devices_ / "input");
    mkfifo(fifo_.c_str(), 0600);
    script("helper", "exit 0");
    // Stands for the prompt on the screen: waits for the person, then runs the helper.
    script("prompt", "echo asked >> '" + (folder_.path() / "log").string() + "'\nread answer < '" +
                         fifo_ + "'\n[ \"$answer\" = yes ] && exec \"$@\"\nexit 126");
    access_.emplace(queue, queue, devices_.string());
  }
  std::string script(const std::string& name, const std::string& body) const {
    const auto file = folder_.path() / name;
    std::ofstream(file) << "#!/bin/sh\n" << body << "\n";
    ::chmod(file.c_str(), 0700);
    return file.string();
  }
  void makePrompt(const std::string& helper) {
    prompt_.emplace(queue,
                    PkexecPrompt::Places{.prompt = {(folder_.path() / "prompt").string()},
                                         .helper = helper,
                                         .program = "/opt/velotap/bin/velotap"},
                    *access_, activity_, urls_);
    observation_ = prompt_->observe([this] {
      ++told_;
      check();
    });
  }
  void answer(const char* text) const { std::ofstream(fifo_) << text << "\n"; }
  [[nodiscard]] std::size_t timesAsked() const {
    std::ifstream log(folder_.path() / "log");
    std::size_t lines = 0;
    for (std::string line; std::getline(log, line);) ++lines;
    return lines;
  }

  TemporaryFolder folder_;
  const std::filesystem::path devices_ = folder_.path() / "dev";
  const std::string fifo_ = (folder_.path() / "fifo").string();
  const std::string helper_ = (folder_.path() / "helper").string();
  SessionActivity activity_{queue, nullptr};
  test::RecordingUrls urls_;
  std::optional<AccessWatch> access_;
  std::optional<PkexecPrompt> prompt_;
  Observation observation_;
  int told_ = 0;
};

TEST_F(PkexecPromptTest, ShowsOnePromptHoweverOftenItIsAsked) {
  makePrompt(helper_);
  prompt_->request();
  EXPECT_TRUE(prompt_->openSettings()) << "it is on the screen already";
  prompt_->request();
  answer("yes");
  serveUntil([this] { return told_ > 0; });
  EXPECT_EQ(timesAsked(), 1U);
}

TEST_F(PkexecPromptTest, OneThatWasDismissedCanBeShownAgain) {
  makePrompt(helper_);
  prompt_->request();
  answer("no");
  serveUntil([this] { return told_ == 1; });
  EXPECT_TRUE(prompt_->openSettings());
  answer("yes");
  serveUntil([this] { return told_ == 2; });
  EXPECT_EQ(timesAsked(), 2U);
}

TEST_F(PkexecPromptTest, WithoutAHelperThereIsNothingToShow) {
  makePrompt("");
  prompt_->request();
  EXPECT_FALSE(prompt_->openSettings());
  EXPECT_EQ(timesAsked(), 0U);
}

TEST_F(PkexecPromptTest, WithoutAPromptThereIsNothingToShow) {
  std::filesystem::remove(folder_.path() / "prompt");
  makePrompt(helper_);
  EXPECT_FALSE(prompt_->openSettings());
}

TEST_F(PkexecPromptTest, RightsThatChangeAreToldOnceTheyHaveSettled) {
  makePrompt(helper_);
  std::ofstream(devices_ / "uinput") << "";
  ::chmod((devices_ / "uinput").c_str(), 0600);
  serveUntil([this] { return told_ == 1; });
  std::ofstream(devices_ / "input" / "event3") << "";
  serveUntil([this] { return told_ == 2; });
  ::chmod((devices_ / "input" / "event3").c_str(), 0400);
  serveUntil([this] { return told_ == 3; });
}

TEST_F(PkexecPromptTest, OtherDevicesAreNobodysBusiness) {
  makePrompt(helper_);
  std::ofstream(devices_ / "tty1") << "";
  std::ofstream(devices_ / "input" / "mouse0") << "";
  queue.runReady();
  bool settled = false;
  const auto later = queue.asyncAfter(2 * AccessWatch::kSettlingSeconds, [&] {
    settled = true;
    check();
  });
  serveUntil([&settled] { return settled; });
  EXPECT_EQ(told_, 0);
}

TEST_F(PkexecPromptTest, AFolderOfDevicesThatComesLaterIsWatched) {
  std::filesystem::remove_all(devices_ / "input");
  access_.emplace(queue, queue, devices_.string());
  makePrompt(helper_);
  std::filesystem::create_directory(devices_ / "input");
  serveUntil([this] { return told_ == 1; });
  std::ofstream(devices_ / "input" / "event0") << "";
  serveUntil([this] { return told_ == 2; });
}

TEST_F(PkexecPromptTest, WhereNothingIsToldItSaysSo) {
  access_.emplace(queue, queue, (folder_.path() / "nowhere").string());
  makePrompt(helper_);
  EXPECT_FALSE(observation_.active());
}

TEST_F(PkexecPromptTest, RevealsTheFolderOfTheProgram) {
  makePrompt(helper_);
  EXPECT_TRUE(prompt_->revealProgram());
  EXPECT_EQ(urls_.opened, std::vector<std::string>{"file:///opt/velotap/bin/"});
}

TEST_F(PkexecPromptTest, FindsTheInstalledHelperFirst) {
  const std::string other = script("other", "exit 0");
  EXPECT_EQ(findAccessHelper({helper_, other}), helper_);
  EXPECT_EQ(findAccessHelper({"/nonexistent/helper", other}), other);
  EXPECT_EQ(findAccessHelper({"/nonexistent/helper", ""}), "");
  EXPECT_EQ(findAccessHelper({"helper", "relative/helper"}), "");
  EXPECT_EQ(findAccessHelper({}), "");
}

class FixedTrust final : public AccessibilityTrust {
 public:
  explicit FixedTrust(bool answer) : answer_(answer) {}
  [[nodiscard]] bool trusted() override { return answer_; }

 private:
  bool answer_;
};

TEST_F(PkexecPromptTest, TrustNeedsTheDevicesAndTheSession) {
  FixedTrust yes(true);
  FixedTrust no(false);
  EXPECT_EQ(SeatTrust(yes, activity_).trusted(), activity_.active());
  EXPECT_FALSE(SeatTrust(no, activity_).trusted());
}

}  // namespace
}  // namespace velotap
