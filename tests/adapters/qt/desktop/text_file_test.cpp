#include "adapters/qt/desktop/text_file.hpp"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

namespace velotap {
namespace {

class TextFileTest : public testing::Test {
 protected:
  [[nodiscard]] QString path(const char* name) const {
    return folder.filePath(QString::fromUtf8(name));
  }
  [[nodiscard]] static QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
  }
  [[nodiscard]] QStringList files() const {
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
  }

  QTemporaryDir folder;
};

TEST_F(TextFileTest, HoldsTheTextInUtf8) {
  const std::string text = "Velotap · Version 1 (2)\nGeräte: Нет\n";
  EXPECT_TRUE(writeTextFile(path("Velotap-support.txt"), text));
  EXPECT_EQ(contents(path("Velotap-support.txt")), QByteArray::fromStdString(text));
  EXPECT_EQ(files(), QStringList{QStringLiteral("Velotap-support.txt")}) << "nothing else is left";
}

TEST_F(TextFileTest, TakesThePlaceOfALongerOne) {
  ASSERT_TRUE(writeTextFile(path("a.txt"), "a long text that was there before"));
  EXPECT_TRUE(writeTextFile(path("a.txt"), "short"));
  EXPECT_EQ(contents(path("a.txt")), "short");
}

TEST_F(TextFileTest, CannotBeWrittenWhereNoFileCanBe) {
  EXPECT_FALSE(writeTextFile(path("missing/a.txt"), "text"));
  EXPECT_FALSE(writeTextFile(folder.path(), "text")) << "a folder";
  EXPECT_FALSE(writeTextFile({}, "text"));
  EXPECT_TRUE(files().isEmpty());
}

// A disk that is full, as far as one process can have that to itself.
TEST_F(TextFileTest, WhatWasThereStaysWhenTheDiskIsFull) {
  ASSERT_TRUE(writeTextFile(path("a.txt"), "before"));
  rlimit usual{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
  const rlimit small{.rlim_cur = 4096, .rlim_max = usual.rlim_max};
  auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const bool written = writeTextFile(path("a.txt"), std::string(100'000, 'x'));
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(written);
  EXPECT_EQ(contents(path("a.txt")), "before");
  EXPECT_EQ(files(), QStringList{QStringLiteral("a.txt")});
}

}  // namespace
}  // namespace velotap
