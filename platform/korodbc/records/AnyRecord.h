#pragma once

#include <korodbc/records/RecordDescription.h>

/// A record of a type known by its description only.
class AnyRecord {
public:
    explicit AnyRecord(const RecordDescription& type)
        : m_operations(type.operations), m_record(m_operations->create())
    {
    }
    ~AnyRecord() { m_operations->destroy(m_record); }
    AnyRecord(const AnyRecord&) = delete;
    AnyRecord& operator=(const AnyRecord&) = delete;
    void* get() const { return m_record; }

private:
    const RecordOperations* m_operations;
    void* m_record;
};

/// A `KorArray` of records of such a type.
class AnyRecords {
public:
    explicit AnyRecords(const RecordDescription& type)
        : m_operations(&type.operations->list), m_list(m_operations->create())
    {
    }
    ~AnyRecords() { m_operations->destroy(m_list); }
    AnyRecords(const AnyRecords&) = delete;
    AnyRecords& operator=(const AnyRecords&) = delete;
    void* get() const { return m_list; }
    long length() const { return m_operations->length(m_list); }
    void* at(long index) const { return m_operations->at(m_list, index); }

private:
    const ListOperations* m_operations;
    void* m_list;
};
