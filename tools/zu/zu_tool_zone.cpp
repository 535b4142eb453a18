// zu zone: the names of time zones, in the IANA database and on Windows, and the machine's zone.

#include "zu_tool.h"

static TEXT windowsOf( ZU_STRING *iana )
{
    return zu::adopt( zuTimezoneIanaToWindows( iana ) );
}
static void addZone( ToolJson *json, ZU_STRING *iana, ZU_STRING *windows )
{
    json->add( "iana", iana );
    json->add( "windows", windows );
}

static int printList( bool asJson )
{
    ToolJson json;
    json.openArray();
    auto list = zu::adopt( zuTimezoneList() );
    for ( ZU_STRING *iana : zu::items<ZU_STRING>( list ) ) {
        TEXT windows = windowsOf( iana );
        if ( asJson ) {
            json.openObject();
            addZone( &json, iana, windows.get() );
            json.close();
        } else {
            toolPrintFormat( "%-34s%s\n", iana, windows );
        }
    }
    json.close();
    if ( asJson ) {
        json.print();
    }
    return TOOL_OK;
}
static int printLocal( bool asJson )
{
    TEXT iana = zu::adopt( zuTimezone() );
    ZU_INT offset = zuTimezoneUtcOffset();
    bool known = zuStringLength( iana.get() ) > 0;
    TEXT windows = known ? windowsOf( iana.get() ) : nullptr;
    if ( asJson ) {
        ToolJson json;
        json.openObject();
        addZone( &json, known ? iana.get() : nullptr, windows.get() );
        json.addInt( "utcOffset", offset );
        json.close();
        json.print();
    } else {
        TEXT unknown = zu::text( "unknown" );
        toolPrintRow( "IANA", 9, ( known ? iana : unknown ).get() );
        toolPrintRow( "Windows", 9, ( windows ? windows : unknown ).get() );
        ZU_INT minutes = zuIntAbs( offset ) / 60;
        toolPrintRow( "UTC", 9,
                      zu::format( "%lc%02i:%02i", offset < 0 ? "-" : "+", minutes / 60, minutes % 60 ).get() );
    }
    return TOOL_OK;
}

// What a name in letters of either case stands for; false if it is unknown.
static bool findZone( ZU_STRING *name, TEXT *iana, TEXT *windows, bool *isWindows )
{
    auto list = zu::adopt( zuTimezoneList() );
    for ( ZU_STRING *each : zu::items<ZU_STRING>( list ) ) {
        *windows = windowsOf( each );
        *isWindows = zuStringEqualsCaseFold( name, windows->get() );
        if ( *isWindows || zuStringEqualsCaseFold( name, each ) ) {
            *iana = *isWindows ? zu::adopt( zuTimezoneWindowsToIana( windows->get() ) ) : zu::share( each );
            return true;
        }
    }
    return false;
}
static int translate( const std::vector<TEXT> &names, bool asJson )
{
    int status = TOOL_OK;
    ToolJson json;
    json.openArray();
    for ( const TEXT &name : names ) {
        TEXT iana;
        TEXT windows;
        bool isWindows;
        if ( !findZone( name.get(), &iana, &windows, &isWindows ) ) {
            toolError( "unknown time zone: %s", name );
            status = TOOL_FAILED;
        } else if ( asJson ) {
            json.openObject();
            json.add( "name", name );
            addZone( &json, iana.get(), windows.get() );
            json.close();
        } else {
            toolPrintFormat( "%s\n", isWindows ? iana : windows );
        }
    }
    json.close();
    if ( asJson ) {
        json.print();
    }
    return status;
}

static int zoneRun( ToolArguments &arguments )
{
    bool json = arguments.has( "json" );
    if ( arguments.has( "local" ) ) {
        return arguments.operands.empty() ? printLocal( json ) : toolMisuse( "%lc takes no NAME", "--local" );
    }
    return arguments.operands.empty() ? printList( json ) : translate( arguments.operands, json );
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "local", 'l', nullptr, "prints the names of the machine's zone, and how far it is from UTC now" },
    { "json", 'j', nullptr,
      "prints objects with \"iana\" and \"windows\", with \"name\" as it was given, and for "
      "--local with \"utcOffset\" in seconds" },
};
const TOOL_COMMAND toolZoneCommand = {
    "zone",
    "translates and lists the names of time zones",
    "[--json] [NAME...]\n--local [--json]",
    R"(Translates each NAME of the IANA time zone database, such as "Europe/Berlin",
to the name that Windows has for the zone, "W. Europe Standard Time", and names
of Windows to the first IANA name that they stand for.  The case of letters does
not count.  Without a NAME it lists all.
)",
    OPTIONS,
    R"(The exit status is 0 if all went well, 1 if a NAME is unknown, 2 if the use is
wrong.
)",
    zoneRun,
};
