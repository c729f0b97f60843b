#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>

/// Redirects all record reads and writes to one data source and add-in slot until it is destroyed. Requests nest;
/// the end of each brings back what was current when it began.
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

/// The data source and add-in slot that reads and writes go to.
class KorDSNManager {
public:
    static KorDSNManager& getInstance();

    eDSN getCurrentDSN() const { return m_dsn; }
    eIndex getCurrentIndex() const { return m_index; }
    /// Makes a data source current outside any request.
    void setCurrent(eDSN dsn, eIndex index);
    /// Slot of the country add-in at that position among the installed ones, counted from 0.
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
    /// Add-in slot of the current drawing's project data.
    static eIndex GeteIndexForDwg();
    static void SeteIndexForDwg(eIndex index);
};
