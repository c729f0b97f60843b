#include "edit/KorTableEdit.h"

#include "DetailTables.h"
#include "ItemStore.h"
#include "ManagerDatabase.h"
#include "repository/KorDatabaseAccess.h"

using namespace korodbc;

KorTableEdit::KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth)
    : m_depth(depth)
{
    for (const KorOdbcMan::eTableType type : types) {
        m_tables.push_back({type, false});
        if (const int items = itemTableType(type); items >= 0) {
            const auto itemType = static_cast<KorOdbcMan::eTableType>(items);
            // a dialog around this one closes its own
            m_tables.push_back({itemType, depth != KorOdbcMan::kFirstCopy && itemsAreCopiedAtFirstDepth(type) &&
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
    }
    return batch.end(1);
}

int KorTableEdit::close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth),
                        int (*deeper)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth))
{
    KorDatabaseBatch batch;
    int result = 1;
    const auto take = [&](int closed) {
        if (result == 1)
            result = closed;
    };
    for (const Table& table : m_tables) {
        for (int depth = KorOdbcMan::kFourthCopy; depth > m_depth; --depth)
            if (KorOdbcMan::isOpenAnywhere(table.type, static_cast<KorOdbcMan::eCopyDepth>(depth)))
                take(deeper(table.type, static_cast<KorOdbcMan::eCopyDepth>(depth)));
        take(transition(table.type, m_depth));
        if (table.alsoFirst)
            take(transition(table.type, KorOdbcMan::kFirstCopy));
    }
    // a copy that is not there keeps nothing open; a statement that failed keeps everything
    return result == 0 ? batch.undo(0) : batch.end(result);
}

int KorTableEdit::ok() { return close(KorOdbcMan::setStatusOnOK, KorOdbcMan::setStatusOnOK); }
int KorTableEdit::cancel() { return close(KorOdbcMan::setStatusOnCancel, KorOdbcMan::setStatusOnCancel); }
int KorTableEdit::update() { return close(KorOdbcMan::setStatusOnUpdate, KorOdbcMan::setStatusOnOK); }
