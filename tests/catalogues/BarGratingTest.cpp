#include "ReaderCases.h"

#include <korodbc/catalogues/BarGratings.h>

#include <array>
#include <map>
#include <random>
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

/// Generated tables, awkward names included, against a walk over the rows.
TEST_F(BarGratingTest, EachStepOffersWhatTheTableCombines)
{
    std::mt19937 random(7);
    const auto keyOf = [](std::size_t step, unsigned long i) {
        const bool isNumber = step == 1 || step == 2;
        return KorString::format(isNumber ? L"%d" : L"k'%d' OR 1=1--%%d\"[", i);
    };
    std::map<KorString, KorString> components[6]; // run name of a key
    for (std::size_t step = 0; step < 6; ++step) {
        const std::string table(typeOf(step).table);
        sql(configuration, {"DELETE FROM " + table});
        for (int i = 1; i < 6; ++i) { // rows name a sixth one, too; some share a name
            const KorString key = keyOf(step, static_cast<unsigned long>(i));
            const KorString name = KorString::format(L"it's [梁] %d", 9 - i * 5 % 7 / 2);
            components[step][key] = name;
            sql(configuration,
                {"INSERT INTO " + table + " (StandardName, RunName) VALUES ('" +
                 key.replace(L"'", L"''").toUtf8() + "', '" + name.replace(L"'", L"''").toUtf8() + "')"});
        }
    }
    sql(configuration, {"DELETE FROM BarGrating"});
    std::vector<Parts> rows;
    for (int i = 1; i <= 200; ++i) {
        const auto pick = [&](std::size_t step) { return keyOf(step, 1 + random() % 6 % (random() % 6 + 1)); };
        const StructBarGrating row{i, pick(0), number(pick(1)), number(pick(2)), pick(3), pick(4), pick(5), {}};
        details::insert(configuration, descriptionOf<StructBarGrating>(), &row);
        rows.push_back(partsOf(row));
    }
    for (const Parts& chosen : rows)
        for (std::size_t step = 1; step < 6; ++step) {
            std::set<KorString> keys;
            for (const Parts& row : rows)
                if (std::equal(row.begin(), row.begin() + static_cast<long>(step), chosen.begin()) &&
                    components[step].contains(row[step]))
                    keys.insert(row[step]);
            Texts expected;
            for (const KorString& key : keys)
                expected.push_back(components[step].at(key).toUtf8());
            std::sort(expected.begin(), expected.end());
            Names names = korTexts({"old"});
            EXPECT_EQ(offered(step, chosen, names), 1);
            ASSERT_EQ(utf8(names), expected) << step;
        }
    for (std::size_t step = 1; step < 6; ++step) { // a choice that no row has, and no table at all
        Names names = korTexts({"old"});
        EXPECT_EQ(offered(step, {L"' OR '1'='1", L"7", L"7", L"", L"", L""}, names), 1);
        EXPECT_TRUE(names.isEmpty());
        names = korTexts({"old"});
        const MissingTable missing(step % 2 == 0 ? descriptionOf<StructBarGrating>() : typeOf(step));
        EXPECT_EQ(offered(step, rows[0], names), 0);
        EXPECT_EQ(utf8(names), Texts{"old"});
    }
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
