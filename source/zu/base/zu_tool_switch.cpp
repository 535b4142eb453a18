// The tools stand in a dict, so that a word and what it abbreviates are neighbours: a search finds both, and nothing is
// walked.  The function stands in an object of its own, since a dict holds objects.

#include "zu/base/zu_tool_switch.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"

struct ZU___TOOL_SWITCH_TOOL {
    ZU_OBJ obj;
    ZU_TOOL_SWITCH_TOOL_FUNC toolFunc; // may be null
};
struct ZU_TOOL_SWITCH {
    ZU_OBJ obj;
    ZU_DICT *tools; // ZU_STRING to ZU___TOOL_SWITCH_TOOL
};

static void toolSwitchFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU___TOOL_SWITCH_TOOL =
    ZU___SORT_INITIALIZER( "ZU___TOOL_SWITCH_TOOL", &zu___module, nullptr, nullptr, nullptr );
ZU___STDFUNCS( ZU___TOOL_SWITCH_TOOL, zu___ToolSwitchTool )

static ZU_SORT zu___sort_ZU_TOOL_SWITCH =
    ZU___SORT_INITIALIZER( "ZU_TOOL_SWITCH", &zu___module, toolSwitchFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_TOOL_SWITCH, zuToolSwitch )

// Creation
static ZU_TOOL_SWITCH *toolSwitchCreateUse( ZU_DICT *tools )
{
    ZU_TOOL_SWITCH *ts = (ZU_TOOL_SWITCH *)zu___ObjCreate( sizeof( ZU_TOOL_SWITCH ), &zu___sort_ZU_TOOL_SWITCH );
    ts->tools = tools;
    return ts;
}
ZU_TOOL_SWITCH *zuToolSwitchCreate( void )
{
    return toolSwitchCreateUse( zuDictCreate() );
}
ZU_TOOL_SWITCH *zuToolSwitchCreateFrom( ZU_TOOL_SWITCH *ts )
{
    ZU_ASSERT( ts );
    return toolSwitchCreateUse( zuDictRetain( ts->tools ) );
}
static void toolSwitchUnshare( ZU_TOOL_SWITCH **ts )
{
    if ( ZU_REF_RETAIN_COUNT( *ts ) > 1 ) {
        ZU_TOOL_SWITCH *old = *ts;
        *ts = zuToolSwitchCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

static void toolSwitchFree( ZU_OBJ *thisObj )
{
    ZU_TOOL_SWITCH *ts = zuToolSwitchFrom( thisObj );
    ZU_ASSERT( ts );
    ZU_REF_RELEASE( ts->tools );
    ZU_REF_POISON( ts->tools );
}

// Setting a tool
void zuToolSwitchSetTool( ZU_TOOL_SWITCH **ts, ZU_STRING *tool, ZU_TOOL_SWITCH_TOOL_FUNC toolFunc )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    toolSwitchUnshare( ts );
    ZU___TOOL_SWITCH_TOOL *entry =
        (ZU___TOOL_SWITCH_TOOL *)zu___ObjCreate( sizeof( ZU___TOOL_SWITCH_TOOL ), &zu___sort_ZU___TOOL_SWITCH_TOOL );
    entry->toolFunc = toolFunc;
    zuDictSetStringKey( &( *ts )->tools, tool, zu___ToolSwitchToolObj( entry ) );
    ZU_REF_RELEASE( entry );
}
void zuToolSwitchSetToolCstr( ZU_TOOL_SWITCH **ts, const char *tool, ZU_INT toolLength,
                              ZU_TOOL_SWITCH_TOOL_FUNC toolFunc )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    ZU_STRING *zus = zuStringCreateFromCstr( tool, toolLength );
    zuToolSwitchSetTool( ts, zus, toolFunc );
    ZU_REF_RELEASE( zus );
}
void zuToolSwitchSetToolWcstr( ZU_TOOL_SWITCH **ts, const char16_t *tool, ZU_INT toolLength,
                               ZU_TOOL_SWITCH_TOOL_FUNC toolFunc )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    ZU_STRING *zus = zuStringCreateFromWcstr( tool, toolLength );
    zuToolSwitchSetTool( ts, zus, toolFunc );
    ZU_REF_RELEASE( zus );
}

