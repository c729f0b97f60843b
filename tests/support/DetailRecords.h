#pragma once

#include <korodbc/records/AnyRecord.h>
#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// Detail records for tests: rows written as plain statements, past the record store, and read back as trees.
namespace details {

/// A name with everything in it that statements, formats and narrow characters stumble over.
inline const char* const awkward = "O'Träger [x] 100%d \"梁\" 🏗)";

inline KorString text(const std::string& utf8) { return KorString::fromUtf8(utf8); }

template <class T>
KorArray<T> list(std::initializer_list<T> elements)
{
    KorArray<T> array;
    for (const T& element : elements)
        array.append(element);
    return array;
}

inline std::string literal(const ColumnDescription& column, const void* record)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return std::to_string(column.integer(record));
    case FieldKind::Real:
        return std::to_string(column.real(record));
    case FieldKind::Text:
        break;
    }
    std::string quoted = "'";
    for (const char c : column.text(record).toUtf8())
        quoted.append(c == '\'' ? 2 : 1, c);
    return quoted += "'";
}

inline void insert(eDSN dsn, const RecordDescription& type, const void* record)
{
    std::string names, values;
    const auto add = [&](const std::string& name, const ColumnDescription& column, const void* of) {
        names += (names.empty() ? "[" : ", [") + name + "]";
        values += (values.empty() ? "" : ", ") + literal(column, of);
    };
    for (const ColumnDescription& column : type.columns)
        add(std::string(column.name), column, record);
    for (long i = 0; type.numbered.exists() && i < type.numbered.list.length(record); ++i)
        for (const ColumnDescription& column : type.numbered.columns)
            add(KorString::format(text(std::string(column.name)).c_str(), static_cast<int>(i) + 1).toUtf8(),
                column, type.numbered.list.at(record, i));
    const std::string sql =
        "INSERT INTO [" + std::string(type.table) + "] (" + names + ") VALUES (" + values + ")";
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(dsn, text(sql)), 1) << sql;
}

/// Stores a record, its item count and its items.
template <class T>
void put(eDSN dsn, T record)
{
    const RecordDescription& type = descriptionOf<T>();
    if (const MemberList* items = type.itemList(); items != nullptr && type.itemCount >= 0)
        type.at(type.itemCount)->integer(&record) = static_cast<int>(items->length(&record));
    insert(dsn, type, &record);
    for (long i = 0; type.items.exists() && i < type.items.list.length(&record); ++i) {
        const RecordDescription& item = type.items.item();
        void* row = type.items.list.at(&record, i);
        item.at(item.itemOwner)->integer(row) = type.keyOf(&record);
        if (const ColumnDescription* order = item.at(item.itemOrder))
            order->integer(row) = static_cast<int>(i);
        if (item.key >= 0)
            item.keyColumn().integer(row) = type.keyOf(&record) * 100 + static_cast<int>(i);
        insert(dsn, item, row);
    }
}

inline void fillConfiguration()
{
    const eDSN dsn = KorDSNDefinitions::kConfiguration;
    put(dsn, StructDefaultString{L"ODBC_OwnerKey", L"OFFICE"});
    put(dsn, StructDefaultString{L"ODBC_OwnerText", L"Steel detailing office"});
    put(dsn, StructDefaultString{L"C0_RunNameFirstPrefix", L"Copy of"});
    put(dsn, StructDefaultString{L"C0_RunNameNextPrefix", L"Copy ("});
    put(dsn, StructAuthor{L"OFFICE", L"Steel detailing office"});
}

