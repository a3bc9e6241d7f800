// What is written of a C++ exception that nobody caught: its name, its reason and the stack.
//
// The handler runs on whichever thread failed, before its stack is unwound, so that the stack still
// leads to the place that threw. It may allocate: the process is ending in good order, unlike after
// a fatal signal. A failure inside it ends the process at once, without a record.
#pragma once

#include <string>
#include <vector>

namespace velotap {

/// "Uncaught exception: NAME", "Reason: REASON" and one line for each frame, without a last line
/// feed. An empty reason reads "-".
[[nodiscard]] std::string exceptionRecord(const std::string& name, const std::string& reason,
                                          const std::vector<std::string>& stack);

/// Replaces the file as a whole, for the user alone; a failure leaves it as it was. Whatever goes
/// wrong is ignored.
void writeRecord(const std::string& path, const std::string& record);

/// Removes what processes that died inside `writeRecord` left in the folder.
void removeUnfinishedRecords(const std::string& folder);

/// From now on an exception that nobody catches writes its record to `path`, and then aborts.
void installExceptionRecorder(std::string path);

}  // namespace velotap
