#include "settings/center_band_preview.hpp"

#include <cmath>

namespace velotap {

CenterBandPreview centerBandPreview(double minimum, double maximum, double barWidth) {
  const CenterBand band = Config::validatedCenterBand(minimum, maximum);
  const double lower = static_cast<double>(band.lower);
  return {.x = lower * barWidth, .width = (static_cast<double>(band.upper) - lower) * barWidth};
}

TuningValue centerBandEdgeAt(double position, double minimum, double maximum, double barWidth) {
  const CenterBandPreview band = centerBandPreview(minimum, maximum, barWidth);
  const double toLeft = std::fabs(position - band.x);
  const double toRight = std::fabs(position - band.x - band.width);
  const bool right = toRight < toLeft || (toRight == toLeft && position > band.x + band.width);
  return right ? TuningValue::centerMaxX : TuningValue::centerMinX;
}

double centerBandEdgeValue(TuningValue edge, double position, double barWidth) {
  const TuningSlider& slider = tuningSlider(edge);
  if (!(barWidth > 0)) return slider.factory;
  return slider.snapped(position / barWidth);
}

}  // namespace velotap
