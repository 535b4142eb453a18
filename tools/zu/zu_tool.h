// zu_tool.h: what the subcommands of the command zu share.
//
// A subcommand `x` is a file zu_tool_x.cpp, which defines the TOOL_COMMAND that stands here and in the table of
// zu_tool.cpp.  Results go to standard output, messages and progress to standard error.  Texts from the command line
// are strings in which a byte 0xNN that is no UTF-8 is U+DCNN, as zu_file.h has it of names of files; on output it
// becomes that byte again.
#pragma once

#include "zu/zu.hpp"

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <span>
#include <string>
#include <vector>

using TEXT = zu::Ref<ZU_STRING>;

// Exit statuses
static constexpr int TOOL_OK = 0;
static constexpr int TOOL_FAILED = 1; // a file cannot be read, and the like
static constexpr int TOOL_MISUSE = 2; // an option or a command that does not exist

// In texts, a byte that is no UTF-8, 0x80 to 0xFF, is this and the byte; valid UTF-8 never yields it.
static constexpr ZU_CHAR TOOL_ESCAPED_BYTE = 0xDC00;

// The command line

// An option, `--name` or `-x`; with a value `--name VALUE`, `--name=VALUE`, `-x VALUE` or `-xVALUE`.
struct TOOL_OPTION {
    const char *name;  // without its hyphens
    char letter;       // of the short form; 0: there is none
    const char *value; // what the help calls its value; null: it takes none
    const char *help;  // what it does, a paragraph
};

// What a command line said
class ToolArguments {
public:
    std::vector<TEXT> operands;

    explicit ToolArguments( std::span<const TOOL_OPTION> optionTable )
        : options( optionTable ), given( optionTable.size() ), values( optionTable.size() )
    {
    }
    /// Tells whether an option was given.
    bool has( std::string_view name ) const
    {
        return given[ index( name ) ];
    }
    /// Returns the value of an option, the last one if it was given more than once; empty if it was not given.
    TEXT value( std::string_view name ) const
    {
        return values[ index( name ) ];
    }
    /// Enters an option of the table by its place there.
    void set( size_t place, TEXT value )
    {
        given[ place ] = true;
        values[ place ] = std::move( value );
    }

private:
    size_t index( std::string_view name ) const
    {
        size_t place = 0;
        while ( options[ place ].name != name ) {
            place++;
            ZU_ASSERT( place < options.size() );
        }
        return place;
    }

    std::span<const TOOL_OPTION> options;
    std::vector<bool> given;
    std::vector<TEXT> values;
};

struct TOOL_COMMAND {
    const char *name;                         // as it is typed
    const char *summary;                      // for the list of all commands; null: it is not on the list
    const char *usage;                        // what may stand behind the name, a line for each form
    const char *description;                  // paragraphs of lines
    std::span<const TOOL_OPTION> options;     // but --help, which every command has
    const char *statuses;                     // which exit status means what
    int ( *run )( ToolArguments &arguments ); // returns an exit status
};

extern const TOOL_COMMAND toolConvertCommand;
extern const TOOL_COMMAND toolCrashCommand;
extern const TOOL_COMMAND toolIdCommand;
extern const TOOL_COMMAND toolInfoCommand;
extern const TOOL_COMMAND toolModuleCommand;
extern const TOOL_COMMAND toolRandomCommand;
extern const TOOL_COMMAND toolStoreCommand;
extern const TOOL_COMMAND toolTagsCommand;
extern const TOOL_COMMAND toolTextCommand;
extern const TOOL_COMMAND toolZoneCommand;

/// Lets the library be stopped and started with other flags once the command has returned, and calls `rest` then, which
/// holds no object and returns the exit status.  Returns TOOL_OK.
int toolRestart( ZU_INT flags, ZU_RUNTIME_PRINT_FUNC printFunc, std::function<int()> rest );

/// Returns the bytes of a text from the command line.
std::string toolBytesOfText( ZU_STRING *text );

// Messages

/// Prints a line "zu <command>: <message>" to standard error.
void toolPrintError( ZU_STRING *message );
/// Points to the --help of the running command.
void toolPrintHint();
template <typename... Args>
void toolError( zu::FormatFor<Args...> fmt, const Args &...args )
{
    toolPrintError( zu::format( fmt, args... ).get() );
}
/// Reports a wrong use of the running command, points to its --help, and returns TOOL_MISUSE.
template <typename... Args>
int toolMisuse( zu::FormatFor<Args...> fmt, const Args &...args )
{
    toolPrintError( zu::format( fmt, args... ).get() );
    toolPrintHint();
    return TOOL_MISUSE;
}

// Values of options and operands.  What is wrong with one is reported as a wrong use.

