// A desktop that writes down which addresses it was handed, and says what it is told to of each.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/url_opener.hpp"

namespace velotap::test {

class RecordingUrls final : public UrlOpener {
 public:
  void open(const std::string& url, Outcome outcome) override {
    opened.push_back(url);
    if (outcome) outcome(works);
  }
  bool works = true;
  std::vector<std::string> opened;
};

}  // namespace velotap::test
