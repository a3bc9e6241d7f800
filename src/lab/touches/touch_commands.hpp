// The sub-commands of `velotap-lab` that deal with real touches: import, record, demo.
#pragma once

#include <iosfwd>
#include <string_view>
#include <vector>

namespace velotap::lab {

/// `import FILE`: a recording of evemu, evtest or libinput becomes a scenario on `out`.
int runImportCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors);

/// `record DEVICE`: what fingers do on a device, by event node or by its number in the list of
/// `velotap --devices`, becomes a scenario on `out`, until it is interrupted.
int runRecordCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                     std::ostream& errors);

/// `demo FILE...`: plays recordings and tells touch by touch what became of them.
int runDemoCommand(const std::vector<std::string_view>& arguments, std::ostream& out,
                   std::ostream& errors);

}  // namespace velotap::lab
