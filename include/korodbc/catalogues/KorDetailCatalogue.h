#pragma once

#include <korodbc/catalogues/KorDetailDimensionCatalogue.h>
#include <korodbc/catalogues/KorDetailObjectCatalogue.h>
#include <korodbc/catalogues/KorDetailOptionCatalogue.h>
#include <korodbc/catalogues/KorDetailStyleCatalogue.h>

/// The detail catalogue as the detail-style editors read it.
class KorDetailCatalogue : public KorDetailStyleCatalogue,
                           public KorDetailObjectCatalogue,
                           public KorDetailDimensionCatalogue,
                           public KorDetailOptionCatalogue {};
