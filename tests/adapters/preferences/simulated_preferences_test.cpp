#include "adapters/simulated/simulated_preferences.hpp"

#include "preferences_contract.hpp"

namespace velotap::test {
namespace {

class SimulatedWorld final : public PreferencesWorld {
 public:
  [[nodiscard]] PreferencesStorage& storage() override { return storage_; }
  void writeAsAnother(std::string_view domain, const ValueMap& values) override {
    storage_.storeAsAnotherWriter(domain, values);
  }
  void setWritesFail(bool fail) override { storage_.setReadOnly(fail); }
  void settle() override {}

 private:
  SimulatedPreferences storage_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, PreferencesContract, SimulatedWorld);

}  // namespace
}  // namespace velotap::test
