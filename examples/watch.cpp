// A directory watcher: a timer that schedules itself again writes an event, and a thread that waits for the queue compares
// what the directory holds with what it held.
//
// The library has no notices of a file system to offer: whoever looks twice a second sees what people do.  Here the
// program changes the directory by itself, a step for each look, so that what it prints is always the same.
#include "zu/zu.hpp"

#include <filesystem>
#include <iostream>
#include <map>
#include <string>

using namespace zu::literals;

namespace {

constexpr ZU_INT INTERVAL = 10; // milliseconds

// Tells of a look that is due.  The queue holds an event once at most, however late the reader is.
class Clock {
public:
    explicit Clock( zu::Ref<ZU_EVENT_QUEUE> queue )
        : timer( zu::adopt(
              zuTimerCreateEventQueue( queue.get(), zu::upcast( zu::adopt( zuBoxedNullCreate() ).get() ) ) ) )
    {
    }
    void schedule()
    {
        zuTimerSchedule( timer.get(), INTERVAL );
    }

private:
    zu::Ref<ZU_TIMER> timer; // the last release takes the schedule back
};

// Names and sizes: what a watcher goes by.
using Content = std::map<std::string, ZU_INT>;
Content look( const zu::Ref<ZU_STRING> &directory )
{
    Content content;
    zu::Ref<ZU_VECTOR> files = zu::adopt( zuDirectoryContent( directory.get(), ZU_TRUE, nullptr ) );
    for ( ZU_STRING *file : zu::items<ZU_STRING>( files ) ) {
        content[ zu::toUtf8( zu::adopt( zuFileBaseName( file ) ) ) ] = zuFileSize( file );
    }
    return content;
}
void tell( const Content &before, const Content &now )
{
    for ( auto &[ name, size ] : before ) {
        if ( now.count( name ) == 0 ) {
            std::cout << "deleted  " << name << '\n';
        }
    }
    for ( auto &[ name, size ] : now ) {
        auto found = before.find( name );
        if ( found == before.end() ) {
            std::cout << "created  " << name << '\n';
        } else if ( found->second != size ) {
            std::cout << "changed  " << name << " by " << size - found->second << " bytes\n";
        }
    }
}

void write( const zu::Ref<ZU_STRING> &directory, const char *name, const zu::Ref<ZU_STRING> &text )
{
    zu::Ref<ZU_BUFFER> bytes = zu::adopt( zuCharsetStringToBuffer( ZU_CHARSET_UTF_8, text.get() ) );
    zuFileReplaceBuffer( zu::format( "%s/%s", directory, name ).get(), bytes.get() );
}

} // namespace

int main()
{
    zu::Runtime runtime( "watch", "Directory watcher", "1.0" );
    zu::Ref<ZU_STRING> directory =
        zu::format( "%s/zu-watch-%o", zu::text( std::filesystem::temp_directory_path().u16string() ),
                    zu::adopt( zuIdentifierCreate() ) );
    zuFileCreateDirectory( directory.get() );
    zu::Ref<ZU_EVENT_QUEUE> queue = zu::adopt( zuEventQueueCreate() );
    Clock clock( queue );

    Content content = look( directory );
    for ( int step = 0; step < 4; step++ ) {
        switch ( step ) { // what somebody else would do meanwhile
        case 0:
            write( directory, "letter", "Dear reader"_zs );
            break;
        case 1:
            write( directory, "letter", "Dear reader, good-bye"_zs );
            break;
        case 2:
            write( directory, "parcel", ""_zs );
            break;
        default:
            zuFileDelete( zu::format( "%s/letter", directory ).get() );
        }
        clock.schedule();
        zu::Ref<ZU_OBJ> due = zu::adopt( zuEventQueueReadEventTimed( queue.get(), -1 ) );
        Content now = look( directory );
        tell( content, now );
        content = now;
    }
    zuFileDeleteDirectoryRecursive( directory.get() );
}
