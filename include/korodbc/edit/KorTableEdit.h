#pragma once

#include <korodbc/edit/KorOdbcMan.h>

#include <initializer_list>
#include <vector>

/// The edits of one dialog over several detail tables, closed together: in each database all of them or none, also
/// when the process dies while closing. Tables of items are taken along with the tables of their owners. What is
/// still open at deeper depths is closed first, in the same way.
class KorTableEdit {
public:
    KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth);

    /// Takes the copies of all tables in the current database now; otherwise each is taken with its first edit.
    /// Tables of items need this before records with items are stored. 0, with nothing taken, when one of the
    /// tables cannot be edited: another program edits it, or it does not fit its records.
    int begin();
    /// Each returns 1, or the first result other than 1; the edit is over, or with update goes on.
    int ok();
    int cancel();
    int update();

private:
    int close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth),
              int (*deeper)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth));

    struct Table {
        KorOdbcMan::eTableType type;
        bool alsoFirst; // the store takes the copy of these items at the first depth, whatever the dialog's
    };
    std::vector<Table> m_tables;
    KorOdbcMan::eCopyDepth m_depth;
};
