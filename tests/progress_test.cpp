#include "app/progress.hpp"

#include <gtest/gtest.h>

using namespace loopwise::app;

TEST(Progress, SaysHowFarTheWorkIsAndHowLongItTakes) {
    Work work{.unit = "closures", .what = "chain A", .closures = 400};
    EXPECT_EQ(progress_line(work, 0.2), "[                    ] 0/400 closures, 1 s: chain A");
    work.done = 100, work.part = work.largest_part = 0.25;
    EXPECT_EQ(progress_line(work, 33), "[#####               ] 100/400 closures, 33 s, 99 s to go: chain A");
    EXPECT_EQ(progress_line(work, 34), "[#####               ] 100/400 closures, 34 s, 2 min to go: chain A");
    EXPECT_EQ(progress_line(work, 5999), "[#####               ] 100/400 closures, 100 min, 5 h to go: chain A");
    EXPECT_EQ(progress_line(work, 6001), "[#####               ] 100/400 closures, 2 h, 6 h to go: chain A");

    work = {.unit = "subchains", .what = "the-name-of-a-file-of-31-letters", .files = 3, .file = 2};
    EXPECT_EQ(progress_line(work, 120), "...ame-of-a-file-of-31-letters, file 2 of 3: 2 min");
    work.what = "a file of exactly 30 letters..";
    work.done = 7, work.part = 0.5, work.largest_part = 1.0;
    EXPECT_EQ(progress_line(work, 10),
              "[####################] 7 subchains, 10 s, 10 s to go, file 2 of 3: a file of exactly 30 letters..");
}
