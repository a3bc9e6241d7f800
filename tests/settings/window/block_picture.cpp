#include "block_picture.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace velotap::test {
namespace {

constexpr int kStep = 8;

int rounded(qint64 sum, int count) {
  const auto mean = static_cast<int>((sum + count / 2) / count);
  return std::min(255, (mean + kStep / 2) / kStep * kStep);
}

QRgb meanOf(const QImage& picture, const QRect& block) {
  std::array<qint64, 3> sums{};
  for (int y = block.top(); y <= block.bottom(); ++y) {
    for (int x = block.left(); x <= block.right(); ++x) {
      const QRgb color = picture.pixel(x, y);
      sums[0] += qRed(color);
      sums[1] += qGreen(color);
      sums[2] += qBlue(color);
    }
  }
  const int count = block.width() * block.height();
  return qRgb(rounded(sums[0], count), rounded(sums[1], count), rounded(sums[2], count));
}

}  // namespace

QImage blocksOf(const QImage& picture) {
  QImage blocks((picture.width() + kBlockSide - 1) / kBlockSide,
                (picture.height() + kBlockSide - 1) / kBlockSide, QImage::Format_RGB888);
  for (int y = 0; y < blocks.height(); ++y) {
    for (int x = 0; x < blocks.width(); ++x) {
      const QRect block(x * kBlockSide, y * kBlockSide, kBlockSide, kBlockSide);
      blocks.setPixel(x, y, meanOf(picture, block.intersected(picture.rect())));
    }
  }
  return blocks;
}

std::optional<BlockDifference> blockDifference(const QImage& a, const QImage& b) {
  if (a.size() != b.size() || a.isNull()) return std::nullopt;
  BlockDifference result;
  qint64 sum = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const QRgb p = a.pixel(x, y);
      const QRgb q = b.pixel(x, y);
      for (const int step : {std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                             std::abs(qBlue(p) - qBlue(q))}) {
        sum += step;
        if (step <= result.worst) continue;
        result.worst = step;
        result.where = {x, y};
      }
    }
  }
  result.mean = static_cast<double>(sum) / (3.0 * a.width() * a.height());
  return result;
}

bool isAlike(const BlockDifference& difference) {
  return difference.mean <= kMeanTolerance && difference.worst <= kWorstTolerance;
}

}  // namespace velotap::test
