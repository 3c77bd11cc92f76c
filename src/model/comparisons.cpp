#include "model/comparisons.hpp"

bool CompareEq(double a, double b) { return loopwise::equal(a, b); }
bool CompareGt(double a, double b) { return loopwise::greater(a, b); }
bool CompareGeq(double a, double b) { return loopwise::greater_or_equal(a, b); }
