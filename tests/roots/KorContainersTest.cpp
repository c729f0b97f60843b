#include "support/RepositoryFixture.h"

#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorHashTable.h>
#include <korodbc/roots/KorMemoryControllerController.h>
#include <korodbc/roots/KorString.h>

#include <limits>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

struct Key {
    int value = 0;
};

} // namespace

template <>
struct KorFillsWithOnes<Key> : std::true_type {
};

namespace {

TEST(KorArrayTest, GrowsInSteps)
{
    struct Case {
        int step, length, physical;
    };
    for (const Case& one :
         {Case{8, 1, 8}, {8, 8, 8}, {8, 9, 16}, {8, 17, 24}, {8, 1000, 1000}, {5, 6, 10}, {0, 3, 3}}) {
        KorArray<int> appended(one.step), set(one.step), sized(one.step);
        for (int i = 0; i < one.length; ++i)
            EXPECT_EQ(appended.append(i), i);
        set.setAt(one.length - 1, 7);
        sized.setLogicalLength(one.length);
        for (const KorArray<int>* array : {&appended, &set, &sized}) {
            EXPECT_EQ(array->length(), one.length);
            EXPECT_EQ(array->physicalLength(), one.physical) << one.step << ' ' << one.length;
        }
        EXPECT_EQ(sized[one.length - 1], -1);
    }
}

TEST(KorArrayTest, UnwrittenElementsAreOnesAndOldOnesStay)
{
    KorArray<int> array;
    array.setAt(5, 50);
    EXPECT_EQ(array.length(), 6);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(array[i], -1);
    array.deleteAt(0);
    EXPECT_EQ(array[4], 50);
    array.setLogicalLength(8);
    EXPECT_EQ(array[5], 50); // vacated by the deletion
    EXPECT_EQ(array[6], -1);
    array.removeAll();
    EXPECT_EQ(array.physicalLength(), 8);
    array.setAt(2, 20);
    EXPECT_EQ(array[1], -1);
    array.setLogicalLength(5);
    EXPECT_EQ(array[4], 50);
    // Growing the storage carries over only the elements in use.
    for (int length = 9; length < 200; length += 8) {
        const int last = array.length() - 1;
        array.setAt(last, last);
        array.setLogicalLength(1);
        array.setLogicalLength(length);
        EXPECT_EQ(array[1], -1) << length;
        EXPECT_EQ(array[last], -1) << length;
    }

    KorArray<Key> keys;
    keys.setAt(1, Key{3});
    EXPECT_EQ(keys[0].value, -1);
}

TEST(KorArrayTest, ShrinksOnlyWhenItPays)
{
    KorArray<int> array;
    for (int i = 0; i < 16; ++i)
        array.append(i);
    const struct {
        int wanted, physical, length;
    } cases[] = {{13, 16, 16}, {12, 12, 12}, {20, 20, 12}, {0, 0, 0}, {0, 0, 0}};
    for (const auto& [wanted, physical, length] : cases) {
        array.setPhysicalLength(wanted);
        EXPECT_EQ(array.physicalLength(), physical);
        ASSERT_EQ(array.length(), length);
        EXPECT_TRUE(length == 0 ? array.data() == nullptr : array[length - 1] == length - 1);
    }
    EXPECT_EQ(array.append(5), 0);
    array.deleteAt(0);
    EXPECT_EQ(array.length(), 0);
    EXPECT_EQ(array.physicalLength(), 8);
}

TEST(KorArrayTest, AssignmentTakesJustTheElements)
{
    KorArray<int> source(4);
    for (int i = 0; i < 9; ++i)
        source.append(i);
    KorArray<int> copy;
    copy.setLogicalLength(50);
    copy = source;
    KorArray<int> moved = KorArray<int>(source);
    for (KorArray<int>* array : {&copy, &moved}) {
        EXPECT_EQ(array->length(), 9);
        EXPECT_EQ(array->physicalLength(), 9);
        EXPECT_EQ(array->growthStep(), 4);
        EXPECT_EQ((*array)[8], 8);
        array->append(9);
        EXPECT_EQ(array->physicalLength(), 12);
        EXPECT_EQ((*array)[9], 9);
    }
    source = *&source;
    EXPECT_EQ(source.physicalLength(), 12);
    copy = KorArray<int>();
    EXPECT_EQ(copy.physicalLength(), 0);
    moved = std::move(source);
    EXPECT_EQ(moved.physicalLength(), 9);
    EXPECT_EQ(source.physicalLength(), 0);
}

template <class T>
void expectSafe(const T& value)
{
    AssertionRecorder assertions;
    KorArray<T> array;
    for (long index : {0L, -1L, 1000000L}) {
        array.getAt(index) = value;
        EXPECT_EQ(assertions.take(), Texts{"KorArray: isValid( index )"});
        EXPECT_EQ(std::as_const(array)[index], KorArray<T>().getAt(0)); // what was written is forgotten
        assertions.take();
    }
    array.append(value);
    array.getAt(3) = value;
    array.setLogicalLength(4);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: isValid( index )"});
    EXPECT_EQ(array[3], value);
}

TEST(KorArrayTest, BadIndexesAreReportedAndHarmless)
{
    expectSafe<int>(5);
    expectSafe<std::string>(std::string(100, 'x'));
    expectSafe<KorString>(L"text");

    AssertionRecorder assertions;
    KorArray<int> array;
    array.deleteAt(0);
    EXPECT_EQ(assertions.take(), (Texts{"KorArray: isValid(index)", "KorArray: len>=0"}));
    EXPECT_EQ(array.length(), 0);
    for (int i = 0; i < 3; ++i)
        array.append(i);
    array.deleteAt(3);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: isValid(index)"});
    EXPECT_EQ(array.length(), 2);
    array.deleteAt(-2);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: isValid(index)"});
    EXPECT_EQ(array[0], 1);
    array.setAt(-1, 9);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: isValid( index )"});
    array.setPhysicalLength(-1);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: newPhysicalLen >= 0"});
    array.setLogicalLength(-1);
    EXPECT_EQ(assertions.take(), Texts{"KorArray: len>=0"});
    EXPECT_EQ(array.length(), 0);

    array.append(1);
    KorMemoryControllerController::setLargestArray(64);
    array.setAt(16, 5);
    array.setAt(std::numeric_limits<long>::max(), 5);
    EXPECT_EQ(assertions.take(), Texts(2, "KorArray: pElements != NULL && numElements > 0"));
    EXPECT_EQ(array.length(), 1);
    array.setLogicalLength(16);
    EXPECT_EQ(array.append(2), -1);
    KorMemoryControllerController::setLargestArray(0);
    EXPECT_EQ(array.length(), 16);
    EXPECT_EQ(array[0], 1);
}

TEST(KorArrayTest, BehavesLikeAVector)
{
    std::mt19937 random(11);
    KorArray<std::string> array;
    std::vector<std::string> model;
    for (int i = 0; i < 5000; ++i) {
        const std::string value = std::to_string(random()) + std::string(random() % 30, 'v');
        const long index = model.empty() ? 0 : static_cast<long>(random() % model.size());
        switch (random() % 8) {
        default:
            array.append(value);
            model.push_back(value);
            break;
        case 3:
            if (!model.empty()) {
                array.append(array[index]); // an element of its own, while growing
                model.push_back(std::string(model[static_cast<std::size_t>(index)]));
            }
            break;
        case 4:
        case 5:
            if (!model.empty()) {
                array.deleteAt(index);
                model.erase(model.begin() + index);
            }
            break;
        case 6:
            array.setAt(index, value);
            model.resize(std::max(model.size(), static_cast<std::size_t>(index) + 1));
            model[static_cast<std::size_t>(index)] = value;
            break;
        case 7:
            if (random() % 20 == 0)
                array = KorArray<std::string>(array);
            else if (random() % 20 == 0) {
                const bool pays = static_cast<double>(index) <= 0.75 * array.physicalLength();
                array.setPhysicalLength(index);
                if (pays)
                    model.resize(std::min(model.size(), static_cast<std::size_t>(index)));
            }
        }
        ASSERT_TRUE(std::equal(array.begin(), array.end(), model.begin(), model.end())) << i;
    }
}

TEST(KorArrayTest, AppendingMovesElementsRarely)
{
    struct Wide {
        char bytes[200];
    };
    KorArray<Wide> array;
    int moves = 0;
    for (int i = 0; i < 100000; ++i) {
        const Wide* before = array.data();
        array.append(Wide{});
        moves += array.data() != before ? 1 : 0;
    }
    EXPECT_EQ(array.physicalLength(), 100000);
    EXPECT_LT(moves, 60);

    KorArray<std::unique_ptr<int>> owners;
    for (int i = 0; i < 20; ++i)
        owners.append(std::make_unique<int>(i));
    owners.deleteAt(3);
    EXPECT_EQ(*owners[3], 4);
    EXPECT_EQ(*owners[18], 19);
}

struct CrowdedHash {
    std::size_t operator()(long key) const { return static_cast<std::size_t>(key) % 3; }
};

template <class Table>
void expectLikeMap(int operations, long keys)
{
    std::mt19937 random(3);
    Table table;
    std::unordered_map<long, KorString> model;
    for (int i = 0; i < operations; ++i) {
        const long key = (static_cast<long>(random() % static_cast<unsigned>(keys)) - keys / 2) * 1024;
        const KorString value = KorString::format(L"%d", i);
        if (random() % 3 == 0)
            ASSERT_EQ(table.remove(key), model.erase(key) == 1);
        else {
            table.insert(key, value);
            model[key] = value;
        }
        ASSERT_EQ(table.length(), static_cast<long>(model.size()));
        KorString found(L"untouched");
        const long other = key + 1024;
        ASSERT_EQ(table.lookup(other, found), model.contains(other));
        ASSERT_TRUE(found == (model.contains(other) ? model[other] : KorString(L"untouched")));
    }
    const Table copy = table;
    table.removeAll();
    EXPECT_TRUE(table.begin() == table.end() && !table.contains(0));
    std::size_t visited = 0;
    copy.forEach([&](long key, const KorString& value) { visited += model.at(key) == value ? 1 : 0; });
    EXPECT_EQ(visited, model.size());
    table = copy;
    EXPECT_EQ(std::distance(table.begin(), table.end()), copy.length());
}

TEST(KorHashTableTest, BehavesLikeAMap)
{
    expectLikeMap<KorHashTable<long, KorString>>(20000, 3000);
    expectLikeMap<KorHashTable<long, KorString, CrowdedHash>>(2000, 60);
}

TEST(KorHashTableTest, StaysUsableWithoutMemory)
{
    AssertionRecorder assertions;
    KorHashTable<long, long> table;
    KorMemoryControllerController::setLargestArray(17 * sizeof(void*) + 56);
    for (long key = 0; key < 100; ++key)
        table.insert(key, key);
    KorMemoryControllerController::setLargestArray(0);
    EXPECT_FALSE(assertions.take().empty());
    long value = 0;
    EXPECT_TRUE(table.lookup(99, value) && value == 99);
    EXPECT_EQ(table.length(), 100);
}

} // namespace
