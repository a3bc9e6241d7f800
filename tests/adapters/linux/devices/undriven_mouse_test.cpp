#include "adapters/linux/devices/undriven_mouse.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace velotap {
namespace {

constexpr const char* kMoves = "3";                  // REL_X and REL_Y
constexpr const char* kTouches = "260800000000003";  // among them ABS_MT_POSITION_X
constexpr const char* kNothing = "0";

class UndrivenMouseTest : public testing::Test {
 protected:
  UndrivenMouseTest() {
    std::string name = testing::TempDir() + "input-XXXXXX";
    folder = ::mkdtemp(name.data());
  }
  ~UndrivenMouseTest() override { std::filesystem::remove_all(folder); }

  void add(const char* vendor, const char* product, const char* rel, const char* abs,
           const char* phys = "usb-1/input0") {
    const auto device = folder / ("event" + std::to_string(count++)) / "device";
    write(device / "id" / "vendor", vendor);
    write(device / "id" / "product", product);
    write(device / "capabilities" / "rel", rel);
    write(device / "capabilities" / "abs", abs);
    write(device / "phys", phys);
  }
  static void write(const std::filesystem::path& file, const char* text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << text << '\n';
  }
  [[nodiscard]] bool undriven() const { return hasUndrivenMouse(folder.string()); }

  std::filesystem::path folder;
  int count = 0;
};

TEST_F(UndrivenMouseTest, IsOneThatMovesAndGivesNoTouches) {
  EXPECT_FALSE(undriven());
  add("004c", "0323", kMoves, kNothing);
  EXPECT_TRUE(undriven());
}

TEST_F(UndrivenMouseTest, IsNoneThatGivesTouches) {
  add("004c", "0269", kMoves, kTouches);
  EXPECT_FALSE(undriven());
}

TEST_F(UndrivenMouseTest, IsNoneWhoseTouchesComeFromAnotherNode) {
  add("05ac", "0323", kMoves, kNothing);
  add("05ac", "0323", kNothing, kTouches);
  EXPECT_FALSE(undriven());
  add("05ac", "030d", kMoves, kNothing);
  EXPECT_TRUE(undriven()) << "another model's touches do not count";
}

TEST_F(UndrivenMouseTest, IsNoOtherDevice) {
  add("046d", "0323", kMoves, kNothing);
  add("05ac", "0265", kMoves, kNothing);
  add("05ac", "0269", kNothing, kNothing);
  EXPECT_FALSE(undriven());
}

TEST_F(UndrivenMouseTest, IsNotOurOwnMirrorOfOne) {
  add("004c", "0269", kMoves, kNothing, "velotap/mirror");
  EXPECT_FALSE(undriven());
}

TEST_F(UndrivenMouseTest, IsNoneWhereTheKernelShowsNothing) {
  EXPECT_FALSE(hasUndrivenMouse((folder / "absent").string()));
}

}  // namespace
}  // namespace velotap
