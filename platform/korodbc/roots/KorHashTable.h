#pragma once

#include <korodbc/roots/KorArray.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <type_traits>
#include <utility>

/// Hash of a key; integers are mixed, so that regular gaps between keys do not crowd the buckets.
template <class Key>
struct KorHash {
    std::size_t operator()(const Key& key) const
    {
        if constexpr (std::is_integral_v<Key>) {
            std::uint64_t bits = static_cast<std::uint64_t>(key) * 0x9E3779B97F4A7C15U;
            return static_cast<std::size_t>(bits ^ (bits >> 32));
        } else
            return std::hash<Key>{}(key);
    }
};

template <class Key>
struct equalTo {
    bool operator()(const Key& left, const Key& right) const { return left == right; }
};

/// One entry of a hash table.
template <class Key, class Value>
struct KorHashTuple {
    Key key;
    Value value;
};

template <class Key, class Value>
struct KorHashNode {
    KorHashTuple<Key, Value> tuple;
    KorHashNode* next;
};

/// Map from keys to values without an order. Iterating visits the entries as `KorHashTuple`s, whose keys must
/// stay.
template <class Key, class Value, class Hash = KorHash<Key>, class Equal = equalTo<Key>>
class KorHashTable {
public:
    using Tuple = KorHashTuple<Key, Value>;
    using Node = KorHashNode<Key, Value>;

    template <class TupleType>
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Tuple;
        using difference_type = std::ptrdiff_t;
        using pointer = TupleType*;
        using reference = TupleType&;

        Iterator() = default;
        Iterator(Node* const* bucket, Node* const* last) : m_bucket(bucket), m_last(last) { skipEmpty(); }
        reference operator*() const { return m_node->tuple; }
        pointer operator->() const { return &m_node->tuple; }
        Iterator& operator++()
        {
            m_node = m_node->next;
            if (m_node == nullptr) {
                ++m_bucket;
                skipEmpty();
            }
            return *this;
        }
        Iterator operator++(int)
        {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return m_node == other.m_node; }

    private:
        void skipEmpty()
        {
            while (m_bucket != m_last && *m_bucket == nullptr)
                ++m_bucket;
            m_node = m_bucket != m_last ? *m_bucket : nullptr;
        }

        Node* const* m_bucket = nullptr;
        Node* const* m_last = nullptr;
        Node* m_node = nullptr;
    };
    using iterator = Iterator<Tuple>;
    using const_iterator = Iterator<const Tuple>;

    KorHashTable() = default;
    KorHashTable(const KorHashTable& other) { insertAll(other); }
    KorHashTable(KorHashTable&& other) noexcept { swap(other); }
    ~KorHashTable() { removeAll(); }
    KorHashTable& operator=(const KorHashTable& other)
    {
        KorHashTable(other).swap(*this);
        return *this;
    }
    KorHashTable& operator=(KorHashTable&& other) noexcept
    {
        KorHashTable(std::move(other)).swap(*this);
        return *this;
    }
    void swap(KorHashTable& other) noexcept
    {
        std::swap(m_buckets, other.m_buckets);
        std::swap(m_length, other.m_length);
    }

    /// Number of entries.
    long length() const noexcept { return m_length; }
    bool isEmpty() const noexcept { return m_length == 0; }

    /// Stores a value under a key, in place of an earlier one; without memory nothing is stored.
    void insert(const Key& key, const Value& value)
    {
        if (Value* present = find(key)) {
            *present = value;
            return;
        }
        if (m_length >= m_buckets.length())
            rehash();
        if (m_buckets.isEmpty())
            return;
        Node* node = new Node{{key, value}, nullptr};
        Node*& bucket = m_buckets[bucketOf(key)];
        node->next = bucket;
        bucket = node;
        ++m_length;
    }

    /// Whether the key exists; `value` gets its value and stays as it was otherwise.
    bool lookup(const Key& key, Value& value) const
    {
        const Value* present = find(key);
        if (present == nullptr)
            return false;
        value = *present;
        return true;
    }
    bool contains(const Key& key) const { return find(key) != nullptr; }

    /// The value of a key, nullptr when there is none; valid until the entry is removed.
    const Value* find(const Key& key) const
    {
        if (m_length == 0)
            return nullptr;
        for (Node* node = m_buckets[bucketOf(key)]; node != nullptr; node = node->next)
            if (Equal{}(node->tuple.key, key))
                return &node->tuple.value;
        return nullptr;
    }
    Value* find(const Key& key) { return const_cast<Value*>(std::as_const(*this).find(key)); }

    /// Whether there was an entry to remove.
    bool remove(const Key& key)
    {
        if (m_length == 0)
            return false;
        for (Node** link = &m_buckets[bucketOf(key)]; *link != nullptr; link = &(*link)->next)
            if (Equal{}((*link)->tuple.key, key)) {
                Node* node = *link;
                *link = node->next;
                delete node;
                --m_length;
                return true;
            }
        return false;
    }

    void removeAll() noexcept
    {
        for (Node* node : m_buckets)
            while (node != nullptr)
                delete std::exchange(node, node->next);
        m_buckets = KorArray<Node*>();
        m_length = 0;
    }

    /// Calls `callable(key, value)` for every entry.
    template <class Callable>
    void forEach(Callable&& callable) const
    {
        for (const Tuple& tuple : *this)
            callable(tuple.key, tuple.value);
    }

    iterator begin() { return {m_buckets.begin(), m_buckets.end()}; }
    iterator end() { return {m_buckets.end(), m_buckets.end()}; }
    const_iterator begin() const { return {m_buckets.begin(), m_buckets.end()}; }
    const_iterator end() const { return {m_buckets.end(), m_buckets.end()}; }

private:
    long bucketOf(const Key& key) const
    {
        return static_cast<long>(Hash{}(key) % static_cast<std::size_t>(m_buckets.length()));
    }

    void rehash()
    {
        // Odd counts let all bits of a weak hash take part.
        const long count = m_buckets.isEmpty() ? 17 : 2L * m_buckets.length() + 1;
        KorArray<Node*> before;
        before.setLogicalLength(count);
        if (before.isEmpty())
            return;
        std::swap(before, m_buckets);
        for (Node* node : before)
            while (node != nullptr) {
                Node* next = node->next;
                Node*& bucket = m_buckets[bucketOf(node->tuple.key)];
                node->next = bucket;
                bucket = node;
                node = next;
            }
    }

    void insertAll(const KorHashTable& other)
    {
        for (const Tuple& tuple : other)
            insert(tuple.key, tuple.value);
    }

    KorArray<Node*> m_buckets;
    long m_length = 0;
};
