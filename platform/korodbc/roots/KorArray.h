#pragma once

#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KorMemoryControllerController.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Types whose unwritten array elements are all-one bytes (-1 for signed integers). Specialise it for a
/// trivially copyable type that wants the same.
template <class T>
struct KorFillsWithOnes : std::is_integral<T> {
};

/// Growable array that tells the elements in use (logical length) from those available (physical length).
/// Elements between the two keep what was last stored in them. Appending costs amortised constant time.
template <class T>
class KorArray {
public:
    explicit KorArray(int growthStep = 8) noexcept : m_growthStep(std::max(growthStep, 1)) {}
    KorArray(const KorArray& other) : KorArray(other.m_growthStep) { *this = other; }
    KorArray(KorArray&& other) noexcept : KorArray(other.m_growthStep) { take(other); }
    ~KorArray() { freeStorage(); }

    /// Drops the own storage and takes the other's elements with a physical length of just their number.
    KorArray& operator=(const KorArray& other)
    {
        if (this == &other)
            return *this;
        freeStorage();
        m_growthStep = other.m_growthStep;
        if (other.m_logicalLength == 0)
            return *this;
        m_pItems = allocate(other.m_logicalLength);
        if (m_pItems == nullptr) {
            refused();
            return *this;
        }
        std::uninitialized_copy(other.begin(), other.end(), m_pItems);
        m_logicalLength = m_physicalLength = other.m_logicalLength;
        m_capacity = m_physicalLength;
        return *this;
    }
    KorArray& operator=(KorArray&& other) noexcept
    {
        if (this != &other) {
            freeStorage();
            take(other);
        }
        return *this;
    }

    /// Number of elements in use.
    int length() const noexcept { return m_logicalLength; }
    bool isEmpty() const noexcept { return m_logicalLength == 0; }
    /// Number of elements available without growing.
    int physicalLength() const noexcept { return m_physicalLength; }
    int growthStep() const noexcept { return m_growthStep; }

    T* data() noexcept { return m_pItems; }
    const T* data() const noexcept { return m_pItems; }
    T* begin() noexcept { return m_pItems; }
    T* end() noexcept { return m_pItems + m_logicalLength; }
    const T* begin() const noexcept { return m_pItems; }
    const T* end() const noexcept { return m_pItems + m_logicalLength; }

    /// Stores an element behind the last one. Returns its index, -1 when there is no memory.
    int append(const T& item) { return store(m_logicalLength, item) ? m_logicalLength - 1 : -1; }
    int append(T&& item) { return store(m_logicalLength, std::move(item)) ? m_logicalLength - 1 : -1; }

    /// Overwrites an element, or grows the array up to the index first. A negative index stores nothing.
    void setAt(long index, const T& item) { store(index, item); }
    void setAt(long index, T&& item) { store(index, std::move(item)); }

    /// Reference to an element. After the assertion for an index not in use the reference is to an unused
    /// element of the storage, or, when the index lies outside that as well, to a spare one that belongs to
    /// no array.
    T& getAt(long index)
    {
        if (!isValid(index)) [[unlikely]]
            return getInvalid(index);
        return m_pItems[index];
    }
    const T& getAt(long index) const { return const_cast<KorArray*>(this)->getAt(index); }
    T& operator[](long index) { return getAt(index); }
    const T& operator[](long index) const { return getAt(index); }

    /// Removes an element, moving the following ones down. After the assertion for an index not in use the
    /// array still gets shorter by one: a negative index takes the first element away, one too high the last.
    void deleteAt(long index)
    {
        if (!isValid(index))
            KorAssert::korAssert("isValid(index)", "KorArray", __LINE__);
        moveDown(std::max(index, 0L));
        setLogicalLength(static_cast<long>(m_logicalLength) - 1);
    }

    /// Sets the number of elements in use. A negative length empties the array after its assertion.
    void setLogicalLength(long length)
    {
        if (length < 0) {
            KorAssert::korAssert("len>=0", "KorArray", __LINE__);
            length = 0;
        }
        if (grow(length))
            m_logicalLength = static_cast<int>(length);
    }

    /// Sets the number of elements available. Freeing a quarter of the storage or less is not worth the work
    /// and leaves everything as it is; elements beyond a new, smaller length are lost.
    void setPhysicalLength(long length)
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
            freeStorage();
        else
            reallocate(length);
    }

    /// Makes room for that many elements, so that growing up to them moves nothing. Both lengths stay; without the
    /// memory nothing happens.
    void reserve(long count)
    {
        count = roundedUp(std::min<long>(count, std::numeric_limits<int>::max()));
        T* pElements = count > m_capacity ? allocate(count) : nullptr;
        if (pElements == nullptr)
            return;
        const int logicalLength = m_logicalLength, physicalLength = m_physicalLength;
        std::uninitialized_move(m_pItems, m_pItems + physicalLength, pElements);
        freeStorage();
        m_pItems = pElements;
        m_logicalLength = logicalLength;
        m_physicalLength = physicalLength;
        m_capacity = count;
    }

    /// Puts no element in use and keeps the storage.
    void removeAll() noexcept { m_logicalLength = 0; }

