#pragma once

#include "transfer/KorDetailDimensionCatalogue.h"
#include "transfer/KorDetailObjectCatalogue.h"
#include "transfer/KorDetailOptionCatalogue.h"
#include "transfer/KorDetailStyleCatalogue.h"

/// The detail catalogue as the detail-style editors read it.
class KorDetailCatalogue : public KorDetailStyleCatalogue,
                           public KorDetailObjectCatalogue,
                           public KorDetailDimensionCatalogue,
                           public KorDetailOptionCatalogue {};
