#pragma once

#include "lookup/KorOdbcAutoConnection.h"
#include "lookup/KorOdbcSteelBolts.h"
#include "lookup/KorOdbcSteelCatalogues.h"
#include "lookup/KorOdbcSteelPlates.h"
#include "lookup/KorOdbcSteelRules.h"
#include "lookup/KorOdbcSteelSections.h"
#include "lookup/KorOdbcSteelStatics.h"
#include "lookup/KorOdbcSteelWelding.h"
#include "lookup/KorOdbcUserTables.h"
#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

using Names = KorArray<KorString>;

inline Texts texts(const Names& names)
{
    Texts list;
    for (const KorString& name : names)
        list.push_back(name.toUtf8());
    return list;
}
