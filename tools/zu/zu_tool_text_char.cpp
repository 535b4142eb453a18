// zu text --char: all that the Unicode Character Database says of a code point, and how it is encoded.
//
// A description is a list of properties, each with the form for a reader and the one for a program; what a code point
// does not have is not on it.

#include "zu_tool.h"

#include <algorithm>

static constexpr int LABEL_WIDTH = 23;

struct PROPERTY {
    const char *label;
    const char *key;
    TEXT text;  // for a reader
    TEXT value; // for a program; empty: it is the number, or with isTrue the truth value
    ZU_INT number = 0;
    bool isTrue = false;
};
using PROPERTIES = std::vector<PROPERTY>;

static void addText( PROPERTIES *list, const char *label, const char *key, const TEXT &text )
{
    list->push_back( { label, key, text, text } );
}
static void addNumber( PROPERTIES *list, const char *label, const char *key, ZU_INT number, const TEXT &text )
{
    list->push_back( { label, key, text, nullptr, number } );
}
static void addTrue( PROPERTIES *list, const char *label, const char *key, bool holds )
{
    if ( holds ) {
        list->push_back( { label, key, zu::text( "yes" ), nullptr, 0, true } );
    }
}

// "U+0065 U+0301"
static TEXT codesOf( const ZU_CHAR *chars, ZU_INT length )
{
    TEXT codes = zu::adopt( zuStringCreate() );
    for ( ZU_INT i = 0; i < length; i++ ) {
        zu::appendFormat( codes.inOut(), zu::runtime( i > 0 ? " U+%^04X" : "U+%^04X" ), chars[ i ] );
    }
    return codes;
}
static TEXT codesOf( const TEXT &text )
{
    return codesOf( zuStringBacking( text.get() ), zuStringLength( text.get() ) );
}
// What a function makes of the code point alone; empty if that is itself
static TEXT codesAfter( ZU_CHAR ch, void ( *change )( ZU_STRING **zus ) )
{
    TEXT text = zu::adopt( zuStringCreateFromCharsCopy( &ch, 1 ) );
    change( text.inOut() );
    bool isSame = zuStringLength( text.get() ) == 1 && zuStringCharAt( text.get(), 0 ) == ch;
    return isSame ? nullptr : codesOf( text );
}

static void addValues( PROPERTIES *list, ZU_CHAR ch )
{
    ZU_UNICODE_GENC genc = zuUnicodeGenc( ch );
    TEXT abbreviation = zu::adopt( zuUnicodeGencAbbreviation( genc ) );
    list->push_back( { "General category", "generalCategory",
                       zu::format( "%s, %~s", abbreviation, zuUnicodeGencDescription( genc ) ), abbreviation } );
    addText( list, "Script", "script", zu::adopt( zuUnicodeScriptName( zuUnicodeScript( ch ) ) ) );
    ZU_UNICODE_CCCV cccv = zuUnicodeCccv( ch );
    addNumber( list, "Combining class", "combiningClass", cccv,
               zu::format( "%i, %~s", cccv, zuUnicodeCccvDescription( cccv ) ) );
    ZU_INT decimal = zuUnicodeDecimalDigitValue( ch );
    if ( decimal >= 0 ) {
        addNumber( list, "Decimal digit", "decimalDigit", decimal, zu::format( "%i", decimal ) );
    }
    ZU_INT hexadecimal = zuUnicodeHexadecimalDigitValue( ch );
    if ( hexadecimal >= 0 ) {
        addNumber( list, "Hexadecimal digit", "hexadecimalDigit", hexadecimal, zu::format( "%i", hexadecimal ) );
    }
    addTrue( list, "White space", "whiteSpace", zuUnicodeIsWhiteSpace( ch ) );
    addTrue( list, "Ends a line", "newlineFunction", zuUnicodeIsNlf( ch ) );
}
static void addMappings( PROPERTIES *list, ZU_CHAR ch )
{
    ZU_INT length = 0;
    ZU_UNICODE_CDMT tag = ZU_UNICODE_CDMT_NONE;
    if ( const ZU_CHAR *mapping = zu___UnicodeCdmDbLookup( ch, &length, &tag ) ) {
        TEXT codes = codesOf( mapping, length );
        addText( list, "Decomposition", "decomposition",
                 tag == ZU_UNICODE_CDMT_CANONICAL ? codes : zu::format( "%~s %s", zuUnicodeCdmtTag( tag ), codes ) );
        addText( list, "Kind of decomposition", "decompositionKind", zu::adopt( zuUnicodeCdmtDescription( tag ) ) );
    }
    static constexpr struct {
        const char *label;
        const char *key;
        void ( *change )( ZU_STRING **zus );
    } CHANGES[] = {
        { "NFC", "NFC", zuStringNormalizeNFC },
        { "NFD", "NFD", zuStringNormalizeNFD },
        { "NFKC", "NFKC", zuStringNormalizeNFKC },
        { "NFKD", "NFKD", zuStringNormalizeNFKD },
        { "Lower case", "lowerCase", zuStringToLower },
        { "Upper case", "upperCase", zuStringToUpper },
        { "Case folding", "caseFolding", zuStringToCaseFold },
    };
    for ( const auto &each : CHANGES ) {
        if ( TEXT codes = codesAfter( ch, each.change ) ) {
            addText( list, each.label, each.key, codes );
        }
    }
}
// Half a surrogate pair has no encoding, and normalization drops it.
static void addEncodings( PROPERTIES *list, ZU_CHAR ch )
{
    TEXT text = zu::adopt( zuStringCreateFromCharsCopy( &ch, 1 ) );
    TEXT bytes = zu::adopt( zuStringCreate() );
    for ( char byte : zu::toUtf8( text ) ) {
        zu::appendFormat( bytes.inOut(), "%02X ", (uint8_t)byte );
    }
    TEXT units = zu::adopt( zuStringCreate() );
    for ( char16_t unit : zu::toUtf16( text ) ) {
        zu::appendFormat( units.inOut(), "%04X ", unit );
    }
    zuStringTrimTrailing( bytes.inOut() );
    zuStringTrimTrailing( units.inOut() );
    zuStringToUpper( bytes.inOut() );
    zuStringToUpper( units.inOut() );
    addText( list, "UTF-8", "utf8", bytes );
    addText( list, "UTF-16", "utf16", units );
}
static PROPERTIES describe( ZU_CHAR ch )
{
    PROPERTIES list;
    addValues( &list, ch );
    if ( !zuUnicodeIsOtherSurrogate( ch ) ) {
        addMappings( &list, ch );
        addEncodings( &list, ch );
    }
    return list;
}

