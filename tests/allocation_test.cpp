// What happens when memory runs out, and that some operations never ask for any. A program of its own,
// because it replaces the global operator new.
#include "support/capture.hpp"
#include "support/chains.hpp"
#include "support/effort.hpp"
#include "support/operations.hpp"

#include <gtest/gtest.h>

#include <pthread.h>

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr long never = std::numeric_limits<long>::max();
long allocations = 0, living = 0, fails_at = never;

} // namespace

// Not inline, so that no compiler takes an allocation and its release away.
__attribute__((noinline)) void* operator new(std::size_t size) {
    if (++allocations == fails_at) throw std::bad_alloc();
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    ++living;
    return memory;
}
__attribute__((noinline)) void operator delete(void* memory) noexcept {
    living -= memory != nullptr;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace {

using operations::Operation;
using operations::Values;

/// How many allocations the operation made before it failed or was done.
template <class Run> long counted(long failing, Run run) {
    allocations = 0;
    fails_at = failing;
    run();
    fails_at = never;
    return allocations;
}

/// Whether the operation came to an end although, or without, an allocation failing.
bool completes(const Operation& operation, long failing, const Values& values) {
    Values now = values;
    now.chain.reserve(now.chain.size() + 1); // room for the first of two new atoms
    operations::Digest results;
    bool completed = false;
    const long made = counted(failing, [&] {
        try {
            operation.run(now, results);
            completed = true;
        } catch (const std::bad_alloc&) {}
    });
    EXPECT_FALSE(completed && made >= failing) << operation.name << " hides that allocation " << failing << " failed";
    EXPECT_TRUE(completed || chains::same_bits(now.chain, values.chain)) << operation.name << ' ' << failing;
    // ChainsReduce() too: it has all its memory before it takes an atom away.
    for (std::size_t i = 0; i < values.structure.size() && !completed; ++i)
        EXPECT_TRUE(chains::starts_with(now.structure[i], values.structure[i])) << operation.name << ' ' << failing;
    return completed;
}

TEST(Memory, EveryOperationLetsItsFirstFailureThrough) {
    Values values = operations::make_values(41, testing::TempDir() + "loopwise_allocation.txt");
    values.chain[5].z = std::numeric_limits<double>::infinity(); // which only a stream writes
    values.text += std::string(3000, ' ') + '\n';
    ChainWrite(values.file.data(), values.chain, true);
    const Silence quiet;
    FillFulerenData();
    long failures = 0;
    for (const Operation& operation : operations::all()) {
        completes(operation, never, values); // what is set up once and kept
        const long before = living;
        for (long failing = 1; !completes(operation, failing, values) && failing < 10000; ++failing) ++failures;
        EXPECT_EQ(living, before) << operation.name << " leaks";
        std::srand(1);
    }
    EXPECT_GT(failures, 60);
    std::remove(values.file.c_str());
}

void measure_and_reduce(Chain& chain, Structure& structure) {
    CentreOfChain(chain), RadiusOfChain(chain), DiameterOfChain(chain), DiameterOfStructure(structure);
    ChainReduce(chain, chain.size() % 2 == 0);
}

TEST(Memory, MeasuresAndChainReductionNeedNone) {
    chains::Random random(43);
    const Silence quiet;
    for (const int length : {0, 1, 2, 3, 4, 63, 64, 65, 1000, 3455, 3456, 3457, 10000})
        for (const chains::Kind kind : {chains::Kind::tangle, chains::Kind::straight, chains::Kind::coincident}) {
            Chain chain = chains::make(kind, length / (length > 4 ? effort::less : 1), random);
            Structure structure{chain, {}, chain};
            EXPECT_EQ(counted(never, [&] { measure_and_reduce(chain, structure); }), 0) << length;
        }
}

/// A thread with little more stack than is promised to suffice: the next page after it is not to be touched.
TEST(Memory, MeasuresAndChainReductionStayWithin64KiBOfStack) {
    if (effort::sanitized) GTEST_SKIP() << "Sanitizers widen every frame.";
    chains::Random random(44);
    const Silence quiet;
    const auto work = [](void* argument) -> void* {
        Values& v = *static_cast<Values*>(argument);
        measure_and_reduce(v.chain, v.structure);
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, (64 + 12) * 1024); // 12 KiB for the thread itself
    for (const int length : {10, 3000, 10000}) {
        Values values{chains::make(chains::Kind::tangle, length, random), {}, "", ""};
        values.structure = {values.chain, values.chain};
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &attributes, work, &values), 0);
        pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);
}

} // namespace
