// Allocations of warm flat look-ups, counted against what their results hold.

#include "Lookups.h"

#include <cstdlib>
#include <new>

#define KORODBC_COUNTS (KORODBC_SANITIZED == 0)

namespace {
long allocations = 0, allocatedBytes = 0;

#if KORODBC_COUNTS
void* counted(std::size_t bytes) noexcept
{
    ++allocations;
    allocatedBytes += static_cast<long>(bytes);
    return std::malloc(bytes != 0 ? bytes : 1);
}
#endif
} // namespace

#if KORODBC_COUNTS // a sanitizer keeps its own allocator
// not inlined: the compiler would see free() after new and warn
[[gnu::noinline]] void* operator new(std::size_t bytes)
{
    if (void* storage = counted(bytes))
        return storage;
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return counted(bytes); }
[[gnu::noinline]] void operator delete(void* storage) noexcept { std::free(storage); }
[[gnu::noinline]] void operator delete(void* storage, std::size_t) noexcept { std::free(storage); }
[[gnu::noinline]] void operator delete(void* storage, const std::nothrow_t&) noexcept { std::free(storage); }
#endif

namespace {

/// The shipped catalogue, every table that is asked read before.
class LookUpAllocationsTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (KORODBC_COUNTS == 0)
            GTEST_SKIP() << "allocations are not counted under the address sanitizer";
    }

    /// Allocations of a look-up that has run before, its output made anew.
    template <class Out, class LookUp>
    static long found(LookUp lookUp)
    {
        long before = 0;
        for (int run = 0; run < 3; ++run) {
            Out out{};
            before = allocations;
            const int result = static_cast<int>(lookUp(out));
            const long after = allocations;
            EXPECT_GT(result, 0);
            before = after - before;
        }
        return before;
    }

    const RepositoryFolder m_folder{KORODBC_SOURCE_CATALOGUE};
};

using Bolts = KorODBCScrewsDll;
constexpr auto length = StructScale::ScaleUnitType(0);

#define EXPECT_ALLOCATIONS(most, Out, call) EXPECT_LE(found<Out>([&](Out& out) { return call; }), most) << #call

TEST_F(LookUpAllocationsTest, OnlyWhatIsHandedOutIsAllocated)
{
    const KorString name(L"ISO 4017"), plate(L"1.5 mm"), prompt(L"Diameter");
    KorArray<StructRulesCategory> entries;
    KorArray<StructValidCombinations> combinations;
    KorArray<StructWeldSeam> welds;
    KorArray<StructProfileClass> classes;
    ASSERT_EQ(StructRulesCategoryMarshal::getTable(entries), 1);
    ASSERT_EQ(StructValidCombinationsMarshal::getTable(combinations), 1);
    ASSERT_EQ(kor_odbc_getCombiWeldTypes(welds), 1);
    ASSERT_EQ(StructProfileClassMarshal::getTable(classes), 1);
    const StructRulesCategory entry = entries[entries.length() / 2];
    const StructValidCombinations c = combinations[combinations.length() / 2];
    const StructWeldSeam weld = welds[welds.length() - 1];
    EXPECT_ALLOCATIONS(1, KorString, Bolts::kor_odbc_getNormKey(name, out)); // the number as text
    EXPECT_ALLOCATIONS(0, StructRules, kor_odbc_getRuleObject(entry.runName, out));
    EXPECT_ALLOCATIONS(0, KorString, (kor_odbc_getRuleRunbezeichnungUse2nd(entry.category, entry.rule, out), 1));
    EXPECT_ALLOCATIONS(0, int,
                       kor_odbc_getCombinationKey(out, c.standard, c.strengthClass, c.boltSet, c.diameter,
                                                  c.coating, c.assemblyLocation));
    EXPECT_ALLOCATIONS(0, int, kor_odbc_getCombiWeldingFor(weld.firstWeld, weld.secondWeld, out));
    EXPECT_ALLOCATIONS(0, double, kor_odbc_getPlateThicknessKey(plate, out));
    EXPECT_ALLOCATIONS(0, long, kor_odbc_getSectionBehaviourKey(classes[0].key, out));
    EXPECT_ALLOCATIONS(0, KorString, kor_odbc_LanguageDependent_getRunname(prompt, out));
    // the list of tables and that of their records
    EXPECT_ALLOCATIONS(4, KorString, kor_odbc_get_ClassTypeName(classes[0].runName, out));
    // lists: their array
    constexpr long array = 1, sources = 4, plates = 38;
    const KorString category = entries[0].category;
    EXPECT_ALLOCATIONS(array, Names, Bolts::kor_odbc_getScrewCoatingList(out));
    EXPECT_ALLOCATIONS(array + sources, Names, kor_odbc_getStandardsList(out));
    EXPECT_ALLOCATIONS(array + sources, KorArray<StructSetNutsBolts>, kor_odbc_getBoltComponents(out));
    EXPECT_ALLOCATIONS(2 * array, Names, kor_odbc_getRuleSublist(category, out));
    // this one grows as its rows are met
    EXPECT_ALLOCATIONS(plates + 5, Names, kor_odbc_getPlateThicknessList(out));
    EXPECT_ALLOCATIONS(5, KorArray<StructScale>, kor_odbc_getScaleTable(length, out));
    // rows of any table: their statement
    const KorString table(L"Standard");
    EXPECT_ALLOCATIONS(6, int, kor_odbc_getUserComboBoxKey(name, table, out));
    EXPECT_ALLOCATIONS(7, KorString, kor_odbc_getUserComboBoxRunname(2, table, out));
}

TEST_F(LookUpAllocationsTest, ASectionCostsTheSameInALargeTable)
{
    const auto cost = [] {
        const KorString beam(L"HEA@HEA100");
        double alpha = 0;
        KorArray<double> values;
        kor_odbc_getSectionAlpha(alpha, beam);
        kor_odbc_getSectionCalculationParams(values, beam);
        const long before = allocatedBytes;
        EXPECT_EQ(kor_odbc_getSectionAlpha(alpha, beam), 1);
        EXPECT_EQ(kor_odbc_getSectionCalculationParams(values, beam), 1);
        return allocatedBytes - before;
    };
    const long small = cost();
    EXPECT_GT(small, 0);
    m_folder.executeOutside("profiles.db",
                            "WITH RECURSIVE n(i) AS (VALUES (1000) UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                            "INSERT INTO Profiles_HEA ([Key],[SectionName]) SELECT i, 'HEA' || i FROM n");
    StructProfileClassMarshal::resetTableCache(0);
    Names names;
    EXPECT_GT(kor_odbc_get_menu_sublist(L"Wide flange beams, light", names), 0);
    EXPECT_GT(names.length(), 4000);
    EXPECT_EQ(cost(), small);
}

} // namespace
