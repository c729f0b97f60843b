#include "service/NamedTables.h"

#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/roots/KorStringSeparators.h>

#include <algorithm>

using namespace korodbc::host;

namespace {

RecordCache* sectionsOf(const KorString& table) { return recordsOfTable(descriptionOf<StructSection>(), table); }

const StructSection* sectionNamed(RecordCache* records, const KorString& name)
{
    for (long position = 0; records != nullptr && position < records->length(); ++position) {
        const auto* section = static_cast<const StructSection*>(records->at(position));
        if (section->sectionName.compareNoCase(name) == 0)
            return section;
    }
    return nullptr;
}

/// Calls `act` with the class that `find` finds, in the first source that has it: the tables that a class names
/// are looked for there first. Returns what `act` does, 0 without a class.
template <class Find, class Act>
int inSourceOfClass(Find find, Act act)
{
    int result = 0;
    RecordAccess::eachSource(descriptionOf<StructProfileClass>(), RecordAccess::Sources::All, [&] {
        StructProfileClass profileClass;
        if (find(profileClass) != 1)
            return true;
        result = act(profileClass);
        return false;
    });
    return result;
}

} // namespace

int KorDatabaseProfileAccess::getProfileTable(const StructProfileClass& profileClass,
                                              KorArray<StructSection>& sections, int mode)
{
    RecordCache* records = sectionsOf(profileClass.tableName);
    if (records == nullptr)
        return 0;
    KorArray<StructSection> read = *static_cast<const KorArray<StructSection>*>(records->list());
    if (mode != 3)
        for (StructSection& section : read) {
            StructSection named;
            named.key = section.key;
            named.sectionName = section.sectionName;
            section = named;
        }
    std::stable_sort(read.begin(), read.end(), [](const StructSection& a, const StructSection& b) {
        return a.sectionName.compareNoCase(b.sectionName) < 0;
    });
    sections = read;
    return 1;
}

int KorDatabaseProfileAccess::visitSections(const StructProfileClass& profileClass,
                                            const std::function<bool(const StructSection& section)>& act)
{
    const RecordCache* records = sectionsOf(profileClass.tableName);
    if (records == nullptr)
        return 0;
    for (long position = 0; position < records->length(); ++position)
        if (!act(*static_cast<const StructSection*>(records->at(position))))
            break;
    return 1;
}

int KorDatabaseProfileAccess::getProfilesSectionNameListByKeysAllSources(const KorString& classKey,
                                                                         const KorArray<long>& keys,
                                                                         KorArray<KorString>& sectionNames)
{
    return inSourceOfClass(
        [&](StructProfileClass& profileClass) {
            return StructProfileClassMarshal::getStructByKey(classKey, profileClass);
        },
        [&](const StructProfileClass& profileClass) {
            return namesOfKeys(sectionsOf(profileClass.tableName), keys, sectionNames);
        });
}

int KorDatabaseProfileAccess::getInternalNameByRunNamesAllSources(const KorString& classRunName,
                                                                  const KorString& sectionName,
                                                                  KorString& internalName)
{
    return inSourceOfClass(
        [&](StructProfileClass& profileClass) {
            return StructProfileClassMarshal::getStructByRunName(classRunName, profileClass);
        },
        [&](const StructProfileClass& profileClass) {
            const StructSection* section = sectionNamed(sectionsOf(profileClass.tableName), sectionName);
            if (section == nullptr)
                return 0;
            internalName =
                profileClass.key + KorString(KorStringSeparators::kStrSectionNameSeparator) + section->sectionName;
            return 1;
        });
}

int KorDatabaseProfileAccess::decomposeInternalName(const KorString& internalName, KorString& classKey,
                                                    KorString& sectionName)
{
    const int separator = internalName.find(KorStringSeparators::kStrSectionNameSeparator);
    if (separator < 0)
        return 0;
    classKey = internalName.left(separator);
    sectionName = internalName.mid(separator + 1);
    return 1;
}

int KorDatabaseProfileAccess::getCompoundMasterStruct(const KorString& name, StructCompoundMaster& record)
{
    int found = 0;
    RecordAccess::visit(descriptionOf<StructCompoundMaster>(), [&](const void* candidate) {
        const auto& compound = *static_cast<const StructCompoundMaster*>(candidate);
        if (compound.compoundClass.compareNoCase(name) != 0)
            return true;
        record = compound;
        found = 1;
        return false;
    });
    return found;
}

int KorDatabaseProfileAccess::loadSectionData(KorArray<double>& values, const KorString& internalName,
                                              bool& isUserSection, bool currentSourceOnly)
{
    KorString classKey, sectionName;
    if (decomposeInternalName(internalName, classKey, sectionName) != 1)
        return 0;
    const auto findClass = [&](StructProfileClass& profileClass) {
        return StructProfileClassMarshal::getStructByKey(classKey, profileClass);
    };
    const auto load = [&](const StructProfileClass& profileClass) {
        const StructSection* section = sectionNamed(sectionsOf(profileClass.tableName), sectionName);
        if (section == nullptr)
            return 0;
        isUserSection = service().dataSourceOf(KorDatabaseAccess::getTableName(profileClass.tableName)) ==
                        KorDSNDefinitions::kUserSections;
        values.removeAll();
        for (const ColumnDescription& column : descriptionOf<StructSection>().columns)
            if (column.kind == FieldKind::Real)
                values.append(column.real(section));
        return 1;
    };
    if (!currentSourceOnly)
        return inSourceOfClass(findClass, load);
    StructProfileClass profileClass;
    return findClass(profileClass) == 1 ? load(profileClass) : 0;
}
