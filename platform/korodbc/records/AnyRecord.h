#pragma once

#include <korodbc/records/RecordDescription.h>

/// A record of a type known by its description only.
class AnyRecord {
public:
    explicit AnyRecord(const RecordDescription& type)
        : m_elements(*type.elements), m_record(::operator new(m_elements.size))
    {
        m_elements.make(m_elements, m_record, 1);
    }
    ~AnyRecord()
    {
        m_elements.destroyAt(m_record, 1);
        ::operator delete(m_record);
    }
    AnyRecord(const AnyRecord&) = delete;
    AnyRecord& operator=(const AnyRecord&) = delete;
    void* get() const { return m_record; }

private:
    const KorElements& m_elements;
    void* m_record;
};

/// A `KorArray` of records of such a type.
class AnyRecords {
public:
    explicit AnyRecords(const RecordDescription& type) : m_elements(*type.elements) {}
    ~AnyRecords() { m_list.clear(m_elements); }
    AnyRecords(const AnyRecords&) = delete;
    AnyRecords& operator=(const AnyRecords&) = delete;
    void* get() const { return &m_list; }
    long length() const { return m_list.length(); }
    void* at(long index) const { return m_list.getAt(m_elements, index); }

private:
    const KorElements& m_elements;
    mutable KorAnyArray m_list;
};