/// One detail style that reaches every table a style can reach, twice where it can, and shares components; names
/// end in `suffix`, keys start behind `base`. Style `base` + 2 has no master.
inline void fillStyle(eDSN dsn, const std::string& suffix, int base = 0)
{
    const int a = base + 1, b = base + 2;
    const auto name = [&](const char* what) { return text(what + (" " + suffix)); };
    const KorString owner = name("owner");
    const KorDatabaseBatch batch;
    put(dsn, StructLinetypes{a, name("dashed"), owner});
    put(dsn, StructLinetypes{b, name("unused"), owner});
    put(dsn, StructDetHatchSettings{a, name("hatch"), L"ANSI31", 2.5, 45, 3, L"HATCH", owner});
    for (const int key : {a, b})
        put(dsn, StructDetObjAppearance{key, name(key == a ? "cut" : "seen"), a, key - base, name("layer"), 1, 0,
                                        L"H'2", 7, 1, L"AXIS", owner});
    put(dsn, StructDetAnnotationType{a, name("mark"), 3, owner, L"%POS% - %LEN%"});
    put(dsn, StructDetArrangerControl{a, name("control"), 1, 0, 1, 0, 1, owner, 0,
                                      list<StructDetArrangerControlItem>({{30, 5, 20}, {60, 6.5, 25}})});
    put(dsn, StructDetArrangerStrategy{a, name("strategy"), 1, 0, 1, owner, 0,
                                       list<StructDetArrangerStrategyItem>({{1, 2, 3.5, 8}, {2, 0, 4, 9.25}})});
    put(dsn, StructDetObjAnnotationGroup{a, name("annotations"), 11});
    put(dsn, StructDetObjAnnotationStrategy{a, name("annotate"), a, a, a, a, 1, L"TEXT", 3.5, owner});
    put(dsn, StructDetObjQualifierSetGroup{a, name("sets"), 12});
    for (const int key : {a, b})
        put(dsn, StructDetObjQualifierSet{
                     key, name(key == a ? "beams" : "plates"), a, owner, 0,
                     list<StructDetObjQualifierSetItem>({{-1, -1, 0, key - base, name("role"), L"F'1"},
                                                         {-1, -1, 0, 9, KorString(), KorString()}})});
    put(dsn, StructDetObjReprMap{a, name("map"), owner, 0,
                                 list<StructDetObjReprMapItem>({{-1, 0, 501, owner, a, 1, 2, a, a, a, 1.5, 1},
                                                                {-1, 0, 502, owner, b, 2, 3, b, a, -1, 0, 0}})});
    for (const int key : {a, b})
        put(dsn, StructDetViewDimPointSelection{key, name(key == a ? "ends" : "holes"), 2, key, 1, 0, owner});
    put(dsn, StructDetViewDimRequestLinearGroup{a, name("chains"), 13});
    for (const int key : {a, b})
        put(dsn,
            StructDetViewDimRequestLinear{key, name(key == a ? "chain" : "total"), 1, 0, 1, 0, 1, 0, L"L=%d", 1, a,
                                          key, owner, 0, key == a ? list<int>({a, b}) : list<int>({b})});
    put(dsn, StructDetViewDimStrategy{
                 a, name("dimensions"), 1, owner, 0,
                 list<StructDetViewDimStrategyItem>({{-1, 0, name("first"), owner, 1, a, 1, 0, 2, 0},
                                                     {-1, 0, L"it's", owner, 2, b, 0, 1, 0, 1}})});
    for (const int key : {a, b})
        put(dsn, StructDetViewSystemAndBox{key, name(key == a ? "front" : "top"), 1, 2, key - base, 1, 0, 90, 10.5,
                                           20, owner});
    put(dsn, StructDetViewLengthClip{a, name("clip"), 1, 0, 1, 1500, 8, owner});
    for (const int key : {a, b})
        put(dsn, StructDetViewRequest{key, name(key == a ? "front view" : "top view"), key, a, a, a, 0, 1, L"%N",
                                      0.5, 0, owner, KorArray<StructDetViewRequestCategory>()});
    put(dsn, StructDetBaseCategory{a, name("beam styles"), 1, owner});
    put(dsn, StructDetBaseCategory{b, name("views"), 2, owner});
    put(dsn, StructDetViewRequestCategory{a, b, a, 0});
    put(dsn, StructDetViewRequestCategory{b, a, a, 0});
    put(dsn, StructDetViewArrangeStrategy{a, name("arrange"), 1, 10, 12.5, 1, owner});
    put(dsn, StructDetailStyle{a, name("style"), a, 1, 2, L"T %s", 1, L"C", 2, L"1:%d", L"%Y", 1, 3, 1, owner, 0,
                               list<int>({a, b})});
    put(dsn, StructDetailStyle{b, name("no master"), a, 0, 0, L"", 0, L"", 0, L"", L"", 0, 0, 0, owner, 0,
                               list<int>({a})});
    put(dsn, StructDetailMaster{a, name("style"), a, a, 1, owner});
}

