#include "lookup/TwoSources.h"

#include <korodbc/lookup/KorOdbcSteelCatalogues.h>

#include <algorithm>
#include <utility>

int kor_odbc_getRenderMaterials(KorArray<StructRenderMaterial>& materials)
{
    return StructRenderMaterialMarshal::getTable(materials);
}

int kor_odbc_getAuthors(KorArray<StructAuthor>& authors) { return StructAuthorMarshal::getTable(authors); }

int kor_odbc_getAnchors(KorArray<StructAnchorsName>& anchors)
{
    return StructAnchorsNameMarshal::getTable(anchors);
}

int kor_odbc_getAnchorDefinitions(KorArray<StructAnchorsDefinition>& definitions)
{
    return StructAnchorsDefinitionMarshal::getTable(definitions);
}

int kor_odbc_getStrengthClasss(KorArray<StructStrengthClass>& classes)
{
    return StructStrengthClassMarshal::getTable(classes);
}

int kor_odbc_getSets(KorArray<StructSet>& sets) { return StructSetMarshal::getTable(sets); }

int kor_odbc_getSources(KorArray<StructSource>& sources) { return StructSourceMarshal::getTable(sources); }

int kor_odbc_getSymbolRecord(const KorString& runName, StructSymbols& symbol)
{
    return StructSymbolsMarshal::getStructByRunName(runName, symbol);
}

int kor_odbc_getHelpTag(const KorString& key, StructHelpButtons& button)
{
    return StructHelpButtonsMarshal::getStructByKey(key, button);
}

int kor_odbc_getButtonStringId(const KorString& key, StructHelpButtons& button)
{
    return StructHelpButtonsMarshal::getStructByKey(key, button);
}

int kor_odbc_getNotesList(KorArray<KorString>& titles)
{
    KorArray<KorString> found = korodbc::keysOfBothSources<StructNotesMarshal>();
    if (found.isEmpty())
        return 0;
    std::stable_sort(found.begin(), found.end(), [](const KorString& left, const KorString& right) {
        return KorString::strCompareNoCase(left, right) < 0;
    });
    titles = std::move(found);
    return 1;
}

int kor_odbc_getDSTVNamesTable(KorArray<StructDSTVNames>& names)
{
    return StructDSTVNamesMarshal::getTable(names);
}

int kor_odbc_getDSTVNamesKey(const KorString& runName, KorString& key)
{
    return StructDSTVNamesMarshal::getKeyByRunName(runName, key);
}

int kor_odbc_getDSTVNamesDescription(const KorString& key, KorString& runName)
{
    return StructDSTVNamesMarshal::getRunNameByKey(key, runName);
}
