#include "src/model/comparisons.hpp"

using namespace loopwise::model;

bool CompareEq(double a, double b) { return equal(a, b); }
bool CompareGt(double a, double b) { return greater(a, b); }
bool CompareGeq(double a, double b) { return greater_or_equal(a, b); }
