#include <korodbc/records/RecordDescription.h>

#include <cstring>
#include <new>

void RecordElements::makeRecords(const KorElements& type, void* first, long count)
{
    auto* record = static_cast<std::byte*>(first);
    for (; count > 0; --count, record += type.size)
        std::memcpy(record, static_cast<const RecordElements&>(type).fresh, type.size);
}

void RecordElements::copyRecords(const KorElements& type, void* to, const void* from, long count)
{
    auto* record = static_cast<std::byte*>(to);
    const auto* other = static_cast<const std::byte*>(from);
    for (; count > 0; --count, record += type.size, other += type.size) {
        std::memcpy(record, other, type.size);
        // the bytes of what is owned are the other's: copies take their place
        for (const OwnedMember& member : static_cast<const RecordElements&>(type).owned)
            if (member.elements == nullptr)
                new (record + member.offset) KorString(*reinterpret_cast<const KorString*>(other + member.offset));
            else
                (new (record + member.offset) KorAnyArray)
                    ->assign(*member.elements, *reinterpret_cast<const KorAnyArray*>(other + member.offset));
    }
}

void RecordElements::destroyRecords(const KorElements& type, void* first, long count)
{
    auto* record = static_cast<std::byte*>(first);
    for (; count > 0; --count, record += type.size)
        for (const OwnedMember& member : static_cast<const RecordElements&>(type).owned)
            if (member.elements == nullptr)
                reinterpret_cast<KorString*>(record + member.offset)->~KorString();
            else
                reinterpret_cast<KorAnyArray*>(record + member.offset)->clear(*member.elements);
}
