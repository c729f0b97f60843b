#include "DetailTables.h"
#include "foundation/ManagerDatabase.h"

#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/repository/KorDatabaseAccess.h>

using namespace korodbc;

KorTableEdit::KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth)
    : m_depth(depth)
{
    for (const KorOdbcMan::eTableType type : types) {
        m_tables.push_back({type, false});
        if (const int items = itemTableType(type); items >= 0) {
            const auto itemType = static_cast<KorOdbcMan::eTableType>(items);
            // an edit around this one closes its own
            m_tables.push_back({itemType, depth != KorOdbcMan::kFirstCopy && detailTable(type).itemsAtFirstDepth &&
                                              !KorOdbcMan::isOpen(itemType, KorOdbcMan::kFirstCopy)});
        }
    }
}

int KorTableEdit::begin()
{
    const ManagerDatabase database;
    KorDatabaseBatch batch;
    for (const Table& table : m_tables) {
        if (KorDatabaseAccess::checkTable(KorOdbcMan::m_currentDSN, detailTable(table.type).description(), true) !=
            1)
            return batch.undo(0);
        KorOdbcMan::setStatus(table.type, KorOdbcMan::eModified, m_depth);
        if (!KorOdbcMan::canCancel(table.type, m_depth))
            return batch.undo(0);
    }
    return batch.end(1);
}

int KorTableEdit::close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth),
                        int (*deeper)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth))
{
    KorDatabaseBatch batch;
    int result = 1;
    bool stuck = false; // a copy that was never taken keeps nothing open, one that could not be closed does
    const auto take = [&](int (*how)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth), KorOdbcMan::eTableType type,
                          KorOdbcMan::eCopyDepth depth) {
        const int closed = how(type, depth);
        if (result == 1)
            result = closed;
        stuck = stuck || (closed == 0 && KorOdbcMan::isOpenAnywhere(type, depth));
    };
    for (const Table& table : m_tables) {
        for (int number = KorOdbcMan::kFourthCopy; number > m_depth; --number) {
            const auto depth = static_cast<KorOdbcMan::eCopyDepth>(number);
            if (KorOdbcMan::isOpenAnywhere(table.type, depth))
                take(deeper, table.type, depth);
        }
        take(transition, table.type, m_depth);
        if (table.alsoFirst)
            take(transition, table.type, KorOdbcMan::kFirstCopy);
    }
    return stuck ? batch.undo(result) : batch.end(result);
}

int KorTableEdit::ok() { return close(KorOdbcMan::setStatusOnOK, KorOdbcMan::setStatusOnOK); }
int KorTableEdit::cancel() { return close(KorOdbcMan::setStatusOnCancel, KorOdbcMan::setStatusOnCancel); }
int KorTableEdit::update() { return close(KorOdbcMan::setStatusOnUpdate, KorOdbcMan::setStatusOnOK); }
