#include "src/reduce/intersection.hpp"

using namespace loopwise::reduce;

double ScalarProduct(double* a, double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

double Determinant(double* a, double* b, double* c) {
    return determinant(a[0], a[1], a[2], b[0], b[1], b[2], c[0], c[1], c[2]);
}

int intersection(PointR3* triangle, PointR3* segment) {
    return static_cast<int>(contact({triangle[0], triangle[1], triangle[2]}, {segment[0], segment[1]}));
}
