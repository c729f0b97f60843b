#include "support/RepositoryFixture.h"

#include <korodbc/foundation/KorOdbcKeyArray.h>
#include <korodbc/roots/KorMemoryControllerController.h>

namespace {

std::vector<long> keysOf(const KorOdbcKeyArray& array)
{
    std::vector<long> keys;
    for (long i = 0; i < array.length(); ++i)
        keys.push_back(array.getAt(i));
    return keys;
}

KorOdbcKeyArray arrayOf(const std::vector<long>& keys)
{
    KorOdbcKeyArray array;
    for (const long key : keys)
        array.append(key);
    return array;
}

TEST(KorOdbcKeyTest, HoldsOneSignedKey)
{
    KorOdbcKey key;
    EXPECT_EQ(key.getKey(), -1);
    static_assert(sizeof(KorOdbcKey) == 4);
    for (const long value : {0L, 7L, -1L, 2147483647L, -2147483648L}) {
        key.setKey(value);
        EXPECT_EQ(key.getKey(), value);
        EXPECT_EQ(static_cast<long>(key), value);
        EXPECT_TRUE(key == KorOdbcKey(value));
        EXPECT_TRUE(key == value && value == key);
        EXPECT_FALSE(key == KorOdbcKey(value ^ 1));
    }
    key.setKey(-1);
    EXPECT_FALSE(key == 4294967295u); // the same bits are not the same number
    key = *&key;
    EXPECT_EQ(key.getKey(), -1);
}

TEST(KorOdbcKeyArrayTest, CopiesAreIndependent)
{
    KorOdbcKeyArray source = arrayOf({1, 2, 3});
    KorOdbcKeyArray copy(source);
    EXPECT_EQ(copy.physicalLength(), 3);
    copy.setAt(0, 9);
    copy.append(4);
    EXPECT_EQ(keysOf(source), (std::vector<long>{1, 2, 3}));
    EXPECT_EQ(keysOf(copy), (std::vector<long>{9, 2, 3, 4}));
    copy.deleteAt(1);
    copy.setLogicalLength(2);
    EXPECT_EQ(keysOf(copy), (std::vector<long>{9, 3}));

    KorOdbcKeyArray& self = source;
    source = self;
    EXPECT_EQ(keysOf(source), (std::vector<long>{1, 2, 3}));
    EXPECT_EQ(source.physicalLength(), 8);

    source = KorOdbcKeyArray();
    EXPECT_EQ(source.length(), 0);
    EXPECT_EQ(source.append(5), 0);
}

TEST(KorOdbcKeyArrayTest, HandleWithoutArrayIsSafe)
{
    AssertionRecorder assertions;
    KorMemoryControllerController::setLargestArray(1);
    KorOdbcKeyArray empty;
    KorMemoryControllerController::setLargestArray(0);

    EXPECT_EQ(empty.length(), 0);
    EXPECT_EQ(empty.append(1), -1);
    empty.setAt(3, 1);
    empty.deleteAt(0);
    empty.setLogicalLength(4);
    EXPECT_EQ(empty.length(), 0);
    EXPECT_EQ(assertions.take(), Texts{});
    EXPECT_EQ(empty.getAt(0).getKey(), -1);
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcKeyArray: m_pItems!=NULL"});

    KorOdbcKeyArray full = arrayOf({1});
    full = empty;
    EXPECT_EQ(keysOf(full), std::vector<long>{1});
    empty = full;
    EXPECT_EQ(empty.length(), 0);
    EXPECT_EQ(KorOdbcKeyArray(empty).length(), 0);
}

} // namespace
