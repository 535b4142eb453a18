// zu_tool.h: what the subcommands of the command zu share.
//
// A subcommand `x` is a file zu_tool_x.cpp, which defines the TOOL_COMMAND that stands here and in the table of
// zu_tool.cpp.  Results go to standard output, messages and progress to standard error.
#pragma once

#include "zu/zu.hpp"

#include <chrono>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <sys/stat.h>
#include <vector>

// Exit statuses
static constexpr int TOOL_OK = 0;
static constexpr int TOOL_FAILED = 1; // a file cannot be read, and the like
static constexpr int TOOL_MISUSE = 2; // an option or a command that does not exist

struct TOOL_COMMAND {
    const char *name;                      // as it is typed
    const char *summary;                   // for the list of all commands: what it does, on one line
    const char *help;                      // all of `zu <name> --help`
    int ( *run )( int argc, char **argv ); // argv[ 0 ] is the first argument behind the name; returns an exit status
};

extern const TOOL_COMMAND toolConvertCommand;
extern const TOOL_COMMAND toolInfoCommand;
extern const TOOL_COMMAND toolStoreCommand;
extern const TOOL_COMMAND toolTextCommand;

// Messages

/// Prints a line "zu <command>: <message>" to standard error; the arguments are those of a format.
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
/// Prints text as it is, in the narrow encoding.
void toolPrint( FILE *file, ZU_STRING *text );
/// Returns text as JSON has it, with its quotation marks.
zu::Ref<ZU_STRING> toolJsonString( ZU_STRING *text );

// Options

// An option: `--name`, which sets a flag, or `--name VALUE` and `--name=VALUE`.  One of the two pointers is null.
struct TOOL_OPTION {
    const char *name; // with its hyphens
    bool *flag;
    const char **value;
};

/// Reads the arguments of a command.  Options may stand between the operands, which are collected, and "--" ends them;
/// "-" is an operand.  Returns true if the command shall run; otherwise --help was printed or a wrong use reported, and
/// `status` is what the command returns.
bool toolReadArguments( int argc, char **argv, std::initializer_list<TOOL_OPTION> options,
                        std::vector<const char *> *operands, int *status );

// Input

/// Reads a file in blocks, the standard input where the name is "-".  What goes wrong is reported, once.
///
/// On a terminal it shows how far it has come, from one second on, and wipes that at the end of the file.  Whoever
/// prints while it reads says so: then it shows nothing if the results go to a terminal.
class ToolReader {
public:
    explicit ToolReader( const char *name, bool printsMeanwhile = false );
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
    bool reads( const struct stat &other ) const;

private:
    void fail();
    void showProgress();

    std::string name;
    FILE *file;
    bool failed = false;
    std::vector<unsigned char> buffer;
    struct stat info = {}; // zeros if there is none
    ZU_INT done = 0;       // bytes
    std::chrono::steady_clock::time_point nextShow;
    bool shows; // there is a terminal to show progress on
};
