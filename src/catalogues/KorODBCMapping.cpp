#include <korodbc/catalogues/KorODBCMapping.h>
#include <korodbc/repository/KorDefaults.h>

namespace {

template <class Read>
int inDrawing(Read read)
{
    const KorDSNRequest request(KorDSNDefinitions::kProject, KorDSNSetDwgSource::GeteIndexForDwg());
    return read();
}

} // namespace

int KorODBCMapping::getMapInternToExtern(const KorOdbcKey& key, StructMapInternToExtern& record)
{
    const auto read = [&] { return byKey(key, record); };
    const int result = inDrawing(read);
    return result == 1 ? result : within(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, read);
}

int KorODBCMapping::getMapInternToExtern(const KorString& name, StructMapInternToExtern& record)
{
    const auto read = [&] { return byRunName(name, record); };
    int drawingFirst = 0;
    kor_odbc_getDefault(L"MapExternalNameInProjectDB", drawingFirst);
    if (drawingFirst != 0 && inDrawing(read) == 1)
        return 1;
    return addInFirst(KorDSNDefinitions::kConfiguration, read);
}

int KorODBCMapping::getUnitPrecisionByNameAndType(StructUnits& record)
{
    const KorString name = record.runName;
    return StructUnitsMarshal::getStructByRunNameAndType(name, record.unitType, record);
}
