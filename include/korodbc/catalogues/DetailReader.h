#pragma once

#include <korodbc/catalogues/CatalogueReader.h>

/// Until it is destroyed, reads go to the requested data source, without a request to the manager's database,
/// where the writers beside the readers write. Tables that this lacks are read from the first of their homes.
class DetailReading {
public:
    DetailReading();
    ~DetailReading();
    DetailReading(const DetailReading&) = delete;
    DetailReading& operator=(const DetailReading&) = delete;

private:
    eDSN m_dsn;
    eIndex m_index;
};

/// The reads of the catalogue readers within a DetailReading.
template <class... Records>
class DetailReader : public CatalogueReader<Records...> {
    using Reader = CatalogueReader<Records...>;

protected:
    using Record = typename Reader::Record;

    template <class Read>
    static int current(Read read)
    {
        const DetailReading database;
        return read();
    }
    template <class Key, class T>
    static int byKey(const Key& key, T& record)
    {
        return current([&] { return Reader::byKey(key, record); });
    }
    template <class T>
    static int byRunName(const KorString& runName, T& record)
    {
        return current([&] { return Reader::byRunName(runName, record); });
    }
    template <class T = Record, CatalogueKey Key>
    static int keyOf(const KorString& runName, Key& key)
    {
        return current([&] { return Reader::template keyOf<T>(runName, key); });
    }
    template <class T = Record>
    static int runNames(KorArray<KorString>& names)
    {
        return current([&] { return Reader::template runNames<T>(names); });
    }
    template <class T>
    static int table(KorArray<T>& records)
    {
        return current([&] { return Reader::table(records); });
    }
};
