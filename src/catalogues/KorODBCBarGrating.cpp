#include <korodbc/catalogues/BarGratings.h>
#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDatabaseGratingAccess.h>
#include <korodbc/roots/KorStringSeparators.h>

#include <algorithm>
#include <limits>

using korodbc::quoted;

namespace {

using Names = KorArray<KorString>;
using Access = KorDatabaseGratingAccess;

/// Run names of the rows that a query chooses, in its order. A missing blank before ORDER BY is meant to be so.
template <class Record>
int namesOf(int (*read)(const KorString&, KorArray<Record>&), const KorString& query, Names& names)
{
    KorArray<Record> rows;
    const int result = read(query, rows);
    if (result != 1)
        return result;
    names.removeAll();
    for (const Record& row : rows)
        names.append(row.runName);
    return result;
}

int nearestInt(long number)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long>(number, Limits::min(), Limits::max()));
}

} // namespace

int KorODBCBarGrating::getBearingBarSpacingList(const KorString& series, Names& names)
{
    return namesOf(
        &Access::getBearingBarSpacingSubTable,
        KorString::format(
            L"SELECT BearingBarSpacing.[StandardName], BearingBarSpacing.[RunName], BearingBarSpacing.[Distance], "
            L"BearingBarSpacing.[OwnerText] FROM BearingBarSpacing INNER JOIN BarGrating ON "
            L"BearingBarSpacing.[StandardName]=BarGrating.[BearingBarSpacing] WHERE "
            L"(BarGrating.[SeriesName]='%s') GROUP BY BearingBarSpacing.[StandardName], "
            L"BearingBarSpacing.[RunName], BearingBarSpacing.[Distance], BearingBarSpacing.[OwnerText]ORDER BY "
            L"[RunName]",
            quoted(series)),
        names);
}

int KorODBCBarGrating::getCrossBarSpacingList(const KorString& series, int bearingBarSpacing, Names& names)
{
    return namesOf(
        &Access::getCrossBarSpacingSubTable,
        KorString::format(
            L"SELECT CrossBarSpacing.[StandardName], CrossBarSpacing.[RunName], CrossBarSpacing.[Distance], "
            L"CrossBarSpacing.[OwnerText] FROM CrossBarSpacing INNER JOIN BarGrating ON "
            L"CrossBarSpacing.[StandardName]=BarGrating.[CrossBarSpacing] WHERE (BarGrating.[SeriesName]='%s' AND "
            L"BarGrating.[BearingBarSpacing]=%d) GROUP BY CrossBarSpacing.[StandardName], "
            L"CrossBarSpacing.[RunName], CrossBarSpacing.[Distance], CrossBarSpacing.[OwnerText]ORDER BY "
            L"CrossBarSpacing.[RunName]",
            quoted(series), bearingBarSpacing),
        names);
}

int KorODBCBarGrating::getBearingBarThicknessList(const KorString& series, int bearingBarSpacing,
                                                  int crossBarSpacing, Names& names)
{
    return namesOf(
        &Access::getBearingBarThicknessSubTable,
        KorString::format(
            L"SELECT BearingBarThickness.[StandardName],BearingBarThickness.[GratingThickness],"
            L"BearingBarThickness.[BarThickness],BearingBarThickness.[RunName],BearingBarThickness.[OwnerText] "
            L"FROM BearingBarThickness INNER JOIN BarGrating ON "
            L"BearingBarThickness.[StandardName]=BarGrating.[BearingBarThicknessName] WHERE "
            L"(BarGrating.[SeriesName]='%s' AND BarGrating.[BearingBarSpacing]=%d AND "
            L"BarGrating.[CrossBarSpacing]=%d) GROUP BY BearingBarThickness.[StandardName],"
            L"BearingBarThickness.[GratingThickness],BearingBarThickness.[BarThickness],"
            L"BearingBarThickness.[RunName],BearingBarThickness.[OwnerText] ORDER BY [RunName]",
            quoted(series), bearingBarSpacing, crossBarSpacing),
        names);
}

