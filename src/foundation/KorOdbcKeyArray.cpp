#include <korodbc/foundation/KorOdbcKeyArray.h>
#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KorMemoryControllerController.h>

#include <memory>

namespace {

KorArray<KorOdbcKey>* newItems()
{
    void* storage = KorMemoryControllerController::allocateArray(sizeof(KorArray<KorOdbcKey>));
    return storage == nullptr ? nullptr : new (storage) KorArray<KorOdbcKey>;
}

} // namespace

KorOdbcKeyArray::KorOdbcKeyArray() : m_pItems(newItems()) {}

KorOdbcKeyArray::KorOdbcKeyArray(const KorOdbcKeyArray& other) : KorOdbcKeyArray() { *this = other; }

KorOdbcKeyArray::~KorOdbcKeyArray()
{
    if (m_pItems == nullptr)
        return;
    std::destroy_at(m_pItems);
    KorMemoryControllerController::deallocateArray(m_pItems);
}

KorOdbcKeyArray& KorOdbcKeyArray::operator=(const KorOdbcKeyArray& other)
{
    if (this != &other && m_pItems != nullptr && other.m_pItems != nullptr)
        *m_pItems = *other.m_pItems;
    return *this;
}

long KorOdbcKeyArray::length() const { return m_pItems == nullptr ? 0 : m_pItems->length(); }

long KorOdbcKeyArray::physicalLength() const { return m_pItems == nullptr ? 0 : m_pItems->physicalLength(); }

long KorOdbcKeyArray::append(const KorOdbcKey& key) { return m_pItems == nullptr ? -1 : m_pItems->append(key); }

void KorOdbcKeyArray::setAt(long index, const KorOdbcKey& key)
{
    if (m_pItems != nullptr)
        m_pItems->setAt(index, key);
}

KorOdbcKey& KorOdbcKeyArray::getAt(long index)
{
    if (m_pItems != nullptr)
        return m_pItems->getAt(index);
    KorAssert::korAssert("m_pItems!=NULL", "KorOdbcKeyArray", __LINE__);
    static KorOdbcKey none;
    return none = KorOdbcKey();
}

const KorOdbcKey& KorOdbcKeyArray::getAt(long index) const
{
    return const_cast<KorOdbcKeyArray*>(this)->getAt(index);
}

void KorOdbcKeyArray::deleteAt(long index)
{
    if (m_pItems != nullptr)
        m_pItems->deleteAt(index);
}

void KorOdbcKeyArray::setLogicalLength(long length)
{
    if (m_pItems != nullptr)
        m_pItems->setLogicalLength(length);
}
