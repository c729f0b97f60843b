// Names of sections and gratings with anything between their separators.

#include "catalogues/BarGratings.h"
#include "repository/KorDatabaseProfileAccess.h"
#include "support/DetailRecords.h"
#include "support/RepositoryFixture.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

using Pieces = std::vector<KorString>;

class SeparatedNames : public RepositoryTest {
protected:
    /// Some names of random pieces, each once.
    static std::set<KorString> names(int number, unsigned seed)
    {
        constexpr const wchar_t* pieces[] = {L"@", L"@@", L"G",  L"30", L"-", L"99999999999", L"'",  L"''",
                                             L"]", L"[",  L"%d", L"%s", L"?", L"--",          L"/*", L";",
                                             L" ", L"\t", L"\"", L"梁", L"@", L"OR 1=1",      L"\\", L"_"};
        std::mt19937 random(seed);
        std::set<KorString> made;
        while (made.size() < static_cast<std::size_t>(number)) {
            KorString name;
            for (unsigned left = 1 + random() % 24; left > 0; --left)
                name += random() % 3 == 0 ? L"@" : pieces[random() % std::size(pieces)];
            made.insert(name);
        }
        return made;
    }
    static Pieces split(const KorString& name)
    {
        Pieces fields;
        KorString field;
        for (int i = 0; i <= name.length(); ++i) {
            const bool ends = i == name.length() || name.getAt(i) == L'@';
            if (ends && !field.isEmpty())
                fields.push_back(std::exchange(field, {}));
            else if (!ends)
                field += name.getAt(i);
        }
        return fields;
    }
    static int decompose(const KorString& name, Pieces& texts)
    {
        int bearing = 0, cross = 0;
        return KorODBCBarGrating::decomposeBarGratingName(name, texts[0], bearing, cross, texts[1], texts[2],
                                                          texts[3]);
    }
};

TEST_F(SeparatedNames, AreTakenApartOrLeftAlone)
{
    int taken = 0;
    for (const KorString& name : names(20000, 1)) {
        const Pieces fields = split(name), kept = {L"a", L"b", L"c", L"d"};
        Pieces texts = kept;
        const bool isGrating = fields.size() == 6;
        taken += isGrating ? 1 : 0;
        ASSERT_EQ(decompose(name, texts), isGrating ? 1 : -1) << name.toUtf8();
        ASSERT_EQ(texts, isGrating ? Pieces({fields[0], fields[3], fields[4], fields[5]}) : kept) << name.toUtf8();

        KorString section = L"s", sectionClass = L"c";
        const bool isSection = name.find(L"@") >= 0;
        ASSERT_EQ(KorDatabaseProfileAccess::decomposeInternalName(name, sectionClass, section), isSection ? 1 : 0);
        ASSERT_EQ(sectionClass + (isSection ? L"@" : L"") + section, isSection ? name : KorString(L"cs"));
        ASSERT_LT(sectionClass.find(L"@"), 0);
    }
    EXPECT_GT(taken, 200);
}

TEST_F(SeparatedNames, AreDataInEveryStep)
{
    using Grating = KorODBCBarGrating;
    const std::set<KorString> keys = names(200, 2);
    sql(configuration, {"INSERT INTO BearingBarSpacing VALUES (30, '30 mm', 30, '')",
                        "INSERT INTO CrossBarSpacing VALUES (50, '50 mm', 50, '')"});
    int number = 0;
    for (const KorString& key : keys) {
        const KorString name = L"name of " + key;
        const auto insert = [](const auto& record) {
            details::insert(configuration, descriptionOf<std::remove_cvref_t<decltype(record)>>(), &record);
        };
        insert(StructBarGratingSeries{key, name, {}});
        insert(StructBearingBarThickness{key, 0, 0, name, {}});
        insert(StructBearingBarWidth{key, name, 0, {}});
        insert(StructCrossBar{key, name, 0, {}});
        insert(StructBarGrating{++number, key, 30, 50, key, key, key, {}});
    }
    for (const KorString& key : keys) {
        const KorString own = L"name of " + key;
        KorArray<KorString> list;
        const auto expectOnly = [&](const KorString& name, int result) {
            EXPECT_EQ(result, 1) << key.toUtf8();
            ASSERT_EQ(list.length(), 1) << key.toUtf8();
            EXPECT_EQ(list[0], name);
        };
        expectOnly(L"30 mm", Grating::getBearingBarSpacingList(key, list));
        expectOnly(L"50 mm", Grating::getCrossBarSpacingList(key, 30, list));
        expectOnly(own, Grating::getBearingBarThicknessList(key, 30, 50, list));
        expectOnly(own, Grating::getBearingBarWidthList(key, 30, 50, key, list));
        expectOnly(own, Grating::getCrossBarList(key, 30, 50, key, key, list));
        KorString name;
        Pieces texts(4);
        EXPECT_EQ(Grating::composeBarGratingName(own, L"30 mm", L"50 mm", own, own, own, name), 1);
        EXPECT_EQ(name, key + L"@30@50@" + key + L"@" + key + L"@" + key);
        EXPECT_EQ(decompose(name, texts), split(name).size() == 6 ? 1 : -1);
        EXPECT_EQ(texts, key.find(L"@") < 0 ? Pieces(4, key) : texts);
    }
    EXPECT_EQ(rows(configuration, "BarGrating").size(), keys.size());
    // what ends early for others
    KorArray<KorString> list;
    Grating::getBearingBarSpacingList(KorString(std::wstring_view(L"G\0' OR 1=1", 11)), list);
    EXPECT_TRUE(list.isEmpty());
}

} // namespace
