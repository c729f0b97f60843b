#pragma once

#include "catalogues/CatalogueFixture.h"
#include "support/DetailRecords.h"

#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/repository/RecordMarshal.h>

#include <algorithm>
#include <concepts>
#include <optional>
#include <type_traits>

enum class Held { Replaced, Kept };    // what a list reader does with what the list holds
enum class EqualNames { First, Last }; // which of several records with its name a reader finds

/// Checks of readers on the shipped catalogue, one for each kind of reader. A case names the function; the record
/// type follows from its parameters where it can. Each check takes the reader through everything the table holds,
/// what it does not hold, and the missing table, for which failure leaves the output untouched.
class ReaderTest : public CatalogueTest {
protected:
    // One record, its items included

    template <class... T>
    static void byKey(int (*... read)(const KorOdbcKey&, T&))
    {
        const auto key = [](const std::string& text) { return KorOdbcKey(std::stol(text)); };
        (eachRecord<T>(descriptionOf<T>().key, key, read, {"-1", "4711"}), ...);
    }
    template <class... T>
    static void byTextKey(int (*... read)(const KorString&, T&))
    {
        (eachRecord<T>(descriptionOf<T>().key, details::text, read, {"", "it's 没有"}), ...);
    }
    template <class... T>
    static void byRunName(int (*... read)(const KorString&, T&))
    {
        (byName(read, EqualNames::First), ...);
    }
    /// Readers of the records and of the run names of the same table.
    template <class T>
    static void named(int (*read)(const KorString&, T&), int (*list)(KorArray<KorString>&),
                      Held held = Held::Replaced, EqualNames found = EqualNames::First)
    {
        runNames<T>(list, held);
        byName(read, found);
    }

    // Every record

    template <class... T>
    static void tables(int (*... read)(KorArray<T>&))
    {
        (wholeTable(read), ...);
    }
    /// Run names in table order, whatever order the table's sort column gives.
    template <class T>
    static void runNames(int (*read)(KorArray<KorString>&), Held held = Held::Replaced)
    {
        nameList(descriptionOf<T>(), read, held, false);
    }
    template <class T>
    static void orderedRunNames(int (*read)(KorArray<KorString>&))
    {
        ASSERT_GE(descriptionOf<T>().sortOrder, 0);
        nameList(descriptionOf<T>(), read, Held::Replaced, true);
    }

    // The records whose field has a value, and the first of them

    template <class T, class Value, class By>
    static void where(Value T::*field, int (*read)(By, KorArray<T>&), Held held = Held::Replaced)
    {
        eachValue<T>(field, read, held);
    }
    template <class T, class Value, class By>
    static void where(Value T::*field, int (*read)(By, T&))
    {
        eachValue<T>(field, [=](const std::remove_cvref_t<By>& by, KorArray<T>& records) {
            T record;
            const std::string before = textOf(descriptionOf<T>(), &record);
            const int result = read(by, record);
            if (result == 1)
                records = details::list({record});
            else
                EXPECT_EQ(textOf(descriptionOf<T>(), &record), before);
            return result;
        });
    }

    // One field of a record; `unknown` and `missing` are the results without that record and without the table

