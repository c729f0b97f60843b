#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KorMemoryControllerController.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <mutex>
#include <unordered_map>

namespace {

std::size_t bytes(const KorElements& type, long count) { return static_cast<std::size_t>(count) * type.size; }

void* allocate(const KorElements& type, long count) noexcept
{
    return count > std::numeric_limits<int>::max()
               ? nullptr
               : KorMemoryControllerController::allocateArray(bytes(type, count));
}

void refused() { KorAssert::korAssert("pElements != NULL && numElements > 0", "KorArray", __LINE__); }

/// Memory for one element of that type, with the one that was made there last.
void*& spare(const KorElements& type)
{
    static auto& spares = *new std::unordered_map<const KorElements*, void*>; // outlives every array
    static std::mutex lock;
    const std::lock_guard locked(lock);
    return spares[&type];
}

} // namespace

void KorElements::copyTo(void* to, const void* from, long count) const
{
    if (copy != nullptr)
        copy(*this, to, from, count);
    else if (count > 0)
        std::memcpy(to, from, bytes(*this, count));
}

void KorElements::moveTo(void* to, void* from, long count) const
{
    if (move != nullptr)
        move(*this, to, from, count);
    else if (count > 0)
        std::memmove(to, from, bytes(*this, count));
}

void KorElements::assign(void* to, const void* from) const
{
    if (to == from)
        return;
    destroyAt(to, 1);
    copyTo(to, from, 1);
}

int KorAnyArray::append(const KorElements& type, const void* item)
{
    const long index = m_logicalLength;
    // the item may be one of this array's own, which growing moves
    const auto* start = static_cast<const std::byte*>(m_items);
    const auto* end = start + bytes(type, m_physicalLength);
    const bool own = !std::less<const void*>()(item, start) && std::less<const void*>()(item, end);
    const std::ptrdiff_t offset = own ? static_cast<const std::byte*>(item) - start : 0;
    if (index >= m_physicalLength && !growTo(type, index))
        return -1;
    type.assign(at(type, index), own ? static_cast<const std::byte*>(m_items) + offset : item);
    return m_logicalLength++;
}

void KorAnyArray::assign(const KorElements& type, const KorAnyArray& other)
{
    if (this == &other)
        return;
    clear(type);
    m_growthStep = other.m_growthStep;
    if (other.m_logicalLength == 0)
        return;
    m_items = allocate(type, other.m_logicalLength);
    if (m_items == nullptr)
        return refused();
    type.copyTo(m_items, other.m_items, other.m_logicalLength);
    m_logicalLength = m_physicalLength = other.m_logicalLength;
    m_capacity = m_physicalLength;
}

void KorAnyArray::take(const KorElements& type, KorAnyArray& other) noexcept
{
    if (this == &other)
        return;
    clear(type);
    m_growthStep = other.m_growthStep;
    if (other.m_logicalLength == 0)
        return other.clear(type);
    // for callers it looks like a copy
    type.destroyAt(other.at(type, other.m_logicalLength), other.m_physicalLength - other.m_logicalLength);
    m_items = std::exchange(other.m_items, nullptr);
    m_capacity = std::exchange(other.m_capacity, 0);
    m_logicalLength = m_physicalLength = std::exchange(other.m_logicalLength, 0);
    other.m_physicalLength = 0;
}

void KorAnyArray::clear(const KorElements& type) noexcept
{
    type.destroyAt(m_items, m_physicalLength);
    KorMemoryControllerController::deallocateArray(m_items);
    m_items = nullptr;
    m_logicalLength = 0;
    m_physicalLength = 0;
    m_capacity = 0;
}

void KorAnyArray::deleteAt(const KorElements& type, long index)
{
    if (!isValid(index))
        KorAssert::korAssert("isValid(index)", "KorArray", __LINE__);
    index = std::max(index, 0L);
    if (const long count = m_logicalLength - index - 1; count > 0) {
        void* target = at(type, index);
        type.destroyAt(target, 1);
        type.moveTo(target, at(type, index + 1), count);
        type.copyTo(at(type, index + count), at(type, index + count - 1),
                    1); // the vacated element keeps its value
    }
    setLogicalLength(type, static_cast<long>(m_logicalLength) - 1);
}

