#pragma once

#include "edit/KorOdbcMan.h"

#include <initializer_list>
#include <vector>

/// The edits of one dialog over several detail tables, closed together: in each database all of them or none, also
/// when the process dies while closing. Tables of items are taken along with the tables of their owners.
class KorTableEdit {
public:
    KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth);

    /// Takes the copies of all tables in the current database now; otherwise each is taken with its first edit.
    /// Tables of items need this before records with items are stored.
    int begin();
    /// Each returns 1, or the first result other than 1; the edit is over, or with update goes on.
    int ok();
    int cancel();
    int update();

private:
    int close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth));

    std::vector<KorOdbcMan::eTableType> m_types;
    KorOdbcMan::eCopyDepth m_depth;
};
