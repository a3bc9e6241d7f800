// Pictures reduced to the mean colours of their blocks: small enough to be kept, and blind to how a
// machine smooths the edges of letters, but not to a control that moved, changed or went away.
//
// Pure.
#pragma once

#include <QImage>
#include <optional>

namespace velotap::test {

inline constexpr int kBlockSide = 8;  ///< pixels

/// One pixel for each block; those at the right and bottom may be smaller. Colours come in 32 steps
/// a channel, which files of them owe their size to.
[[nodiscard]] QImage blocksOf(const QImage& picture);

/// In steps of 255 a channel.
struct BlockDifference {
  double mean = 0;  ///< over all channels of all blocks
  int worst = 0;    ///< of any channel of any block
  QPoint where;     ///< the block of `worst`
};

/// Nothing for pictures of different sizes.
[[nodiscard]] std::optional<BlockDifference> blockDifference(const QImage& a, const QImage& b);

/// A step of colour may go either way at the border between two; a word set one pixel aside stays
/// below these, a switch that is off instead of on does not.
inline constexpr double kMeanTolerance = 1;
inline constexpr int kWorstTolerance = 32;

[[nodiscard]] bool isAlike(const BlockDifference& difference);

}  // namespace velotap::test
