#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>

/// A request: makes a data source and slot current until it is destroyed. Requests nest; the end of each brings
/// back what was current when it began, so they are destroyed in the reverse order. Threads: one.
class KorDSNRequest {
public:
    KorDSNRequest(eDSN dsn, eIndex index);
    virtual ~KorDSNRequest();
    KorDSNRequest(const KorDSNRequest&) = delete;
    KorDSNRequest& operator=(const KorDSNRequest&) = delete;

private:
    eDSN m_previousDSN;
    eIndex m_previousIndex;
};

/// Which data source is current, and in which slot: reads that name none go there. At first, and when a repository
/// was opened or closed, it is the base details. Threads: one.
class KorDSNManager {
public:
    static KorDSNManager& getInstance();

    eDSN getCurrentDSN() const { return m_dsn; }
    eIndex getCurrentIndex() const { return m_index; }
    /// Makes a data source current; to be called outside requests, which would take that back.
    void setCurrent(eDSN dsn, eIndex index);
    /// Slot of the country add-in at that position among the installed ones, counted from 0, whether
    /// there is one or not.
    static eIndex getAddInIdx(int position);
    /// Position of the country add-in in that slot; -1 for the base slot.
    static int getAddInIdx(eIndex index);
    /// True inside a KorDSNRequest.
    bool isRequested() const { return m_requests > 0; }

private:
    friend class KorDSNRequest;
    eDSN m_dsn = KorDSNDefinitions::kDetails;
    eIndex m_index = KorDSNDefinitions::kBase;
    int m_requests = 0;
};

class KorDSNSetDwgSource {
public:
    /// Slot of the current drawing in `kProject`; the base slot at first.
    static eIndex GeteIndexForDwg();
    static void SeteIndexForDwg(eIndex index);
};