/// One detail process over the style of the same base: two steps share everything but their category, and the
/// style map names both qualifier sets and both styles.
inline void fillProcess(eDSN dsn, const std::string& suffix, int base = 0)
{
    const int a = base + 1, b = base + 2;
    const auto name = [&](const char* what) { return text(what + (" " + suffix)); };
    const KorString owner = name("owner");
    const KorDatabaseBatch batch;
    put(dsn, StructDetailProcessCategory{a, name("workshop"), 1, owner});
    put(dsn, StructDetailProcessCategory{b, name("site"), 2, owner});
    put(dsn, StructDetailFilenameSelector{a, name("files"), name("folder"), L"%POS%_'%03d'", 5, 4, owner});
    put(dsn, StructDetailProcessSelection{a, name("selection"), L"ALL_SINGLEPARTS", owner});
    put(dsn, StructDetailProcessSort{a, name("sort"), L"by 'length'", owner});
    put(dsn,
        StructDetProcessScales{a, name("scales"), owner, 0,
                               list<StructDetProcessScalesItem>({{-1, -1, 0, 0.1, 1500}, {-1, -1, 0, 0.05, 0}})});
    put(dsn, StructDetailProcessMain2CutScale{
                 a, name("cuts"), owner, 0,
                 list<StructDetailProcessMain2CutScaleItem>({{0.1, 0.2}, {0.05, 0.125}, {0.02, 0.1}})});
    put(dsn, StructDetailStyleMap{a, name("style map"), owner, 0,
                                  list<StructDetailStyleMapItem>(
                                      {{-1, 0, L"it's [a] 100%", a, a, 0}, {-1, 0, name("script"), b, b, 0}})});
    for (const int key : {a, b})
        put(dsn, StructDetailProcessStep{key, name(key == a ? "fabrication" : "erection"), key, a, a, a, a, a, a,
                                         key - base, 2, 1, 10, 15.5, 5, owner});
    put(dsn, StructDetailProcessDefinition{a, name("process"), a, name("description"), 3, 4, owner, 0,
                                           list<int>({a, b})});
}

/// The record with that key, and everything it refers to, as text: values only, no keys of rows but those of the
/// type `keysOf`.
inline std::string tree(const RecordDescription& type, long key, const RecordDescription* keysOf = nullptr)
{
    const AnyRecord record(type);
    if (RecordAccess::readByKey(type, key, record.get()) != 1)
        return "(missing " + std::string(type.table) + " " + std::to_string(key) + ")";
    std::string out = std::string(type.table) + "(";
    const auto columns = [&](const auto& of, const void* from) {
        for (const ColumnDescription& column : of) {
            if (column.role == ColumnRole::Key || column.role == ColumnRole::ItemOwner)
                continue;
            if (column.link != LinkKind::Reference || &column.target() == keysOf)
                out += literal(column, from) + ";";
            else if (column.integer(from) == -1)
                out += "none;";
            else
                out += tree(column.target(), column.integer(from), keysOf) + ";";
        }
    };
    columns(type.columns, record.get());
    if (const MemberList* items = type.itemList())
        for (long i = 0; i < items->length(record.get()); ++i, out += "|")
            columns(type.numbered.exists() ? type.numbered.columns : type.items.item().columns,
                    items->at(record.get(), i));
    if (&type == &descriptionOf<StructDetViewRequest>()) {
        KorArray<StructDetViewRequestCategory> categories;
        StructDetViewRequestCategoryMarshal::getByDetViewRequest(key, categories);
        for (const StructDetViewRequestCategory& entry : categories)
            out += "in " + tree(descriptionOf<StructDetBaseCategory>(), entry.baseCategory);
    }
    return out + ")\n";
}

/// The master of a style, the style and all that it reaches; keys left out.
inline std::string styleTree(eDSN dsn, eIndex index, long styleKey)
{
    const KorDSNRequest request(dsn, index);
    StructDetailMaster master;
    if (StructDetailMasterMarshal::getByStyleKey(styleKey, master) != 1)
        return "(no master)";
    return tree(descriptionOf<StructDetailMaster>(), master.key);
}

/// A detail process and all that it reaches; of the styles only the keys, on demand.
inline std::string processTree(eDSN dsn, eIndex index, long key, bool withStyles)
{
    const KorDSNRequest request(dsn, index);
    return tree(descriptionOf<StructDetailProcessDefinition>(), key,
                withStyles ? nullptr : &descriptionOf<StructDetailStyle>());
}

} // namespace details
