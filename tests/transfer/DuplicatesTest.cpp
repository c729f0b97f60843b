#include "../src/transfer/Duplicates.h"

#include "records/detail/DetailViewRecords.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

using Box = StructDetViewSystemAndBox;

bool equal(const Box& a, const Box& b)
{
    const auto close = [](double x, double y) { return (x - y) * (x - y) <= 1e-10 * 1e-10; };
    return a.systemSource == b.systemSource && a.selectMode == b.selectMode &&
           a.viewDirection == b.viewDirection && a.boxMode == b.boxMode && a.rotationX == b.rotationX &&
           a.rotationZ == b.rotationZ && close(a.depthFront, b.depthFront) && close(a.depthBack, b.depthBack);
}

/// Records as a host may hold them, with values that no database gives, against a walk over all pairs.
TEST(DuplicateRuleTest, FindsWhatComparingEveryPairFinds)
{
    const double infinite = std::numeric_limits<double>::infinity(),
                 none = std::numeric_limits<double>::quiet_NaN();
    const double exact[] = {0, -0.0, 90, 90 + 1e-13, none, infinite, -infinite};
    const double tolerant[] = {0,         0.9e-10, 1.7e-10,    2e-10, -0.6e-10, 10,      10 + 1e-11,
                               10 + 1e-9, 1e7,     1e7 + 2e-9, 1e300, none,     infinite};
    const int modes[] = {0, 1};
    std::uint64_t state = 7;
    const auto pick = [&](const auto& values) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return values[(state >> 33) % std::size(values)];
    };
    KorArray<Box> boxes;
    for (int key = 1; key <= 3000; ++key) {
        Box box;
        box.key = key;
        box.boxMode = pick(modes);
        box.rotationX = pick(exact);
        box.depthFront = pick(tolerant);
        box.depthBack = pick(tolerant);
        boxes.append(box);
    }
    std::vector<long> expected(boxes.length(), -1);
    long duplicates = 0;
    for (int i = 0; i < boxes.length(); ++i) {
        if (expected[i] >= 0)
            continue;
        expected[i] = i;
        for (int j = i + 1; j < boxes.length(); ++j)
            if (expected[j] < 0 && equal(boxes[i], boxes[j])) {
                expected[j] = i;
                ++duplicates;
            }
    }
    const RecordDescription& type = descriptionOf<Box>();
    EXPECT_EQ(korodbc::DuplicateRule(type).survivors(type.operations->list, &boxes), expected);
    EXPECT_GT(duplicates, 500);
    EXPECT_LT(duplicates, 2500);
}

} // namespace