/// Finds which of `words` a value is, in letters of either case; -1 if none.
int toolReadWord( const char *what, ZU_STRING *value, std::span<const char *const> words );
/// Reads an integer in the form that formats have, such as "12" or "0x10", of `low` to `high`.
bool toolReadInt( const char *what, ZU_STRING *value, ZU_INT low, ZU_INT high, ZU_INT *result );

// Printing

/// Prints text to a file.
void toolPrint( FILE *file, ZU_STRING *text );
template <typename... Args>
void toolPrintFormat( zu::FormatFor<Args...> fmt, const Args &...args )
{
    toolPrint( stdout, zu::format( fmt, args... ).get() );
}
/// Returns text in bold type, where the file is a terminal that shows it, and the environment has no NO_COLOR.
TEXT toolBold( FILE *file, TEXT text );
/// Prints a line of a report, its label in bold type and as wide as `width`.
void toolPrintRow( const char *label, int width, ZU_STRING *value );

/// Output for programs.  Of each value in an object the key is given, in an array it is empty.
class ToolJson {
public:
    ToolJson() : text( zu::adopt( zuStringCreate() ) )
    {
    }
    void openObject( std::string_view key = {} )
    {
        open( key, "{}" );
    }
    void openArray( std::string_view key = {} )
    {
        open( key, "[]" );
    }
    /// Ends the object or array that was opened last.
    void close();
    /// Adds a string; null becomes null.
    void add( std::string_view key, ZU_STRING *value );
    void add( std::string_view key, const TEXT &value )
    {
        add( key, value.get() );
    }
    void addInt( std::string_view key, ZU_INT value );
    /// Adds a number that is not negative; -1 becomes null.
    void addIntOpt( std::string_view key, ZU_INT value )
    {
        value < 0 ? add( key, TEXT() ) : addInt( key, value );
    }
    void addBool( std::string_view key, bool value );
    /// Prints what there is so far, and a line end behind the last object or array.
    void print();

private:
    struct LEVEL {
        char closing;
        bool empty;
    };

    void open( std::string_view key, const char *brackets );
    void beginValue( std::string_view key );

    TEXT text;
    std::vector<LEVEL> levels;
};

// Input and output

/// What the system tells of a file.
struct TOOL_FILE {
    bool isOrdinary = false;               // a file with a content, and there
    ZU_INT size = 0;                       // bytes
    std::array<uint64_t, 2> identity = {}; // no other file has it
};

/// Reads a file in blocks, the standard input where the name is "-".  What goes wrong is reported, once.
///
/// On a terminal it shows how far it has come, from one second on, and wipes that at the end of the file.  Whoever
/// prints while it reads says so: then it shows nothing if the results go to a terminal.
class ToolReader {
public:
    explicit ToolReader( ZU_STRING *name, bool printsMeanwhile = false );
    ~ToolReader();
    ToolReader( const ToolReader & ) = delete;
    ToolReader &operator=( const ToolReader & ) = delete;

    /// Reads the next block and returns its length; 0 at the end, and when reading has failed.
    size_t read();
    /// Returns the block.
    const unsigned char *block() const
    {
        return buffer.data();
    }
    /// Tells whether all went well so far.
    bool ok() const
    {
        return !failed;
    }
    /// Tells whether it is an ordinary file that it reads, and `other` is this very file.
    bool reads( const TOOL_FILE &other ) const;

private:
    void fail();
    void showProgress();

    TEXT name;
    zu::Ref<ZU_BYTE_SOURCE> source; // empty: it cannot be opened
    bool failed = false;
    std::vector<unsigned char> buffer;
    TOOL_FILE info;
    ZU_INT done = 0; // bytes
    std::chrono::steady_clock::time_point nextShow;
    bool shows; // there is a terminal to show progress on
};

/// Reports that a file cannot be read or written, and why, if the system has told since toolForgetFailure.
void toolReportFile( const char *what, ZU_STRING *name );
/// Returns the content of a file, of the standard input for "-"; empty if that fails, which is reported.
zu::Ref<ZU_BUFFER> toolReadFile( ZU_STRING *name );
/// Replaces the content of a file as a whole, or prints it for "-"; tells whether that worked, and reports if not.
bool toolWriteFile( ZU_STRING *name, ZU_BUFFER *content );
/// Tells whether `name` is "-".
bool toolIsStandard( ZU_STRING *name );

/// Reads a store from a file in either form; empty if that fails, which is reported.  `isBinary`, which may be null, is
/// told the form.
zu::Ref<ZU_STORE> toolReadStore( ZU_STRING *name, bool *isBinary );

/// Describes code points: `zu text --char`.
int toolDescribe( ZU_STRING *which, bool json );
