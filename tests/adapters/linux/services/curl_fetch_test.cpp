#include "adapters/linux/services/curl_fetch.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "support/served_loop.hpp"
#include "support/temporary_folder.hpp"

namespace velotap {
namespace {

class CurlFetchTest : public ::testing::Test, protected test::ServedLoop {
 protected:
  /// A program in curl's place; "$out" is the file that it shall write.
  std::string program(const std::string& body) const {
    const auto file = folder_.path() / "curl";
    std::ofstream(file) << "#!/bin/sh\n"
                           "while [ $# -gt 0 ]; do\n"
                           "  case $1 in --output) out=$2 ;; --url) url=$2 ;; esac\n"
                           "  shift\n"
                           "done\n"
                        << body << "\n";
    ::chmod(file.c_str(), 0700);
    return file.string();
  }
  std::optional<std::string> fetched(const std::string& body, const std::string& url) {
    CurlFetch fetch(queue, program(body));
    bool done = false;
    std::optional<std::string> content;
    fetch.fetch(url, [&](std::optional<std::string> answer) {
      content = std::move(answer);
      done = true;
      check();
    });
    serveUntil([&done] { return done; });
    return content;
  }
  TemporaryFolder folder_;
};

TEST_F(CurlFetchTest, HandsOverWhatCameAndTheAddressAsItIs) {
  EXPECT_EQ(fetched("printf %s \"$url\" > \"$out\"", "https://example.com/?a=$(id)&b='\""),
            "https://example.com/?a=$(id)&b='\"");
}

TEST_F(CurlFetchTest, AFailureIsNothing) {
  EXPECT_EQ(fetched("echo half > \"$out\"; exit 22", "https://example.com"), std::nullopt);
}

TEST_F(CurlFetchTest, AnEmptyAnswerIsOne) {
  EXPECT_EQ(fetched("exit 0", "https://example.com"), "");
}

TEST_F(CurlFetchTest, RefusesWhatIsTooLong) {
  const auto bytes = [](int count) {
    return "head -c " + std::to_string(count) + " /dev/zero > \"$out\"";
  };
  EXPECT_EQ(fetched(bytes(65536), "https://example.com")->size(), 65536U);
  EXPECT_EQ(fetched(bytes(65537), "https://example.com"), std::nullopt);
}

TEST_F(CurlFetchTest, RefusesOtherAddresses) {
  for (const char* url : {"http://example.com", "file:///etc/passwd", "-o/etc/x", ""}) {
    EXPECT_EQ(fetched("exit 0", url), std::nullopt) << url;
  }
}

TEST_F(CurlFetchTest, WithoutTheProgramThereIsNothing) {
  CurlFetch fetch(queue, "velotap-no-such-program");
  bool done = false;
  fetch.fetch("https://example.com", [&done](const std::optional<std::string>& answer) {
    EXPECT_EQ(answer, std::nullopt);
    done = true;
  });
  EXPECT_TRUE(done);
}

}  // namespace
}  // namespace velotap
