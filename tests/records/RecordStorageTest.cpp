#include <korodbc/records/AnyRecord.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>
#include <korodbc/records/Registry.h>

#include <gtest/gtest.h>
#include <random>
#include <set>
#include <vector>

namespace {

using Random = std::mt19937;

void fill(std::span<const ColumnDescription> columns, void* record, Random& random)
{
    for (const ColumnDescription& column : columns)
        if (column.kind == FieldKind::Integer)
            column.integer(record) = static_cast<int>(random() % 1000);
        else if (column.kind == FieldKind::Real)
            column.real(record) = random() % 1000 / 8.0;
        else
            column.text(record) = KorString::format(L"%d", random() % 1000);
}

std::span<const ColumnDescription> itemColumns(const RecordDescription& type)
{
    return type.numbered.exists() ? type.numbered.columns : type.items.item().columns;
}

void fill(const RecordDescription& type, void* record, Random& random)
{
    fill(type.columns, record, random);
    const MemberList* items = type.itemList();
    if (items == nullptr)
        return;
    items->resize(record, static_cast<long>(random() % 4));
    for (long i = 0; i < items->length(record); ++i)
        fill(itemColumns(type), items->at(record, i), random);
}

std::string shown(std::span<const ColumnDescription> columns, const void* record)
{
    std::string text;
    for (const ColumnDescription& column : columns)
        text += (column.kind == FieldKind::Integer ? std::to_string(column.integer(record))
                 : column.kind == FieldKind::Real  ? std::to_string(column.real(record))
                                                   : column.text(record).toUtf8()) +
                ' ';
    return text;
}

std::string shown(const RecordDescription& type, const void* record)
{
    std::string text = shown(type.columns, record);
    if (const MemberList* items = type.itemList())
        for (long i = 0; i < items->length(record); ++i)
            text += "| " + shown(itemColumns(type), items->at(record, i));
    return text;
}

template <class T>
class RecordStorageTest : public testing::Test {
};
using Types = testing::Types<StructObjectStructure, StructObjectType, StructDetObjReprMap,
                             StructDetArrangerControl, StructDetailStyle, StructDetViewRequest>;
TYPED_TEST_SUITE(RecordStorageTest, Types);

/// The same array is changed by code that knows the type and by code that knows its description.
TYPED_TEST(RecordStorageTest, ArraysAreThoseOfTheType)
{
    const RecordDescription& type = descriptionOf<TypeParam>();
    const ListOperations list = type.list();
    Random random(5);
    KorArray<TypeParam> array;
    std::vector<TypeParam> model;
    const auto expectEqual = [&](const void* records) {
        const auto show = [&](const void* record) { return shown(type, record); };
        ASSERT_EQ(list.length(records), static_cast<long>(model.size()));
        for (std::size_t i = 0; i < model.size(); ++i)
            ASSERT_EQ(show(list.at(const_cast<void*>(records), static_cast<long>(i))), show(&model[i])) << i;
    };
    for (int step = 0; step < 500; ++step) {
        TypeParam record;
        fill(type, &record, random);
        const unsigned long length = model.size(), at = length == 0 ? 0 : random() % length;
        const auto index = static_cast<long>(at);
        switch (length == 0 ? 0 : random() % 12) {
        case 1:
            list.append(&array, &array[index]); // one of its own, while the array grows
            model.push_back(TypeParam(model[at]));
            break;
        case 2:
            list.erase(&array, index);
            model.erase(model.begin() + index);
            break;
        case 3:
            array.deleteAt(index);
            model.erase(model.begin() + index);
            break;
        case 4:
            type.elements->assign(&array[index], &array[0]); // the first one by itself, too
            model[at] = TypeParam(model[0]);
            break;
        case 5:
            array[index] = record;
            model[at] = record;
            break;
        case 6:
            list.resize(&array, static_cast<long>(length) + 3); // what stood there is no concern of this test
            for (long i = 0; i < 3; ++i)
                type.elements->assign(list.at(&array, static_cast<long>(length) + i), &record);
            model.resize(length + 3, record);
            break;
        case 7:
            list.reserve(&array, static_cast<long>(length) + 20);
            break;
        case 8: {
            const AnyRecords other(type);
            list.assign(other.get(), &array);
            expectEqual(other.get());
            array = KorArray<TypeParam>(*static_cast<const KorArray<TypeParam>*>(other.get()));
            break;
        }
        case 9:
            array.append(record);
            model.push_back(record);
            break;
        default:
            EXPECT_EQ(list.append(&array, &record), static_cast<long>(length));
            model.push_back(record);
        }
        if (step % 40 == 0)
            expectEqual(&array);
    }
    expectEqual(&array);
}

TYPED_TEST(RecordStorageTest, NewRecordsAreThoseOfTheType)
{
    const RecordDescription& type = descriptionOf<TypeParam>();
    const AnyRecord made(type);
    const TypeParam record;
    EXPECT_EQ(shown(type, made.get()), shown(type, &record));
}

TEST(RecordDescriptionTest, FieldsStandInTheirRecords)
{
    std::set<std::string_view> names;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        EXPECT_TRUE(type.record.starts_with("Struct")) << type.record;
        EXPECT_TRUE(names.insert(type.record).second) << type.record;
        // every field lies within the record, behind the one before it
        std::size_t end = 0;
        for (const ColumnDescription& column : type.columns) {
            EXPECT_GE(column.offset, end) << type.record << ' ' << column.name;
            end = column.offset + (column.kind == FieldKind::Integer ? sizeof(int) : sizeof(double));
        }
        EXPECT_LE(end, type.elements->size) << type.record;
    }
    EXPECT_TRUE(names.contains("StructDetViewRequest"));
    EXPECT_TRUE(names.contains("StructUnitsOfDensity"));
}

} // namespace
