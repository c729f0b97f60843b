#include "../src/foundation/TableCatalogue.h"
#include "ReaderCases.h"
#include "support/DetailRecords.h"

#include <korodbc/catalogues/KorODBCMapping.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDefaults.h>

#include <algorithm>
#include <map>
#include <numbers>
#include <sstream>

namespace {

using Mapping = KorODBCMapping;
using Names = KorArray<KorString>;

template <class T>
T recordOf(int (*)(T&));

class UnitsTest : public ReaderTest {
protected:
    /// Readers that find the key or the name that they ask for in the record.
    template <auto ByKey, auto ByName, auto List>
    static void expectReads(unsigned tableId)
    {
        using T = decltype(recordOf(ByKey));
        EXPECT_EQ(korodbc::tableNameOfId(tableId).toUtf8(), descriptionOf<T>().table);
        orderedRunNames<T>(List);
        byKey<T>([](const KorOdbcKey& key, T& record) {
            T asked;
            asked.key = static_cast<int>(key);
            const int result = ByKey(asked);
            EXPECT_TRUE(result == 1 || asked.runName.isEmpty());
            record = result == 1 ? asked : record;
            return result;
        });
        byRunName<T>([](const KorString& name, T& record) {
            T asked;
            asked.runName = name;
            const int result = ByName(asked);
            EXPECT_TRUE(result == 1 || asked.key == -1);
            record = result == 1 ? asked : record;
            return result;
        });
    }
};

TEST_F(UnitsTest, EveryKindIsReadByKeyByNameAndAsAList)
{
#define READS(Kind)                                                                                               \
    Mapping::getUnitOf##Kind##ByKey, Mapping::getUnitOf##Kind##ByName, Mapping::getUnitOf##Kind##List
    expectReads<READS(Distance)>(139);
    expectReads<READS(Angle)>(145);
    expectReads<READS(Weight)>(143);
    expectReads<READS(Area)>(140);
    expectReads<READS(Stress)>(148);
    expectReads<READS(Force)>(249);
    expectReads<READS(WeightPerDistance)>(262);
    expectReads<READS(AreaPerDistance)>(264);
    expectReads<READS(Moment)>(251);
    expectReads<READS(SectionModulus)>(150);
    expectReads<READS(MomentOfInertia)>(152);
    expectReads<READS(Volume)>(324);
    expectReads<READS(Density)>(326);
#undef READS
    expectReads<Mapping::getUnitTypeByKey, Mapping::getUnitTypeByName,
                &RecordMarshal<StructUnitsType>::getOrderedRunNameList>(147);
}

/// Each figure from the definitions of the units, none left out.
TEST_F(UnitsTest, FactorsAreThoseOfTheDefinitions)
{
    constexpr double in = 0.0254, ft = 12 * in, yd = 3 * ft, lb = 0.45359237, g = 9.80665, lbf = lb * g;
    constexpr double pi = std::numbers::pi;
    const struct {
        const char* symbols;
        std::vector<double> figures;
    } definitions[] = {
        {"um;mm;cm;m;km;mil;in;ft;yd", {1e-6, 1e-3, 1e-2, 1, 1e3, in / 1e3, in, ft, yd}},
        {"°;rad;gon;';\"", {pi / 180, 1, pi / 200, pi / 180 / 60, pi / 180 / 3600}},
        {"g;kg;t;oz;lb;ton", {1e-3, 1, 1e3, lb / 16, lb, 2000 * lb}},
        {"mm2;cm2;m2;in2;ft2;yd2", {1e-6, 1e-4, 1, in * in, ft * ft, yd * yd}},
        {"Pa;kPa;N/mm2;MPa;kN/cm2;GPa;kgf/cm2;psi;ksi;psf",
         {1, 1e3, 1e6, 1e6, 1e7, 1e9, g * 1e4, lbf / in / in, 1e3 * lbf / in / in, lbf / ft / ft}},
        {"N;kN;MN;kgf;tf;lbf;kip", {1, 1e3, 1e6, g, 1e3 * g, lbf, 1e3 * lbf}},
        {"kg/m;kg/mm;t/m;lb/ft;lb/in", {1, 1e3, 1e3, lb / ft, lb / in}},
        {"m2/m;cm2/m;mm2/mm;ft2/ft;in2/ft;in2/in", {1, 1e-4, 1e-3, ft, in / 12, in}},
        {"Nmm;Nm;kNcm;kNm;kgf m;lbf in;lbf ft;kip in;kip ft",
         {1e-3, 1, 10, 1e3, g, lbf * in, lbf * ft, 1e3 * lbf * in, 1e3 * lbf * ft}},
        {"mm3;cm3;m3;in3;ft3", {1e-9, 1e-6, 1, in * in * in, ft * ft * ft}},
        {"mm4;cm4;m4;in4;ft4", {1e-12, 1e-8, 1, in * in * in * in, ft * ft * ft * ft}},
        {"mm3;cm3;L;m3;in3;gal;ft3;yd3",
         {1e-9, 1e-6, 1e-3, 1, in * in * in, 231 * in * in * in, ft * ft * ft, yd * yd * yd}},
        {"kg/m3;kg/dm3;g/cm3;t/m3;lb/ft3;lb/in3", {1, 1e3, 1e3, 1e3, lb / ft / ft / ft, lb / in / in / in}},
    };
    ASSERT_EQ(std::size(definitions), unitKinds.size()); // in the order of the kinds
    for (std::size_t i = 0; i < unitKinds.size(); ++i) {
        const UnitKindDescription& kind = unitKinds[i];
        const RecordDescription& type = *records::ofTable(kind.table);
        SCOPED_TRACE(kind.table);
        std::map<std::string, double> known;
        std::istringstream symbols(definitions[i].symbols);
        for (std::string symbol; std::getline(symbols, symbol, ';');)
            known.emplace(symbol, definitions[i].figures.at(known.size()));
        std::map<std::string, double> stored;
        const Texts names = valuesOf(type, 2), factors = valuesOf(type, 3), precisions = valuesOf(type, 4);
        for (std::size_t row = 0; row < names.size(); ++row) {
            stored[names[row]] = std::stod(factors[row]);
            EXPECT_DOUBLE_EQ(stored[names[row]], known[names[row]]) << names[row];
            StructUnits precision;
            precision.key = std::stoi(precisions[row]);
            EXPECT_EQ(Mapping::getUnitPrecisionByKey(precision), 1) << names[row];
        }
        EXPECT_EQ(stored.size(), definitions[i].figures.size());
        EXPECT_EQ(stored[std::string(kind.baseUnit)], 1);
    }
}

TEST_F(UnitsTest, TypesServeTheirKindAndPrecisionsTheirType)
{
    const auto typesOf = [](UnitKind kind) {
        return [=](Names& names) { return Mapping::getUnitTypeList(static_cast<long>(kind), names); };
    };
    const auto precisionsOf = [](long type) {
        return [=](Names& names) { return Mapping::getUnitPrecisionList(type, names); };
    };
    sql(KorDSNDefinitions::kUnits, {"DELETE FROM Units WHERE UnitType > 3",
                                    "INSERT INTO Units VALUES (901, '1/16', 4, 16, 2, ''), "
                                    "(902, 'it''s 1', 4, 1, 1, '')",
                                    "INSERT INTO UnitsType VALUES (99, 'Litres', 11, -1, '')"});
    const struct {
        std::function<int(Names&)> read;
        Texts expected; // none: fails, and leaves the list
    } cases[] = {
        {typesOf(UnitKind::Distance),
         {"Decimal", "Scientific", "Fractional", "Feet and fractional inches", "Feet and decimal inches"}},
        {typesOf(UnitKind::Angle), {"Decimal", "Scientific", "Degrees, minutes, seconds"}},
        {Mapping::getUnitTypeVolumeList, {"Litres", "Decimal", "Scientific"}},
        {Mapping::getUnitTypeDensityList, {"Decimal", "Scientific"}},
        {precisionsOf(3), {"1", "1/2", "1/4", "1/8", "1/16", "1/32", "1/64"}},
        {precisionsOf(4), {"it's 1", "1/16"}},
        {precisionsOf(4711), {}},
    };
    for (const auto& [read, expected] : cases) {
        Names names = korTexts({"old"});
        EXPECT_EQ(read(names), expected.empty() ? 0 : 1);
        EXPECT_EQ(utf8(names), expected.empty() ? Texts{"old"} : expected);
    }
    const auto keyOf = [](const wchar_t* name, int type) {
        StructUnits precision;
        precision.key = 7;
        precision.runName = name;
        precision.unitType = type;
        return std::pair(Mapping::getUnitPrecisionByNameAndType(precision), precision.key);
    };
    EXPECT_EQ(keyOf(L"1/16", 4), std::pair(1, 901));
    EXPECT_EQ(keyOf(L"it's 1", 4), std::pair(1, 902));
    EXPECT_EQ(keyOf(L"1/16", 3).first, 1);
    EXPECT_NE(keyOf(L"1/16", 3).second, 901);
    EXPECT_EQ(keyOf(L"1/16", 1), std::pair(0, 7));
}

/// Every distribution of a name over the three sources, with the default missing, 0 and 1.
TEST_F(UnitsTest, ExternalNamesComeFromTheFirstSourceThatHasThem)
{
    const std::pair<eDSN, std::string> sources[] = {
        {KorDSNDefinitions::kProject, "project"}, {addin, "add-in"}, {configuration, "configuration"}};
    for (int where = 0; where < 8; ++where)
        for (int i = 0; i < 3; ++i)
            if ((where >> i & 1) != 0)
                sql(sources[i].first,
                    {"INSERT INTO MapInternToExtern VALUES (" + std::to_string(100 + where) + ", 'it''s " +
                     std::to_string(where) + "', '" + sources[i].second + "', '')"});
    const auto expect = [&](int where, std::initializer_list<int> order, int result, const std::string& found) {
        const auto has = [&](int i) { return (where >> i & 1) != 0; };
        const auto* first = std::find_if(order.begin(), order.end(), has);
        EXPECT_EQ(result, first == order.end() ? 0 : 1) << where;
        EXPECT_EQ(found, first == order.end() ? "before" : sources[*first].second) << where;
    };
    for (const int drawingFirst : {-1, 0, 1}) { // -1: no such default
        SCOPED_TRACE(drawingFirst);
        if (drawingFirst < 0)
            sql(configuration, {"DELETE FROM Default_INT WHERE [Key] = 'MapExternalNameInProjectDB'"});
        else
            ASSERT_EQ(kor_odbc_setDefault(L"MapExternalNameInProjectDB", drawingFirst), 1);
        for (int where = 0; where < 8; ++where) {
            StructMapInternToExtern record;
            record.externalName = L"before";
            int result = Mapping::getMapInternToExtern(KorString::format(L"it's %d", where), record);
            if (drawingFirst == 1)
                expect(where, {0, 1, 2}, result, record.externalName.toUtf8());
            else
                expect(where, {1, 2}, result, record.externalName.toUtf8());
            record.externalName = L"before";
            result = Mapping::getMapInternToExtern(KorOdbcKey(100 + where), record);
            expect(where, {0, 2}, result, record.externalName.toUtf8());
        }
    }
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
    sql(KorDSNDefinitions::kProject, {"DROP TABLE MapInternToExtern"});
    StructMapInternToExtern record;
    EXPECT_EQ(Mapping::getMapInternToExtern(KorString(L"it's 7"), record), 1);
    EXPECT_EQ(record.externalName, L"add-in");
    EXPECT_EQ(Mapping::getMapInternToExtern(KorOdbcKey(107), record), 1);
    EXPECT_EQ(record.externalName, L"configuration");
    EXPECT_EQ(Mapping::getMapInternToExtern(KorString(L"HEA@HEA200"), record), 1);
    EXPECT_EQ(record.externalName, L"HE200A");
}

} // namespace