// Deletion
void zuToolSwitchDelTool( ZU_TOOL_SWITCH **ts, ZU_STRING *tool )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    toolSwitchUnshare( ts );
    zuDictDelStringKey( &( *ts )->tools, tool );
}
void zuToolSwitchDelToolCstr( ZU_TOOL_SWITCH **ts, const char *tool, ZU_INT toolLength )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    toolSwitchUnshare( ts );
    zuDictDelStringKeyCstr( &( *ts )->tools, tool, toolLength );
}
void zuToolSwitchDelToolWcstr( ZU_TOOL_SWITCH **ts, const char16_t *tool, ZU_INT toolLength )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( tool );
    toolSwitchUnshare( ts );
    zuDictDelStringKeyWcstr( &( *ts )->tools, tool, toolLength );
}

// Looking tools up
ZU_BOOL zuToolSwitchHasTool( ZU_TOOL_SWITCH *ts, ZU_STRING *tool )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( tool );
    return zuDictHasStringKey( ts->tools, tool );
}
ZU_BOOL zuToolSwitchHasToolCstr( ZU_TOOL_SWITCH *ts, const char *tool, ZU_INT toolLength )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( tool );
    return zuDictHasStringKeyCstr( ts->tools, tool, toolLength );
}
ZU_BOOL zuToolSwitchHasToolWcstr( ZU_TOOL_SWITCH *ts, const char16_t *tool, ZU_INT toolLength )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( tool );
    return zuDictHasStringKeyWcstr( ts->tools, tool, toolLength );
}
ZU_VECTOR *zuToolSwitchToolsVector( ZU_TOOL_SWITCH *ts )
{
    ZU_ASSERT( ts );
    return zuDictKeysVector( ts->tools );
}

// Running
static void toolSwitchPrintTools( ZU_TOOL_SWITCH *ts )
{
    if ( zuDictLength( ts->tools ) > 0 ) {
        zuPrintFormatCstr( "%~o", -1, zuToolSwitchToolsVector( ts ) );
    }
}
ZU_BOOL zuToolSwitchRunTool( ZU_TOOL_SWITCH *ts, ZU_VECTOR *argv, void *context )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( argv );
    if ( zuVectorLength( argv ) == 0 ) {
        zuPrintCstr( "missing argument", -1 );
        toolSwitchPrintTools( ts );
        return ZU_FALSE;
    }
    zu___Owned held( zuVectorRetain( argv ) ); // the word's text may change the vector
    ZU_STRING *word = zuObjToString( zuVectorBacking( argv )[ 0 ] );
    bool exact;
    ZU_INT idx = zu___DictIndexOfAbbreviation( ts->tools, zuStringBacking( word ), zuStringLength( word ), &exact );
    ZU_BOOL result = ZU_FALSE;
    if ( idx < 0 ) {
        zuPrintFormatCstr( idx == -1 ? "%s: invalid argument" : "%s: ambiguous", -1, word );
        toolSwitchPrintTools( ts );
    } else {
        // The tool may well change or release the switch.
        ZU_TOOL_SWITCH_TOOL_FUNC toolFunc = zu___ToolSwitchToolFrom( zu___DictPair( ts->tools, idx )->val )->toolFunc;
        ZU_VECTOR *rest = zuVectorCreateFromTrailing( argv, zuVectorLength( argv ) - 1 );
        result = toolFunc ? toolFunc( rest, context ) : ZU_TRUE;
        ZU_REF_RELEASE( rest );
    }
    ZU_REF_RELEASE( word );
    return result;
}
