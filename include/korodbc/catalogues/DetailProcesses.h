#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>

/// Categories of detail processes and what is in them.
class KorODBCDetailProcessCategory
    : public CatalogueReader<StructDetailProcessCategory, StructDetailProcessDefinition, StructDetailProcessStep> {
public:
    static int getDetailProcessCategory(const KorOdbcKey& key, StructDetailProcessCategory& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessCategoryTable(KorArray<StructDetailProcessCategory>& records)
    {
        return table(records);
    }
    /// The processes and steps of a category, appended to the records.
    static int getDetailProcessDefinitionsByCategoryKey(const KorOdbcKey& category,
                                                        KorArray<StructDetailProcessDefinition>& records)
    {
        return StructDetailProcessDefinitionMarshal::getByCategory(category, records);
    }
    static int getDetailProcessStepsByCategoryKey(const KorOdbcKey& category,
                                                  KorArray<StructDetailProcessStep>& records)
    {
        return StructDetailProcessStepMarshal::getByCategory(category, records);
    }
};

/// Scales of cuts by the scale of the main view.
class KorODBCDetailProcessMain2CutScale : public CatalogueReader<StructDetailProcessMain2CutScale> {
public:
    static int getDetailProcessMain2CutScale(const KorOdbcKey& key, StructDetailProcessMain2CutScale& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessMain2CutScaleList(KorArray<KorString>& names) { return runNames(names); }
};

/// How view requests take the scale of their process.
class KorODBCDetailProcessScaleOverride : public CatalogueReader<StructDetailProcessScaleOverride> {
public:
    static int getDetailProcessScaleOverrideByKey(const KorOdbcKey& key, StructDetailProcessScaleOverride& record)
    {
        return byKey(key, record);
    }
    static int getDetailProcessScaleOverrideByName(const KorString& runName,
                                                   StructDetailProcessScaleOverride& record)
    {
        return byRunName(runName, record);
    }
};

/// Scales that the texts of drawing prototypes are made for.
class KorODBCChangePrototypeScaleTo : public CatalogueReader<StructChangePrototypeScaleTo> {
public:
    static int getAllRecords(KorArray<StructChangePrototypeScaleTo>& records) { return table(records); }
    static int getRecordForKey(const KorOdbcKey& key, StructChangePrototypeScaleTo& record)
    {
        return byKey(key, record);
    }
    /// Scale of a prototype, paper over model; -1 for an unknown one.
    static int getScaleForPrototype(const KorString& prototype, double& scale)
    {
        return fieldByRunName<&StructChangePrototypeScaleTo::scale>(prototype, scale);
    }
};
