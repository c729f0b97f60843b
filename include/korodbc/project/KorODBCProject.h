#pragma once

#include <korodbc/project/KorProjectDatabase.h>

/// The project records of the current drawing.
class KorODBCProject : public KorProjectDatabase<KorODBCProject> {
public:
    static eDSN dsn() { return KorDSNDefinitions::kProject; }
    static eIndex index() { return KorDSNSetDwgSource::GeteIndexForDwg(); }

    /// See KorODBCProjectIntern.
    static int getTemplateKeyList(KorArray<long>& keys)
    {
        return KorODBCProjectIntern::getTemplateKeyList(keys, index(), dsn());
    }
    /// Deletes every application that has no extracts. Returns the number of applications whose deletion did not
    /// give 0, so that those with extracts, which stay, are counted, too.
    static int deleteModelSelectionApplications();
    /// Deletes every extract. Returns the number of calls whose result was not 0.
    static int deleteModelExtracts();
};
