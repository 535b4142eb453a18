// zu tags: conditions on sets of tags, and what rewriting makes of them, to try out what a configuration says.

#include "zu_tool.h"

#include <iterator>

using TAGS = zu::Ref<ZU_TAG_SET>;
using STORE = zu::Ref<ZU_STORE>;

// Adds the tags of a text in which blanks divide them; what is no tag is reported.
static bool addTags( ZU_TAG_SET **tags, ZU_STRING *text )
{
    auto words = zu::adopt( zuStringSplitWhitespace( text, -1 ) );
    for ( ZU_STRING *word : zu::items<ZU_STRING>( words ) ) {
        if ( zuTagOk( word ) ) {
            zuTagSetSetTag( tags, word );
        } else if ( zuStringLength( word ) > 0 ) {
            toolMisuse( "not a tag: %s", word );
            return false;
        }
    }
    return true;
}
static bool addTagsOf( ZU_TAG_SET **tags, const TEXT &option )
{
    return !option || addTags( tags, option.get() );
}
static TAGS noTags()
{
    return zu::adopt( zuTagSetCreate() );
}
static bool readRules( ToolArguments &arguments, STORE *store, int *status )
{
    TEXT file = arguments.value( "rules" );
    *store = file ? toolReadStore( file.get(), nullptr ) : zu::adopt( zuStoreCreate() );
    *status = TOOL_FAILED;
    return !!*store;
}

static int match( ToolArguments &arguments, ZU_TAG_SET *tags )
{
    STORE rules;
    int status;
    if ( !readRules( arguments, &rules, &status ) ) {
        return status;
    }
    auto match = zu::adopt( zuTagMatchRestore( rules.get() ) );
    if ( TEXT type = arguments.value( "type" ) ) {
        static constexpr const char *TYPES[] = { "or", "xor", "and", "not" };
        int found = toolReadWord( "--type", type.get(), TYPES );
        if ( found < 0 ) {
            return TOOL_MISUSE;
        }
        zuTagMatchSetType( match.inOut(), found );
    }
    if ( arguments.has( "want" ) ) {
        TAGS wanted = noTags();
        if ( !addTagsOf( wanted.inOut(), arguments.value( "want" ) ) ) {
            return TOOL_MISUSE;
        }
        zuTagMatchSetTagSet( match.inOut(), wanted.get() );
    }
    bool matches = zuTagMatchTryMatch( match.get(), tags );
    if ( arguments.has( "json" ) ) {
        ToolJson json;
        json.openObject();
        json.addBool( "matches", matches );
        json.close();
        json.print();
    } else {
        toolPrintFormat( "%lc\n", matches ? "match" : "no match" );
    }
    return matches ? TOOL_OK : TOOL_FAILED;
}

// The options that stand for an operation on each of their tags, in the order of ZU_TAG_REWRITE_OPERATION_TYPE
static constexpr const char *OPERATIONS[] = { "set", "delete", "pass" };

static int rewrite( ToolArguments &arguments, ZU_TAG_SET *tags )
{
    STORE rules;
    int status;
    if ( !readRules( arguments, &rules, &status ) ) {
        return status;
    }
    auto rewrite = zu::adopt( zuTagRewriteRestore( rules.get() ) );
    if ( arguments.has( "clear" ) ) {
        zuTagRewriteSetClear( rewrite.inOut(), ZU_TRUE );
    }
    for ( ZU_INT type = 0; type < (ZU_INT)std::size( OPERATIONS ); type++ ) {
        TAGS named = noTags();
        if ( !addTagsOf( named.inOut(), arguments.value( OPERATIONS[ type ] ) ) ) {
            return TOOL_MISUSE;
        }
        for ( ZU_INT i = 0; i < zuTagSetTagsLength( named.get() ); i++ ) {
            TEXT tag = zu::adopt( zuTagSetTagAt( named.get(), i ) );
            zuTagRewriteSetOperation( rewrite.inOut(),
                                      zu::adopt( zuTagRewriteOperationCreate( type, tag.get() ) ).get() );
        }
    }
    auto result = zu::adopt( zuTagRewriteApply( rewrite.get(), tags ) );
    if ( arguments.has( "json" ) ) {
        ToolJson json;
        json.openArray();
        for ( ZU_INT i = 0; i < zuTagSetTagsLength( result.get() ); i++ ) {
            json.add( "", zu::adopt( zuTagSetTagAt( result.get(), i ) ) );
        }
        json.close();
        json.print();
    } else {
        toolPrintFormat( "%~s\n", zuTagSetEncode( result.get() ) );
    }
    return TOOL_OK;
}

static int tagsRun( ToolArguments &arguments )
{
    static constexpr const char *ACTIONS[] = { "match", "rewrite" };
    std::vector<TEXT> &operands = arguments.operands;
    if ( operands.empty() ) {
        return toolMisuse( "an action is missing: %lc", "match or rewrite" );
    }
    int action = toolReadWord( "the action", operands[ 0 ].get(), ACTIONS );
    if ( action < 0 ) {
        return TOOL_MISUSE;
    }
    for ( const char *option : { "type", "want", "clear", "set", "delete", "pass" } ) {
        bool isForMatch = option == std::string_view( "type" ) || option == std::string_view( "want" );
        if ( arguments.has( option ) && isForMatch != ( action == 0 ) ) {
            return toolMisuse( "--%lc does not go with %lc", option, ACTIONS[ action ] );
        }
    }
    TAGS tags = noTags();
    for ( size_t i = 1; i < operands.size(); i++ ) {
        if ( !addTags( tags.inOut(), operands[ i ].get() ) ) {
            return TOOL_MISUSE;
        }
    }
    return ( action == 0 ? match : rewrite )( arguments, tags.get() );
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "type", 't', "TYPE",
      "match: how many of the wanted tags must be there: \"or\", at least one, which holds without "
      "this option; \"xor\", exactly one; \"and\", all; \"not\", none" },
    { "want", 'w', "TAGS", "match: the wanted tags; without any, every set matches" },
    { "clear", 'c', nullptr, "rewrite: drops all tags that no other option names" },
    { "set", 's', "TAGS", "rewrite: adds these tags" },
    { "delete", 'd', "TAGS", "rewrite: removes these tags" },
    { "pass", 'p', "TAGS", "rewrite: leaves these tags as they were, also with --clear" },
    { "rules", 'r', "FILE",
      "begins with the condition or the rewriting that the settings in FILE hold, as the library "
      "stores them" },
    { "json", 'j', nullptr, "prints an object with \"matches\", or an array of tags" },
};
const TOOL_COMMAND toolTagsCommand = {
    "tags",
    "tries out conditions on sets of tags, and their rewriting",
    "match [--type TYPE] [--want TAGS] [--rules FILE] [--json] [TAG...]\n"
    "rewrite [--clear] [--set TAGS] [--delete TAGS] [--pass TAGS] "
    "[--rules FILE] [--json] [TAG...]",
    R"(Takes a set of tags and prints whether it matches a condition, or what rewriting
makes of it, in ascending order.  A TAG is a name such as "draft" or
"needsReview": ASCII letters and digits, a small letter first.  TAGS are some of
them, with blanks between; where two options of a rewriting name one, the last
of --set, --delete and --pass decides.
)",
    OPTIONS,
    R"(The exit status is 0 if all went well, 1 if the set does not match or a file
cannot be read, 2 if the use is wrong.
)",
    tagsRun,
};
