#pragma once

#include <korodbc/edit/KorOdbcMan.h>

#include <initializer_list>
#include <vector>

/// One edit of several detail tables, closed together: in each database all of them or none, also when the program
/// ends while closing. Item tables go with the tables of their records. What is still open at deeper depths is
/// closed first, in the same way. Destroying the object closes nothing.
/// Threads: one. Needs: what KorOdbcMan needs.
class KorTableEdit {
public:
    KorTableEdit(std::initializer_list<KorOdbcMan::eTableType> types, KorOdbcMan::eCopyDepth depth);

    /// Takes the copies of all tables in the manager's database now; otherwise each is taken with its first write.
    /// Item tables need this before records with items are stored. 0, with nothing taken, when one of the tables
    /// cannot be edited: another program edits it, or it does not fit its records.
    int begin();
    /// OK, Cancel, Update, in every database. Each returns 1, or the first result other than 1. The edit is over;
    /// with update it goes on, and so it does, with nothing closed, when a database refuses to close a copy.
    int ok();
    int cancel();
    int update();

private:
    int close(int (*transition)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth),
              int (*deeper)(KorOdbcMan::eTableType, KorOdbcMan::eCopyDepth));

    struct Table {
        KorOdbcMan::eTableType type;
        bool alsoFirst; // the store takes the copy of these items at the first depth, whatever the edit's
    };
    std::vector<Table> m_tables;
    KorOdbcMan::eCopyDepth m_depth;
};
