// Runs a program as a child and reads what it prints.
//
// Waiting is always for something that the child does: a line, or its end. The child dies with the
// object that stands for it.
#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velotap::test {

class ChildProgram {
 public:
  /// The environment is exactly `environment`.
  ChildProgram(const std::string& path, const std::vector<std::string>& arguments,
               const std::map<std::string, std::string>& environment);
  ~ChildProgram();
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  /// The next line of standard output without its end; nothing once there are no more.
  [[nodiscard]] std::optional<std::string> readLine();
  /// The rest of standard output, until the child closes it.
  [[nodiscard]] std::string readAll();
  /// All that the child has written to standard error, until it closes it.
  [[nodiscard]] std::string readErrors();
  void signal(int number) const;
  /// Nobody reads standard output any more.
  void closeOutput();

  struct End {
    int status = -1;  ///< exit status; -1 when a signal ended it
    int signal = 0;
  };
  [[nodiscard]] End await();

 private:
  pid_t process_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

}  // namespace velotap::test
