// Orientation and crossing of segments in the plane. All comparisons are exact.
#include "libloopwise.h"

#include <algorithm>

double det_segments(double x1, double y1, double x2, double y2, double x3, double y3) {
    return x1 * y2 + y1 * x3 + x2 * y3 - x3 * y2 - x1 * y3 - x2 * y1;
}

bool on_segment(double x1, double y1, double x2, double y2, double px, double py) {
    return std::min(x1, x2) <= px && px <= std::max(x1, x2) && std::min(y1, y2) <= py && py <= std::max(y1, y2);
}

bool TwoSegmentsCrossedSimple(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4) {
    const double d1 = det_segments(x3, y3, x4, y4, x1, y1);
    const double d2 = det_segments(x3, y3, x4, y4, x2, y2);
    const double d3 = det_segments(x1, y1, x2, y2, x3, y3);
    const double d4 = det_segments(x1, y1, x2, y2, x4, y4);
    if (d1 * d2 < 0.0 && d3 * d4 < 0.0) return true;
    return (d1 == 0.0 && on_segment(x3, y3, x4, y4, x1, y1)) || (d2 == 0.0 && on_segment(x3, y3, x4, y4, x2, y2)) ||
           (d3 == 0.0 && on_segment(x1, y1, x2, y2, x3, y3)) || (d4 == 0.0 && on_segment(x1, y1, x2, y2, x4, y4));
}
