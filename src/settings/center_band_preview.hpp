// The picture of the centre band: where it lies on a bar, and what dragging its edges means.
//
// Pure; any thread. The bar stands for the width of the surface. Positions are in the bar's own
// unit, edges in parts of the surface.
#pragma once

#include "config/config.hpp"
#include "settings/tuning_values.hpp"

namespace velotap {

struct CenterBandPreview {
  double x = 0;      ///< where the band begins
  double width = 0;  ///< how wide it is
};

/// The band that is in force for these edges, so never one the wrong way round.
[[nodiscard]] CenterBandPreview centerBandPreview(double minimum, double maximum, double barWidth);

/// Which edge a press there takes hold of: the nearer one, the left one when both are as near. Of a
/// band without width the right one for whoever comes from the right.
[[nodiscard]] TuningValue centerBandEdgeAt(double position, double minimum, double maximum,
                                           double barWidth);

/// The value of an edge that was dragged there, as its slider would take it.
[[nodiscard]] double centerBandEdgeValue(TuningValue edge, double position, double barWidth);

}  // namespace velotap
