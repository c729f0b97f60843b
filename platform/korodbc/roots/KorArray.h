#pragma once

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

/// Types whose unwritten array elements are all-one bytes (-1 for signed integers). Specialise it for a
/// trivially copyable type that wants the same.
template <class T>
struct KorFillsWithOnes : std::is_integral<T> {
};

/// How the elements of an array are made, copied, moved and destroyed, for code that does not know their type.
/// Where a function is missing, bytes are copied or moved, and nothing needs to be destroyed.
struct KorElements {
    std::size_t size; // bytes
    /// Makes elements that nothing was written to.
    void (*make)(const KorElements& type, void* first, long count);
    void (*copy)(const KorElements& type, void* to, const void* from, long count);
    /// Makes elements out of others, which are gone then; `to` lies before or outside of these.
    void (*move)(const KorElements& type, void* to, void* from, long count);
    void (*destroy)(const KorElements& type, void* first, long count);

    // The same, by bytes where the type says nothing.

    void copyTo(void* to, const void* from, long count) const;
    void moveTo(void* to, void* from, long count) const;
    void destroyAt(void* first, long count) const
    {
        if (destroy != nullptr)
            destroy(*this, first, count);
    }
    /// Replaces one element by a copy of another, or of itself.
    void assign(void* to, const void* from) const;
};

/// A `KorArray` whose element type is known only to the caller, who gives the same one with every call. Results
/// are those of the operations of the same names below. Its elements are to be destroyed with `clear`.
class KorAnyArray {
public:
    explicit constexpr KorAnyArray(int growthStep = 8) noexcept : m_growthStep(growthStep < 1 ? 1 : growthStep) {}
    KorAnyArray(const KorAnyArray&) = delete;
    KorAnyArray& operator=(const KorAnyArray&) = delete;

    int length() const noexcept { return m_logicalLength; }
    void* getAt(const KorElements& type, long index)
    {
        if (!isValid(index)) [[unlikely]]
            return getInvalid(type, index);
        return at(type, index);
    }
    int append(const KorElements& type, const void* item);
    void assign(const KorElements& type, const KorAnyArray& other);
    void deleteAt(const KorElements& type, long index);
    void setLogicalLength(const KorElements& type, long length);
    void setPhysicalLength(const KorElements& type, long length);
    void reserve(const KorElements& type, long count);
    /// Destroys the elements and gives the storage back.
    void clear(const KorElements& type) noexcept;

    /// A `KorElements::make` of all-one bytes.
    static void makeOnes(const KorElements& type, void* first, long count);

protected:
    constexpr bool isValid(long index) const noexcept { return index >= 0 && index < m_logicalLength; }
    void* at(const KorElements& type, long index) const noexcept
    {
        return static_cast<std::byte*>(m_items) + static_cast<std::size_t>(index) * type.size;
    }
    void* getInvalid(const KorElements& type, long index);
    void take(const KorElements& type, KorAnyArray& other) noexcept;
    /// Makes elements available up to the index, which was found to be none of these; false, after its assertion,
    /// when it is negative or there is no memory.
    bool growTo(const KorElements& type, long index);

    int m_logicalLength = 0;
    int m_physicalLength = 0;
    int m_growthStep;
    void* m_items = nullptr;
    long m_capacity = 0;

private:
    bool grow(const KorElements& type, long length);
    bool reallocate(const KorElements& type, long length);
    long roundedUp(long length) const noexcept;
};

/// The same for elements of a known type.
template <class T>
struct KorElementsOf {
    static void make(const KorElements&, void* first, long count)
    {
        for (T* item = static_cast<T*>(first); count > 0; --count, ++item)
            if constexpr (std::is_same_v<std::remove_cv_t<T>, bool>)
                ::new (item) T(true);
            else
                ::new (item) T();
    }
    static void copy(const KorElements&, void* to, const void* from, long count)
    {
        T* item = static_cast<T*>(to);
        for (const T* other = static_cast<const T*>(from); count > 0; --count, ++item, ++other)
            if constexpr (std::is_copy_constructible_v<T>)
                ::new (item) T(*other);
            else
                ::new (item) T();
    }
    static void move(const KorElements&, void* to, void* from, long count)
    {
        T* item = static_cast<T*>(to);
        for (T* other = static_cast<T*>(from); count > 0; --count, ++item, ++other) {
            ::new (item) T(std::move(*other));
            other->~T();
        }
    }
    static void destroy(const KorElements&, void* first, long count)
    {
        for (T* item = static_cast<T*>(first); count > 0; --count, ++item)
            item->~T();
    }
    static constexpr KorElements describe()
    {
        static_assert(alignof(T) <= alignof(std::max_align_t), "array storage is aligned for fundamental types");
        constexpr bool ones = KorFillsWithOnes<T>::value && !std::is_same_v<std::remove_cv_t<T>, bool>;
        static_assert(!ones || std::is_trivially_copyable_v<T>, "this type cannot be filled with bytes");
        KorElements type{sizeof(T), KorAnyArray::makeOnes, nullptr, nullptr, nullptr};
        if constexpr (!ones)
            type.make = make;
        if constexpr (!std::is_trivially_copyable_v<T>) {
            type.copy = copy;
            type.move = move;
        }
        if constexpr (!std::is_trivially_destructible_v<T>)
            type.destroy = destroy;
        return type;
    }
};

