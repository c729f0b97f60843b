#include "edit/KorTableEdit.h"

#include "ItemStore.h"
#include "repository/KorDatabaseAccess.h"

KorTableEdit::KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth)
    : m_depth(depth)
{
    for (const KorOdbcMan::eTableType type : types) {
        m_types.push_back(type);
        if (const int items = korodbc::itemTableType(type); items >= 0)
            m_types.push_back(static_cast<KorOdbcMan::eTableType>(items));
    }
}

int KorTableEdit::begin()
{
    KorDatabaseBatch batch;
    for (const KorOdbcMan::eTableType type : m_types)
        KorOdbcMan::setStatus(type, KorOdbcMan::eModified, m_depth);
    return batch.end(1);
}

int KorTableEdit::close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth))
{
    KorDatabaseBatch batch;
    int result = 1;
    for (const KorOdbcMan::eTableType type : m_types) {
        const int closed = transition(type, m_depth);
        if (result == 1)
            result = closed;
    }
    return batch.end(result);
}

int KorTableEdit::ok() { return close(KorOdbcMan::setStatusOnOK); }
int KorTableEdit::cancel() { return close(KorOdbcMan::setStatusOnCancel); }
int KorTableEdit::update() { return close(KorOdbcMan::setStatusOnUpdate); }
