#pragma once

#include "Session.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDSNManager.h>

/// The database that the manager edits and the service reads, while this object lives.
class CurrentDatabase {
public:
    explicit CurrentDatabase(const Source& source)
        : m_dsn(KorOdbcMan::getCurrentDSN()), m_addIn(KorOdbcMan::getCurrentAddIn()),
          m_request(source.dsn, source.index)
    {
        KorOdbcMan::setCurrentDSN(source.dsn);
        KorOdbcMan::setCurrentAddIn(source.index);
    }
    ~CurrentDatabase()
    {
        KorOdbcMan::setCurrentDSN(m_dsn);
        KorOdbcMan::setCurrentAddIn(m_addIn);
    }
    CurrentDatabase(const CurrentDatabase&) = delete;
    CurrentDatabase& operator=(const CurrentDatabase&) = delete;

private:
    eDSN m_dsn;
    eIndex m_addIn;
    KorDSNRequest m_request;
};
