#include "adapters/qt/runtime/qt_main_loop.hpp"

namespace velotap {

QtMainLoop::QtMainLoop(PosixMainQueue& queue) : ready_(queue.descriptor(), QSocketNotifier::Read) {
  QObject::connect(&ready_, &QSocketNotifier::activated, &ready_, [&queue] { queue.runReady(); });
}

}  // namespace velotap
