#include "catalogues/BarGratings.h"
#include "ReaderCases.h"

#include <array>
#include <set>

namespace {

using Grating = KorODBCBarGrating;
using Names = KorArray<KorString>;
using Parts = std::array<KorString, 6>; // keys or run names, in the order of the steps

class BarGratingTest : public ReaderTest {
protected:
    static const RecordDescription& typeOf(std::size_t step)
    {
        static const RecordDescription* const types[] = {
            &descriptionOf<StructBarGratingSeries>(), &descriptionOf<StructBearingBarSpacing>(),
            &descriptionOf<StructCrossBarSpacing>(),  &descriptionOf<StructBearingBarThickness>(),
            &descriptionOf<StructBearingBarWidth>(),  &descriptionOf<StructCrossBar>()};
        return *types[step];
    }
    static int number(const KorString& key) { return static_cast<int>(key.toInteger()); }
    static int offered(std::size_t step, const Parts& keys, Names& names)
    {
        const auto& [series, bearing, cross, thickness, width, bar] = keys;
        return step == 1   ? Grating::getBearingBarSpacingList(series, names)
               : step == 2 ? Grating::getCrossBarSpacingList(series, number(bearing), names)
               : step == 3 ? Grating::getBearingBarThicknessList(series, number(bearing), number(cross), names)
               : step == 4
                   ? Grating::getBearingBarWidthList(series, number(bearing), number(cross), thickness, names)
                   : Grating::getCrossBarList(series, number(bearing), number(cross), thickness, width, names);
    }
    static int compose(const Parts& names, KorString& name)
    {
        return std::apply([&](const auto&... part) { return Grating::composeBarGratingName(part..., name); },
                          names);
    }
    static int decompose(const KorString& name, Parts& keys)
    {
        int bearing = -7, cross = -8;
        const int result =
            Grating::decomposeBarGratingName(name, keys[0], bearing, cross, keys[3], keys[4], keys[5]);
        keys[1] = KorString::format(L"%d", bearing);
        keys[2] = KorString::format(L"%d", cross);
        return result;
    }
    static int rowOf(const Parts& keys, StructBarGrating& row)
    {
        return Grating::getByKey(keys[0], number(keys[1]), number(keys[2]), keys[3], keys[4], keys[5], row);
    }
    static Parts partsOf(const StructBarGrating& row)
    {
        return {row.seriesName,
                KorString::format(L"%d", row.bearingBarSpacing),
                KorString::format(L"%d", row.crossBarSpacing),
                row.bearingBarThicknessName,
                row.bearingBarWidthName,
                row.crossBarName};
    }
};

TEST_F(BarGratingTest, ComponentsAreReadAsOtherCatalogues)
{
    byTextKey(&KorODBCBarGratingSeries::getByKey, &KorODBCBearingBarThickness::getByKey,
              &KorODBCBearingBarWidth::getByKey);
    byKey(&KorODBCBearingBarSpacing::getByKey, &KorODBCCrossBarSpacing::getByKey);
    byRunName(&KorODBCBarGratingSeries::getByRunName, &KorODBCBearingBarThickness::getByRunName,
              &KorODBCBearingBarWidth::getByRunName, &KorODBCBearingBarSpacing::getByRunName,
              &KorODBCCrossBarSpacing::getByRunName);
}

TEST_F(BarGratingTest, NamesAndKeysOfComponentsMeanOneAnother)
{
    runNames<StructBarGratingSeries>(&KorODBCBarGratingSeries::getList);
    runNames<StructBearingBarSpacing>(&KorODBCBearingBarSpacing::getList);
    runNames<StructCrossBarSpacing>(&KorODBCCrossBarSpacing::getList);
    field(&StructBarGratingSeries::standardName, &KorODBCBarGratingSeries::getInternalName, -1, -1);
    field(&StructBearingBarThickness::standardName, &KorODBCBearingBarThickness::getInternalName, 0, 0);
    field(&StructBearingBarWidth::standardName, &KorODBCBearingBarWidth::getInternalName, 0, 0);
    field(&StructBearingBarSpacing::standardName, &KorODBCBearingBarSpacing::getInternalName, 0, 0);
    field(&StructCrossBarSpacing::standardName, &KorODBCCrossBarSpacing::getInternalName, 0, 0);
    field(&StructBearingBarSpacing::runName, &KorODBCBearingBarSpacing::getRunName, 0, -1);
    field(&StructCrossBarSpacing::runName, &KorODBCCrossBarSpacing::getRunName, 0, -1);
}

TEST_F(BarGratingTest, EveryShippedGratingIsOfferedComposedAndTakenApart)
{
    KorArray<StructBarGrating> gratings;
    ASSERT_EQ(RecordMarshal<StructBarGrating>::getTable(gratings), 1);
    std::set<KorString> series;
    for (const StructBarGrating& grating : gratings) {
        SCOPED_TRACE(grating.key);
        const Parts keys = partsOf(grating);
        Parts names, apart;
        series.insert(keys[0]);
        KorString name, joined;
        for (std::size_t step = 0; step < 6; ++step) {
            joined = joined + (step == 0 ? L"" : L"@") + keys[step];
            ASSERT_EQ(RecordAccess::runNameOfKey(typeOf(step), keys[step], names[step]), 1) << step;
            Names list;
            EXPECT_EQ(step == 0 ? KorODBCBarGratingSeries::getList(list) : offered(step, keys, list), 1);
            EXPECT_EQ(std::count(list.begin(), list.end(), names[step]), 1) << step;
            std::set<KorString> combined; // with what was chosen before
            for (const StructBarGrating& other : gratings)
                if (const Parts row = partsOf(other);
                    std::equal(row.begin(), row.begin() + static_cast<long>(step), keys.begin()))
                    combined.insert(row[step]);
            EXPECT_EQ(list.length(), static_cast<int>(combined.size())) << step;
        }
        EXPECT_EQ(compose(names, name), 1);
        EXPECT_EQ(name, joined);
        EXPECT_EQ(decompose(name, apart), 1);
        EXPECT_EQ(apart, keys);
        StructBarGrating row;
        EXPECT_EQ(rowOf(apart, row), 1);
        EXPECT_EQ(row.key, grating.key); // no combination stands twice
        for (std::size_t step = 0; step < 6; ++step) {
            Parts wrong = names;
            wrong[step] += L"'";
            EXPECT_EQ(compose(wrong, name), 0);
            EXPECT_EQ(name, joined);
        }
        apart[static_cast<std::size_t>(grating.key % 6)] = L"-1";
        EXPECT_EQ(rowOf(apart, row), 0);
        EXPECT_EQ(row.key, grating.key);
    }
    EXPECT_GE(series.size(), 3u);
}

TEST_F(BarGratingTest, NamesWithSeparatorsInTheWrongPlaces)
{
    const Parts kept = {L"s", L"-7", L"-8", L"t", L"w", L"c"};
    const struct {
        const wchar_t* name;
        int result;
        Parts keys;
    } cases[] = {
        {L"", -1, kept},
        {L"@@@@@", -1, kept},
        {L"G@30@50@25x3@500-30", -1, kept},
        {L"G@30@50@25x3@500-30@T6@7", -1, kept},
        {L"G@30@@25x3@500-30@T6", -1, kept},
        {L"G@30@50@25x3@500-30@T6@",
         1,
         {L"G", L"30", L"50", L"25x3", L"500-30", L"T6"}}, // empty ones do not count
        {L"G@-30@x50@25 'x' 3@[500]%d@梁", 1, {L"G", L"-30", L"0", L"25 'x' 3", L"[500]%d", L"梁"}},
        {L"G@99999999999999999999@-2147483649@a@b@c", 1, {L"G", L"2147483647", L"-2147483648", L"a", L"b", L"c"}},
    };
    for (const auto& one : cases) {
        Parts keys = kept;
        EXPECT_EQ(decompose(one.name, keys), one.result) << KorString(one.name).toUtf8();
        EXPECT_EQ(keys, one.keys) << KorString(one.name).toUtf8();
    }
}

} // namespace
