#include <korodbc/lookup/KorOdbcSteelObsolete.h>
#include <korodbc/roots/KorAssert.h>

namespace {

int obsolete(int line = __builtin_LINE()) // of the caller
{
    KorAssert::korAssert("thisMethodIsObsolete", "KorSignRules", line);
    return 0;
}

} // namespace

int kor_odbc_getColumnBaseRecord(long, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getColumnBaseRecord(const KorString&, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getColumnBaseRecord(const KorString&, const KorString&, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getColumnBaseFirstKey(const KorString&, KorString&) { return obsolete(); }
int kor_odbc_getColumnBaseTable(KorArray<KorColumnData>&, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getEndplateTable(KorArray<KorColumnData>&, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getAngleTable(KorArray<KorColumnData>&, KorArray<KorColumn>&) { return obsolete(); }
int kor_odbc_getPlantPartSubtypename(long, KorString&) { return obsolete(); }
int kor_odbc_getPlantPartSublist(const KorString&, KorArray<KorString>&) { return obsolete(); }
int kor_odbc_getPlantPartkey(const KorString&, long&) { return obsolete(); }
int kor_odbc_getSubtypekeyOfPlantPart(const KorString&, long&) { return obsolete(); }
int kor_odbc_getPlantPartsCategoriesList(KorArray<KorString>&) { return obsolete(); }
int kor_odbc_getPlantPartname(long, KorString&) { return obsolete(); }
