#include "src/model/points.hpp"

using namespace loopwise::model;

double Dist(PointR3 a, PointR3 b) { return distance(a, b); }
