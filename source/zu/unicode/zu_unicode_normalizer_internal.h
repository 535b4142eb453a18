// zu_unicode_normalizer_internal.h: the quick check, for who has whole texts.
#pragma once

#include "zu/unicode/zu_unicode_normal_form.h"

ZU_BEGIN_DECLS

// Returns how many characters at the front are found to be in the form without changing anything.  If that is
// `chsLength`, the text is in the form; a text that is may get less.
ZU_INT zu___UnicodeNormalizerSettledLength( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chs, ZU_INT chsLength );

ZU_END_DECLS