    template <class T, class Value>
    static void field(Value T::*field, int (*read)(const KorOdbcKey&, Value&), int unknown, int missing)
    {
        eachField(field, descriptionOf<T>().key, unknown, missing,
                  [=](const KorString& key, Value& value) { return read(KorOdbcKey(key.toInteger()), value); });
    }
    template <class T, class Value>
    static void field(Value T::*field, int (*read)(const KorString&, Value&), int unknown, int missing)
    {
        eachField(field, descriptionOf<T>().runName, unknown, missing, read);
    }

private:
    template <class T, class By, class Read>
    static void eachRecord(int column, By by, Read read, const Texts& unknown)
    {
        const RecordDescription& type = descriptionOf<T>();
        SCOPED_TRACE(type.table);
        const Texts stored = rowsOf(type), values = valuesOf(type, column);
        EXPECT_FALSE(stored.empty());
        T record;
        for (std::size_t i = 0; i < stored.size(); ++i) {
            record = T();
            EXPECT_EQ(read(by(values[i]), record), 1) << values[i];
            EXPECT_TRUE(isRow(type, &record, stored[i]));
            expectItems(type, &record);
        }
        const std::string before = textOf(type, &record);
        for (const std::string& value : unknown)
            EXPECT_EQ(read(by(value), record), 0) << value;
        const MissingTable missing(type);
        EXPECT_EQ(read(by(values[0]), record), 0);
        EXPECT_EQ(textOf(type, &record), before);
    }
    static void expectItems(const RecordDescription& type, const void* record)
    {
        const MemberList* items = type.itemList();
        if (items != nullptr && type.itemCount >= 0) {
            EXPECT_EQ(items->length(record), type.at(type.itemCount)->integer(record));
        }
        if (!type.items.exists())
            return;
        const RecordDescription& item = type.items.item();
        const Texts stored = rowsOf(item), owners = valuesOf(item, item.itemOwner);
        long found = 0;
        for (std::size_t i = 0; i < stored.size(); ++i)
            if (owners[i] == std::to_string(type.keyOf(record))) {
                ASSERT_LT(found, items->length(record));
                EXPECT_TRUE(isRow(item, items->at(record, found++), stored[i]));
            }
        EXPECT_EQ(items->length(record), found);
    }
    template <class T>
    static void byName(int (*read)(const KorString&, T&), EqualNames found)
    {
        const RecordDescription& type = descriptionOf<T>();
        eachRecord<T>(type.runName, details::text, read, {"", "' OR 1 = 1", "no such name"});

        SCOPED_TRACE(type.table);
        T record;
        type.runNameColumn()->text(&record) = details::text(details::awkward);
        setColumn(type, *type.runNameColumn(), details::literal(*type.runNameColumn(), &record));
        const Texts stored = rowsOf(type);
        EXPECT_EQ(read(L"o'träger [X] 100%D \"梁\" 🏗)", record), 0) << "upper and lower case differ";
        EXPECT_EQ(read(details::text(details::awkward), record), 1);
        EXPECT_TRUE(isRow(type, &record, found == EqualNames::First ? stored.front() : stored.back()));
    }
    template <class T>
    static void wholeTable(int (*read)(KorArray<T>&))
    {
        const RecordDescription& type = descriptionOf<T>();
        SCOPED_TRACE(type.table);
        const Texts stored = rowsOf(type);
        EXPECT_FALSE(stored.empty());
        KorArray<T> records;
        records.setLogicalLength(2); // replaced, not added to
        EXPECT_EQ(read(records), 1);
        const MissingTable missing(type);
        EXPECT_EQ(read(records), 0);
        ASSERT_EQ(records.length(), static_cast<int>(stored.size()));
        for (std::size_t i = 0; i < stored.size(); ++i)
            EXPECT_TRUE(isRow(type, &records[static_cast<int>(i)], stored[i]));
    }
    static void nameList(const RecordDescription& type, int (*read)(KorArray<KorString>&), Held held, bool ordered)
    {
        SCOPED_TRACE(type.table);
        if (type.sortOrder >= 0) // in sort order, table order is the wrong way round
            setColumn(type, *type.at(type.sortOrder), "-rowid");
        Texts expected = valuesOf(type, type.runName);
        EXPECT_FALSE(expected.empty());
        if (ordered)
            std::reverse(expected.begin(), expected.end());
        if (held == Held::Kept)
            expected.insert(expected.begin(), "before");
        KorArray<KorString> names = korTexts({"before"});
        EXPECT_EQ(read(names), 1);
        EXPECT_EQ(utf8(names), expected);
        const MissingTable missing(type);
        EXPECT_EQ(read(names), 0);
        EXPECT_EQ(utf8(names), expected);
    }
    /// Without `held`, only the first record with each value is read.
    template <class T, class Value, class Read>
    static void eachValue(Value T::*field, Read read, std::optional<Held> held = {})
    {
        const RecordDescription& type = descriptionOf<T>();
        SCOPED_TRACE(type.table);
        KorArray<T> all;
        ASSERT_EQ(RecordMarshal<T>::getTable(all), 1);
        const auto expect = [&](const Value& value, bool found) {
            KorArray<T> records = details::list({T()});
            Texts expected, texts;
            if (!found || held == Held::Kept)
                expected.push_back(textOf(type, &records[0]));
            for (const T& one : all)
                if (found && one.*field == value && (held || expected.empty()))
                    expected.push_back(textOf(type, &one));
            const int result = read(value, records);
            for (const T& one : records)
                texts.push_back(textOf(type, &one));
            EXPECT_EQ(texts, expected);
            return result;
        };
        for (const T& one : all)
            EXPECT_EQ(expect(one.*field, true), 1);
        EXPECT_NE(all[0].*field, all[all.length() - 1].*field);
        if constexpr (std::same_as<Value, KorString>)
            EXPECT_EQ(expect(L"it's 没有", false), 0);
        else
            EXPECT_EQ(expect(4711, false), 0);
        const MissingTable missing(type);
        EXPECT_NE(expect(all[0].*field, false), 1);
    }
    template <class T, class Value, class Read>
    static void eachField(Value T::*field, int by, int unknown, int missing, Read read)
    {
        const RecordDescription& type = descriptionOf<T>();
        SCOPED_TRACE(type.table);
        T probe;
        const auto column = std::find_if(type.columns.begin(), type.columns.end(), [&](const auto& one) {
            return one.field(&probe) == static_cast<void*>(&(probe.*field));
        });
        if (column->role != ColumnRole::Key) // values that differ, and that no other column has
            setColumn(type, *column, std::same_as<Value, KorString> ? "'it''s ' || (rowid + 99)" : "rowid + 99");
        const Texts keys = valuesOf(type, by);
        KorArray<T> all;
        ASSERT_EQ(RecordMarshal<T>::getTable(all), 1);
        Value value{};
        for (std::size_t i = 0; i < keys.size(); ++i) {
            EXPECT_EQ(read(details::text(keys[i]), value), 1);
            EXPECT_EQ(value, all[static_cast<int>(i)].*field);
        }
        EXPECT_EQ(read(L"4711", value), unknown);
        const MissingTable table(type);
        EXPECT_EQ(read(details::text(keys[0]), value), missing);
        EXPECT_EQ(value, all[all.length() - 1].*field);
    }
    static void setColumn(const RecordDescription& type, const ColumnDescription& column, const std::string& value)
    {
        sql(homeOf(type),
            {"UPDATE [" + std::string(type.table) + "] SET [" + std::string(column.name) + "] = " + value});
    }
};
