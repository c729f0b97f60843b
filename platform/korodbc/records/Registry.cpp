#include <korodbc/records/Registry.h>

#include <string>
#include <unordered_map>
#include <vector>

namespace records {

Family all()
{
    static const std::vector<DescriptionFunction> list = [] {
        std::vector<DescriptionFunction> types;
        for (const Family family :
             {detailStyleRecords,    detailViewRecords, detailObjectRecords,     detailAnnotationRecords,
              detailProcessRecords,  numberingRecords,  detailCatalogueRecords,  authorRecords,
              defaultRecords,        toolbarRecords,    autoConnectionRecords,   projectRecords,
              exchangeRecords,       boltRecords,       materialRecords,         weldRecords,
              sectionRecords,        gratingRecords,    combinationRecords,      languageRecords,
              presentationRecords,   ruleRecords,       sectionBehaviourRecords, anchorRecords,
              boltAssemblyRecords,   connectorRecords,  preferredSizesRecords,   classificationRecords,
              applicationRecords,    jointRecords,      footingRecords,          wizardRecords,
              dynamicSectionRecords, textRecords,       detailSettingRecords,    detailOptionRecords,
              unitRecords,           nameMapRecords,    conversionRecords,       formatRecords,
              profileFamilyRecords})
            types.insert(types.end(), family.begin(), family.end());
        return types;
    }();
    return list;
}

const RecordDescription* ofTable(std::string_view table)
{
    static const std::unordered_map<std::string_view, const RecordDescription*> byTable = [] {
        std::unordered_map<std::string_view, const RecordDescription*> map;
        for (const DescriptionFunction type : all())
            map.emplace(type().table, &type());
        return map;
    }();
    const auto found = byTable.find(table);
    return found == byTable.end() ? nullptr : found->second;
}

bool isDetailTable(const RecordDescription& type)
{
    return type.homes.contains(KorDSNDefinitions::kDetails) && type.homes.contains(KorDSNDefinitions::kAddin);
}

bool isProjectTable(const RecordDescription& type)
{
    return type.homes.contains(KorDSNDefinitions::kProject) &&
           type.homes.contains(KorDSNDefinitions::kProjectAdvance);
}

} // namespace records
