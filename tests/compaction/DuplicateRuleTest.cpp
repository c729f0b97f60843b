#include "../src/compaction/DuplicateRule.h"

#include "../src/edit/DetailTable.h"

#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

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

/// The first that equals each and for which no other stands, found by looking at all pairs.
template <class T, class Equal>
std::vector<long> firstOfAllPairs(const KorArray<T>& records, Equal equals)
{
    std::vector<long> first(static_cast<std::size_t>(records.length()), -1);
    for (int i = 0; i < records.length(); ++i) {
        if (first[i] >= 0)
            continue;
        first[i] = i;
        for (int j = i + 1; j < records.length(); ++j)
            if (first[j] < 0 && equals(records.data()[i], records.data()[j]))
                first[j] = i;
    }
    return first;
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
    const std::vector<long> expected = firstOfAllPairs(boxes, equal);
    long duplicates = 0;
    for (std::size_t i = 0; i < expected.size(); ++i)
        duplicates += expected[i] != static_cast<long>(i) ? 1 : 0;
    const RecordDescription& type = descriptionOf<Box>();
    EXPECT_EQ(korodbc::DuplicateRule(type).survivors(type.list(), &boxes), expected);
    EXPECT_GT(duplicates, 500);
    EXPECT_LT(duplicates, 2500);
}

/// Texts that equal any other make equality neither transitive nor a matter of hashes.
TEST(DuplicateRuleTest, FindsWhatComparingEveryPairFindsInLooseTexts)
{
    using Map = StructDetailStyleMap;
    const struct {
        int items, texts, sets; // at most so many items; different long texts; different qualifier sets
    } cases[] = {{1, 3, 1}, {3, 4, 2}, {8, 2, 1}, {12, 500, 1}, {12, 2, 1}};
    const RecordDescription& type = descriptionOf<Map>();
    const korodbc::DuplicateRule rule(type, {.loose = "Script"});
    for (const auto& [items, texts, sets] : cases) {
        std::uint64_t state = 11;
        const auto below = [&](int limit) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            return static_cast<int>((state >> 33) % static_cast<unsigned>(limit));
        };
        KorArray<Map> maps;
        for (int key = 1; key <= 1000; ++key) {
            Map map;
            map.key = key;
            for (int item = items == 3 ? below(3) : 0; item < items; ++item) {
                const KorString text = below(3) == 0 ? KorString(below(2) == 0 ? L"" : L"ab")
                                                     : KorString::format(L"text %d", below(texts));
                map.items.append(StructDetailStyleMapItem{-1, 0, text, below(sets), 6, 0});
            }
            maps.append(map);
        }
        const auto equalMaps = [](const Map& a, const Map& b) {
            bool same = a.items.length() == b.items.length();
            for (int i = 0; same && i < a.items.length(); ++i) {
                const auto &x = a.items.data()[i], &y = b.items.data()[i];
                same = x.objQualifierSet == y.objQualifierSet &&
                       (x.script.length() <= 2 || y.script.length() <= 2 || x.script == y.script);
            }
            return same;
        };
        EXPECT_EQ(rule.survivors(type.list(), &maps), firstOfAllPairs(maps, equalMaps)) << items << " " << texts;
    }
}

} // namespace
