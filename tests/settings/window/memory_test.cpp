// What a settings window takes while it is open, and that it gives it back. The C library counts,
// so this is no test for builds in which a sanitizer does.

#include <malloc.h>

#include <QCoreApplication>
#include <utility>

#include "scene.hpp"

namespace velotap::test {
namespace {

constexpr std::size_t kSlack = 64 * 1024;

class MemoryTest : public SceneTest {
 protected:
  /// Bytes in use while it shows and after it was closed.
  std::pair<std::size_t, std::size_t> openAndClose() {
    for (const PreferencesTab tab : {PreferencesTab::general, PreferencesTab::gestures}) {
      settings->show(tab);
      awaitFrame();
    }
    const std::size_t open = mallinfo2().uordblks;
    settings->close();
    while (settings->isOpen()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return {open, mallinfo2().uordblks};
  }
};

TEST_F(MemoryTest, ClosingReturnsWhatOpeningTook) {
  const std::size_t before = mallinfo2().uordblks;
  open("en", PreferencesTab::general, {560, 600});
  openAndClose();
  const auto [openEarly, closedEarly] = openAndClose();
  for (int i = 0; i < 3; ++i) openAndClose();
  const auto [openLate, closedLate] = openAndClose();
  EXPECT_LT(openLate, openEarly + kSlack) << "each opening finds as much as the one before";
  EXPECT_LT(closedLate, closedEarly + kSlack);
  EXPECT_LT(closedLate - before, (openLate - before) / 3);
}

}  // namespace
}  // namespace velotap::test