static void printDescription( ZU_CHAR ch )
{
    TEXT heading = codesOf( &ch, 1 );
    bool shows = !zuUnicodeIsOther( ch ) && !zuUnicodeIsSeparator( ch );
    toolPrintFormat( "%s\n", toolBold( stdout, shows ? zu::format( "%s  %c", heading, ch ) : heading ) );
    for ( const PROPERTY &property : describe( ch ) ) {
        toolPrintFormat( "  %-*lc%s\n", LABEL_WIDTH, property.label, property.text );
    }
}
static void addDescription( ToolJson *json, ZU_CHAR ch )
{
    json->openObject();
    json->add( "codePoint", codesOf( &ch, 1 ) );
    for ( const PROPERTY &property : describe( ch ) ) {
        if ( property.value ) {
            json->add( property.key, property.value );
        } else if ( property.isTrue ) {
            json->addBool( property.key, true );
        } else {
            json->addInt( property.key, property.number );
        }
    }
    json->close();
}

// Reads "U+XXXX" as that code point, and anything else as itself.
static bool readCodePoints( const TEXT &which, TEXT *chars )
{
    *chars = which;
    if ( zuStringLength( which.get() ) < 3 ||
         !zuUtf8Equals( zu::adopt( zuStringCreateFromLeading( which.get(), 2 ) ).get(), "U+", -1 ) ) {
        return zuStringLength( which.get() ) > 0;
    }
    ZU_INT length = zuStringLength( which.get() ) - 2;
    ZU_CHAR ch = 0;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR digit = zuStringCharAt( which.get(), i + 2 );
        if ( digit > 0x7F || zuUnicodeHexadecimalDigitValue( digit ) < 0 || length > 6 ) {
            return false;
        }
        ch = ch * 16 + (ZU_CHAR)zuUnicodeHexadecimalDigitValue( digit );
    }
    if ( !ZU_CHAR_OK( ch ) ) {
        return false;
    }
    *chars = zu::adopt( zuStringCreateFromCharsCopy( &ch, 1 ) );
    return true;
}
int toolDescribe( ZU_STRING *which, bool asJson )
{
    TEXT chars;
    if ( !readCodePoints( zu::share( which ), &chars ) ) {
        return toolMisuse( "--char is U+0000 to U+10FFFF or a text, and not %s", which );
    }
    ToolJson json;
    json.openArray();
    for ( ZU_INT i = 0; i < zuStringLength( chars.get() ); i++ ) {
        ZU_CHAR ch = zuStringCharAt( chars.get(), i );
        if ( asJson ) {
            addDescription( &json, ch );
        } else {
            fputs( i > 0 ? "\n" : "", stdout );
            printDescription( ch );
        }
    }
    json.close();
    if ( asJson ) {
        json.print();
    }
    return TOOL_OK;
}