int KorODBCBarGrating::getBearingBarWidthList(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                                              const KorString& thickness, Names& names)
{
    return namesOf(
        &Access::getBearingBarWidthSubTable,
        KorString::format(
            L"SELECT BearingBarWidth.[StandardName], BearingBarWidth.[RunName], BearingBarWidth.[BarQuantity], "
            L"BearingBarWidth.[OwnerText] FROM BearingBarWidth INNER JOIN BarGrating ON "
            L"BearingBarWidth.[StandardName]=BarGrating.[BearingBarWidthName] WHERE (BarGrating.[SeriesName]='%s' "
            L"AND BarGrating.[BearingBarSpacing]=%d AND BarGrating.[CrossBarSpacing]=%d AND "
            L"BarGrating.[BearingBarThicknessName]='%s') GROUP BY BearingBarWidth.[StandardName], "
            L"BearingBarWidth.[RunName], BearingBarWidth.[BarQuantity], BearingBarWidth.[OwnerText]ORDER BY "
            L"[RunName]",
            quoted(series), bearingBarSpacing, crossBarSpacing, quoted(thickness)),
        names);
}

int KorODBCBarGrating::getCrossBarList(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                                       const KorString& thickness, const KorString& width, Names& names)
{
    return namesOf(
        &Access::getCrossBarSubTable,
        KorString::format(
            L"SELECT CrossBar.[StandardName], CrossBar.[RunName], CrossBar.[BarThickness], CrossBar.[OwnerText] "
            L"FROM CrossBar INNER JOIN BarGrating ON CrossBar.[StandardName]=BarGrating.[CrossBarName] WHERE "
            L"(BarGrating.[SeriesName]='%s' AND BarGrating.[BearingBarSpacing]=%d AND "
            L"BarGrating.[CrossBarSpacing]=%d AND BarGrating.[BearingBarThicknessName]='%s' AND "
            L"BarGrating.[BearingBarWidthName]='%s') GROUP BY CrossBar.[StandardName], CrossBar.[RunName], "
            L"CrossBar.[BarThickness], CrossBar.[OwnerText]ORDER BY [RunName]",
            quoted(series), bearingBarSpacing, crossBarSpacing, quoted(thickness), quoted(width)),
        names);
}

int KorODBCBarGrating::composeBarGratingName(const KorString& series, const KorString& bearingBarSpacing,
                                             const KorString& crossBarSpacing, const KorString& thickness,
                                             const KorString& width, const KorString& crossBar, KorString& name)
{
    KorString seriesKey, thicknessKey, widthKey, crossBarKey, bearingBarSpacingKey, crossBarSpacingKey;
    if (KorODBCBarGratingSeries::getInternalName(series, seriesKey) != 1 ||
        StructBearingBarThicknessMarshal::getKeyByRunName(thickness, thicknessKey) != 1 ||
        StructBearingBarWidthMarshal::getKeyByRunName(width, widthKey) != 1 ||
        StructCrossBarMarshal::getKeyByRunName(crossBar, crossBarKey) != 1 ||
        StructBearingBarSpacingMarshal::getKeyByRunName(bearingBarSpacing, bearingBarSpacingKey) != 1 ||
        StructCrossBarSpacingMarshal::getKeyByRunName(crossBarSpacing, crossBarSpacingKey) != 1)
        return 0;
    const KorString separator = KorStringSeparators::kStrSectionNameSeparator;
    name = seriesKey + separator + bearingBarSpacingKey + separator + crossBarSpacingKey + separator +
           thicknessKey + separator + widthKey + separator + crossBarKey;
    return 1;
}

int KorODBCBarGrating::decomposeBarGratingName(const KorString& name, KorString& series, int& bearingBarSpacing,
                                               int& crossBarSpacing, KorString& thickness, KorString& width,
                                               KorString& crossBar)
{
    KorArray<KorString> tokens;
    if (name.isEmpty() || KorString::getTokens(name, tokens, KorStringSeparators::kStrSectionNameSeparator) != 6)
        return -1;
    series = tokens[0];
    bearingBarSpacing = nearestInt(tokens[1].toInteger());
    crossBarSpacing = nearestInt(tokens[2].toInteger());
    thickness = tokens[3];
    width = tokens[4];
    crossBar = tokens[5];
    return 1;
}
