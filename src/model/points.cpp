#include "model/points.hpp"

double Dist(PointR3 a, PointR3 b) { return loopwise::distance(a, b); }
