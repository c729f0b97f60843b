#pragma once

#include "catalogues/KorDetailDimensionCatalogue.h"
#include "catalogues/KorDetailObjectCatalogue.h"
#include "catalogues/KorDetailOptionCatalogue.h"
#include "catalogues/KorDetailStyleCatalogue.h"

/// The detail catalogue as the detail-style editors read it.
class KorDetailCatalogue : public KorDetailStyleCatalogue,
                           public KorDetailObjectCatalogue,
                           public KorDetailDimensionCatalogue,
                           public KorDetailOptionCatalogue {};