void KorAnyArray::setLogicalLength(const KorElements& type, long length)
{
    if (length < 0) {
        KorAssert::korAssert("len>=0", "KorArray", __LINE__);
        length = 0;
    }
    if (grow(type, length))
        m_logicalLength = static_cast<int>(length);
}

void KorAnyArray::setPhysicalLength(const KorElements& type, long length)
{
    if (length < 0) {
        KorAssert::korAssert("newPhysicalLen >= 0", "KorArray", __LINE__);
        return;
    }
    const long present = m_physicalLength;
    if (length <= present &&
        (length == present || static_cast<double>(length) > 0.75 * static_cast<double>(present)))
        return;
    if (length == 0)
        clear(type);
    else
        reallocate(type, length);
}

void KorAnyArray::reserve(const KorElements& type, long count)
{
    count = roundedUp(std::min<long>(count, std::numeric_limits<int>::max()));
    void* items = count > m_capacity ? allocate(type, count) : nullptr;
    if (items == nullptr)
        return;
    type.moveTo(items, m_items, m_physicalLength);
    KorMemoryControllerController::deallocateArray(m_items);
    m_items = items;
    m_capacity = count;
}

void* KorAnyArray::getInvalid(const KorElements& type, long index)
{
    KorAssert::korAssert("isValid( index )", "KorArray", __LINE__);
    if (index >= 0 && index < m_physicalLength)
        return at(type, index);
    // Handed out fresh each time, so that nothing written to it comes back.
    void*& item = spare(type);
    if (item != nullptr)
        type.destroyAt(item, 1);
    else
        item = ::operator new(type.size);
    type.make(type, item, 1);
    return item;
}

bool KorAnyArray::growTo(const KorElements& type, long index)
{
    if (index >= 0)
        return grow(type, std::min<long>(index, std::numeric_limits<int>::max()) + 1);
    KorAssert::korAssert("isValid( index )", "KorArray", __LINE__);
    return false;
}

bool KorAnyArray::grow(const KorElements& type, long length)
{
    return length <= m_physicalLength || reallocate(type, roundedUp(length));
}

/// The physical length that growing to `length` gives.
long KorAnyArray::roundedUp(long length) const noexcept
{
    const long excess = length % m_growthStep;
    return excess == 0 ? length : length + (m_growthStep - excess);
}

/// Makes `length` (above 0) the physical length: the elements in use stay as far as they fit, all others are new.
/// Storage that is large enough is kept when growing, and exceeds the physical length to make it so.
bool KorAnyArray::reallocate(const KorElements& type, long length)
{
    const long kept = std::min<long>(length, m_logicalLength);
    if (length <= m_physicalLength || length > m_capacity) {
        long capacity = length > m_physicalLength ? std::max(length, m_capacity + m_capacity / 2) : length;
        void* items = allocate(type, capacity);
        if (items == nullptr && capacity > length)
            items = allocate(type, capacity = length);
        if (items == nullptr) {
            refused();
            return false;
        }
        type.moveTo(items, m_items, kept);
        type.destroyAt(at(type, kept), m_physicalLength - kept);
        KorMemoryControllerController::deallocateArray(m_items);
        m_items = items;
        m_capacity = capacity;
    } else
        type.destroyAt(at(type, kept), m_physicalLength - kept);
    type.make(type, at(type, kept), length - kept);
    m_logicalLength = static_cast<int>(kept);
    m_physicalLength = static_cast<int>(length);
    return true;
}

void KorAnyArray::makeOnes(const KorElements& type, void* first, long count)
{
    if (count > 0)
        std::memset(first, 0xFF, bytes(type, count));
}
