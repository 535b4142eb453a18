// Command lines: 20 arguments by a definition of 20 options, each with a short and a long name.  The definition is made
// once; each contestant walks the whole line and counts what it finds.

#include "zu/base/zu_opt_seq.h"
#include "zu/runtime/zu_runtime.h"

#include <benchmark/benchmark.h>
#include <getopt.h>
#include <string>
#include <vector>
#ifdef ZU_BENCHMARK_GLIB
#include <glib.h>
#endif
#ifdef ZU_BENCHMARK_QT
#include <QCommandLineParser>
#include <QStringList>
#endif

struct OPTION {
    const char *name; // the short one is its first letter
    bool hasArgument;
};
static const OPTION OPTIONS[] = {
    { "all", false },       { "brief", false }, { "colour", true },  { "depth", true },   { "each", false },
    { "force", false },     { "group", false }, { "hidden", true },  { "inode", false },  { "jobs", true },
    { "keep", false },      { "long", false },  { "number", false }, { "output", true },  { "quiet", false },
    { "recursive", false }, { "sort", true },   { "time", false },   { "unique", false }, { "verbose", false },
};
static const char *const LINE[] = {
    "--all",       "--brief", "--colour=auto", "--depth",  "12",         "-e",      "-f",
    "--jobs=8",    "--keep",  "-ln",           "--output", "result.txt", "--quiet", "-r",
    "--sort=name", "--time",  "input-1",       "--unique", "input-2",    "-v",
};
static constexpr int FOUND = 17 + 2; // options and others

static void check( benchmark::State &state, int found )
{
    if ( found != FOUND ) {
        state.SkipWithError( "found something else" );
    }
}

static void zu( benchmark::State &state )
{
    zuRuntimeStartup( 0, -1, nullptr, nullptr, nullptr, nullptr );
    ZU_OPT_DEF *def = zuOptDefCreate();
    ZU_INT id = 0;
    for ( const OPTION &option : OPTIONS ) {
        zuOptDefSetLongOptCstr( &def, option.name, -1, id );
        zuOptDefSetShortOpt( &def, (ZU_CHAR)option.name[ 0 ], id );
        zuOptDefSetFlags( &def, id, option.hasArgument ? ZU_OPT_FLAG_ARGUMENT : 0 );
        id++;
    }
    zuOptDefSetArgOnly( &def, id );
    ZU_VECTOR *argv = zuVectorCreate();
    for ( const char *argument : LINE ) {
        zuVectorAppendStringCstr( &argv, argument, -1 );
    }
    int found = 0;
    for ( auto _ : state ) {
        ZU_OPT_SEQ *seq = zuOptSeqCreate( def, argv );
        found = 0;
        while ( zuOptSeqHasNext( seq ) ) {
            found += zuOptSeqNext( seq ) >= 0;
        }
        zuOptSeqRelease( seq );
    }
    check( state, found );
    zuVectorRelease( argv );
    zuOptDefRelease( def );
    zuRuntimeShutdown();
}
BENCHMARK( zu )->Name( "Walk/zu" );

static void getoptLong( benchmark::State &state )
{
    std::vector<option> options;
    std::string letters;
    for ( const OPTION &option : OPTIONS ) {
        options.push_back( { option.name, option.hasArgument, nullptr, option.name[ 0 ] } );
        letters += option.name[ 0 ];
        letters += option.hasArgument ? ":" : "";
    }
    options.push_back( {} );
    int found = 0;
    for ( auto _ : state ) {
        std::vector<char *> argv = { const_cast<char *>( "program" ) };
        for ( const char *argument : LINE ) {
            argv.push_back( const_cast<char *>( argument ) );
        }
        argv.push_back( nullptr );
        int argc = (int)argv.size() - 1;
        optind = 0; // begins anew
        found = 0;
        while ( getopt_long( argc, argv.data(), letters.c_str(), options.data(), nullptr ) != -1 ) {
            found++;
        }
        found += argc - optind;
    }
    check( state, found );
}
BENCHMARK( getoptLong )->Name( "Walk/getopt_long" );

#ifdef ZU_BENCHMARK_GLIB
static gboolean countOption( const gchar *, const gchar *, gpointer found, GError ** )
{
    ++*(int *)found;
    return TRUE;
}
static void glib( benchmark::State &state )
{
    int found = 0;
    std::vector<GOptionEntry> entries;
    for ( const OPTION &option : OPTIONS ) {
        entries.push_back( { option.name, option.name[ 0 ], option.hasArgument ? 0 : G_OPTION_FLAG_NO_ARG,
                             G_OPTION_ARG_CALLBACK, (gpointer)countOption, "", nullptr } );
    }
    entries.push_back( {} );
    GOptionContext *context = g_option_context_new( nullptr );
    GOptionGroup *group = g_option_group_new( "main", "", "", &found, nullptr );
    g_option_group_add_entries( group, entries.data() );
    g_option_context_set_main_group( context, group );
    g_option_context_set_help_enabled( context, FALSE );
    for ( auto _ : state ) {
        std::vector<char *> argv = { const_cast<char *>( "program" ) };
        for ( const char *argument : LINE ) {
            argv.push_back( const_cast<char *>( argument ) );
        }
        argv.push_back( nullptr );
        int argc = (int)argv.size() - 1;
        char **rest = argv.data();
        found = 0;
        g_option_context_parse( context, &argc, &rest, nullptr );
        found += argc - 1;
    }
    check( state, found );
    g_option_context_free( context );
}
BENCHMARK( glib )->Name( "Walk/glib" );
#endif

#ifdef ZU_BENCHMARK_QT
static void qt( benchmark::State &state )
{
    QCommandLineParser parser;
    for ( const OPTION &option : OPTIONS ) {
        QCommandLineOption qtOption( QStringList() << QString( QChar( option.name[ 0 ] ) ) << option.name );
        qtOption.setValueName( option.hasArgument ? "value" : "" );
        parser.addOption( qtOption );
    }
    QStringList argv( "program" );
    for ( const char *argument : LINE ) {
        argv.append( argument );
    }
    int found = 0;
    for ( auto _ : state ) {
        parser.parse( argv );
        found = parser.optionNames().size() + parser.positionalArguments().size();
    }
    check( state, found );
}
BENCHMARK( qt )->Name( "Walk/qt" );
#endif
