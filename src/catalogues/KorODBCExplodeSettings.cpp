#include "foundation/ManagerDatabase.h"

#include <korodbc/catalogues/KorODBCExplodeObjects.h>
#include <korodbc/repository/KorDefaults.h>

#include <algorithm>

namespace {

const wchar_t* const useExplodeSettings = L"C40_UseExplodeSettings";

bool contains(const KorArray<int>& keys, int key)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// The first setting of the manager's database, which this makes that one, that is for an object structure of one
/// of these types, of the sub-type, and of one of the profiles.
int scan(eDSN dsn, eIndex index, const KorArray<int>& types, long subType, const KorArray<int>& profiles,
         StructExplodeSettings& out)
{
    const korodbc::NewManagerDatabase database(dsn, index);
    KorArray<StructExplodeSettings> settings;
    if (profiles.isEmpty() || types.isEmpty() || KorODBCExplodeSettings::getExplodeSettingsTable(settings) != 1)
        return 0;
    for (const StructExplodeSettings& setting : settings) {
        StructObjectStructure structure;
        if (contains(profiles, setting.profile) &&
            StructObjectStructureMarshal::getStructByKey(long{setting.objectStructure}, structure) == 1 &&
            structure.objectSubType == subType && contains(types, structure.objectType)) {
            out = setting;
            return 1;
        }
    }
    return 0;
}

} // namespace

int KorODBCExplodeSettings::getExplodeSettingsForObjectStructure(long modelType, long subType,
                                                                 StructExplodeSettings& record)
{
    KorArray<int> types, profiles;
    KorArray<StructExplodeProfile> all;
    {
        // whichever database is current
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        StructObjectTypeMarshal::getAllObjectTypeKeysByModelType(modelType, types);
        KorODBCExplodeProfile::getExplodeProfileTable(all);
    }
    for (const StructExplodeProfile& profile : all)
        if (profile.getSelected() != 0)
            profiles.append(profile.key);
    if (!profiles.isEmpty() &&
        scan(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, types, subType, profiles, record) == 1)
        return 1;
    if (scan(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, types, subType, profiles, record) == 1)
        return 1;
    StructExplodeSettings fallback;
    fallback.setLayer(L"ExplodeDefaultLayer");
    fallback.setColor(253);
    fallback.setLineType(L"ByLayer");
    fallback.setOn(1);
    record = fallback;
    return 0;
}

int KorODBCExplodeSettings::getUsedExplodeSettingsDefault()
{
    int used = 0;
    return kor_odbc_getDefault(useExplodeSettings, used) == 1 ? used : -1;
}

int KorODBCExplodeSettings::setUsedExplodeSettingsDefault(int used)
{
    return kor_odbc_setDefault(useExplodeSettings, used);
}
