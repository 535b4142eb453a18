// zu_string_normalize.h: strings in normalization forms, and clean code points.
//
// A string that a quick look finds to be as it shall be already is left alone, and stays shared.  One that holds
// characters of which only the ones around them decide is normalized, and may be replaced by an equal object.
// Normalizing an empty one gives the shared empty string.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Normalization forms of the Unicode Standard (UAX #15), by a ZU_UNICODE_NORMALIZER; lone surrogates vanish, pairs are
// joined
/// Brings the text into the form NFC: canonically composed.
ZU_API void zuStringNormalizeNFC( ZU_STRING **zus );
/// Brings the text into the form NFD: canonically decomposed.
ZU_API void zuStringNormalizeNFD( ZU_STRING **zus );
/// Brings the text into the form NFKC: compatible characters replaced, then canonically composed.
ZU_API void zuStringNormalizeNFKC( ZU_STRING **zus );
/// Brings the text into the form NFKD: compatible characters replaced, all decomposed.
ZU_API void zuStringNormalizeNFKD( ZU_STRING **zus );

/// Joins surrogate pairs and drops lone surrogates, as zuCharsSanitize does.  The storage that gets free is not counted
/// as room for later additions.
ZU_API void zuStringSanitize( ZU_STRING **zus );

ZU_END_DECLS