template <class T>
inline constexpr KorElements korElements = KorElementsOf<T>::describe();

/// Growable array that tells the elements in use (logical length) from those available (physical length).
/// Elements between the two keep what was last stored in them. Appending costs amortised constant time.
template <class T>
class KorArray : private KorAnyArray {
public:
    explicit constexpr KorArray(int growthStep = 8) noexcept : KorAnyArray(growthStep) {}
    KorArray(const KorArray& other) : KorAnyArray() { *this = other; }
    KorArray(KorArray&& other) noexcept { take(elements(), other); }
    constexpr ~KorArray()
    {
        if (m_items != nullptr)
            clear(elements());
    }

    /// Drops the own storage and takes the other's elements with a physical length of just their number.
    KorArray& operator=(const KorArray& other)
    {
        static_assert(std::is_copy_constructible_v<T>, "what cannot be copied is moved from array to array");
        assign(elements(), other);
        return *this;
    }
    KorArray& operator=(KorArray&& other) noexcept
    {
        take(elements(), other);
        return *this;
    }

    /// Number of elements in use.
    int length() const noexcept { return m_logicalLength; }
    bool isEmpty() const noexcept { return m_logicalLength == 0; }
    /// Number of elements available without growing.
    int physicalLength() const noexcept { return m_physicalLength; }
    int growthStep() const noexcept { return m_growthStep; }

    T* data() noexcept { return static_cast<T*>(m_items); }
    const T* data() const noexcept { return static_cast<const T*>(m_items); }
    T* begin() noexcept { return data(); }
    T* end() noexcept { return data() + m_logicalLength; }
    const T* begin() const noexcept { return data(); }
    const T* end() const noexcept { return data() + m_logicalLength; }

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
            return *static_cast<T*>(getInvalid(elements(), index));
        return data()[index];
    }
    const T& getAt(long index) const { return const_cast<KorArray*>(this)->getAt(index); }
    T& operator[](long index) { return getAt(index); }
    const T& operator[](long index) const { return getAt(index); }

    /// Removes an element, moving the following ones down. After the assertion for an index not in use the
    /// array still gets shorter by one: a negative index takes the first element away, one too high the last.
    void deleteAt(long index) { KorAnyArray::deleteAt(elements(), index); }

    /// Sets the number of elements in use. A negative length empties the array after its assertion.
    void setLogicalLength(long length) { KorAnyArray::setLogicalLength(elements(), length); }

    /// Sets the number of elements available. Freeing a quarter of the storage or less is not worth the work
    /// and leaves everything as it is; elements beyond a new, smaller length are lost.
    void setPhysicalLength(long length) { KorAnyArray::setPhysicalLength(elements(), length); }

    /// Makes room for that many elements, so that growing up to them moves nothing. Both lengths stay; without the
    /// memory nothing happens.
    void reserve(long count) { KorAnyArray::reserve(elements(), count); }

    /// Puts no element in use and keeps the storage.
    void removeAll() noexcept { m_logicalLength = 0; }

private:
    static constexpr const KorElements& elements() noexcept { return korElements<T>; }

    template <class Item>
    bool store(long index, Item&& item)
    {
        if (index < 0) [[unlikely]]
            return growTo(elements(), index);
        if (index < m_physicalLength)
            data()[index] = std::forward<Item>(item);
        else {
            // The item may be one of this array's own, which growing would move.
            T kept(std::forward<Item>(item));
            if (!growTo(elements(), index))
                return false;
            data()[index] = std::move(kept);
        }
        if (index >= m_logicalLength)
            m_logicalLength = static_cast<int>(index) + 1;
        return true;
    }
};
