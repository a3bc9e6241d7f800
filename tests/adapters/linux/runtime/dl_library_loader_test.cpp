#include "adapters/linux/runtime/dl_library_loader.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace velotap {
namespace {

namespace fs = std::filesystem;

class DlLibraryLoaderTest : public testing::Test {
 protected:
  DlLibraryLoaderTest() {
    unsetenv("VELOTAP_MULTITOUCH_LIBRARY");
    std::string pattern = (fs::temp_directory_path() / "velotap-loader-XXXXXX").string();
    root = mkdtemp(pattern.data());
    fs::create_directories(root / "bin");
  }
  ~DlLibraryLoaderTest() override {
    unsetenv("VELOTAP_MULTITOUCH_LIBRARY");
    fs::remove_all(root);
  }
  std::string program() const { return (root / "bin" / "velotap").string(); }
  std::string provide(const char* folder) const {
    const fs::path path = root / folder / "libvelotap-multitouch.so";
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "provider";
    return path.string();
  }

  fs::path root;
};

TEST_F(DlLibraryLoaderTest, OpensALibraryAndFindsItsSymbols) {
  DlLibraryLoader loader;
  void* handle = loader.open(LOADABLE_SAMPLE);
  ASSERT_NE(handle, nullptr);
  const auto answer = reinterpret_cast<int (*)()>(loader.symbol(handle, "loadableSampleAnswer"));
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer(), 42);
  EXPECT_EQ(loader.symbol(handle, "loadableSampleQuestion"), nullptr);
}

TEST_F(DlLibraryLoaderTest, WhatIsNoLibraryIsNotOpened) {
  DlLibraryLoader loader;
  EXPECT_EQ(loader.open((root / "nothing.so").c_str()), nullptr);
  EXPECT_EQ(loader.open(provide("lib").c_str()), nullptr) << "a text file";
  EXPECT_EQ(loader.open(root.c_str()), nullptr) << "a folder";
}

TEST_F(DlLibraryLoaderTest, ProviderIsFoundBesideTheProgram) {
  const std::string packaged = provide("lib/velotap");
  EXPECT_EQ(providerBeside(program()), packaged);
  const std::string built = provide("lib");
  EXPECT_EQ(providerBeside(program()), built);
}

TEST_F(DlLibraryLoaderTest, WithoutOneBesideTheProgramTheLinkerSearches) {
  EXPECT_EQ(providerBeside(program()), "libvelotap-multitouch.so");
  EXPECT_EQ(providerBeside(""), "libvelotap-multitouch.so") << "the program's path is unknown";
}

TEST_F(DlLibraryLoaderTest, EnvironmentNamesAnotherProvider) {
  setenv("VELOTAP_MULTITOUCH_LIBRARY", "/opt/other/provider.so", 1);
  EXPECT_STREQ(DlLibraryLoader().multitouchLibraryPath(), "/opt/other/provider.so");
}

TEST_F(DlLibraryLoaderTest, AnEmptyNameIsNone) {
  const std::string usual = DlLibraryLoader().multitouchLibraryPath();
  setenv("VELOTAP_MULTITOUCH_LIBRARY", "", 1);
  EXPECT_EQ(DlLibraryLoader().multitouchLibraryPath(), usual);
  EXPECT_NE(usual, "");
}

}  // namespace
}  // namespace velotap
