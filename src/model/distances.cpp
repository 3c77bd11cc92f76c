// The largest of many squared distances, for each instruction set.
#include "src/model/diameter.hpp"
#include "src/model/points.hpp"

namespace loopwise::model {
namespace {

double farthest_square_plain(const Positions& positions, PointR3 point, double at_least) {
    for (std::size_t i = 0; i < positions.count; ++i) {
        const double square = squared_distance({positions.x[i], positions.y[i], positions.z[i]}, point);
        if (square > at_least) at_least = square;
    }
    return at_least;
}

// A lane that is not a number is not greater and leaves the largest as it is, as in the plain version.
#define LOOPWISE_FARTHEST_SQUARE(name, lanes, ...)                                                                     \
    __VA_ARGS__ double name(const Positions& positions, PointR3 point, double at_least) {                              \
        using Doubles = double __attribute__((vector_size(8 * (lanes))));                                              \
        Doubles largest = Doubles{} + at_least;                                                                        \
        for (std::size_t i = 0; i < positions.count; i += (lanes)) {                                                   \
            Doubles x, y, z;                                                                                           \
            __builtin_memcpy(&x, positions.x + i, sizeof x);                                                           \
            __builtin_memcpy(&y, positions.y + i, sizeof y);                                                           \
            __builtin_memcpy(&z, positions.z + i, sizeof z);                                                           \
            x -= point.x, y -= point.y, z -= point.z;                                                                  \
            const Doubles square = x * x + y * y + z * z;                                                              \
            largest = square > largest ? square : largest;                                                             \
        }                                                                                                              \
        for (std::size_t i = 0; i < (lanes); ++i)                                                                      \
            if (largest[i] > at_least) at_least = largest[i];                                                          \
        return at_least;                                                                                               \
    }

#if defined(__x86_64__)
LOOPWISE_FARTHEST_SQUARE(farthest_square_sse2, 2)
LOOPWISE_FARTHEST_SQUARE(farthest_square_avx2, 4, __attribute__((target("avx2"))))
LOOPWISE_FARTHEST_SQUARE(farthest_square_avx512, 8, __attribute__((target("avx512f"))))
#elif defined(__aarch64__)
LOOPWISE_FARTHEST_SQUARE(farthest_square_neon, 2)
#endif

} // namespace

FarthestSquare farthest_square(InstructionSet set) {
    static constexpr Versions<FarthestSquare> versions {
        farthest_square_plain,
#if defined(__x86_64__)
            farthest_square_sse2, farthest_square_avx2, farthest_square_avx512,
#elif defined(__aarch64__)
            farthest_square_neon,
#endif
    };
    return version_for(versions, set);
}

} // namespace loopwise::model
