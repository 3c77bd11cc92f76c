#include "model/points.hpp"

using namespace loopwise;

double Dist(PointR3 a, PointR3 b) { return distance(a, b); }
