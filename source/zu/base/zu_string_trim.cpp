#include "zu/base/zu_string_trim.h"

#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_string_trim_internal.h"

ZU_INT zu___StringLeadingBlanks( ZU_STRING *zus )
{
    const ZU_CHAR *text = zuStringBacking( zus );
    ZU_INT count = 0;
    while ( count < zus->length && zuUnicodeIsWhiteSpace( text[ count ] ) ) {
        count++;
    }
    return count;
}
ZU_INT zu___StringTrailingBlanks( ZU_STRING *zus, ZU_INT begin )
{
    const ZU_CHAR *text = zuStringBacking( zus );
    ZU_INT end = zus->length;
    while ( end > begin && zuUnicodeIsWhiteSpace( text[ end - 1 ] ) ) {
        end--;
    }
    return zus->length - end;
}

void zuStringTrim( ZU_STRING **zus )
{
    zuStringTrimLeading( zus );
    zuStringTrimTrailing( zus );
}
void zuStringTrimLeading( ZU_STRING **zus )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    zuStringDelLeading( zus, zu___StringLeadingBlanks( *zus ) );
}
void zuStringTrimTrailing( ZU_STRING **zus )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    zuStringDelTrailing( zus, zu___StringTrailingBlanks( *zus, 0 ) );
}
ZU_BOOL zuStringIsBlank( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___StringLeadingBlanks( zus ) == zus->length;
}