private:
    bool isValid(long index) const noexcept { return index >= 0 && index < m_logicalLength; }

    T& getInvalid(long index)
    {
        KorAssert::korAssert("isValid( index )", "KorArray", __LINE__);
        if (index >= 0 && index < m_physicalLength)
            return m_pItems[index];
        // Handed out fresh each time, so that nothing written to it comes back.
        alignas(T) static std::byte spare[sizeof(T)];
        static bool used = false;
        T* item = reinterpret_cast<T*>(spare);
        if (std::exchange(used, true))
            std::destroy_at(item);
        fill(item, item + 1);
        return *std::launder(item);
    }

    template <class Item>
    bool store(long index, Item&& item)
    {
        if (index < 0) [[unlikely]] {
            KorAssert::korAssert("isValid( index )", "KorArray", __LINE__);
            return false;
        }
        if (index < m_physicalLength)
            m_pItems[index] = std::forward<Item>(item);
        else {
            // The item may be one of this array's own, which growing would move.
            T kept(std::forward<Item>(item));
            if (!grow(std::min<long>(index, std::numeric_limits<int>::max()) + 1))
                return false;
            m_pItems[index] = std::move(kept);
        }
        if (index >= m_logicalLength)
            m_logicalLength = static_cast<int>(index) + 1;
        return true;
    }

    bool grow(long length)
    {
        if (length <= m_physicalLength)
            return true;
        return reallocate(roundedUp(length));
    }

    /// The physical length that growing to `length` gives.
    long roundedUp(long length) const noexcept
    {
        const long excess = length % m_growthStep;
        return excess == 0 ? length : length + (m_growthStep - excess);
    }

    /// Makes `length` (above 0) the physical length: the elements in use stay as far as they fit, all others
    /// are new. Storage that is large enough is kept when growing, and exceeds the physical length to make it
    /// so.
    bool reallocate(long length)
    {
        const int kept = static_cast<int>(std::min<long>(length, m_logicalLength));
        if (length > m_physicalLength && length <= m_capacity) {
            std::destroy(m_pItems + kept, m_pItems + m_physicalLength);
            fill(m_pItems + kept, m_pItems + length);
            m_physicalLength = static_cast<int>(length);
            return true;
        }
        long capacity = length > m_physicalLength ? std::max(length, m_capacity + m_capacity / 2) : length;
        T* pElements = allocate(capacity);
        if (pElements == nullptr && capacity > length)
            pElements = allocate(capacity = length);
        if (pElements == nullptr) {
            refused();
            return false;
        }
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (kept > 0)
                std::memcpy(static_cast<void*>(pElements), m_pItems, static_cast<std::size_t>(kept) * sizeof(T));
        } else
            std::uninitialized_move(m_pItems, m_pItems + kept, pElements);
        fill(pElements + kept, pElements + length);
        freeStorage();
        m_pItems = pElements;
        m_logicalLength = kept;
        m_physicalLength = static_cast<int>(length);
        m_capacity = capacity;
        return true;
    }

    static void refused() { KorAssert::korAssert("pElements != NULL && numElements > 0", "KorArray", __LINE__); }

    static T* allocate(long count) noexcept
    {
        static_assert(alignof(T) <= alignof(std::max_align_t), "array storage is aligned for fundamental types");
        if (count > std::numeric_limits<int>::max())
            return nullptr;
        return static_cast<T*>(
            KorMemoryControllerController::allocateArray(static_cast<std::size_t>(count) * sizeof(T)));
    }

    static void fill(T* first, T* last)
    {
        if constexpr (std::is_same_v<std::remove_cv_t<T>, bool>)
            std::uninitialized_fill(first, last, true);
        else if constexpr (KorFillsWithOnes<T>::value) {
            static_assert(std::is_trivially_copyable_v<T>, "this type cannot be filled with bytes");
            if (first != last)
                std::memset(static_cast<void*>(first), 0xFF, static_cast<std::size_t>(last - first) * sizeof(T));
        } else
            std::uninitialized_value_construct(first, last);
    }

    void moveDown(long index)
    {
        const long count = m_logicalLength - index - 1;
        if (count <= 0)
            return;
        T* target = m_pItems + index;
        if constexpr (std::is_trivially_copyable_v<T>)
            std::memmove(static_cast<void*>(target), target + 1, static_cast<std::size_t>(count) * sizeof(T));
        else {
            std::move(target + 1, target + count, target);
            // The vacated element keeps its value.
            if constexpr (std::is_copy_assignable_v<T>)
                target[count - 1] = std::as_const(target[count]);
            else
                target[count - 1] = std::move(target[count]);
        }
    }

    /// Takes the other's elements; for callers it looks like a copy of them.
    void take(KorArray& other) noexcept
    {
        if (other.m_logicalLength == 0)
            other.freeStorage();
        std::destroy(other.m_pItems + other.m_logicalLength, other.m_pItems + other.m_physicalLength);
        m_growthStep = other.m_growthStep;
        m_pItems = std::exchange(other.m_pItems, nullptr);
        m_capacity = std::exchange(other.m_capacity, 0);
        m_logicalLength = std::exchange(other.m_logicalLength, 0);
        m_physicalLength = m_logicalLength;
        other.m_physicalLength = 0;
    }

    void freeStorage() noexcept
    {
        std::destroy(m_pItems, m_pItems + m_physicalLength);
        KorMemoryControllerController::deallocateArray(m_pItems);
        m_pItems = nullptr;
        m_logicalLength = 0;
        m_physicalLength = 0;
        m_capacity = 0;
    }

    int m_logicalLength = 0;
    int m_physicalLength = 0;
    int m_growthStep;
    T* m_pItems = nullptr;
    long m_capacity = 0;
};
